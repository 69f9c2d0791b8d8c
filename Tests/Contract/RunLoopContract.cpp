#include "Fakes/FakeClock.h"
#include "Fakes/FakeRunLoop.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace orvane::tests {

namespace {

constexpr auto deadline = 10s;

/// A run loop and its clock, and the means to run them.
class Subject {
public:
    virtual ~Subject() = default;
    virtual RunLoop& loop() = 0;
    virtual Clock& clock() = 0;
    /// Runs the loop until the condition holds; false when it never does.
    virtual bool runUntil(const std::function<bool()>& condition) = 0;
};

class FakeSubject : public Subject {
public:
    RunLoop& loop() override { return m_loop; }
    Clock& clock() override { return m_clock; }

    bool runUntil(const std::function<bool()>& condition) override
    {
        const auto end = m_clock.uptime() + deadline;
        m_loop.drain();
        while (!condition() && m_clock.uptime() < end) {
            m_loop.drainDetached();
            m_loop.advance(1ms);
        }
        return condition();
    }

private:
    FakeClock m_clock;
    FakeRunLoop m_loop{m_clock};
};

class QtSubject : public Subject {
public:
    RunLoop& loop() override { return m_loop; }
    Clock& clock() override { return m_clock; }
    bool runUntil(const std::function<bool()>& condition) override { return eventually(deadline, condition); }

private:
    SystemClock m_clock;
    QtRunLoop m_loop;
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

} // namespace

class RunLoopContract : public ::testing::TestWithParam<Implementation> {
protected:
    RunLoop& loop() { return m_subject->loop(); }
    bool runUntil(const std::function<bool()>& condition) { return m_subject->runUntil(condition); }

    std::unique_ptr<Subject> m_subject = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(
    Platforms, RunLoopContract,
    ::testing::Values(
        Implementation{"Fake", []() -> std::unique_ptr<Subject> { return std::make_unique<FakeSubject>(); }},
        Implementation{"Qt", []() -> std::unique_ptr<Subject> { return std::make_unique<QtSubject>(); }}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_P(RunLoopContract, ATaskRunsLaterAndOnThisThread)
{
    std::optional<std::thread::id> ranOn;
    loop().perform([&] { ranOn = std::this_thread::get_id(); });
    EXPECT_FALSE(ranOn);
    EXPECT_TRUE(runUntil([&] { return ranOn.has_value(); }));
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST_P(RunLoopContract, TasksRunInTheirOrder)
{
    std::vector<int> ran;
    for (const int number : {1, 2, 3})
        loop().perform([&ran, number] { ran.push_back(number); });
    EXPECT_TRUE(runUntil([&] { return ran.size() == 3; }));
    EXPECT_THAT(ran, ::testing::ElementsAre(1, 2, 3));
}

TEST_P(RunLoopContract, ATaskOfATaskRunsBehindThoseThatAreQueued)
{
    std::vector<int> ran;
    loop().perform([&] {
        loop().perform([&ran] { ran.push_back(3); });
        ran.push_back(1);
    });
    loop().perform([&ran] { ran.push_back(2); });
    EXPECT_TRUE(runUntil([&] { return ran.size() == 3; }));
    EXPECT_THAT(ran, ::testing::ElementsAre(1, 2, 3));
}

TEST_P(RunLoopContract, ATaskFromAnotherThreadRunsOnThisOne)
{
    std::optional<std::thread::id> ranOn;
    std::thread([&] { loop().perform([&] { ranOn = std::this_thread::get_id(); }); }).join();
    EXPECT_TRUE(runUntil([&] { return ranOn.has_value(); }));
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST_P(RunLoopContract, DetachedWorkIsDoneLaterAndCanReport)
{
    bool reported = false;
    loop().performDetached([&] { loop().perform([&] { reported = true; }); });
    EXPECT_FALSE(reported);
    EXPECT_TRUE(runUntil([&] { return reported; }));
}

TEST_P(RunLoopContract, ATimerFiresNotBeforeItsTime)
{
    bool fired = false;
    const auto start = m_subject->clock().uptime();
    const auto timer = loop().scheduleTimer(30ms, RunLoop::Repeats::no, [&] { fired = true; });
    EXPECT_FALSE(fired);
    EXPECT_TRUE(runUntil([&] { return fired; }));
    EXPECT_GE(m_subject->clock().uptime() - start, 29ms); // timers of the system count in whole milliseconds
}

TEST_P(RunLoopContract, ATimerThatDoesNotRepeatFiresOnce)
{
    int fired = 0;
    bool laterOneFired = false;
    const auto once = loop().scheduleTimer(5ms, RunLoop::Repeats::no, [&] { ++fired; });
    const auto later = loop().scheduleTimer(40ms, RunLoop::Repeats::no, [&] { laterOneFired = true; });
    EXPECT_TRUE(runUntil([&] { return laterOneFired; }));
    EXPECT_EQ(fired, 1);
}

TEST_P(RunLoopContract, ATimerThatRepeatsFiresAgainAndAgain)
{
    int fired = 0;
    const auto timer = loop().scheduleTimer(5ms, RunLoop::Repeats::yes, [&] { ++fired; });
    EXPECT_TRUE(runUntil([&] { return fired >= 3; }));
}

TEST_P(RunLoopContract, TheTimerThatIsDueFirstFiresFirst)
{
    std::vector<int> fired;
    const auto late = loop().scheduleTimer(60ms, RunLoop::Repeats::no, [&] { fired.push_back(2); });
    const auto early = loop().scheduleTimer(10ms, RunLoop::Repeats::no, [&] { fired.push_back(1); });
    EXPECT_TRUE(runUntil([&] { return fired.size() == 2; }));
    EXPECT_THAT(fired, ::testing::ElementsAre(1, 2));
}

TEST_P(RunLoopContract, ATimerThatHasEndedDoesNotFire)
{
    bool fired = false;
    bool laterOneFired = false;
    auto ended = loop().scheduleTimer(5ms, RunLoop::Repeats::yes, [&] { fired = true; });
    const auto later = loop().scheduleTimer(40ms, RunLoop::Repeats::no, [&] { laterOneFired = true; });
    ended.reset();
    EXPECT_TRUE(runUntil([&] { return laterOneFired; }));
    EXPECT_FALSE(fired);
}

TEST_P(RunLoopContract, AHandlerMayEndItsOwnTimer)
{
    int fired = 0;
    bool laterOneFired = false;
    std::unique_ptr<Timer> timer;
    auto witness = std::make_shared<int>(7);
    int seen = 0;
    timer = loop().scheduleTimer(5ms, RunLoop::Repeats::yes, [&, witness] {
        ++fired;
        timer.reset();
        seen = *witness; // the handler's captures still exist
    });
    const auto later = loop().scheduleTimer(40ms, RunLoop::Repeats::no, [&] { laterOneFired = true; });
    EXPECT_TRUE(runUntil([&] { return laterOneFired; }));
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(seen, 7);
    EXPECT_TRUE(runUntil([&] { return witness.use_count() == 1; })) << "the handler goes with its timer";
}

TEST_P(RunLoopContract, AHandlerMayEndAnotherTimerThatIsDueAsWell)
{
    // Both are due when the loop looks; the one that fires first ends the other.
    int fired = 0;
    std::unique_ptr<Timer> one;
    std::unique_ptr<Timer> other;
    one = loop().scheduleTimer(5ms, RunLoop::Repeats::no, [&] {
        ++fired;
        other.reset();
    });
    other = loop().scheduleTimer(5ms, RunLoop::Repeats::no, [&] {
        ++fired;
        one.reset();
    });
    bool laterOneFired = false;
    const auto later = loop().scheduleTimer(40ms, RunLoop::Repeats::no, [&] { laterOneFired = true; });
    EXPECT_TRUE(runUntil([&] { return laterOneFired; }));
    EXPECT_EQ(fired, 1);
}

TEST_P(RunLoopContract, UptimeNeverGoesBack)
{
    auto last = m_subject->clock().uptime();
    for (int i = 0; i < 1000; ++i) {
        const auto now = m_subject->clock().uptime();
        ASSERT_GE(now, last);
        last = now;
    }
}

} // namespace orvane::tests

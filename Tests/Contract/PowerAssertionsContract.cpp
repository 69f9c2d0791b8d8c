#include "Desktop/Support/Logind.h"
#include "Desktop/Support/ScreenSaver.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakePowerAssertions.h"
#include "PlatformLinux/Session/LogindPowerAssertions.h"
#include "Support/Eventually.h"

#include <QSet>

#include <gmock/gmock.h>

#include <memory>

#include <unistd.h>

namespace orvane::tests {

namespace {

constexpr auto deadline = 10s;
constexpr auto systemSleep = PowerAssertionType::preventUserIdleSystemSleep;
constexpr auto displaySleep = PowerAssertionType::preventUserIdleDisplaySleep;
constexpr auto on = PowerAssertions::levelOn;

/// Power assertions, and the system's view of them.
class Subject {
public:
    virtual ~Subject() = default;
    virtual PowerAssertions& assertions() = 0;
    /// Returns the sorted names of those that are held.
    virtual QStringList held() = 0;
};

class FakeSubject : public Subject {
public:
    PowerAssertions& assertions() override { return m_assertions; }

    QStringList held() override
    {
        QStringList names;
        for (const auto& [id, assertion] : m_assertions.held)
            names.append(assertion.name);
        names.sort();
        return names;
    }

private:
    FakePowerAssertions m_assertions;
};

QList<Inhibitor> inhibitorsOfThisProcess()
{
    QList<Inhibitor> ours;
    for (const Inhibitor& inhibitor : inhibitors().value_or(QList<Inhibitor>())) {
        if (inhibitor.pid == static_cast<quint32>(::getpid()))
            ours.append(inhibitor);
    }
    return ours;
}

class LinuxSubject : public Subject {
public:
    PowerAssertions& assertions() override { return m_assertions; }

    QStringList held() override
    {
        QStringList names;
        for (const Inhibitor& inhibitor : inhibitorsOfThisProcess())
            names.append(inhibitor.why);
        names.sort();
        return names;
    }

private:
    FakeLogSink m_log;
    LogindPowerAssertions m_assertions{m_log};
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

} // namespace

class PowerAssertionsContract : public ::testing::TestWithParam<Implementation> {
protected:
    PowerAssertions& assertions() { return m_subject->assertions(); }
    bool holds(const QStringList& names)
    {
        return eventually(deadline, [&] { return m_subject->held() == names; });
    }

    std::unique_ptr<Subject> m_subject = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Platforms, PowerAssertionsContract,
                         ::testing::Values(Implementation{"Fake",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<FakeSubject>();
                                                          }},
                                           Implementation{"Linux",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<LinuxSubject>();
                                                          }}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(PowerAssertionsContract, ACreatedAssertionIsHeldUnderItsName)
{
    for (const auto type : {systemSleep, displaySleep}) {
        const auto result = assertions().createWithName(type, on, u"Reading"_qs);
        EXPECT_EQ(result.status, PowerAssertions::Status::success);
        EXPECT_NE(result.id, 0u);
        EXPECT_TRUE(holds({u"Reading"_qs}));
        assertions().release(result.id);
        EXPECT_TRUE(holds({}));
    }
}

TEST_P(PowerAssertionsContract, AssertionsAreHeldIndependently)
{
    const auto first = assertions().createWithName(systemSleep, on, u"First"_qs);
    const auto second = assertions().createWithName(displaySleep, on, u"Second"_qs);
    EXPECT_NE(first.id, second.id);
    EXPECT_TRUE(holds({u"First"_qs, u"Second"_qs}));
    assertions().release(first.id);
    EXPECT_TRUE(holds({u"Second"_qs}));
    assertions().release(second.id);
    EXPECT_TRUE(holds({}));
}

TEST_P(PowerAssertionsContract, AnUnknownIdChangesNothing)
{
    const auto result = assertions().createWithName(systemSleep, on, u"Kept"_qs);
    assertions().release(0);
    assertions().release(result.id + 1);
    EXPECT_TRUE(holds({u"Kept"_qs}));
    assertions().release(result.id);
    assertions().release(result.id);
    EXPECT_TRUE(holds({}));
}

TEST_P(PowerAssertionsContract, AnIdIsNotUsedAgain)
{
    QSet<PowerAssertionID> ids;
    for (int i = 0; i < 3; ++i) {
        const auto result = assertions().createWithName(systemSleep, on, u"Again"_qs);
        EXPECT_FALSE(ids.contains(result.id));
        ids.insert(result.id);
        assertions().release(result.id);
    }
}

TEST(LogindPowerAssertions, TheMachineIsHeldFromSleepAndWithTheDisplayFromIdlenessToo)
{
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    const auto machine = assertions.createWithName(systemSleep, on, u"Machine"_qs);
    ASSERT_EQ(inhibitorsOfThisProcess().size(), 1);
    EXPECT_EQ(inhibitorsOfThisProcess()[0].what, u"sleep"_qs);
    EXPECT_EQ(inhibitorsOfThisProcess()[0].who, u"Orvane"_qs);
    EXPECT_EQ(inhibitorsOfThisProcess()[0].mode, u"block"_qs);
    assertions.release(machine.id);
    ASSERT_TRUE(eventually(deadline, [] { return inhibitorsOfThisProcess().isEmpty(); }));

    const auto display = assertions.createWithName(displaySleep, on, u"Display"_qs);
    ASSERT_EQ(inhibitorsOfThisProcess().size(), 1);
    EXPECT_EQ(inhibitorsOfThisProcess()[0].what.split(u':').contains(u"idle"_qs), true);
    EXPECT_EQ(inhibitorsOfThisProcess()[0].what.split(u':').contains(u"sleep"_qs), true);
    assertions.release(display.id);
}

TEST(LogindPowerAssertions, TheScreenStaysOnWhileTheDisplayIsHeldAndBlanksAfterwards)
{
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    ScreenSaver saver;
    const auto display = assertions.createWithName(displaySleep, on, u"Display"_qs);
    saver.setTimeout(1s);
    saver.reset();
    ASSERT_TRUE(eventually(deadline, [&] { return saver.idle() > 2500ms; }));
    EXPECT_NE(saver.state(), ScreenSaver::State::on);
    assertions.release(display.id);
    EXPECT_TRUE(eventually(deadline, [&] { return saver.state() == ScreenSaver::State::on; }));
}

TEST(LogindPowerAssertions, TheirEndReleasesWhatIsHeld)
{
    FakeLogSink log;
    {
        LogindPowerAssertions assertions(log);
        ASSERT_NE(assertions.createWithName(displaySleep, on, u"Display"_qs).id, 0u);
        ASSERT_EQ(inhibitorsOfThisProcess().size(), 1);
    }
    EXPECT_TRUE(eventually(deadline, [] { return inhibitorsOfThisProcess().isEmpty(); }));
}

TEST(LogindPowerAssertions, ALevelThatIsNotOnIsUnsupported)
{
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    const auto result = assertions.createWithName(systemSleep, 0, u"Off"_qs);
    EXPECT_EQ(result.status, PowerAssertions::Status::unsupported);
    EXPECT_EQ(result.id, 0u);
    EXPECT_TRUE(inhibitorsOfThisProcess().isEmpty());
}

} // namespace orvane::tests

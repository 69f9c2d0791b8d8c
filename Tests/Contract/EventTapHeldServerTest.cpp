// Taps that come and go while the X server doesn't answer: the run loop goes on, and the keyboards are free
// afterwards.
#include "Contract/EventTapFixture.h"
#include "Contract/Support/ServerHolder.h"
#include "Contract/Support/StoppedServer.h"

#include <QTimer>

#include <functional>
#include <optional>

namespace orvane::tests {
namespace {

constexpr auto deadline = 30s;
constexpr const char* keyboard = "testkbd";

class EventTapHeldServerTest : public EventTapFixture {
protected:
    /// Does something in a turn of the run loop and returns when that was seen to go on.
    static void useUntilTheRunLoopGoesOn(const std::function<void()>& use)
    {
        bool isDone = false;
        int ticks = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] { ticks += isDone ? 1 : 0; });
        timer.start(1);
        QTimer::singleShot(0, &timer, [&] {
            use();
            isDone = true;
        });
        EXPECT_TRUE(eventually(deadline, [&] { return ticks >= 3; }));
    }
    void whileHeld(const std::function<void()>& use)
    {
        holder.hold();
        useUntilTheRunLoopGoesOn(use);
        EXPECT_TRUE(holder.letGo()) << "it waited for the server";
    }
    static void whileStopped(const std::function<void()>& use)
    {
        StoppedServer server;
        useUntilTheRunLoopGoesOn(use);
        EXPECT_TRUE(server.letGoOn()) << "it waited for the server";
    }
    void typeAndExpectSeen(LambdaTap& tap)
    {
        hardware.tap(key::a);
        EXPECT_TRUE(eventually(10s, [&] { return tap.seen().size() >= 2; }));
        EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "a"; })) << window.typed().data();
    }

    ServerHolder holder;
};

class EventTapOfEachKindHeldServerTest : public EventTapHeldServerTest,
                                         public ::testing::WithParamInterface<EventTaps::Options> {
protected:
    std::unique_ptr<LambdaTap> makeTap()
    {
        return std::make_unique<LambdaTap>(taps, LambdaTap::Handler(), keyboardMask, GetParam(),
                                           EventTaps::Placement::headInsert, LambdaTap::Enabling::once);
    }
};

INSTANTIATE_TEST_SUITE_P(, EventTapOfEachKindHeldServerTest,
                         ::testing::Values(EventTaps::Options::defaultTap, EventTaps::Options::listenOnly),
                         [](const auto& kind) {
                             return kind.param == EventTaps::Options::defaultTap ? "Default" : "ListenOnly";
                         });

TEST_P(EventTapOfEachKindHeldServerTest, OneMadeMeanwhileCanBeEnabledWhenTheServerIsBack)
{
    std::unique_ptr<LambdaTap> tap;
    whileHeld([&] { tap = makeTap(); });
    ASSERT_TRUE(tap->tap()) << "a server that is late has refused nothing";
    EXPECT_FALSE(tap->tap()->isEnabled());
    ASSERT_TRUE(tap->comesToBeEnabled());
    typeAndExpectSeen(*tap);
}

TEST_P(EventTapOfEachKindHeldServerTest, OneMadeAndRemovedMeanwhileLeavesNothing)
{
    whileHeld([&] { makeTap().reset(); });
    EXPECT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "a"; })) << window.typed().data();
}

TEST_P(EventTapOfEachKindHeldServerTest, OneRemovedMeanwhileFreesTheKeyboard)
{
    auto tap = makeTap();
    ASSERT_TRUE(tap->comesToBeEnabled());
    whileHeld([&] { tap.reset(); });
    EXPECT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
}

TEST_P(EventTapOfEachKindHeldServerTest, OneMadeWhileTheServerIsStoppedCanBeEnabledLater)
{
    std::unique_ptr<LambdaTap> tap;
    whileStopped([&] { tap = makeTap(); });
    ASSERT_TRUE(tap->tap());
    ASSERT_TRUE(tap->comesToBeEnabled());
    typeAndExpectSeen(*tap);
}

TEST_F(EventTapHeldServerTest, OneRemovedWhileTheServerIsStoppedFreesTheKeyboardAndItsKeys)
{
    auto tap = std::make_unique<LambdaTap>(taps);
    hardware.press(key::a);
    keysOnce(1);
    ASSERT_TRUE(other.isFloating(keyboard));
    whileStopped([&] { tap.reset(); });
    EXPECT_TRUE(eventually(deadline, [&] { return !other.isFloating(keyboard); }));
    EXPECT_TRUE(
        eventually(deadline, [&] { return other.keysDown("Virtual core XTEST keyboard").isEmpty(); }));
    hardware.release(key::a);
}

TEST_F(EventTapHeldServerTest, OneThatListensGoesOnWhenTheOtherIsRemovedWhileTheServerIsHeld)
{
    LambdaTap listening(taps, {}, keyboardMask, EventTaps::Options::listenOnly,
                        EventTaps::Placement::tailAppend);
    auto filter = std::make_unique<LambdaTap>(taps);
    whileHeld([&] { filter.reset(); });
    EXPECT_TRUE(eventually(deadline, [&] { return !other.isFloating(keyboard); }));
    ASSERT_TRUE(listening.comesToBeEnabled());
    typeAndExpectSeen(listening);
}

TEST_F(EventTapHeldServerTest, OneThatStaysWorksAfterTheServerWasStopped)
{
    LambdaTap tap(taps);
    whileStopped([] {});
    ASSERT_TRUE(tap.comesToBeEnabled());
    typeAndExpectSeen(tap);
}

} // namespace
} // namespace orvane::tests

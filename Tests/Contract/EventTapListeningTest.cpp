// Taps that only listen, on the private desktop: what other programs can still do, and the change to grabbed
// keyboards and back.
#include "Contract/EventTapFixture.h"

#include <QCoreApplication>

namespace orvane::tests {
namespace {

using ::testing::ElementsAre;
using namespace eventFlag;

constexpr const char* keyboard = "testkbd";

class EventTapListeningTest : public EventTapFixture {
protected:
    /// A tap that listens, and the number of times that it has heard Control go down.
    struct Listening {
        explicit Listening(EventTaps& taps)
            : tap(taps, {}, keyboardMask, EventTaps::Options::listenOnly, EventTaps::Placement::tailAppend)
        {
        }
        [[nodiscard]] int controlPresses() const
        {
            int presses = 0;
            bool wasDown = false;
            for (const Event& event : tap.seen()) {
                if (event.type != EventType::flagsChanged)
                    continue;
                const bool isDown = (event.flags & control) != 0;
                presses += isDown && !wasDown ? 1 : 0;
                wasDown = isDown;
            }
            return presses;
        }
        LambdaTap tap;
    };
};

TEST_F(EventTapListeningTest, AnotherClientCanStillTakeTheKeyboardAndThereIsNoThread)
{
    const auto before = threadsSince();
    Listening listening(taps);
    ASSERT_NE(listening.tap.tap(), nullptr);
    EXPECT_TRUE(threadsSince(before).isEmpty());
    EXPECT_FALSE(other.isFloating(keyboard));
    OtherClient rival;
    EXPECT_TRUE(rival.grabDevice(keyboard));
}

TEST_F(EventTapListeningTest, ADoubleTapOfControlIsHeard)
{
    Listening listening(taps);
    hardware.tap(key::controlL);
    hardware.tap(key::controlL);
    EXPECT_TRUE(eventually(10s, [&] { return listening.tap.seen().size() == 4; }));
    EXPECT_EQ(listening.controlPresses(), 2);
    EXPECT_THAT(keysOnce(4), ElementsAre(QStringLiteral("+37"), QStringLiteral("-37/control"),
                                         QStringLiteral("+37"), QStringLiteral("-37/control")));
}

TEST_F(EventTapListeningTest, KeysAreHeardWhileAMenuOfAnotherProgramHasTheKeyboard)
{
    Listening listening(taps);
    OtherClient rival;
    ASSERT_TRUE(rival.grabKeyboard());
    hardware.tap(key::controlL);
    EXPECT_TRUE(eventually(10s, [&] { return listening.tap.seen().size() == 2; }));
    EXPECT_EQ(listening.controlPresses(), 1);
}

TEST_F(EventTapListeningTest, WhatIsHeldAndLockedWhenItBeginsIsKnown)
{
    hardware.tap(key::capsLock);
    hardware.press(key::shiftL);
    keysOnce(3);
    Listening listening(taps);
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return listening.tap.seen().size() == 2; }));
    EXPECT_EQ(listening.tap.seen()[0].flags, shift | alphaShift);
    hardware.release(key::shiftL);
    hardware.tap(key::capsLock);
    EXPECT_TRUE(eventually(10s, [&] { return other.lockedModifiers() == 0; }));
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return listening.tap.seen().size() == 7; }));
    EXPECT_EQ(listening.tap.seen()[5].flags, 0u);
}

TEST_F(EventTapListeningTest, AFilterComesAndGoesAndTheListenerMissesAndDoublesNoKey)
{
    Listening listening(taps);
    const int rounds = 20;
    std::size_t filtered = 0;
    for (int round = 0; round < rounds; ++round) {
        // Typed at every stage, without waiting for what is on its way.
        hardware.tap(key::a);
        hardware.press(key::controlL);
        auto filter = std::make_unique<LambdaTap>(taps);
        hardware.tap(key::b);
        EXPECT_TRUE(other.isFloating(keyboard));
        hardware.release(key::controlL);
        QCoreApplication::processEvents();
        hardware.tap(key::c);
        hardware.press(key::shiftL);
        filtered += filter->seen().size();
        filter.reset();
        hardware.tap(key::x);
        ASSERT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
        hardware.release(key::shiftL);
    }
    const std::size_t perRound = 12;
    EXPECT_TRUE(eventually(10s, [&] { return listening.tap.seen().size() >= rounds * perRound; }));
    ASSERT_EQ(listening.tap.seen().size(), rounds * perRound);
    // Virtual codes: A 0, Control 59, B 11, C 8, Shift 56, X 7.
    const std::int64_t expected[] = {0, 0, 59, 11, 11, 59, 8, 8, 56, 7, 7, 56};
    for (std::size_t i = 0; i < rounds * perRound; ++i) {
        const Event& event = listening.tap.seen()[i];
        ASSERT_EQ(event.keycode, expected[i % perRound]) << "at " << i;
        const bool hasControl = i % perRound >= 2 && i % perRound < 5;
        const bool hasShift = i % perRound >= 8 && i % perRound < 11;
        EXPECT_EQ(event.flags, (hasControl ? control : 0) | (hasShift ? shift : 0)) << "at " << i;
    }
    EXPECT_GT(filtered, 0u);
    EXPECT_TRUE(listening.tap.tap()->isEnabled());
}

TEST_F(EventTapListeningTest, APostedChordThatLiftsWhatTheUserHoldsIsNotHeardAsTheUsers)
{
    Listening listening(taps);
    hardware.press(key::controlL);
    hardware.press(key::superL);
    keysOnce(2);
    for (const EventType type : {EventType::keyDown, EventType::keyUp})
        taps.post(EventTaps::Location::hid, {.type = type, .flags = command, .keycode = 9});
    EXPECT_TRUE(eventually(10s, [&] { return window.keys().contains(QStringLiteral("+55/control")); }));
    hardware.release(key::superL);
    hardware.release(key::controlL);
    EXPECT_TRUE(eventually(10s, [&] { return listening.tap.seen().size() >= 6; }));
    EXPECT_EQ(listening.controlPresses(), 1);
    EXPECT_EQ(listening.tap.seen().size(), 6u);
}

TEST_F(EventTapListeningTest, AFilterThatTimesOutLeavesTheListenerListening)
{
    bool hangs = true;
    Listening listening(taps);
    LambdaTap filter(taps, [&](Event&) {
        if (std::exchange(hangs, false))
            window.waitFor(60s, [&] { return window.typed() == "a"; });
        return true;
    });
    hardware.tap(key::a);
    ASSERT_TRUE(eventually(60s, [&] { return filter.timeouts() == 1; }));
    EXPECT_FALSE(filter.tap()->isEnabled());
    EXPECT_TRUE(listening.tap.tap()->isEnabled());
    EXPECT_EQ(listening.tap.timeouts(), 0);
    hardware.tap(key::b);
    EXPECT_TRUE(eventually(10s, [&] { return listening.tap.seen().size() == 4; }));
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "ab"; })) << window.typed().data();
}

} // namespace
} // namespace orvane::tests

#include "Contract/EventTapFixture.h"
#include "Fakes/FakeEventTaps.h"

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

constexpr std::int64_t virtualA = 0, virtualB = 11;

/// A stream of events with a keyboard at its beginning and an application at its end.
class Subject {
public:
    virtual ~Subject() = default;
    virtual EventTaps& taps() = 0;
    virtual void typeA() = 0;
    /// Returns the presses of A and B that have come through, as "a" and "b".
    virtual QByteArray delivered() = 0;
    /// True while the keyboard is taken away from other programs.
    virtual bool keyboardIsHeld() = 0;
};

class FakeSubject : public Subject {
public:
    EventTaps& taps() override { return m_taps; }
    void typeA() override
    {
        m_taps.send({.type = EventType::keyDown, .keycode = virtualA});
        m_taps.send({.type = EventType::keyUp, .keycode = virtualA});
    }
    QByteArray delivered() override
    {
        QByteArray text;
        for (const Event& event : m_taps.delivered) {
            if (event.type == EventType::keyDown)
                text += event.keycode == virtualA ? 'a' : 'b';
        }
        return text;
    }
    bool keyboardIsHeld() override { return m_taps.holdsKeyboards(); }

private:
    FakeEventTaps m_taps;
};

class LinuxSubject : public Subject {
public:
    EventTaps& taps() override { return m_taps; }
    void typeA() override { m_hardware.tap(key::a); }
    QByteArray delivered() override { return m_window.typed(); }
    bool keyboardIsHeld() override { return m_other.isFloating("testkbd"); }

private:
    OtherClient m_other;
    FakeLogSink m_log;
    KeyWindow m_window;
    XInputEventTaps m_taps{m_log, [] { return CommandKeys::control; }};
    Hardware m_hardware;
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

template <typename Made>
std::unique_ptr<Subject> make()
{
    return std::make_unique<Made>();
}

} // namespace

class EventTapsContract : public ::testing::TestWithParam<Implementation> {
protected:
    EventTaps& taps() { return m_subject->taps(); }
    void typeA() { m_subject->typeA(); }
    bool keyboardIsHeld() { return m_subject->keyboardIsHeld(); }
    /// True once this comes through. To show that an event doesn't come, a test waits for a later one that
    /// does.
    bool delivers(const QByteArray& text)
    {
        return eventually(10s, [&] { return m_subject->delivered() == text; });
    }
    void postB(std::int64_t userData = 0)
    {
        for (const EventType type : {EventType::keyDown, EventType::keyUp})
            taps().post(EventTaps::Location::hid, {.type = type, .keycode = virtualB, .userData = userData});
    }

    std::unique_ptr<Subject> m_subject = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Platforms, EventTapsContract,
                         ::testing::Values(Implementation{"Fake", &make<FakeSubject>},
                                           Implementation{"Linux", &make<LinuxSubject>}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(EventTapsContract, ATapIsMadeDisabled)
{
    bool wasCalled = false;
    const auto tap = taps().tapCreate(
        EventTaps::Location::session, EventTaps::Placement::headInsert, EventTaps::Options::defaultTap,
        keyboardMask,
        [](EventType, Event&, void* flag) {
            *static_cast<bool*>(flag) = true;
            return EventTapDecision::pass;
        },
        &wasCalled);
    ASSERT_NE(tap, nullptr);
    EXPECT_FALSE(tap->isEnabled());
    tap->addToMainRunLoop();
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_FALSE(wasCalled);
}

TEST_P(EventTapsContract, AnUnattachedTapIsNotAsked)
{
    LambdaTap tap(taps());
    tap.tap()->removeFromMainRunLoop();
    EXPECT_TRUE(tap.tap()->isEnabled());
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_TRUE(tap.seen().empty());
}

TEST_P(EventTapsContract, AnEnabledTapSeesEachEventAndItGoesOn)
{
    LambdaTap tap(taps());
    EXPECT_TRUE(tap.tap()->isEnabled());
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_TRUE(eventually(10s, [&] { return tap.seen().size() == 2; }));
    EXPECT_EQ(tap.seen()[0].type, EventType::keyDown);
    EXPECT_EQ(tap.seen()[0].keycode, virtualA);
    EXPECT_EQ(tap.seen()[1].type, EventType::keyUp);
}

TEST_P(EventTapsContract, ATapSeesOnlyTheTypesOfItsMask)
{
    LambdaTap tap(taps(), {}, eventMaskBit(EventType::keyUp));
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_TRUE(eventually(10s, [&] { return !tap.seen().empty(); }));
    EXPECT_EQ(tap.seen().size(), 1u);
    EXPECT_EQ(tap.seen()[0].type, EventType::keyUp);
}

TEST_P(EventTapsContract, ARemovedEventReachesNobody)
{
    LambdaTap tap(taps(), [](Event& event) { return event.keycode != virtualA; });
    typeA();
    EXPECT_TRUE(eventually(10s, [&] { return tap.seen().size() == 2; }));
    postB();
    EXPECT_TRUE(delivers("b"));
}

TEST_P(EventTapsContract, AChangedEventGoesOnAsItWasChanged)
{
    LambdaTap tap(taps(), [](Event& event) {
        event.setIntegerValueField(EventField::keyboardEventKeycode, virtualB);
        return true;
    });
    typeA();
    EXPECT_TRUE(delivers("b"));
}

TEST_P(EventTapsContract, TheNewestTapIsAskedFirstAndItsChangesAreSeenByTheNext)
{
    std::vector<std::int64_t> order;
    LambdaTap older(taps(), [&](Event& event) {
        order.push_back(event.userData);
        return true;
    });
    LambdaTap newer(taps(), [&](Event& event) {
        order.push_back(-1);
        event.userData = 7;
        return true;
    });
    typeA();
    EXPECT_TRUE(eventually(10s, [&] { return order.size() == 4; }));
    EXPECT_EQ(order, (std::vector<std::int64_t>{-1, 7, -1, 7}));
    EXPECT_TRUE(delivers("a"));
}

TEST_P(EventTapsContract, AShortLivedTapBesideAnotherCostsThatOneNoEvent)
{
    LambdaTap lasting(taps());
    typeA();
    EXPECT_TRUE(delivers("a"));
    {
        LambdaTap brief(taps(), {}, eventMaskBit(EventType::keyDown));
        typeA();
        EXPECT_TRUE(delivers("aa"));
        EXPECT_TRUE(eventually(10s, [&] { return brief.seen().size() == 1; }));
    }
    EXPECT_TRUE(lasting.tap()->isEnabled());
    typeA();
    EXPECT_TRUE(delivers("aaa"));
    EXPECT_TRUE(eventually(10s, [&] { return lasting.seen().size() == 6; }));
}

TEST_P(EventTapsContract, ATapMayEndInTheCallbackOfTheOneBeforeIt)
{
    int calls = 0;
    auto brief = std::make_unique<LambdaTap>(taps(), [&](Event&) {
        ++calls;
        return true;
    });
    LambdaTap lasting(taps(), [&](Event&) {
        brief.reset();
        return true;
    });
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_TRUE(eventually(10s, [&] { return lasting.seen().size() == 2; }));
    EXPECT_EQ(calls, 0);
}

TEST_P(EventTapsContract, AnEventThatTheFirstTapRemovesIsNotShownToTheNext)
{
    LambdaTap older(taps());
    LambdaTap newer(taps(), [](Event&) { return false; });
    typeA();
    EXPECT_TRUE(eventually(10s, [&] { return newer.seen().size() == 2; }));
    EXPECT_TRUE(older.seen().empty());
}

TEST_P(EventTapsContract, APostedEventPassesTheTapsWithItsMark)
{
    LambdaTap tap(taps());
    postB(0x4F525641);
    EXPECT_TRUE(delivers("b"));
    ASSERT_EQ(tap.seen().size(), 2u);
    EXPECT_EQ(tap.seen()[0].integerValueField(EventField::eventSourceUserData), 0x4F525641);
}

TEST_P(EventTapsContract, APostedEventCanBeRemoved)
{
    LambdaTap tap(taps(), [](Event& event) { return event.keycode != virtualB; });
    postB();
    typeA();
    EXPECT_TRUE(delivers("a"));
}

TEST_P(EventTapsContract, PostingWorksWithoutATap)
{
    postB();
    EXPECT_TRUE(delivers("b"));
}

TEST_P(EventTapsContract, ADisabledTapIsNotAskedUntilItIsEnabledAgain)
{
    LambdaTap tap(taps());
    tap.tap()->enable(false);
    EXPECT_FALSE(tap.tap()->isEnabled());
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_TRUE(tap.seen().empty());
    tap.tap()->enable(true);
    typeA();
    EXPECT_TRUE(delivers("aa"));
    // The release of the first key may have been on its way when the tap came back.
    const auto sawSecond = [&] {
        const auto& seen = tap.seen();
        return seen.size() >= 2 && seen[seen.size() - 2].type == EventType::keyDown &&
               seen.back().type == EventType::keyUp;
    };
    EXPECT_TRUE(eventually(10s, sawSecond)) << tap.seen().size();
}

TEST_P(EventTapsContract, AnInvalidatedTapIsOverForGood)
{
    LambdaTap tap(taps());
    tap.tap()->invalidate();
    EXPECT_FALSE(tap.tap()->isEnabled());
    tap.tap()->enable(true);
    EXPECT_FALSE(tap.tap()->isEnabled());
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_TRUE(tap.seen().empty());
}

TEST_P(EventTapsContract, ATapThatEndsInItsOwnCallbackIsNotAskedAgain)
{
    std::unique_ptr<LambdaTap> tap;
    int calls = 0;
    tap = std::make_unique<LambdaTap>(taps(), [&](Event&) {
        ++calls;
        tap->tap()->invalidate();
        return true;
    });
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_TRUE(eventually(10s, [&] { return calls > 0; }));
    EXPECT_EQ(calls, 1);
}

// --- taps that only listen

constexpr auto listenOnly = EventTaps::Options::listenOnly;
constexpr auto behind = EventTaps::Placement::tailAppend;

TEST_P(EventTapsContract, AListeningTapSeesEachKeyOnceAndHoldsNoKeyboard)
{
    LambdaTap listening(taps(), {}, keyboardMask, listenOnly);
    EXPECT_TRUE(listening.tap()->isEnabled());
    EXPECT_FALSE(keyboardIsHeld());
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_TRUE(eventually(10s, [&] { return listening.seen().size() >= 2; }));
    typeA();
    EXPECT_TRUE(eventually(10s, [&] { return listening.seen().size() >= 4; }));
    ASSERT_EQ(listening.seen().size(), 4u);
    EXPECT_EQ(listening.seen()[0].type, EventType::keyDown);
    EXPECT_EQ(listening.seen()[0].keycode, virtualA);
    EXPECT_EQ(listening.seen()[1].type, EventType::keyUp);
}

TEST_P(EventTapsContract, WhatAListeningTapAnswersAndChangesCountsForNothing)
{
    const auto meddle = [](Event& event) {
        event.keycode = virtualB;
        return false;
    };
    LambdaTap alone(taps(), meddle, keyboardMask, listenOnly);
    typeA();
    EXPECT_TRUE(delivers("a"));
    LambdaTap filter(taps(), {}, keyboardMask, EventTaps::Options::defaultTap, behind);
    typeA();
    EXPECT_TRUE(delivers("aa"));
    EXPECT_TRUE(eventually(10s, [&] { return filter.seen().size() == 2; }));
    EXPECT_EQ(filter.seen()[0].keycode, virtualA);
}

TEST_P(EventTapsContract, AListeningTapBehindAnotherSeesWhatThatMakesOfAnEvent)
{
    LambdaTap listening(taps(), {}, keyboardMask, listenOnly, behind);
    LambdaTap filter(taps(), [](Event& event) {
        event.userData = 7;
        return event.type != EventType::keyUp;
    });
    typeA();
    EXPECT_TRUE(eventually(10s, [&] { return filter.seen().size() == 2; }));
    EXPECT_TRUE(delivers("a"));
    ASSERT_EQ(listening.seen().size(), 1u);
    EXPECT_EQ(listening.seen()[0].userData, 7);
}

TEST_P(EventTapsContract, TheKeyboardIsHeldOnlyWhileATapThatMayChangeEventsIsThere)
{
    LambdaTap listening(taps(), {}, keyboardMask, listenOnly);
    EXPECT_FALSE(keyboardIsHeld());
    {
        LambdaTap filter(taps());
        EXPECT_TRUE(keyboardIsHeld());
    }
    EXPECT_TRUE(eventually(10s, [&] { return !keyboardIsHeld(); }));
    EXPECT_TRUE(listening.tap()->isEnabled());
    typeA();
    EXPECT_TRUE(delivers("a"));
    EXPECT_TRUE(eventually(10s, [&] { return listening.seen().size() == 2; }));
}

TEST_P(EventTapsContract, AListeningTapSeesAPostedEventOnceWithItsMark)
{
    LambdaTap listening(taps(), {}, keyboardMask, listenOnly);
    postB(0x4F525641);
    EXPECT_TRUE(delivers("b"));
    typeA();
    EXPECT_TRUE(eventually(10s, [&] { return listening.seen().size() >= 4; }));
    ASSERT_EQ(listening.seen().size(), 4u);
    EXPECT_EQ(listening.seen()[0].integerValueField(EventField::eventSourceUserData), 0x4F525641);
    EXPECT_EQ(listening.seen()[3].keycode, virtualA);
}

TEST_P(EventTapsContract, AnEventThatIsPostedBehindATapDoesNotPassIt)
{
    const auto seen = [](EventType, Event&, void* flag) {
        *static_cast<bool*>(flag) = true;
        return EventTapDecision::pass;
    };
    bool hidSaw = false, sessionSaw = false;
    std::vector<std::unique_ptr<EventTap>> both;
    both.push_back(taps().tapCreate(EventTaps::Location::hid, EventTaps::Placement::headInsert, listenOnly,
                                    keyboardMask, seen, &hidSaw));
    both.push_back(taps().tapCreate(EventTaps::Location::session, EventTaps::Placement::headInsert,
                                    listenOnly, keyboardMask, seen, &sessionSaw));
    for (const auto& tap : both) {
        tap->addToMainRunLoop();
        tap->enable(true);
    }
    taps().post(EventTaps::Location::session, {.type = EventType::keyDown, .keycode = virtualB});
    taps().post(EventTaps::Location::session, {.type = EventType::keyUp, .keycode = virtualB});
    EXPECT_TRUE(delivers("b"));
    EXPECT_FALSE(hidSaw);
    EXPECT_TRUE(sessionSaw);
}

TEST_P(EventTapsContract, WithoutTapsEverythingGoesOn)
{
    {
        LambdaTap tap(taps());
    }
    typeA();
    EXPECT_TRUE(delivers("a"));
}

} // namespace orvane::tests

// A recorder's decision about each event, in the order of its questions.
#include "KeyboardShortcuts/Recorder/RecorderDecision.h"
#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace orvane;
using namespace orvane::KeyboardShortcuts;
using Deed = RecorderDecision::Deed;

namespace flag = orvane::eventFlag;

/// A code beyond the virtual ones, as the platform gives it to a key without.
constexpr std::int64_t printScreen = 0x106B;

class RecorderDecisionTest : public ::testing::Test {
protected:
    FakePlatform fake;
    std::optional<QString> menuItem;
    bool usedBySystem = false;
    QStringList asked;

    RecorderDecision decideFor(const EventMonitors::MonitoredEvent& event)
    {
        return decide(event, {.bounds = QRectF(100, 50, 130, 28),
                              .isNamed = [](std::int64_t code) { return code == printScreen; },
                              .menuItemTitle =
                                  [this](const Shortcut& shortcut) {
                                      asked.append(QStringLiteral("menu ") + shortcut.description());
                                      return menuItem;
                                  },
                              .isUsedBySystem =
                                  [this](const Shortcut& shortcut) {
                                      asked.append(QStringLiteral("system ") + shortcut.description());
                                      return usedBySystem;
                                  }});
    }
    RecorderDecision repeat(Key code, EventFlags flags = 0) { return key(code, flags, 1); }
    RecorderDecision key(Key code, EventFlags flags = 0, std::int64_t autorepeat = 0)
    {
        EventMonitors::MonitoredEvent monitored;
        monitored.event.type = EventType::keyDown;
        monitored.event.flags = flags;
        monitored.event.keycode = rawValue(code);
        monitored.event.autorepeat = autorepeat;
        // The place of the pointer doesn't matter.
        monitored.location = {-1000, -1000};
        return decideFor(monitored);
    }
    Deed mouse(EventType type, double x, double y)
    {
        EventMonitors::MonitoredEvent monitored;
        monitored.event.type = type;
        monitored.location = {x, y};
        return decideFor(monitored).deed;
    }
    static RecorderDecision accepted(Key code, EventFlags flags)
    {
        return {Deed::accept, Shortcut(code, flags)};
    }
};

TEST_F(RecorderDecisionTest, WatchesKeysGoingDownAndBothMouseButtonsGoingUp)
{
    EXPECT_EQ(recorderEvents, EventMask{0x414});
}

TEST_F(RecorderDecisionTest, AMouseButtonLetGoOutsideLeavesAndOneInsideIsIgnored)
{
    for (const EventType type : {EventType::leftMouseUp, EventType::rightMouseUp}) {
        EXPECT_EQ(mouse(type, 165, 64), Deed::ignore);
        EXPECT_EQ(mouse(type, 500, 64), Deed::leave);
        EXPECT_EQ(mouse(type, 165, 300), Deed::leave);
    }
}

TEST_F(RecorderDecisionTest, InsideReachesThreePointsFurtherOnEverySide)
{
    const auto up = EventType::leftMouseUp;
    EXPECT_EQ(mouse(up, 97.5, 64), Deed::ignore);
    EXPECT_EQ(mouse(up, 96.5, 64), Deed::leave);
    EXPECT_EQ(mouse(up, 232.5, 64), Deed::ignore);
    EXPECT_EQ(mouse(up, 233.5, 64), Deed::leave);
    EXPECT_EQ(mouse(up, 165, 47.5), Deed::ignore);
    EXPECT_EQ(mouse(up, 165, 46.5), Deed::leave);
    EXPECT_EQ(mouse(up, 165, 80.5), Deed::ignore);
    EXPECT_EQ(mouse(up, 165, 81.5), Deed::leave);
}

TEST_F(RecorderDecisionTest, WhatIsNoKeyIsIgnored)
{
    EventMonitors::MonitoredEvent monitored;
    monitored.event.type = EventType::scrollWheel;
    EXPECT_EQ(decideFor(monitored).deed, Deed::ignore);
}

TEST_F(RecorderDecisionTest, TabAloneLeaves)
{
    EXPECT_EQ(key(Key::tab), RecorderDecision{Deed::leave});
    EXPECT_EQ(key(Key::tab, flag::shift).deed, Deed::refuse) << "no modifier, but not alone either";
    EXPECT_EQ(key(Key::tab, flag::control), accepted(Key::tab, flag::control));
}

TEST_F(RecorderDecisionTest, EscapeAloneCancels)
{
    EXPECT_EQ(key(Key::escape), RecorderDecision{Deed::cancel});
    EXPECT_EQ(key(Key::escape, flag::shift).deed, Deed::refuse);
    EXPECT_EQ(key(Key::escape, flag::command), accepted(Key::escape, flag::command));
}

TEST_F(RecorderDecisionTest, DeleteAloneClears)
{
    EXPECT_EQ(key(Key::delete_), RecorderDecision{Deed::clear});
    EXPECT_EQ(key(Key::deleteForward), RecorderDecision{Deed::clear});
    EXPECT_EQ(key(Key::deleteForward, flag::secondaryFn), RecorderDecision{Deed::clear});
}

TEST_F(RecorderDecisionTest, DeleteWithAModifierIsAKeyLikeAnother)
{
    EXPECT_EQ(key(Key::delete_, flag::command), accepted(Key::delete_, flag::command));
    EXPECT_EQ(key(Key::deleteForward, flag::option | flag::secondaryFn),
              accepted(Key::deleteForward, flag::option));
    EXPECT_EQ(key(Key::delete_, flag::shift).deed, Deed::refuse);
}

TEST_F(RecorderDecisionTest, LocksAndTheFlagsOfKeysAreNoModifiers)
{
    const EventFlags unheld = flag::alphaShift | flag::numericPad | flag::secondaryFn;
    EXPECT_EQ(key(Key::tab, unheld), RecorderDecision{Deed::leave});
    EXPECT_EQ(key(Key::escape, unheld), RecorderDecision{Deed::cancel});
    EXPECT_EQ(key(Key::delete_, unheld), RecorderDecision{Deed::clear});
    EXPECT_EQ(key(Key::a, unheld).deed, Deed::refuse);
    EXPECT_EQ(key(Key::keypad5, flag::numericPad).deed, Deed::refuse);
    EXPECT_EQ(key(Key::upArrow, flag::numericPad | flag::secondaryFn).deed, Deed::refuse);
}

TEST_F(RecorderDecisionTest, BitsBelowTheModifiersAreOfNoAccount)
{
    // These bits tell the left and the right key of a modifier apart.
    EXPECT_EQ(key(Key::tab, 0x100), RecorderDecision{Deed::leave});
    EXPECT_EQ(key(Key::a, 0x0001).deed, Deed::refuse);
}

TEST_F(RecorderDecisionTest, ALetterNeedsMoreThanShift)
{
    EXPECT_EQ(key(Key::a).deed, Deed::refuse);
    EXPECT_EQ(key(Key::a, flag::shift).deed, Deed::refuse);
    EXPECT_EQ(key(Key::a, flag::shift | flag::alphaShift).deed, Deed::refuse);
    for (const EventFlags modifier : {flag::control, flag::option, flag::command}) {
        EXPECT_EQ(key(Key::a, modifier), accepted(Key::a, modifier));
        EXPECT_EQ(key(Key::a, modifier | flag::shift), accepted(Key::a, modifier | flag::shift));
    }
}

TEST_F(RecorderDecisionTest, FunctionKeysAreTakenAloneAndWithShift)
{
    const std::vector<Key> keys = {Key::f1,  Key::f2,  Key::f3,  Key::f4,  Key::f5,  Key::f6,  Key::f7,
                                   Key::f8,  Key::f9,  Key::f10, Key::f11, Key::f12, Key::f13, Key::f14,
                                   Key::f15, Key::f16, Key::f17, Key::f18, Key::f19, Key::f20};
    for (const Key code : keys) {
        EXPECT_EQ(key(code, flag::secondaryFn), accepted(code, 0)) << rawValue(code);
        EXPECT_EQ(key(code, flag::shift | flag::secondaryFn), accepted(code, flag::shift)) << rawValue(code);
    }
    for (const Key code : {Key::home, Key::pageUp, Key::help, Key::space, Key::return_})
        EXPECT_EQ(key(code, flag::secondaryFn).deed, Deed::refuse) << rawValue(code);
}

TEST_F(RecorderDecisionTest, PrintScreenAndTheKeysOfSoundAreTakenAloneAndWithModifiers)
{
    for (const Key code : {Key{printScreen}, Key::mute, Key::volumeUp, Key::volumeDown}) {
        EXPECT_EQ(key(code), accepted(code, 0)) << rawValue(code);
        EXPECT_EQ(key(code, flag::shift), accepted(code, flag::shift)) << rawValue(code);
        EXPECT_EQ(key(code, flag::control), accepted(code, flag::control)) << rawValue(code);
    }
}

TEST_F(RecorderDecisionTest, AChordWithAKeyThatChoosesCharactersIsRefused)
{
    EventMonitors::MonitoredEvent monitored;
    monitored.event.type = EventType::keyDown;
    monitored.event.keycode = rawValue(Key::f5);
    monitored.choosesCharacter = true;
    EXPECT_EQ(decideFor(monitored).deed, Deed::refuse);
    monitored.event.flags = flag::control;
    EXPECT_EQ(decideFor(monitored).deed, Deed::refuse);
    monitored.choosesCharacter = false;
    EXPECT_EQ(decideFor(monitored).deed, Deed::accept);
}

TEST_F(RecorderDecisionTest, AKeyThatNobodyKnowsIsRefused)
{
    // Codes of the platform's own for keys without a name, and meaningless ones.
    for (const std::int64_t code : {std::int64_t{0x80}, std::int64_t{0x1070}, std::int64_t{-1}})
        EXPECT_EQ(key(Key{code}, flag::control).deed, Deed::refuse) << code;
    EXPECT_EQ(key(Key{0x7F}, flag::control).deed, Deed::accept);
    EXPECT_EQ(asked, (QStringList{QStringLiteral("menu ⌃\uFFFD"), QStringLiteral("system ⌃\uFFFD")}));
}

TEST_F(RecorderDecisionTest, ARepeatIsNoPressExceptThatTabGoesOnMoving)
{
    EXPECT_EQ(repeat(Key::k, flag::command).deed, Deed::ignore);
    EXPECT_EQ(repeat(Key::a, flag::shift).deed, Deed::ignore);
    EXPECT_EQ(repeat(Key::escape).deed, Deed::ignore);
    EXPECT_EQ(repeat(Key::delete_).deed, Deed::ignore);
    EXPECT_EQ(repeat(Key::tab).deed, Deed::leave);
    EXPECT_EQ(asked, QStringList());
}

TEST_F(RecorderDecisionTest, TakesTheModifiersAndNotTheLocks)
{
    EXPECT_EQ(key(Key::k, flag::command | flag::alphaShift | flag::numericPad | 0x108),
              accepted(Key::k, flag::command));
}

TEST_F(RecorderDecisionTest, WhatAMenuItemHasIsRefusedByItsTitle)
{
    menuItem = QStringLiteral("Quit Orvane");
    usedBySystem = true;
    const RecorderDecision decision = key(Key::q, flag::command);
    EXPECT_EQ(decision, (RecorderDecision{Deed::refuseForMenuItem, Shortcut(Key::q, flag::command),
                                          QStringLiteral("Quit Orvane")}));
    EXPECT_EQ(asked, QStringList{QStringLiteral("menu ⌘Q")}) << "and the system isn't asked";
}

TEST_F(RecorderDecisionTest, WhatTheSystemHasIsRefusedAfterTheMenuWasAsked)
{
    usedBySystem = true;
    EXPECT_EQ(key(Key::tab, flag::option).deed, Deed::refuseForSystem);
    EXPECT_EQ(asked, (QStringList{QStringLiteral("menu ⌥⇥"), QStringLiteral("system ⌥⇥")}));
}

TEST_F(RecorderDecisionTest, NobodyIsAskedAboutWhatCanNotBeAShortcut)
{
    key(Key::a, flag::shift);
    key(Key::escape);
    key(Key::tab);
    key(Key::delete_);
    mouse(EventType::leftMouseUp, 165, 64);
    EXPECT_EQ(asked, QStringList());
}

} // namespace

#include "PlatformLinux/EventTap/InjectorModel.h"

#include <gtest/gtest.h>

#include <X11/keysym.h>

#include <functional>
#include <string>
#include <vector>

namespace orvane::tests {
namespace {

using namespace eventFlag;

// Keys of a PC keyboard by their X key codes.
constexpr std::uint8_t keyA = 38, keyC = 54, keyV = 55, keyX = 53, escape = 9;
constexpr std::uint8_t controlL = 37, controlR = 105, shiftL = 50, shiftR = 62, altL = 64, superL = 133;
constexpr std::uint8_t altGr = 108, capsLock = 66, scrollLock = 78;
constexpr std::int64_t virtualC = 8, virtualV = 9, virtualEscape = 53;

struct NamedKey {
    std::uint8_t key;
    const char* name;
    std::uint32_t keysym;
};
constexpr NamedKey namedKeys[] = {
    {keyA, "A", XK_a},
    {keyC, "C", XK_c},
    {keyV, "V", XK_v},
    {keyX, "X", XK_x},
    {escape, "Esc", XK_Escape},
    {controlL, "Ctrl", XK_Control_L},
    {controlR, "CtrlR", XK_Control_R},
    {shiftL, "Shift", XK_Shift_L},
    {shiftR, "ShiftR", XK_Shift_R},
    {altL, "Alt", XK_Alt_L},
    {superL, "Super", XK_Super_L},
    {altGr, "AltGr", XK_ISO_Level3_Shift},
    {capsLock, "Caps", XK_Caps_Lock},
    {scrollLock, "Scroll", XK_Scroll_Lock},
};

ModifierRoles pcRoles()
{
    std::vector<std::uint32_t> keysyms(256 - 8);
    for (const NamedKey& named : namedKeys)
        keysyms[named.key - 8u] = named.keysym;
    return ModifierRoles::fromKeysyms(8, 1, keysyms);
}

std::string text(const KeyActions& actions)
{
    std::string text;
    for (const KeyAction& action : actions) {
        std::string name = std::to_string(action.key);
        for (const NamedKey& named : namedKeys) {
            if (named.key == action.key)
                name = named.name;
        }
        text += (text.empty() ? "" : " ") + std::string(action.motion == KeyMotion::release ? "-" : "+") +
                name + (action.seat == KeySeat::hardware ? "(hardware)" : "");
    }
    return text;
}

using Subscriber = std::function<bool(Event&)>;

bool passAll(Event&)
{
    return true;
}

/// Exchanges Control and Command in every event.
bool fullSwap(Event& event)
{
    const bool hasControl = (event.flags & control) != 0;
    const bool hasCommand = (event.flags & command) != 0;
    if (hasControl != hasCommand)
        event.flags ^= control | command;
    return true;
}

/// Control+C becomes Command+C.
bool controlCIsCommandC(Event& event)
{
    if (event.keycode == virtualC && (event.flags & control) != 0)
        event.flags ^= control | command;
    return true;
}

/// Super+C becomes Control+C.
bool superCIsControlC(Event& event)
{
    if (event.keycode == virtualC && (event.flags & command) != 0)
        event.flags ^= control | command;
    return true;
}

class InjectorModelTest : public ::testing::Test {
protected:
    InjectorModelTest() { model.setRoles(pcRoles()); }

    std::string move(std::uint8_t key, KeyMotion motion)
    {
        const Event observed = model.observe({key, motion}, 1);
        InjectorModel::Passage passage{{key, motion}, observed, observed};
        passage.decision = subscriber(passage.answer) ? EventTapDecision::pass : EventTapDecision::consume;
        seen.push_back(observed);
        KeyActions actions;
        model.inject(passage, commandKeys, actions);
        return text(actions);
    }
    std::string press(std::uint8_t key) { return move(key, KeyMotion::press); }
    std::string release(std::uint8_t key) { return move(key, KeyMotion::release); }
    std::string repeat(std::uint8_t key) { return move(key, KeyMotion::repeat); }

    std::string post(EventType type, std::int64_t keycode, EventFlags flags)
    {
        Event event;
        event.type = type;
        event.keycode = keycode;
        event.flags = flags;
        KeyActions actions;
        model.post(event, commandKeys, actions);
        return text(actions);
    }

    std::string releaseAll()
    {
        KeyActions actions;
        model.releaseAll(actions);
        return text(actions);
    }

    InjectorModel model{InjectorModel::Devices::grabbed};
    Subscriber subscriber = passAll;
    CommandKeys commandKeys = CommandKeys::control;
    std::vector<Event> seen;
};

// --- what the taps see

TEST_F(InjectorModelTest, AKeyIsAKeyDownAndAKeyUpWithItsVirtualCode)
{
    press(keyC);
    release(keyC);
    EXPECT_EQ(seen[0].type, EventType::keyDown);
    EXPECT_EQ(seen[0].keycode, virtualC);
    EXPECT_EQ(seen[0].autorepeat, 0);
    EXPECT_EQ(seen[0].timestamp, 1u);
    EXPECT_EQ(seen[1].type, EventType::keyUp);
}

TEST_F(InjectorModelTest, ARepeatIsAKeyDownThatSaysSo)
{
    press(keyC);
    repeat(keyC);
    EXPECT_EQ(seen[1].type, EventType::keyDown);
    EXPECT_EQ(seen[1].autorepeat, 1);
}

TEST_F(InjectorModelTest, AModifierChangesTheFlagsAndShowsThemAsTheyAreAfterwards)
{
    press(controlL);
    press(controlR);
    release(controlL);
    release(controlR);
    for (const Event& event : seen)
        EXPECT_EQ(event.type, EventType::flagsChanged);
    EXPECT_EQ(seen[0].flags, control);
    EXPECT_EQ(seen[1].flags, control);
    EXPECT_EQ(seen[2].flags, control) << "the right one is still held";
    EXPECT_EQ(seen[3].flags, 0u);
}

TEST_F(InjectorModelTest, EachModifierHasItsFlag)
{
    press(shiftR);
    press(controlR);
    press(altL);
    press(superL);
    press(altGr);
    press(keyA);
    EXPECT_EQ(seen.back().flags, shift | control | option | command);
    EXPECT_EQ(seen.back().type, EventType::keyDown);
}

TEST_F(InjectorModelTest, CapsLockIsInTheFlagsFromItsPressToTheSecondRelease)
{
    press(capsLock);
    EXPECT_EQ(seen.back().flags, alphaShift);
    EXPECT_EQ(seen.back().type, EventType::flagsChanged);
    release(capsLock);
    EXPECT_EQ(seen.back().flags, alphaShift);
    press(keyA);
    EXPECT_EQ(seen.back().flags, alphaShift);
    press(capsLock);
    EXPECT_EQ(seen.back().flags, alphaShift);
    release(capsLock);
    EXPECT_EQ(seen.back().flags, 0u);
}

TEST_F(InjectorModelTest, ARemovedCapsLockLocksNothing)
{
    subscriber = [](Event&) { return false; };
    EXPECT_EQ(press(capsLock), "");
    EXPECT_EQ(release(capsLock), "");
    EXPECT_EQ(model.flags(), 0u);
}

TEST_F(InjectorModelTest, AKeyWithoutAVirtualCodePassesUnderOneOfItsOwn)
{
    EXPECT_EQ(press(scrollLock), "+Scroll");
    EXPECT_EQ(release(scrollLock), "-Scroll");
    EXPECT_EQ(seen[0].keycode, 0x1000 + scrollLock);
}

// --- unchanged events

TEST_F(InjectorModelTest, UnchangedKeysGoOnAsTheyCame)
{
    EXPECT_EQ(press(shiftR), "+ShiftR");
    EXPECT_EQ(press(keyA), "+A");
    EXPECT_EQ(release(shiftR), "-ShiftR");
    EXPECT_EQ(release(keyA), "-A");
    EXPECT_EQ(press(altGr), "+AltGr");
    EXPECT_EQ(press(keyC), "+C");
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(release(altGr), "-AltGr");
    EXPECT_EQ(press(capsLock), "+Caps");
    EXPECT_EQ(release(capsLock), "-Caps");
}

TEST_F(InjectorModelTest, ALoneSuperGoesOnAsALoneTap)
{
    EXPECT_EQ(press(superL), "+Super");
    EXPECT_EQ(release(superL), "-Super");
}

TEST_F(InjectorModelTest, RepeatsAreLeftToTheXTestKeyboard)
{
    press(keyA);
    EXPECT_EQ(repeat(keyA), "");
    EXPECT_EQ(repeat(keyA), "");
    EXPECT_EQ(release(keyA), "-A");
}

TEST_F(InjectorModelTest, TheReleaseOfAKeyThatWasPressedBeforeTheGrabGoesOut)
{
    KeySet held;
    held.set(keyA).set(shiftL);
    model.setHeld(held);
    press(keyC);
    EXPECT_EQ(seen.back().flags, shift);
    EXPECT_EQ(release(shiftL), "-Shift");
    EXPECT_EQ(release(keyA), "-A");
}

TEST_F(InjectorModelTest, TheReleaseOfAKeyThatNobodyKnewOfGoesOut)
{
    EXPECT_EQ(release(keyA), "-A");
    EXPECT_EQ(release(shiftL), "-Shift");
}

// --- removed events

TEST_F(InjectorModelTest, ARemovedPressKeepsItsRepeatsAndItsReleaseBack)
{
    subscriber = [](Event& event) { return event.type != EventType::keyDown || event.autorepeat != 0; };
    EXPECT_EQ(press(keyX), "");
    EXPECT_EQ(repeat(keyX), "");
    EXPECT_EQ(release(keyX), "");
    EXPECT_EQ(seen.size(), 3u) << "the taps see them all";
}

TEST_F(InjectorModelTest, AKeyThatWentDownComesUpThoughItsReleaseIsRemoved)
{
    subscriber = [](Event& event) { return event.type != EventType::keyUp; };
    EXPECT_EQ(press(keyX), "+X");
    EXPECT_EQ(release(keyX), "-X");
}

TEST_F(InjectorModelTest, AModifierThatWentDownComesUpThoughItsReleaseIsRemoved)
{
    press(controlL);
    subscriber = [](Event&) { return false; };
    EXPECT_EQ(release(controlL), "-Ctrl");
}

TEST_F(InjectorModelTest, ARemovedRepeatEndsTheRepeating)
{
    press(keyX);
    subscriber = [](Event& event) { return event.autorepeat == 0; };
    EXPECT_EQ(repeat(keyX), "-X");
    EXPECT_EQ(repeat(keyX), "");
    EXPECT_EQ(release(keyX), "");
}

TEST_F(InjectorModelTest, ARemovedModifierIsInTheFlagsButNotInTheChordsOfTheApplications)
{
    subscriber = [](Event& event) { return event.type != EventType::flagsChanged; };
    EXPECT_EQ(press(superL), "");
    EXPECT_EQ(press(keyA), "+A");
    EXPECT_EQ(seen.back().flags, command);
    EXPECT_EQ(release(keyA), "-A");
    EXPECT_EQ(release(superL), "");
}

// --- rewritten events

TEST_F(InjectorModelTest, SuperCRewrittenToControlPressesControlBeforeItLetsSuperGo)
{
    subscriber = superCIsControlC;
    EXPECT_EQ(press(superL), "+Super");
    EXPECT_EQ(press(keyC), "+Ctrl -Super +C");
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(press(keyC), "+C") << "the next one finds Control down";
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(release(superL), "-Ctrl") << "and no Super, whose tap would open a menu";
}

TEST_F(InjectorModelTest, AnUnchangedKeyAfterARewrittenOneGetsThePhysicalModifiersBack)
{
    subscriber = superCIsControlC;
    press(superL);
    press(keyC);
    release(keyC);
    EXPECT_EQ(press(keyA), "+Super -Ctrl +A");
    EXPECT_EQ(release(keyA), "-A");
    EXPECT_EQ(release(superL), "-Super");
}

TEST_F(InjectorModelTest, ControlCRewrittenToCommandIsControlCInMostApplications)
{
    subscriber = controlCIsCommandC;
    EXPECT_EQ(press(controlR), "+CtrlR");
    EXPECT_EQ(press(keyC), "+C") << "with the Control that is held anyway";
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(release(controlR), "-CtrlR");
}

TEST_F(InjectorModelTest, ControlCRewrittenToCommandIsControlShiftCInATerminal)
{
    subscriber = controlCIsCommandC;
    commandKeys = CommandKeys::controlShift;
    EXPECT_EQ(press(controlL), "+Ctrl");
    EXPECT_EQ(press(keyC), "+Shift +C");
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(release(controlL), "-Ctrl -Shift");
}

TEST_F(InjectorModelTest, TheModifiersOfARewrittenChordMayBeLetGoBeforeItsKey)
{
    subscriber = controlCIsCommandC;
    commandKeys = CommandKeys::controlShift;
    press(controlL);
    press(keyC);
    EXPECT_EQ(release(controlL), "-Ctrl -Shift");
    EXPECT_EQ(release(keyC), "-C");
}

TEST_F(InjectorModelTest, FlagsThatNoHeldModifierStandsBehindEndWithTheirKey)
{
    subscriber = [](Event& event) {
        event.flags |= option;
        return true;
    };
    EXPECT_EQ(press(keyA), "+Alt +A");
    EXPECT_EQ(release(keyA), "-A -Alt");
}

TEST_F(InjectorModelTest, ASuperThatIsTakenOffAKeyIsNoLoneTap)
{
    subscriber = [](Event& event) {
        if (event.type == EventType::keyDown)
            event.flags &= ~command;
        return true;
    };
    EXPECT_EQ(press(superL), "+Super");
    EXPECT_EQ(press(keyA), "+Ctrl -Ctrl -Super +A");
    EXPECT_EQ(release(keyA), "-A");
    EXPECT_EQ(release(superL), "");
}

TEST_F(InjectorModelTest, TheThirdLevelStaysInARewrittenChord)
{
    subscriber = superCIsControlC;
    press(altGr);
    press(superL);
    EXPECT_EQ(press(keyC), "+Ctrl -Super +C");
    release(keyC);
    EXPECT_EQ(release(superL), "-Ctrl");
    EXPECT_EQ(release(altGr), "-AltGr");
}

TEST_F(InjectorModelTest, UnderTheFullSwapEachKeyActsForTheOther)
{
    subscriber = fullSwap;
    EXPECT_EQ(press(controlL), "+Super");
    EXPECT_EQ(press(keyC), "+C");
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(release(controlL), "-Super");
    EXPECT_EQ(press(superL), "+Ctrl");
    EXPECT_EQ(press(keyC), "+C");
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(release(superL), "-Ctrl");
}

TEST_F(InjectorModelTest, UnderTheFullSwapALoneTapActsForTheOtherKeyToo)
{
    subscriber = fullSwap;
    EXPECT_EQ(press(superL), "+Ctrl");
    EXPECT_EQ(release(superL), "-Ctrl");
    EXPECT_EQ(press(controlR), "+Super");
    EXPECT_EQ(release(controlR), "-Super") << "with nothing in between, or it would open no menu";
}

TEST_F(InjectorModelTest, UnderTheFullSwapFurtherModifiersComeAndGo)
{
    subscriber = fullSwap;
    EXPECT_EQ(press(controlL), "+Super");
    EXPECT_EQ(press(altL), "+Alt");
    EXPECT_EQ(press(keyC), "+C");
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(release(altL), "-Alt");
    EXPECT_EQ(press(keyA), "+A");
    EXPECT_EQ(release(keyA), "-A");
    EXPECT_EQ(release(controlL), "-Super");
}

TEST_F(InjectorModelTest, UnderTheFullSwapATerminalGetsTheSameKeys)
{
    subscriber = fullSwap;
    commandKeys = CommandKeys::controlShift;
    EXPECT_EQ(press(superL), "+Ctrl");
    EXPECT_EQ(press(keyC), "+C");
    EXPECT_EQ(release(superL), "-Ctrl");
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(press(controlL), "+Super");
    EXPECT_EQ(press(keyC), "+C");
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(release(controlL), "-Super");
}

TEST_F(InjectorModelTest, UnderTheFullSwapBothHeldStayBoth)
{
    subscriber = fullSwap;
    EXPECT_EQ(press(controlL), "+Super");
    EXPECT_EQ(press(superL), "+Ctrl");
    EXPECT_EQ(press(keyA), "+A");
    EXPECT_EQ(release(keyA), "-A");
    EXPECT_EQ(release(controlL), "-Super") << "what is left is Super alone, which means control";
    EXPECT_EQ(release(superL), "-Ctrl");
    press(superL);
    press(controlL);
    EXPECT_EQ(release(superL), "-Ctrl") << "what is left is Control alone, which means Super";
    EXPECT_EQ(release(controlL), "-Super");
}

TEST_F(InjectorModelTest, UnderTheFullSwapAPostedCommandIsTheApplicationsAndTheHeldKeyActsOnAfterwards)
{
    subscriber = fullSwap;
    EXPECT_EQ(press(controlL), "+Super");
    EXPECT_EQ(press(keyA), "+A");
    EXPECT_EQ(release(keyA), "-A");
    EXPECT_EQ(post(EventType::keyDown, virtualV, command), "+Ctrl -Super +V");
    EXPECT_EQ(post(EventType::keyUp, virtualV, command), "-V +Super -Ctrl");
    EXPECT_EQ(release(controlL), "-Super");
}

TEST_F(InjectorModelTest, UnderTheFullSwapAKeyThatActsAsSuperIsNoLoneTapAtTheEnd)
{
    subscriber = fullSwap;
    EXPECT_EQ(press(controlL), "+Super");
    EXPECT_EQ(releaseAll(), "+Ctrl -Ctrl -Super");
}

TEST_F(InjectorModelTest, AnUnchangedKeyUnderAModifierThatActsForAnotherGetsThePhysicalOne)
{
    subscriber = [](Event& event) { return event.type != EventType::flagsChanged || fullSwap(event); };
    EXPECT_EQ(press(controlL), "+Super");
    EXPECT_EQ(press(keyC), "+Ctrl -Super +C");
    EXPECT_EQ(release(keyC), "-C");
    EXPECT_EQ(release(controlL), "-Ctrl");
}

TEST_F(InjectorModelTest, TheApplicationInFrontMayChangeBetweenTheModifierAndTheKey)
{
    subscriber = controlCIsCommandC;
    EXPECT_EQ(press(controlL), "+Ctrl");
    commandKeys = CommandKeys::controlShift;
    EXPECT_EQ(press(keyC), "+Shift +C");
    release(keyC);
    EXPECT_EQ(release(controlL), "-Ctrl -Shift");
}

TEST_F(InjectorModelTest, AnotherKeyCodeIsPressedAndReleasedInTheKeysPlace)
{
    subscriber = [](Event& event) {
        if (event.type != EventType::keyUp && event.keycode == virtualC)
            event.keycode = virtualEscape;
        return true;
    };
    EXPECT_EQ(press(keyC), "+Esc");
    EXPECT_EQ(release(keyC), "-Esc");
}

// --- posted events

TEST_F(InjectorModelTest, APostedCommandVPastes)
{
    EXPECT_EQ(post(EventType::keyDown, virtualV, command), "+Ctrl +V");
    EXPECT_EQ(post(EventType::keyUp, virtualV, command), "-V -Ctrl");
}

TEST_F(InjectorModelTest, APostedCommandVPastesInATerminal)
{
    commandKeys = CommandKeys::controlShift;
    EXPECT_EQ(post(EventType::keyDown, virtualV, command), "+Ctrl +Shift +V");
    EXPECT_EQ(post(EventType::keyUp, virtualV, command), "-V -Ctrl -Shift");
}

TEST_F(InjectorModelTest, HeldModifiersAreLiftedForAPostedChordAndPutBack)
{
    press(superL);
    press(altGr);
    EXPECT_EQ(post(EventType::keyDown, virtualV, command), "+Ctrl -AltGr -Super +V");
    EXPECT_EQ(post(EventType::keyUp, virtualV, command), "-V +AltGr +Super -Ctrl");
    EXPECT_EQ(release(superL), "-Super");
    EXPECT_EQ(release(altGr), "-AltGr");
}

TEST_F(InjectorModelTest, ALiftedSuperIsNoLoneTapWhenItIsPutBackAlone)
{
    press(superL);
    EXPECT_EQ(post(EventType::keyDown, virtualV, 0), "+Ctrl -Ctrl -Super +V");
    EXPECT_EQ(post(EventType::keyUp, virtualV, 0), "-V +Super +Ctrl -Ctrl");
}

TEST_F(InjectorModelTest, APostedKeyThatTheUserHoldsIsPressedAnewAndComesUpOnce)
{
    press(keyV);
    EXPECT_EQ(post(EventType::keyDown, virtualV, command), "+Ctrl -V +V");
    EXPECT_EQ(post(EventType::keyUp, virtualV, command), "-V -Ctrl");
    EXPECT_EQ(release(keyV), "");
}

TEST_F(InjectorModelTest, APostedReleaseOfAKeyThatIsUpDoesNothing)
{
    EXPECT_EQ(post(EventType::keyUp, virtualV, command), "");
}

TEST_F(InjectorModelTest, APostedCodeThatIsNoKeysDoesNothing)
{
    EXPECT_EQ(post(EventType::keyDown, 0xFFFF, command), "");
    EXPECT_EQ(post(EventType::keyDown, -1, 0), "");
}

TEST_F(InjectorModelTest, OnFreeDevicesHeldModifiersAreLiftedOnTheHardware)
{
    InjectorModel onFree(InjectorModel::Devices::free);
    onFree.setRoles(pcRoles());
    KeySet held;
    held.set(superL).set(keyV);
    onFree.setHeld(held);
    Event event;
    event.type = EventType::keyDown;
    event.keycode = virtualV;
    event.flags = command;
    KeyActions down;
    KeyActions up;
    onFree.post(event, CommandKeys::control, down);
    event.type = EventType::keyUp;
    onFree.post(event, CommandKeys::control, up);
    EXPECT_EQ(text(down), "+Ctrl -Super(hardware) -V(hardware) +V");
    EXPECT_EQ(text(up), "-V +Super(hardware) -Ctrl");
}

// --- the end

TEST_F(InjectorModelTest, AtTheEndEverythingIsLetGoModifiersLast)
{
    press(shiftL);
    press(controlL);
    press(keyA);
    press(keyC);
    EXPECT_EQ(releaseAll(), "-A -C -Ctrl -Shift");
    EXPECT_EQ(releaseAll(), "");
}

TEST_F(InjectorModelTest, AtTheEndBorrowedAndPostedKeysAreLetGoToo)
{
    subscriber = superCIsControlC;
    press(superL);
    press(keyC);
    post(EventType::keyDown, virtualV, 0);
    EXPECT_EQ(releaseAll(), "-C -V");
    EXPECT_EQ(model.held(), KeySet());
}

TEST_F(InjectorModelTest, ASuperThatIsHeldAtTheEndIsNoLoneTap)
{
    press(superL);
    EXPECT_EQ(releaseAll(), "+Ctrl -Ctrl -Super");
}

/// After any sequence of keys, whatever the taps do with them, nothing is pressed once all keys are up.
TEST_F(InjectorModelTest, NothingStaysPressedWhateverHappens)
{
    std::uint32_t state = 12345;
    const auto random = [&state](std::uint32_t below) {
        state = state * 1664525 + 1013904223;
        return (state >> 8) % below;
    };
    constexpr std::uint8_t keys[] = {keyA,   keyC, keyV,   controlL, controlR,
                                     shiftL, altL, superL, altGr,    capsLock};
    subscriber = [&](Event& event) {
        constexpr EventFlags flags[] = {shift, control, option, command};
        if (random(4) == 0)
            event.flags ^= flags[random(4)];
        if (random(16) == 0)
            event.keycode = random(0x80);
        return random(5) != 0;
    };
    KeySet physical;
    KeySet pressed;
    const auto apply = [&](const KeyActions& actions) {
        for (const KeyAction& action : actions) {
            ASSERT_NE(pressed.test(action.key), action.motion == KeyMotion::press)
                << "a key is pressed twice or released twice: " << text(actions);
            pressed.flip(action.key);
        }
    };
    const auto move = [&](std::uint8_t key, KeyMotion motion) {
        const Event observed = model.observe({key, motion}, 0);
        InjectorModel::Passage passage{{key, motion}, observed, observed};
        passage.decision = subscriber(passage.answer) ? EventTapDecision::pass : EventTapDecision::consume;
        KeyActions actions;
        commandKeys = random(2) ? CommandKeys::control : CommandKeys::controlShift;
        model.inject(passage, commandKeys, actions);
        apply(actions);
        physical.set(key, motion != KeyMotion::release);
    };
    for (int round = 0; round < 2000; ++round) {
        for (int step = 0; step < 30; ++step) {
            const std::uint8_t key = keys[random(std::size(keys))];
            move(key, !physical.test(key) ? KeyMotion::press
                      : random(3) == 0    ? KeyMotion::repeat
                                          : KeyMotion::release);
            if (HasFatalFailure())
                return;
        }
        for (const std::uint8_t key : keys) {
            if (physical.test(key))
                move(key, KeyMotion::release);
        }
        ASSERT_EQ(pressed, KeySet()) << "in round " << round;
    }
}

// --- modifiers that go ahead of the taps' answer

class GoingAheadTest : public InjectorModelTest {
protected:
    /// Returns what is pressed before the answer and with it, with "|" between the two.
    std::string moveAhead(std::uint8_t key, KeyMotion motion)
    {
        const Event observed = model.observe({key, motion}, 1);
        InjectorModel::Passage passage{{key, motion}, observed, observed};
        KeyActions ahead, corrected;
        const bool goesAhead = model.goesAhead({key, motion});
        if (goesAhead)
            model.inject(passage, commandKeys, ahead);
        passage.decision = subscriber(passage.answer) ? EventTapDecision::pass : EventTapDecision::consume;
        if (goesAhead)
            model.correct(passage, commandKeys, corrected);
        else
            model.inject(passage, commandKeys, corrected);
        return text(ahead) + "|" + text(corrected);
    }
};

TEST_F(GoingAheadTest, AModifierIsDownBeforeTheAnswerAndTheAnswerChangesNothing)
{
    EXPECT_EQ(moveAhead(controlL, KeyMotion::press), "+Ctrl|");
    EXPECT_EQ(moveAhead(shiftL, KeyMotion::press), "+Shift|");
    EXPECT_EQ(moveAhead(keyA, KeyMotion::press), "|+A");
    EXPECT_EQ(moveAhead(keyA, KeyMotion::release), "|-A");
    EXPECT_EQ(moveAhead(controlL, KeyMotion::release), "-Ctrl|");
    EXPECT_EQ(moveAhead(shiftL, KeyMotion::release), "-Shift|");
}

TEST_F(GoingAheadTest, ARewrittenOneIsCorrectedWithoutALoneSuperAndWaitsTheNextTime)
{
    EXPECT_EQ(moveAhead(superL, KeyMotion::press), "|+Super") << "window managers act on it alone";
    EXPECT_EQ(moveAhead(superL, KeyMotion::release), "-Super|");
    subscriber = fullSwap;
    EXPECT_EQ(moveAhead(superL, KeyMotion::press), "+Super|+Ctrl -Super");
    EXPECT_EQ(moveAhead(superL, KeyMotion::release), "|-Ctrl");
    EXPECT_EQ(moveAhead(superL, KeyMotion::press), "|+Ctrl");
    EXPECT_EQ(moveAhead(superL, KeyMotion::release), "|-Ctrl");
    subscriber = passAll;
    EXPECT_EQ(moveAhead(superL, KeyMotion::press), "|+Super");
    EXPECT_EQ(moveAhead(superL, KeyMotion::release), "-Super|") << "it is left alone again";
}

TEST_F(GoingAheadTest, AnotherModifierWaitsWhileARewrittenOneIsHeld)
{
    subscriber = fullSwap;
    moveAhead(superL, KeyMotion::press);
    EXPECT_EQ(moveAhead(shiftL, KeyMotion::press), "|+Shift");
}

TEST_F(GoingAheadTest, ARemovedOneIsTakenBackWithoutAMenu)
{
    moveAhead(superL, KeyMotion::press);
    moveAhead(superL, KeyMotion::release);
    subscriber = [](Event&) { return false; };
    EXPECT_EQ(moveAhead(superL, KeyMotion::press), "+Super|+Ctrl -Ctrl -Super");
    EXPECT_EQ(moveAhead(superL, KeyMotion::release), "|");
}

} // namespace
} // namespace orvane::tests

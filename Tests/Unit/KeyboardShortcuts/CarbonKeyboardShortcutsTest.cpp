#include "KeyboardShortcuts/Registration/CarbonKeyboardShortcuts.h"
#include "KeyboardShortcuts/Registration/State.h"
#include "ShortcutsFixture.h"

#include <limits>

using namespace orvane;
using namespace orvane::KeyboardShortcuts;
using namespace orvane::tests;
using Kind = KeyboardEvent::Kind;

namespace {

constexpr Shortcut controlSpace(49, 4096);
constexpr Shortcut commandK(40, 256);
constexpr std::uint32_t signature = 0x53534B53;

class CarbonKeyboardShortcutsTest : public ShortcutsFixture {
protected:
    void add(const Shortcut& shortcut, const char* word = "")
    {
        const auto told = [this, word = QLatin1String(word)](const char* edge) {
            return [this, word, edge](const Shortcut& pressed) {
                fired.append(
                    QStringLiteral("%1%2 %3").arg(word, QLatin1String(edge)).arg(pressed.carbonKeyCode));
            };
        };
        CarbonKeyboardShortcuts::registerShortcut(shortcut, told("down"), told("up"));
    }

    static const auto& hotKeys() { return KeyboardShortcuts::state().carbon.hotKeys; }
    static bool isSuspended(std::uint32_t id) { return !hotKeys().at(id)->carbonHotKey; }

    OSStatus send(const KeyboardEvent& event) { return fake.hotKeys.send(&event); }
    OSStatus sendHotKey(Kind kind, std::uint32_t id, std::uint32_t itsSignature = signature)
    {
        return send({kind, EventHotKeyID{itsSignature, id}, {}, {}});
    }
    /// Lets the handler see raw keys, which the monitor passes on in the product.
    void addRawTypes()
    {
        KeyboardShortcuts::state().carbon.eventHandler->addEventTypes({Kind::rawKeyDown, Kind::rawKeyUp});
    }
    OSStatus sendRaw(Kind kind, std::optional<std::uint32_t> keyCode, std::optional<std::uint32_t> modifiers)
    {
        return send({kind, {}, keyCode, modifiers});
    }
};

} // namespace

// Registering

TEST_F(CarbonKeyboardShortcutsTest, TheFirstRegistrationInstallsTheHandlerAndThenAddsItsEvents)
{
    add(controlSpace);
    EXPECT_EQ(takeJournal(), list({"register 49 4096 1", "install", "add 5", "add 6"}));
    add(commandK);
    EXPECT_EQ(takeJournal(), list({"register 40 256 2"}));
}

TEST_F(CarbonKeyboardShortcutsTest, EveryHotKeyBearsTheSignatureAndItsOwnId)
{
    add(controlSpace);
    add(commandK);
    ASSERT_EQ(fake.hotKeys.registered.size(), 2U);
    EXPECT_EQ(fake.hotKeys.registered.at(0).id, (EventHotKeyID{0x53534B53, 1}));
    EXPECT_EQ(fake.hotKeys.registered.at(1).id, (EventHotKeyID{0x53534B53, 2}));
    EXPECT_EQ(hotKeys().at(2)->shortcut, commandK);
    EXPECT_EQ(hotKeys().at(2)->carbonHotKeyId, 2U);
}

TEST_F(CarbonKeyboardShortcutsTest, IdsRiseWithFailedRegistrationsTooAndAreNeverUsedAgain)
{
    fake.hotKeys.taken.insert(combination(controlSpace));
    add(controlSpace);
    add(commandK);
    CarbonKeyboardShortcuts::unregisterShortcut(commandK);
    add(commandK);
    EXPECT_EQ(takeJournal(), list({"register 49 4096 1", "register 40 256 2", "install", "add 5", "add 6",
                                   "unregister 2", "register 40 256 3"}));
}

TEST_F(CarbonKeyboardShortcutsTest, EveryRefusalIsSilentAndLeavesNoRecordAndNoHandler)
{
    for (const OSStatus status : {eventHotKeyExistsErr, eventHotKeyInvalidErr, unimpErr}) {
        fake.hotKeys.refusal = status;
        add(commandK);
        EXPECT_TRUE(hotKeys().empty());
        EXPECT_FALSE(KeyboardShortcuts::state().carbon.eventHandler);
    }
    EXPECT_TRUE(fake.log.entries().empty());
    EXPECT_EQ(takeJournal(), list({"register 40 256 1", "register 40 256 2", "register 40 256 3"}));

    fake.hotKeys.refusal = noErr;
    add(commandK);
    EXPECT_EQ(takeJournal(), list({"register 40 256 4", "install", "add 5", "add 6"}));
}

TEST_F(CarbonKeyboardShortcutsTest, NumbersThatTheServiceHasNoRoomForAreRefusedUnasked)
{
    constexpr std::int64_t tooMuch = std::numeric_limits<std::uint32_t>::max() + std::int64_t{1};
    add({-1, 256});
    add({tooMuch, 256});
    add({40, -1});
    add({40, tooMuch});
    EXPECT_EQ(takeJournal(), QStringList());
    EXPECT_TRUE(hotKeys().empty());
    add({tooMuch - 1, tooMuch - 1});
    EXPECT_EQ(takeJournal().first(), QStringLiteral("register 4294967295 4294967295 5"));
}

TEST_F(CarbonKeyboardShortcutsTest, WithoutATargetTheNextRegistrationInstallsTheHandler)
{
    fake.hotKeys.hasEventDispatcherTarget = false;
    add(controlSpace);
    EXPECT_EQ(takeJournal(), list({"register 49 4096 1"}));
    EXPECT_EQ(hotKeys().size(), 1U);
    fake.hotKeys.hasEventDispatcherTarget = true;
    add(commandK);
    EXPECT_EQ(takeJournal(), list({"register 40 256 2", "install", "add 5", "add 6"}));
    tap(controlSpace);
    EXPECT_EQ(fired, list({"down 49", "up 49"}));
}

TEST_F(CarbonKeyboardShortcutsTest, UnregisteringEndsEveryRecordOfThatShortcut)
{
    add(commandK);
    add(controlSpace);
    add(commandK);
    EXPECT_EQ(hotKeys().size(), 3U);
    takeJournal();
    CarbonKeyboardShortcuts::unregisterShortcut(commandK);
    EXPECT_EQ(takeJournal(), list({"unregister 1", "unregister 3"}));
    EXPECT_EQ(hotKeys().size(), 1U);
    CarbonKeyboardShortcuts::unregisterShortcut(commandK);
    EXPECT_EQ(takeJournal(), QStringList());
}

TEST_F(CarbonKeyboardShortcutsTest, UnregisteringASuspendedHotKeyForgetsIt)
{
    add(commandK);
    setEnabled(false);
    takeJournal();
    CarbonKeyboardShortcuts::unregisterShortcut(commandK);
    setEnabled(true);
    EXPECT_EQ(takeJournal(), list({"add 5", "add 6"}));
}

// Hot key events

TEST_F(CarbonKeyboardShortcutsTest, PressedAndReleasedCallTheRecordOfTheId)
{
    add(controlSpace, "a ");
    add(commandK, "b ");
    EXPECT_EQ(sendHotKey(Kind::hotKeyPressed, 2), noErr);
    EXPECT_EQ(sendHotKey(Kind::hotKeyReleased, 1), noErr);
    EXPECT_EQ(fired, list({"b down 40", "a up 49"}));
}

TEST_F(CarbonKeyboardShortcutsTest, WhatIsNotItsOwnIsPassedOn)
{
    add(commandK);
    EXPECT_EQ(sendHotKey(Kind::hotKeyPressed, 2), eventNotHandledErr);
    EXPECT_EQ(sendHotKey(Kind::hotKeyPressed, 1, 0x53534B54), eventNotHandledErr);
    EXPECT_EQ(fake.hotKeys.send(nullptr), eventNotHandledErr);
    EXPECT_EQ(fired, QStringList());
}

TEST_F(CarbonKeyboardShortcutsTest, AnEventWithoutItsParameterGivesTheStatusOfTheReading)
{
    add(commandK);
    EXPECT_EQ(send({Kind::hotKeyPressed, {}, 40, 256}), eventParameterNotFoundErr);
    addRawTypes();
    EXPECT_EQ(sendRaw(Kind::rawKeyDown, {}, 256), eventParameterNotFoundErr);
    EXPECT_EQ(sendRaw(Kind::rawKeyDown, 40, {}), eventParameterNotFoundErr);
    EXPECT_EQ(fired, QStringList());
}

TEST_F(CarbonKeyboardShortcutsTest, ACallbackMayEndItsOwnRegistration)
{
    CarbonKeyboardShortcuts::registerShortcut(
        commandK,
        [this,
         word = QStringLiteral("a text that is too long to be kept in place")](const Shortcut& shortcut) {
            CarbonKeyboardShortcuts::unregisterShortcut(shortcut);
            fired.append(word);
            EXPECT_EQ(shortcut, commandK);
        },
        [](const Shortcut&) {});
    tap(commandK);
    tap(commandK);
    EXPECT_EQ(fired, list({"a text that is too long to be kept in place"}));
    EXPECT_TRUE(hotKeys().empty());
}

// Raw key events

TEST_F(CarbonKeyboardShortcutsTest, ARawKeyFiresTheRecordWithItsCodeAndItsFourModifiers)
{
    add(controlSpace);
    add({40, 0x300});
    addRawTypes();
    EXPECT_EQ(sendRaw(Kind::rawKeyDown, 40, 0x300), noErr);
    EXPECT_EQ(sendRaw(Kind::rawKeyUp, 49, 0x1000), noErr);
    EXPECT_EQ(fired, list({"down 40", "up 49"}));
    // Caps lock, and everything else beyond the four, is no modifier of a shortcut.
    EXPECT_EQ(sendRaw(Kind::rawKeyDown, 40, 0x300 | 0x400 | 0x80000001), noErr);
    EXPECT_EQ(fired.size(), 3);
}

TEST_F(CarbonKeyboardShortcutsTest, AnyOtherRawKeyIsPassedOn)
{
    add({40, 0x300});
    addRawTypes();
    EXPECT_EQ(sendRaw(Kind::rawKeyDown, 40, 0x100), eventNotHandledErr);
    EXPECT_EQ(sendRaw(Kind::rawKeyDown, 40, 0x1300), eventNotHandledErr);
    EXPECT_EQ(sendRaw(Kind::rawKeyUp, 41, 0x300), eventNotHandledErr);
    EXPECT_EQ(sendRaw(Kind::rawKeyUp, 40, 0), eventNotHandledErr);
    EXPECT_EQ(fired, QStringList());
}

TEST_F(CarbonKeyboardShortcutsTest, AnotherKindOfEventIsPassedOn)
{
    add(commandK);
    constexpr auto rawKeyRepeat = static_cast<Kind>(2);
    KeyboardShortcuts::state().carbon.eventHandler->addEventTypes({rawKeyRepeat});
    EXPECT_EQ(send({rawKeyRepeat, EventHotKeyID{signature, 1}, 40, 256}), eventNotHandledErr);
    EXPECT_EQ(fired, QStringList());
}

// The two ways of listening

TEST_F(CarbonKeyboardShortcutsTest, WithoutAHandlerNothingIsUpdated)
{
    (void)named("panel");
    openMenu();
    setEnabled(false);
    closeMenu();
    setEnabled(true);
    EXPECT_EQ(takeJournal(), QStringList());
    EXPECT_EQ(fake.eventMonitors.menuTrackingCount(), 0U);
}

TEST_F(CarbonKeyboardShortcutsTest, AMenuSuspendsAllHotKeysAndItsClosingBringsThemBackUnderTheirIds)
{
    (void)named("panel");
    add(controlSpace);
    add(commandK);
    takeJournal();
    openMenu();
    EXPECT_EQ(takeJournal(), list({"unregister 1", "unregister 2", "remove 5", "remove 6"}));
    EXPECT_EQ(fake.eventMonitors.menuTrackingCount(), 1U);
    EXPECT_TRUE(isSuspended(1));
    EXPECT_TRUE(isSuspended(2));
    closeMenu();
    EXPECT_EQ(takeJournal(), list({"register 49 4096 1", "register 40 256 2", "add 5", "add 6"}));
    EXPECT_EQ(fake.eventMonitors.menuTrackingCount(), 0U);
    EXPECT_FALSE(isSuspended(1));
    EXPECT_FALSE(isSuspended(2));
}

TEST_F(CarbonKeyboardShortcutsTest, InAnOpenMenuAShortcutFiresAndOtherKeysReachTheMenu)
{
    (void)named("panel");
    add(commandK);
    using Disposition = EventMonitors::Disposition;
    EXPECT_EQ(sendToMenu(EventType::keyDown, 40, eventFlag::command), Disposition::pass); // no menu is open
    openMenu();
    constexpr EventFlags flags = eventFlag::command | eventFlag::alphaShift | eventFlag::numericPad;
    EXPECT_EQ(sendToMenu(EventType::keyDown, 40, flags), Disposition::swallow);
    EXPECT_EQ(sendToMenu(EventType::keyUp, 40, eventFlag::command), Disposition::swallow);
    EXPECT_EQ(fired, list({"down 40", "up 40"}));
    EXPECT_EQ(sendToMenu(EventType::keyDown, 40, 0), Disposition::pass);
    EXPECT_EQ(sendToMenu(EventType::keyDown, 125, 0), Disposition::pass);
    EXPECT_EQ(sendToMenu(EventType::keyUp, 53, 0), Disposition::pass);
    EXPECT_EQ(sendToMenu(EventType::keyDown, -1, eventFlag::command), Disposition::pass);
    EXPECT_EQ(fired.size(), 2);
    tap(commandK);
    EXPECT_EQ(fired.size(), 2);
    closeMenu();
    EXPECT_EQ(sendToMenu(EventType::keyDown, 40, eventFlag::command), Disposition::pass);
    tap(commandK);
    EXPECT_EQ(fired.size(), 4);
}

TEST_F(CarbonKeyboardShortcutsTest, TheMonitorAsksForKeysGoingDownAndUpAlone)
{
    (void)named("panel");
    add({0, 0});
    openMenu();
    for (std::uint32_t type = 0; type < 32; ++type) {
        const auto disposition = sendToMenu(static_cast<EventType>(type), 0, 0);
        EXPECT_EQ(disposition == EventMonitors::Disposition::swallow, type == 10 || type == 11) << type;
    }
}

TEST_F(CarbonKeyboardShortcutsTest, ACallbackInAMenuMayTurnAllOff)
{
    (void)named("panel");
    CarbonKeyboardShortcuts::registerShortcut(
        commandK, [](const Shortcut&) { setEnabled(false); }, [this](const Shortcut&) { note("up")(); });
    openMenu();
    EXPECT_EQ(sendToMenu(EventType::keyDown, 40, eventFlag::command), EventMonitors::Disposition::swallow);
    EXPECT_EQ(fake.eventMonitors.menuTrackingCount(), 0U);
    EXPECT_EQ(sendToMenu(EventType::keyUp, 40, eventFlag::command), EventMonitors::Disposition::pass);
    EXPECT_EQ(fired, QStringList());
}

TEST_F(CarbonKeyboardShortcutsTest, SwitchedOffNothingFiresInAMenuOrOutside)
{
    (void)named("panel");
    add(commandK);
    takeJournal();
    setEnabled(false);
    EXPECT_EQ(takeJournal(), list({"unregister 1", "remove 5", "remove 6"}));
    EXPECT_EQ(fake.eventMonitors.menuTrackingCount(), 0U);
    tap(commandK);
    openMenu();
    EXPECT_EQ(fake.eventMonitors.menuTrackingCount(), 0U);
    EXPECT_EQ(sendToMenu(EventType::keyDown, 40, eventFlag::command), EventMonitors::Disposition::pass);
    EXPECT_EQ(fired, QStringList());

    takeJournal();
    setEnabled(true); // with the menu still open
    EXPECT_EQ(takeJournal(), list({"remove 5", "remove 6"}));
    EXPECT_EQ(fake.eventMonitors.menuTrackingCount(), 1U);
    setEnabled(false);
    EXPECT_EQ(fake.eventMonitors.menuTrackingCount(), 0U);
    closeMenu();
    setEnabled(true);
    EXPECT_TRUE(isRegistered(commandK));
    tap(commandK);
    EXPECT_EQ(fired, list({"down 40", "up 40"}));
}

TEST_F(CarbonKeyboardShortcutsTest, TheFirstRegistrationWhileSwitchedOffIsSuspendedAtOnce)
{
    setEnabled(false);
    add(commandK);
    EXPECT_EQ(takeJournal(), list({"register 40 256 1", "install", "unregister 1", "remove 5", "remove 6"}));
    setEnabled(true);
    EXPECT_EQ(takeJournal(), list({"register 40 256 1", "add 5", "add 6"}));
}

TEST_F(CarbonKeyboardShortcutsTest, AHotKeyTakenMeanwhileIsGoneForGoodAndStillCountsAsRegistered)
{
    onKeyUp(named("panel"), note("panel"));
    setShortcut(commandK, named("panel"));
    setShortcut(controlSpace, named("other"));
    openMenu();
    fake.hotKeys.taken.insert(combination(commandK));
    takeJournal();
    closeMenu();
    EXPECT_EQ(takeJournal(), list({"register 40 256 1", "register 49 4096 2", "add 5", "add 6"}));
    EXPECT_FALSE(hotKeys().contains(1));
    EXPECT_TRUE(isRegistered(controlSpace));
    EXPECT_TRUE(KeyboardShortcuts::state().registeredShortcuts.contains(commandK));
    EXPECT_TRUE(fake.log.entries().empty());

    fake.hotKeys.taken.clear();
    openMenu();
    closeMenu();
    enable({named("panel")});
    tap(commandK);
    EXPECT_EQ(fired, QStringList());
}

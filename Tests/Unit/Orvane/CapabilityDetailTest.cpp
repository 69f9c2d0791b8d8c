// The page of a capability as a tree of components: header, chips, permission banner, body, ticker.
#include "KeyboardShortcuts/Recorder/Recorder.h"
#include "Orvane/Home/CapabilityDetailView.h"
#include "Orvane/Home/CapabilityToggle.h"
#include "Orvane/Permissions/OrvaPermissionRow.h"
#include "Orvane/Permissions/PermissionRestartRow.h"
#include "Orvane/Shortcuts/HotkeyChip.h"
#include "Orvane/Shortcuts/ShortcutViews.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "Unit/Orvane/HomeFixture.h"

namespace orvane::tests {
namespace {

using KeyboardShortcuts::Key;
using KeyboardShortcuts::Recorder;
using KeyboardShortcuts::Shortcut;
using Level = PermissionRequirement::Level;
using State = CapabilityState::Kind;

struct CapabilityDetailTest : HomeFixture {
    [[nodiscard]] AnyView page(const char* raw) const
    {
        return CapabilityDetailView{*registry->entry(id(raw)), registry, permissions, navigation};
    }
    [[nodiscard]] std::shared_ptr<const OrvaPage> orvaPage(const char* raw) const
    {
        return page(raw).all<OrvaPage>().constFirst();
    }
    [[nodiscard]] std::shared_ptr<const OrvaPageHeader> header(const char* raw) const
    {
        return page(raw).all<OrvaPageHeader>().constFirst();
    }
    [[nodiscard]] const OrvaSwitch& toggle(const char* raw) const
    {
        m_header = header(raw);
        return *m_header->trailing.as<OrvaSwitch>();
    }
    void flip(const char* raw, bool on)
    {
        toggle(raw).isOn.set(on);
        fake.runLoop.drain();
    }
    void tick(const char* raw) const { page(raw).all<OrvaTicker>().constFirst()->onTick(); }
    [[nodiscard]] State state(const char* raw) const { return registry->state(id(raw)).kind; }

private:
    mutable std::shared_ptr<const OrvaPageHeader> m_header;
};

// Header

TEST_F(CapabilityDetailTest, TheHeaderTellsWhoItIs)
{
    add("one");
    const auto head = header("one");
    EXPECT_EQ(head->title, QStringLiteral("The one"));
    EXPECT_EQ(head->subtitle, QStringLiteral("What it does."));
    EXPECT_EQ(head->symbol, QStringLiteral("eye"));
    EXPECT_EQ(head->autoStartTitle, QStringLiteral("Auto-start at launch"));
    EXPECT_TRUE(head->autoStartEnabled.get());
    EXPECT_EQ(toggle("one").accessibleName, QStringLiteral("The one"));
}

TEST_F(CapabilityDetailTest, TheStartSwitchSetsTheStartMode)
{
    add("one");
    const auto head = header("one");
    ASSERT_TRUE(head->autoStart.has_value());
    EXPECT_TRUE(head->autoStart->get());
    head->autoStart->set(false);
    EXPECT_EQ(registry->startMode(id("one")), CapabilityStartMode::manual);
    EXPECT_FALSE(head->autoStart->get());
    head->autoStart->set(true);
    EXPECT_EQ(registry->startMode(id("one")), CapabilityStartMode::automatic);
}

// Toggle

TEST_F(CapabilityDetailTest, TheToggleSwitchesTheCapability)
{
    const auto capability = add("one");
    EXPECT_FALSE(toggle("one").isOn.get());
    flip("one", true);
    EXPECT_TRUE(toggle("one").isOn.get());
    EXPECT_EQ(state("one"), State::active);
    flip("one", false);
    EXPECT_FALSE(toggle("one").isOn.get());
    EXPECT_EQ(*capability->calls, (QStringList{QStringLiteral("install"), QStringLiteral("activate"),
                                               QStringLiteral("deactivate")}));
}

TEST_F(CapabilityDetailTest, FlippingOnlyBeginsATask)
{
    const auto capability = add("one");
    toggle("one").isOn.set(true);
    EXPECT_TRUE(capability->calls->isEmpty());
    fake.runLoop.drain();
    EXPECT_FALSE(capability->calls->isEmpty());
}

TEST_F(CapabilityDetailTest, WhileActivationIsSuspendedTheToggleStaysOffAndThePageDimmed)
{
    const auto capability = add("one");
    capability->activateGate.close();
    const OrvaSwitch control = toggle("one");
    const auto shown = orvaPage("one");
    QList<bool> values;
    Cancellables watching = control.isOn.onChange([&] { values.append(control.isOn.get()); });
    flip("one", true);
    ASSERT_TRUE(capability->activateGate.hasWaiter());
    EXPECT_FALSE(control.isOn.get());
    EXPECT_FALSE(shown->contentEnabled.get());
    capability->activateGate.open();
    EXPECT_TRUE(control.isOn.get());
    EXPECT_TRUE(shown->contentEnabled.get());
    EXPECT_EQ(values.count(true), 1) << "on once, at the end";
    EXPECT_TRUE(values.last());
}

TEST_F(CapabilityDetailTest, AFailedCapabilityReadsOffIsDimmedAndTheToggleTriesAgain)
{
    const auto capability = add("one");
    capability->activateError = QStringLiteral("the bulb is broken");
    flip("one", true);
    EXPECT_EQ(state("one"), State::failed);
    EXPECT_FALSE(toggle("one").isOn.get());
    EXPECT_FALSE(orvaPage("one")->contentEnabled.get());

    capability->activateError.clear();
    flip("one", true);
    EXPECT_EQ(state("one"), State::active);
    EXPECT_EQ(capability->calls->count(QStringLiteral("activate")), 2);
}

// Body

TEST_F(CapabilityDetailTest, ThePaneIsThereWhileTheCapabilityIsOff)
{
    const auto capability = add("one");
    EXPECT_EQ(page("one").all<OrvaButton>().constFirst()->title.get(), QStringLiteral("In the pane"));
    EXPECT_GT(capability->panes, 0);
    EXPECT_FALSE(orvaPage("one")->contentEnabled.get());
    EXPECT_TRUE(capability->calls->isEmpty()) << "it takes no activation";
    switchOn("one");
    EXPECT_TRUE(orvaPage("one")->contentEnabled.get());
}

// Banner

TEST_F(CapabilityDetailTest, WithNothingToSayThereIsNoBanner)
{
    add("one");
    EXPECT_FALSE(orvaPage("one")->banner.as<OrvaIf>()->condition.get());
}

TEST_F(CapabilityDetailTest, MissingPermissionsHaveARowEachAndTheRestartRowBelow)
{
    const auto capability = add("one");
    capability->requirements = {
        {SystemPermission::inputMonitoring, Level::required, QStringLiteral("To hear keys.")},
        {SystemPermission::screenRecording, Level::optional, QStringLiteral("To see.")},
        {SystemPermission::accessibility, Level::required}};
    const auto rows = page("one").all<OrvaPermissionRow>();
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0]->permission, SystemPermission::inputMonitoring);
    EXPECT_EQ(rows[0]->level, Level::required);
    EXPECT_EQ(rows[0]->note, QStringLiteral("To hear keys."));
    EXPECT_EQ(rows[1]->permission, SystemPermission::screenRecording);
    EXPECT_EQ(rows[1]->level, Level::optional);
    EXPECT_EQ(rows[2]->permission, SystemPermission::accessibility);
    EXPECT_EQ(rows[2]->note, explanation(SystemPermission::accessibility)) << "it has no note of its own";
    EXPECT_EQ(page("one").all<PermissionRestartRow>().size(), 1);
    EXPECT_TRUE(page("one").all<OrvaTextButton>().isEmpty());

    grantInputMonitoring();
    EXPECT_EQ(page("one").all<OrvaPermissionRow>().size(), 2);
}

TEST_F(CapabilityDetailTest, WithAllPermissionsGrantedAQuietLineLeadsToGeneral)
{
    const auto capability = add("one");
    capability->requirements = {requirement(SystemPermission::inputMonitoring)};
    grantInputMonitoring();
    const AnyView view = page("one");
    EXPECT_TRUE(view.all<OrvaPermissionRow>().isEmpty());
    EXPECT_TRUE(view.all<PermissionRestartRow>().isEmpty());
    EXPECT_EQ(orvaPage("one")->banner.all<OrvaText>().constFirst()->text.get(),
              QStringLiteral("All permissions granted"));
    const auto button = view.all<OrvaTextButton>().constFirst();
    EXPECT_EQ(button->title, QStringLiteral("Manage in General"));
    EXPECT_EQ(button->systemImage, QStringLiteral("chevron.right"));
    button->action();
    EXPECT_EQ(navigation->selection.get(), HomeSelection::general());
    EXPECT_EQ(navigation->focusPermissions.get(), 1);
    button->action();
    EXPECT_EQ(navigation->focusPermissions.get(), 2);
}

TEST_F(CapabilityDetailTest, ACapabilityThatCannotRunSaysWhyUnderItsSwitchUntilItRuns)
{
    const auto capability = add("one");
    EXPECT_TRUE(page("one").all<OrvaStatusBanner>().isEmpty());
    capability->activateError = QStringLiteral("It would miss every second copy here.");
    flip("one", true);
    EXPECT_EQ(state("one"), State::failed);
    const auto banners = page("one").all<OrvaStatusBanner>();
    ASSERT_EQ(banners.size(), 1);
    EXPECT_EQ(banners.first()->message.get(), QStringLiteral("It would miss every second copy here."));
    capability->activateError.clear();
    flip("one", true);
    EXPECT_TRUE(page("one").all<OrvaStatusBanner>().isEmpty());
}

TEST_F(CapabilityDetailTest, AnOptionalPermissionIsMentionedWhileItIsMissing)
{
    const auto capability = add("one");
    capability->requirements = {requirement(SystemPermission::inputMonitoring, Level::optional)};
    EXPECT_EQ(page("one").all<OrvaPermissionRow>().size(), 1);
    EXPECT_TRUE(orvaPage("one")->banner.as<OrvaIf>()->condition.get());
    grantInputMonitoring();
    EXPECT_TRUE(page("one").all<OrvaPermissionRow>().isEmpty());
    EXPECT_FALSE(orvaPage("one")->banner.as<OrvaIf>()->condition.get()) << "nothing was waited for";
}

// Ticker

TEST_F(CapabilityDetailTest, ItTicksEveryTwoSeconds)
{
    add("one");
    EXPECT_EQ(page("one").all<OrvaTicker>().constFirst()->interval, std::chrono::milliseconds(2000));
}

TEST_F(CapabilityDetailTest, AppearingRefreshesThePermissionsAndNothingMore)
{
    const auto capability = add("one");
    capability->requirements = {requirement(SystemPermission::inputMonitoring)};
    switchOn("one");
    fake.permissions.inputMonitoring = true;
    page("one").all<OrvaTicker>().constFirst()->onAppear();
    fake.runLoop.drain();
    EXPECT_EQ(permissions->status(SystemPermission::inputMonitoring), PermissionStatus::granted);
    EXPECT_EQ(state("one"), State::needsPermission);
}

TEST_F(CapabilityDetailTest, APermissionThatIsGrantedMakesTheCapabilityActiveWithinATick)
{
    const auto capability = add("one");
    capability->requirements = {requirement(SystemPermission::inputMonitoring)};
    flip("one", true);
    EXPECT_EQ(state("one"), State::needsPermission);
    EXPECT_FALSE(toggle("one").isOn.get());
    tick("one");
    fake.runLoop.drain();
    EXPECT_EQ(state("one"), State::needsPermission) << "nothing was granted yet";

    fake.permissions.inputMonitoring = true;
    tick("one");
    fake.runLoop.drain();
    EXPECT_EQ(state("one"), State::active);
    EXPECT_EQ(*capability->calls, QStringList{QStringLiteral("activate")}) << "without an installation";
}

// Chips

struct HotkeyChipTest : CapabilityDetailTest {
    HotkeyChipTest()
    {
        capability = add("one");
        capability->hotkeys = {{QStringLiteral("one.first"), QStringLiteral("First Thing"), {}},
                               {QStringLiteral("one.second"), QStringLiteral("Second Thing"), {}}};
    }
    static const OrvaPopover& popover(const HotkeyChip& chip)
    {
        static AnyView kept;
        kept = chip;
        static std::shared_ptr<const OrvaPopover> found;
        found = kept.all<OrvaPopover>().constFirst();
        return *found;
    }
    static const OrvaChipButton& button(const HotkeyChip& chip)
    {
        return *popover(chip).anchor.as<OrvaChipButton>();
    }

    std::shared_ptr<MadeUpCapability> capability;
    const KeyboardShortcuts::Name name{QStringLiteral("one.first")};
    const Shortcut shortcut{0, 0x1000}; // Control and the key of A
};

TEST_F(HotkeyChipTest, ThereIsOneForEachActionInOrder)
{
    const auto chips = page("one").all<OrvaChipButton>();
    ASSERT_EQ(chips.size(), 2);
    EXPECT_EQ(chips[0]->help, QStringLiteral("First Thing"));
    EXPECT_EQ(chips[1]->help, QStringLiteral("Second Thing"));
    EXPECT_EQ(chips[0]->chip.systemImage, QStringLiteral("keyboard"));
}

TEST_F(HotkeyChipTest, AShortcutThatAnotherActionHasTooSaysSoOnBoth)
{
    const auto notes = [&] {
        QStringList texts;
        for (const auto& text : header("one")->accessory.all<OrvaText>()) {
            if (text->text.get().contains(QStringLiteral("this shortcut")))
                texts.append(text->text.get());
        }
        return texts;
    };
    const KeyboardShortcuts::Name second(QStringLiteral("one.second"));
    for (const KeyboardShortcuts::Name& each : {name, second})
        KeyboardShortcuts::onKeyUp(each, [] {});
    name.setShortcut(shortcut);
    EXPECT_EQ(notes(), QStringList());
    second.setShortcut(shortcut);
    EXPECT_EQ(notes(), (QStringList{QStringLiteral("“Second Thing” has this shortcut too."),
                                    QStringLiteral("“First Thing” has this shortcut too.")}));
    second.setShortcut(std::nullopt);
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(HotkeyChipTest, AnOpenPageFollowsWhatTheSystemSaysToTheShortcut)
{
    KeyboardShortcuts::onKeyUp(name, [] {});
    const AnyView chips = header("one")->accessory;
    const auto says = [&](const char* text) {
        for (const auto& found : chips.all<OrvaText>()) {
            if (found->text.get().contains(QLatin1StringView(text)))
                return true;
        }
        return false;
    };
    fake.hotKeys.taken = {{0, 0x1000}};
    name.setShortcut(shortcut);
    EXPECT_TRUE(says("Another program has this shortcut"));
    fake.hotKeys.taken.clear();
    fake.runLoop.advance(std::chrono::seconds(10));
    EXPECT_FALSE(says("Another program"));
    fake.hotKeys.limit = QStringLiteral("Shortcuts are off here.");
    EXPECT_EQ(shortcutNote(name.rawValue(), {}), QStringLiteral("Shortcuts are off here."));
}

TEST_F(HotkeyChipTest, OfSeveralEachStandsUnderTheTitleOfItsAction)
{
    const auto titles = header("one")->accessory.all<OrvaText>();
    ASSERT_EQ(titles.size(), 3);
    EXPECT_EQ(titles[1]->text.get(), QStringLiteral("First Thing"));
    EXPECT_EQ(titles[2]->text.get(), QStringLiteral("Second Thing"));

    EXPECT_EQ(header("one")->accessoryPlace, OrvaPageHeader::AccessoryPlace::below);

    capability->hotkeys.removeLast();
    EXPECT_EQ(header("one")->accessory.all<OrvaText>().size(), 1) << "one alone needs none";
}

TEST_F(HotkeyChipTest, TheyStandUnderTheNameByWhichPanesSpeakOfThem)
{
    const QString heading = QStringLiteral("Keyboard Shortcuts");
    EXPECT_EQ(header("one")->accessory.all<OrvaText>().first()->text.get(), heading);
    capability->hotkeys.removeLast();
    EXPECT_EQ(header("one")->accessory.all<OrvaText>().first()->text.get(), heading);
    EXPECT_EQ(header("one")->accessoryPlace, OrvaPageHeader::AccessoryPlace::below);
}

TEST_F(HotkeyChipTest, WithoutActionsThereIsNothing)
{
    capability->hotkeys.clear();
    EXPECT_FALSE(static_cast<bool>(header("one")->accessory));
}

TEST_F(HotkeyChipTest, WithoutAShortcutItAsksForOneQuietly)
{
    const HotkeyChip chip(capability->hotkeys.constFirst());
    EXPECT_EQ(button(chip).chip.text.get(), QStringLiteral("Set shortcut"));
    EXPECT_FALSE(button(chip).chip.prominent.get());
}

TEST_F(HotkeyChipTest, AStoredShortcutIsShownProminently)
{
    KeyboardShortcuts::setShortcut(shortcut, name);
    const HotkeyChip chip(capability->hotkeys.constFirst());
    EXPECT_EQ(button(chip).chip.text.get(), shortcut.description());
    EXPECT_TRUE(button(chip).chip.prominent.get());
}

TEST_F(HotkeyChipTest, AClickOpensThePopoverAndAnotherClosesIt)
{
    const HotkeyChip chip(capability->hotkeys.constFirst());
    EXPECT_EQ(popover(chip).width, 260);
    EXPECT_EQ(popover(chip).padding, 14);
    EXPECT_TRUE(AnyView(chip).all<Recorder>().isEmpty());
    button(chip).action();
    EXPECT_TRUE(chip.showsRecorder());
    ASSERT_EQ(AnyView(chip).all<Recorder>().size(), 1);
    EXPECT_EQ(AnyView(chip).all<Recorder>().constFirst()->name, name);
    EXPECT_EQ(AnyView(chip).all<OrvaText>().constFirst()->text.get(), QStringLiteral("First Thing"));
    button(chip).action();
    EXPECT_FALSE(chip.showsRecorder());
}

TEST_F(HotkeyChipTest, WhatIsRecordedShowsAtOnce)
{
    const HotkeyChip chip(capability->hotkeys.constFirst());
    button(chip).action();
    const auto recorder = AnyView(chip).all<Recorder>().constFirst();
    int changes = 0;
    Cancellables watching = button(chip).chip.text.onChange([&] { ++changes; });
    recorder->set(shortcut);
    EXPECT_EQ(button(chip).chip.text.get(), shortcut.description());
    EXPECT_TRUE(button(chip).chip.prominent.get());
    EXPECT_GT(changes, 0) << "what shows it is told";
    recorder->set(std::nullopt);
    EXPECT_EQ(button(chip).chip.text.get(), QStringLiteral("Set shortcut"));
}

TEST_F(HotkeyChipTest, ComingIntoSightReadsTheStoreAgain)
{
    const HotkeyChip chip(capability->hotkeys.constFirst());
    KeyboardShortcuts::setShortcut(shortcut, name);
    AnyView(chip).all<OrvaAppear>().constFirst()->onAppear();
    EXPECT_EQ(button(chip).chip.text.get(), shortcut.description());
}

} // namespace
} // namespace orvane::tests

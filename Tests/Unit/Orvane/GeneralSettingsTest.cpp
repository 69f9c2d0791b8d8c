// The general page as a tree of components, and the texts of its permissions.
#include "KeyboardShortcuts/Recorder/Recorder.h"
#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Home/GeneralSettingsView.h"
#include "Orvane/Permissions/OrvaPermissionRow.h"
#include "Orvane/Permissions/PermissionRestartRow.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "Unit/Orvane/HomeFixture.h"

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

using Level = PermissionRequirement::Level;
using testing::ElementsAre;

struct GeneralSettingsTest : HomeFixture {
    [[nodiscard]] AnyView page() const
    {
        return GeneralSettingsView{preferences, permissions, registry, navigation};
    }
    [[nodiscard]] QStringList titles() const { return titlesOf(page()); }
    static QStringList titlesOf(const AnyView& view)
    {
        QStringList list;
        for (const auto& section : view.all<OrvaSection>())
            list.append(section->title.value_or(QString()));
        return list;
    }
    [[nodiscard]] std::shared_ptr<const OrvaSection> section(const char* title) const
    {
        for (const auto& found : page().all<OrvaSection>()) {
            if (found->title == QString::fromLatin1(title))
                return found;
        }
        return nullptr;
    }
    [[nodiscard]] std::shared_ptr<const OrvaToggleRow> toggle(const char* title) const
    {
        for (const auto& row : page().all<OrvaToggleRow>()) {
            if (row->title.get() == QString::fromLatin1(title))
                return row;
        }
        return nullptr;
    }
    [[nodiscard]] QString usage(SystemPermission permission) const
    {
        return GeneralSettingsView::usageText(permission, registry->entries());
    }
    [[nodiscard]] QStringList texts() const
    {
        QStringList list;
        for (const auto& text : page().all<OrvaText>())
            list.append(text->text.get());
        return list;
    }
};

TEST_F(GeneralSettingsTest, TheHeaderSaysWhatIsHere)
{
    const auto header = page().all<OrvaPageHeader>().constFirst();
    EXPECT_EQ(header->title, QStringLiteral("General"));
    EXPECT_EQ(header->subtitle, QStringLiteral("App-wide settings, permissions, and about."));
    EXPECT_EQ(header->symbol, QStringLiteral("gearshape"));
    EXPECT_FALSE(header->autoStart.has_value());
}

TEST_F(GeneralSettingsTest, TheSectionsStandInOrderWithTheirSymbols)
{
    EXPECT_THAT(titles(), ElementsAre(QStringLiteral("Startup"), QStringLiteral("Menu Bar & Dock"),
                                      QStringLiteral("Permissions"), QStringLiteral("Keyboard Shortcuts"),
                                      QStringLiteral("About")));
    EXPECT_EQ(section("Startup")->systemImage, QStringLiteral("power"));
    EXPECT_EQ(section("Menu Bar & Dock")->systemImage, QStringLiteral("menubar.rectangle"));
    EXPECT_EQ(section("Permissions")->systemImage, QStringLiteral("lock.shield"));
    EXPECT_EQ(section("Keyboard Shortcuts")->systemImage, QStringLiteral("keyboard"));
    EXPECT_EQ(section("About")->systemImage, QStringLiteral("info.circle"));
}

TEST_F(GeneralSettingsTest, WhatUpdatesTheProgramHasItsPlaceBeforeAbout)
{
    const AnyView updates = OrvaSection{.title = QStringLiteral("Updates"), .content = {}};
    const AnyView view = GeneralSettingsView{preferences, permissions, registry, navigation, updates};
    EXPECT_EQ(titlesOf(view).indexOf(QStringLiteral("Updates")), 4);
    EXPECT_EQ(titlesOf(view).indexOf(QStringLiteral("About")), 5);
}

TEST_F(GeneralSettingsTest, TheTogglesAreThePreferences)
{
    toggle("Launch Orvane at login")->isOn.set(true);
    EXPECT_TRUE(preferences->launchAtLogin());
    toggle("Show Dock icon")->isOn.set(true);
    EXPECT_TRUE(preferences->showDockIcon());
    toggle("Show menu bar icon")->isOn.set(false);
    EXPECT_FALSE(preferences->showMenuBarItem());
    EXPECT_TRUE(toggle("Show Dock icon")->isOn.get());
}

TEST_F(GeneralSettingsTest, TurningOffTheMenuBarIconTurnsTheDockIconOn)
{
    EXPECT_FALSE(toggle("Show Dock icon")->isOn.get());
    toggle("Show menu bar icon")->isOn.set(false);
    EXPECT_TRUE(toggle("Show Dock icon")->isOn.get());
}

TEST_F(GeneralSettingsTest, ThePermissionsHaveARowEachWithoutALevel)
{
    const auto rows = page().all<OrvaPermissionRow>();
    ASSERT_EQ(rows.size(), 4);
    for (int index = 0; index < 4; ++index) {
        const SystemPermission permission = allSystemPermissions.at(static_cast<std::size_t>(index));
        EXPECT_EQ(rows[index]->permission, permission);
        EXPECT_FALSE(rows[index]->level.has_value());
        EXPECT_EQ(rows[index]->note, usage(permission));
    }
    EXPECT_EQ(page().all<PermissionRestartRow>().size(), 1);
    const auto anchor = page().all<OrvaAnchor>().constFirst();
    EXPECT_EQ(anchor->id, QStringLiteral("general.permissions"));
    EXPECT_THAT(titlesOf(anchor->content), ElementsAre(QStringLiteral("Permissions")));
}

TEST_F(GeneralSettingsTest, TheRecorderIsThatOfOpeningTheWindow)
{
    const auto recorder = page().all<KeyboardShortcuts::Recorder>().constFirst();
    EXPECT_EQ(recorder->name.rawValue(), QStringLiteral("app.openOrvane"));
    EXPECT_TRUE(recorder->hasLabel);
    EXPECT_EQ(recorder->accessibleName, QStringLiteral("Open Orvane"));
}

TEST_F(GeneralSettingsTest, AboutShowsTheVersionOfTheBundle)
{
    fake.bundle.info[QStringLiteral("CFBundleShortVersionString")] = QStringLiteral("4.5.6");
    EXPECT_TRUE(texts().contains(QStringLiteral("Version 4.5.6")));
    fake.bundle.info.clear();
    EXPECT_TRUE(texts().contains(QStringLiteral("Version 0.1.0")));
    EXPECT_EQ(page().all<AppIconBadge>().size(), 1);
    EXPECT_EQ(page().all<OrvaneWordmark>().size(), 1);
    EXPECT_TRUE(texts().contains(OrvaneBrand::tagline()));
    EXPECT_EQ(page().all<OrvaValueRow>().constFirst()->title.get(), QStringLiteral("Built by"));
}

TEST_F(GeneralSettingsTest, TheLinksOpenThePages)
{
    QStringList titles;
    for (const auto& link : page().all<OrvaTextButton>()) {
        titles.append(link->title);
        link->action();
    }
    EXPECT_THAT(titles,
                ElementsAre(QStringLiteral("Website"), QStringLiteral("Privacy"), QStringLiteral("Support")));
    EXPECT_THAT(fake.workspace.openedURLs,
                ElementsAre(OrvaneBrand::websiteURL, OrvaneBrand::privacyURL, OrvaneBrand::supportURL));
}

TEST_F(GeneralSettingsTest, ItsTickerOnlyRefreshes)
{
    const auto capability = add("one");
    capability->requirements = {requirement(SystemPermission::inputMonitoring)};
    switchOn("one");
    const auto ticker = page().all<OrvaTicker>().constFirst();
    EXPECT_EQ(ticker->interval, std::chrono::milliseconds(2000));
    fake.permissions.inputMonitoring = true;
    ticker->onTick();
    fake.runLoop.drain();
    EXPECT_EQ(permissions->status(SystemPermission::inputMonitoring), PermissionStatus::granted);
    EXPECT_EQ(registry->state(id("one")).kind, CapabilityState::Kind::needsPermission);

    fake.permissions.inputMonitoring = false;
    ticker->onAppear();
    EXPECT_EQ(permissions->status(SystemPermission::inputMonitoring), PermissionStatus::denied);
}

TEST_F(GeneralSettingsTest, ThePageScrollsByTheCounterOfTheNavigation)
{
    const auto reader = page().all<OrvaScrollReader>().constFirst();
    EXPECT_EQ(reader->anchor, QStringLiteral("general.permissions"));
    int requests = 0;
    Cancellables watching = reader->requests.onChange([&] { ++requests; });
    navigation->showPermissions();
    navigation->showPermissions();
    EXPECT_EQ(requests, 2);
}

// usageText

TEST_F(GeneralSettingsTest, APermissionThatNobodyListsExplainsItself)
{
    add("one");
    for (const SystemPermission permission : allSystemPermissions)
        EXPECT_EQ(usage(permission), explanation(permission));
}

TEST_F(GeneralSettingsTest, TheUsageNamesThoseThatRequireThePermissionAndThoseItIsOptionalFor)
{
    const auto permission = SystemPermission::accessibility;
    add("a")->requirements = {requirement(permission)};
    add("b")->requirements = {requirement(permission, Level::optional)};
    add("c")->requirements = {requirement(permission), requirement(SystemPermission::appleEvents)};
    EXPECT_EQ(usage(permission), QStringLiteral("Required by The a, The c · Optional for The b"));
    EXPECT_EQ(usage(SystemPermission::appleEvents), QStringLiteral("Required by The c"));
}

TEST_F(GeneralSettingsTest, AnEmptyPartOfTheUsageIsLeftOut)
{
    add("a")->requirements = {requirement(SystemPermission::screenRecording, Level::optional)};
    EXPECT_EQ(usage(SystemPermission::screenRecording), QStringLiteral("Optional for The a"));
}

} // namespace
} // namespace orvane::tests

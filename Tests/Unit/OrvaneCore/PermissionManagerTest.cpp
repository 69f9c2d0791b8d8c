#include "OrvaneCore/Permissions/PermissionManager.h"
#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

const QString automationURL =
    QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_Automation");

struct PermissionManagerTest : testing::Test {
    FakePlatform fake;
};

} // namespace

TEST(SystemPermission, TheTable)
{
    struct Row {
        const char* raw;
        const char* name;
        const char* explanation;
        const char* page;
    };
    const std::array rows{
        Row{"accessibility", "Accessibility",
            "Move, focus, and read windows of other apps (Alt-Tab, cut & paste).", "Privacy_Accessibility"},
        Row{"inputMonitoring", "Input Monitoring", "See keyboard and mouse input to remap keys and buttons.",
            "Privacy_ListenEvent"},
        Row{"screenRecording", "Screen Recording",
            "Capture live window thumbnails for the switcher and dock previews.", "Privacy_ScreenCapture"},
        Row{"appleEvents", "Automation", "Ask Finder for the selected files and target folder (cut & paste).",
            "Privacy_Automation"},
    };
    ASSERT_EQ(rows.size(), allSystemPermissions.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const SystemPermission permission = allSystemPermissions[i];
        EXPECT_EQ(rawValue(permission).toStdString(), rows[i].raw);
        EXPECT_EQ(displayName(permission).toStdString(), rows[i].name);
        EXPECT_EQ(explanation(permission).toStdString(), rows[i].explanation);
        EXPECT_EQ(settingsURLString(permission).toStdString(),
                  std::string("x-apple.systempreferences:com.apple.preference.security?") + rows[i].page);
    }
}

TEST_F(PermissionManagerTest, MakingOneReadsAllStatusesOnce)
{
    fake.permissions.inputMonitoring = true;
    fake.permissions.automation = Permissions::noErr;
    const auto manager = PermissionManager::make();
    const PermissionStatuses expected{{SystemPermission::accessibility, PermissionStatus::denied},
                                      {SystemPermission::inputMonitoring, PermissionStatus::granted},
                                      {SystemPermission::screenRecording, PermissionStatus::denied},
                                      {SystemPermission::appleEvents, PermissionStatus::granted}};
    EXPECT_EQ(manager->statuses(), expected);
    EXPECT_EQ(fake.permissions.automationTargets, QStringList{QStringLiteral("com.apple.finder")});
    EXPECT_TRUE(fake.permissions.requests.isEmpty());
}

TEST_F(PermissionManagerTest, ATestMapReadsAsItIsAndTheRestAsNotDetermined)
{
    const auto manager =
        PermissionManager::make({{SystemPermission::screenRecording, PermissionStatus::granted}});
    EXPECT_EQ(manager->status(SystemPermission::screenRecording), PermissionStatus::granted);
    EXPECT_EQ(manager->status(SystemPermission::accessibility), PermissionStatus::notDetermined);
}

TEST_F(PermissionManagerTest, AutomationAnswersMapToStatuses)
{
    const std::vector<std::pair<Permissions::OSStatus, PermissionStatus>> rows{
        {Permissions::noErr, PermissionStatus::granted},
        {Permissions::errAEEventNotPermitted, PermissionStatus::denied},
        {Permissions::errAEEventWouldRequireUserConsent, PermissionStatus::notDetermined},
        {Permissions::procNotFound, PermissionStatus::notDetermined},
        {1, PermissionStatus::notDetermined},
    };
    const auto manager = PermissionManager::make();
    for (const auto& [answer, status] : rows) {
        fake.permissions.automation = answer;
        manager->refresh();
        EXPECT_EQ(manager->status(SystemPermission::appleEvents), status) << answer;
    }
}

TEST_F(PermissionManagerTest, RefreshAnnouncesOncePerPermissionEvenWithoutAChange)
{
    const auto manager = PermissionManager::make();
    int announcements = 0;
    const auto subscription = manager->onChange([&] { ++announcements; });
    manager->refresh();
    EXPECT_EQ(announcements, 4);
}

namespace {

struct Asked {
    SystemPermission permission;
    const char* name;
    bool FakePermissions::*granted;
};

class PermissionRequestTest : public testing::TestWithParam<Asked> {
protected:
    FakePlatform fake;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Permissions, PermissionRequestTest,
                         testing::Values(Asked{SystemPermission::accessibility, "accessibility",
                                               &FakePermissions::accessibility},
                                         Asked{SystemPermission::inputMonitoring, "inputMonitoring",
                                               &FakePermissions::inputMonitoring},
                                         Asked{SystemPermission::screenRecording, "screenRecording",
                                               &FakePermissions::screenRecording}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(PermissionRequestTest, AsksForThatOneAloneAndReadsAllAgain)
{
    const auto manager = PermissionManager::make();
    fake.permissions.userAnswer = [this] { fake.permissions.*GetParam().granted = true; };
    int announcements = 0;
    const auto subscription = manager->onChange([&] { ++announcements; });
    manager->request(GetParam().permission);
    EXPECT_EQ(fake.permissions.requests, QStringList{QLatin1String(GetParam().name)});
    EXPECT_EQ(announcements, 4);
    for (const SystemPermission permission :
         {SystemPermission::accessibility, SystemPermission::inputMonitoring,
          SystemPermission::screenRecording})
        EXPECT_EQ(isGranted(manager->status(permission)), permission == GetParam().permission);
    EXPECT_TRUE(fake.workspace.openedURLs.isEmpty());
}

TEST_P(PermissionRequestTest, ARefusalIsDeniedAtTheNextReading)
{
    const auto manager = PermissionManager::make({});
    manager->request(GetParam().permission);
    EXPECT_EQ(manager->status(GetParam().permission), PermissionStatus::denied);
}

TEST_F(PermissionManagerTest, AutomationIsAskedForOffTheMainThreadAndReadAgainOnIt)
{
    const auto manager = PermissionManager::make();
    fake.permissions.userAnswer = [this] { fake.permissions.automation = Permissions::noErr; };
    manager->request(SystemPermission::appleEvents);
    EXPECT_TRUE(fake.permissions.requests.isEmpty());
    fake.runLoop.drainDetached();
    EXPECT_EQ(fake.permissions.requests, QStringList{QStringLiteral("appleEvents")});
    EXPECT_EQ(manager->status(SystemPermission::appleEvents), PermissionStatus::notDetermined);
    fake.runLoop.drain();
    EXPECT_EQ(manager->status(SystemPermission::appleEvents), PermissionStatus::granted);
}

TEST_F(PermissionManagerTest, DeniedAutomationOpensTheSettingsAndAsksNothing)
{
    fake.permissions.automation = Permissions::errAEEventNotPermitted;
    const auto manager = PermissionManager::make();
    manager->request(SystemPermission::appleEvents);
    fake.runLoop.drainDetached();
    EXPECT_EQ(fake.workspace.openedURLs, QStringList{automationURL});
    EXPECT_TRUE(fake.permissions.requests.isEmpty());
}

TEST_F(PermissionManagerTest, AfterTheSettingsForDeniedAutomationAllIsReadAgain)
{
    fake.permissions.automation = Permissions::errAEEventNotPermitted;
    const auto manager = PermissionManager::make();
    fake.permissions.screenRecording = true;
    int announcements = 0;
    const auto subscription = manager->onChange([&] { ++announcements; });
    manager->request(SystemPermission::appleEvents);
    EXPECT_EQ(announcements, 4);
    EXPECT_EQ(manager->status(SystemPermission::appleEvents), PermissionStatus::denied);
    EXPECT_EQ(manager->status(SystemPermission::screenRecording), PermissionStatus::granted);
}

TEST_F(PermissionManagerTest, AManagerThatIsGoneWhenTheUserAnswersIsNotMissed)
{
    auto manager = PermissionManager::make();
    manager->request(SystemPermission::appleEvents);
    manager.reset();
    fake.runLoop.drainDetached();
    fake.runLoop.drain();
    EXPECT_EQ(fake.permissions.requests.size(), 1);
}

TEST_F(PermissionManagerTest, SettingsOpenOnThePermissionsPage)
{
    const auto manager = PermissionManager::make();
    QStringList pages;
    for (const SystemPermission permission : allSystemPermissions) {
        manager->openSettings(permission);
        pages.append(settingsURLString(permission));
    }
    EXPECT_EQ(fake.workspace.openedURLs, pages);
    EXPECT_EQ(fake.workspace.openedURLs.last(), automationURL);
}

TEST_F(PermissionManagerTest, WhatIsNoURLOpensNothing)
{
    for (const char* text :
         {"", "x-apple.systempreferences:com.apple|preference", "https://[", "http://a b/"})
        PermissionManager::openSettings(QLatin1String(text));
    EXPECT_TRUE(fake.workspace.openedURLs.isEmpty()) << fake.workspace.openedURLs.join(u' ').toStdString();
    PermissionManager::openSettings(automationURL);
    EXPECT_EQ(fake.workspace.openedURLs, QStringList{automationURL});
}

#include "PlatformLinux/Session/LinuxPermissions.h"
#include "Fakes/FakeLogSink.h"
#include "Platform/NotificationCenter.h"

#include <gmock/gmock.h>

namespace orvane::tests {

namespace {

const QString fileManager = QStringLiteral("com.apple.finder");

void readAll(LinuxPermissions& permissions)
{
    EXPECT_FALSE(permissions.axIsProcessTrusted());
    EXPECT_FALSE(permissions.preflightListenEventAccess());
    EXPECT_FALSE(permissions.preflightScreenCaptureAccess());
    for (const auto prompt : {Permissions::Prompt::no, Permissions::Prompt::yes})
        EXPECT_EQ(permissions.determinePermissionToAutomateTarget(fileManager, prompt),
                  Permissions::errAEEventNotPermitted);
}

void requestAll(LinuxPermissions& permissions)
{
    permissions.axIsProcessTrustedWithPrompt();
    permissions.requestListenEventAccess();
    permissions.requestScreenCaptureAccess();
}

} // namespace

TEST(LinuxPermissions, AWaylandSessionDeniesEverythingAndSaysSoOnce)
{
    FakeLogSink log;
    NotificationCenter center;
    LinuxPermissions permissions(log, center, QStringLiteral("wayland"));
    readAll(permissions);
    requestAll(permissions);
    readAll(permissions);
    ASSERT_EQ(log.entries().size(), 1u);
    EXPECT_EQ(log.entries()[0].category, QStringLiteral("Permissions"));
    EXPECT_TRUE(log.entries()[0].message.contains(QStringLiteral("Wayland")));
}

TEST(LinuxPermissions, WithoutAnXServerEverythingIsDeniedAndThatIsSaidOnce)
{
    FakeLogSink log;
    NotificationCenter center;
    LinuxPermissions permissions(log, center, QStringLiteral("x11"));
    readAll(permissions);
    requestAll(permissions);
    ASSERT_EQ(log.entries().size(), 1u);
    EXPECT_TRUE(log.entries()[0].message.contains(QStringLiteral("X server")));
}

TEST(DenialLog, SaysEachSentenceOnceUnlessAsked)
{
    FakeLogSink log;
    DenialLog denials(log);
    denials.say(QStringLiteral("one"));
    denials.say(QStringLiteral("two"));
    denials.say(QStringLiteral("one"));
    EXPECT_EQ(log.messages(), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    denials.sayAgain(QStringLiteral("one"));
    denials.say(QStringLiteral("one"));
    EXPECT_EQ(log.messages().size(), 3);
}

TEST(XAccess, WithoutAServerNothingIsGrantedAndAReasonGiven)
{
    for (const XAccess& access : {tryInputAccess(), tryScreenAccess()}) {
        EXPECT_FALSE(access.granted);
        EXPECT_FALSE(access.reason.isEmpty());
    }
}

} // namespace orvane::tests

#include "PlatformLinux/Session/LinuxPermissions.h"
#include "Fakes/FakeLogSink.h"
#include "Platform/NotificationCenter.h"

#include <array>

#include <gmock/gmock.h>

namespace orvane::tests {

namespace {

constexpr std::array throughTheServer{Permissions::Right::accessibility, Permissions::Right::listenEvent,
                                      Permissions::Right::screenCapture};

void readAll(LinuxPermissions& permissions)
{
    EXPECT_FALSE(permissions.axIsProcessTrusted());
    EXPECT_FALSE(permissions.preflightListenEventAccess());
    EXPECT_FALSE(permissions.preflightScreenCaptureAccess());
}

void requestAll(LinuxPermissions& permissions)
{
    permissions.axIsProcessTrustedWithPrompt();
    permissions.requestListenEventAccess();
    permissions.requestScreenCaptureAccess();
}

} // namespace

TEST(LinuxPermissions, AWaylandSessionDeniesWhatWouldWorkByHalfAndSaysWhyOfEachOnce)
{
    FakeLogSink log;
    NotificationCenter center;
    LinuxPermissions permissions(log, center, SessionKind::xwayland);
    readAll(permissions);
    requestAll(permissions);
    readAll(permissions);
    ASSERT_EQ(log.entries().size(), 3u);
    QStringList reasons;
    for (const auto right : throughTheServer) {
        const Permissions::Denial denial = permissions.denial(right);
        EXPECT_FALSE(denial.canBeRequested);
        EXPECT_FALSE(denial.needsRestart);
        reasons.append(denial.reason);
    }
    EXPECT_EQ(log.messages(), reasons);
    for (const auto& entry : log.entries()) {
        EXPECT_EQ(entry.category, QStringLiteral("Permissions"));
        EXPECT_TRUE(entry.message.startsWith(QStringLiteral("This is a Wayland session.")));
    }
}

TEST(LinuxPermissions, TheFileManagerIsAskedInAnyKindOfSession)
{
    FakeLogSink log;
    NotificationCenter center;
    for (const auto session : {SessionKind::x11, SessionKind::xwayland, SessionKind::waylandAlone}) {
        LinuxPermissions permissions(log, center, session);
        const QString reason = permissions.denial(Permissions::Right::automation).reason;
        EXPECT_FALSE(reason.contains(QStringLiteral("Wayland")));
        EXPECT_TRUE(reason.isEmpty() || reason.startsWith(QStringLiteral("The file manager")));
    }
}

TEST(LinuxPermissions, AWaylandSessionWithoutAnXServerSaysWhatToInstall)
{
    FakeLogSink log;
    NotificationCenter center;
    LinuxPermissions permissions(log, center, SessionKind::waylandAlone);
    readAll(permissions);
    ASSERT_EQ(log.entries().size(), 1u);
    EXPECT_TRUE(log.entries()[0].message.contains(QStringLiteral("Install Xwayland")));
}

TEST(LinuxPermissions, WithoutAnXServerEverythingIsDeniedAndThatIsSaidOnce)
{
    FakeLogSink log;
    NotificationCenter center;
    LinuxPermissions permissions(log, center, SessionKind::withoutServer);
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

// The effects on permissions that only a real X server and window manager have.
#include "Contract/Support/ToolkitServer.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/WindowManagersWord.h"
#include "Fakes/FakeLogSink.h"
#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Session/LinuxPermissions.h"
#include "Support/Eventually.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <xcb/xinput.h>

namespace orvane::tests {

namespace {

constexpr auto deadline = 10s;

/// While it lives, new connections of this process are those of a client that the server doesn't trust.
class Untrusted {
public:
    Untrusted()
    {
        const QString file = m_directory.filePath(QStringLiteral("authority"));
        QProcess xauth;
        xauth.start(u"xauth"_qs, {u"-q"_qs, u"-f"_qs, file, u"generate"_qs, qEnvironmentVariable("DISPLAY"),
                                  u"."_qs, u"untrusted"_qs, u"timeout"_qs, u"60"_qs});
        EXPECT_TRUE(xauth.waitForFinished() && xauth.exitCode() == 0)
            << xauth.readAllStandardError().constData();
        qputenv("XAUTHORITY", QFile::encodeName(file));
    }
    ~Untrusted() { qunsetenv("XAUTHORITY"); }
    Untrusted(const Untrusted&) = delete;
    Untrusted& operator=(const Untrusted&) = delete;

private:
    QTemporaryDir m_directory;
};

class LinuxPermissionsLive : public ::testing::Test {
protected:
    bool isTrusted() { return m_permissions.axIsProcessTrusted(); }
    [[nodiscard]] int countedChanges() const { return m_changes; }

    FakeLogSink m_log;
    NotificationCenter m_center;
    LinuxPermissions m_permissions{m_log, m_center};

private:
    int m_changes = 0;
    std::unique_ptr<NotificationCenter::Token> m_observer = m_center.addObserver(
        Permissions::didChangeNotification(), [this](const Notification&) { ++m_changes; });
};

} // namespace

TEST_F(LinuxPermissionsLive, AccessibilityFollowsTheWindowManager)
{
    WindowManagersWord word;
    ASSERT_TRUE(isTrusted());
    word.remove();
    EXPECT_TRUE(eventually(deadline, [this] { return !isTrusted(); }));
    const QString gone = QStringLiteral("The window manager is gone");
    ASSERT_EQ(m_log.messages().size(), 2);
    EXPECT_TRUE(m_log.messages()[0].startsWith(gone));
    const QString denial = m_log.messages()[1];
    EXPECT_TRUE(denial.contains(QStringLiteral("window manager")));
    const WindowManagersWord::Window another = word.appear();
    EXPECT_TRUE(eventually(deadline, [this] { return isTrusted(); }));
    word.die(another);
    EXPECT_TRUE(eventually(deadline, [this] { return !isTrusted(); }));
    EXPECT_EQ(m_log.messages().filter(gone).size(), 2) << "each time that it goes";
    EXPECT_EQ(m_log.messages().count(denial), 1) << "why something is denied is said once";
    EXPECT_TRUE(m_log.messages().contains(QStringLiteral("A window manager is there again.")));
}

TEST_F(LinuxPermissionsLive, ADeadWindowManagersWordDoesNotCount)
{
    WindowManagersWord word;
    word.die(word.appear());
    EXPECT_FALSE(isTrusted());
}

TEST_F(LinuxPermissionsLive, AWindowManagerThatMarksItsWindowLastIsSeen)
{
    WindowManagersWord word;
    word.remove();
    ASSERT_TRUE(eventually(deadline, [this] { return !isTrusted(); }));
    const int changes = countedChanges();
    const WindowManagersWord::Window window = word.nameWindow();
    QCoreApplication::processEvents();
    EXPECT_FALSE(isTrusted()) << "anybody can name a window";
    word.markWindow(window);
    EXPECT_TRUE(eventually(deadline, [this] { return isTrusted(); }));
    EXPECT_EQ(countedChanges(), changes + 1);
    word.die(window);
}

TEST_F(LinuxPermissionsLive, AskingForAWindowManagerSaysAgainWhyThereIsNone)
{
    WindowManagersWord word;
    word.remove();
    ASSERT_FALSE(isTrusted());
    const qsizetype said = m_log.messages().size();
    m_permissions.axIsProcessTrustedWithPrompt();
    ASSERT_EQ(m_log.messages().size(), said + 1);
    EXPECT_TRUE(m_log.messages().last().contains(QStringLiteral("no window manager is running")));
    word.restore();
    ASSERT_TRUE(eventually(deadline, [this] { return isTrusted(); }));
    const qsizetype saidBefore = m_log.messages().size();
    m_permissions.axIsProcessTrustedWithPrompt();
    EXPECT_EQ(m_log.messages().size(), saidBefore);
}

TEST_F(LinuxPermissionsLive, AClientThatTheServerDoesNotTrustIsDenied)
{
    const Untrusted untrusted;
    EXPECT_FALSE(m_permissions.preflightListenEventAccess());
    EXPECT_FALSE(m_permissions.preflightScreenCaptureAccess());
    EXPECT_EQ(m_log.messages().size(), 2);
    for (const QString& message : m_log.messages())
        EXPECT_TRUE(message.contains(QStringLiteral("ssh -X"))) << qPrintable(message);
}

TEST_F(LinuxPermissionsLive, ADeniedRequestSaysWhyEachTimeAndAReadOnlyOnce)
{
    const Untrusted untrusted;
    EXPECT_FALSE(m_permissions.preflightListenEventAccess());
    EXPECT_FALSE(m_permissions.preflightListenEventAccess());
    EXPECT_EQ(m_log.messages().size(), 1);
    m_permissions.requestListenEventAccess();
    m_permissions.requestListenEventAccess();
    EXPECT_EQ(m_log.messages().size(), 3);
}

TEST_F(LinuxPermissionsLive, ARequestTriesAgain)
{
    {
        const Untrusted untrusted;
        ASSERT_FALSE(m_permissions.preflightListenEventAccess());
        ASSERT_FALSE(m_permissions.preflightScreenCaptureAccess());
    }
    EXPECT_FALSE(m_permissions.preflightListenEventAccess());
    m_permissions.requestListenEventAccess();
    m_permissions.requestScreenCaptureAccess();
    EXPECT_TRUE(m_permissions.preflightListenEventAccess());
    EXPECT_TRUE(m_permissions.preflightScreenCaptureAccess());
}

TEST_F(LinuxPermissionsLive, TryingForInputTakesNoKeyFromAnybody)
{
    QLineEdit line;
    line.show();
    line.activateWindow();
    ASSERT_TRUE(eventually(deadline, [&] { return line.hasFocus(); }));
    Hardware hardware;
    const Hardware::KeyCode a = hardware.key("a");
    constexpr int keys = 60;
    for (int i = 0; i < keys; ++i) {
        hardware.press(a);
        m_permissions.requestListenEventAccess();
        hardware.release(a);
        m_permissions.requestListenEventAccess();
    }
    EXPECT_TRUE(eventually(deadline, [&] { return line.text().size() >= keys; }));
    EXPECT_EQ(line.text(), QString(keys, u'a'));
}

TEST_F(LinuxPermissionsLive, AKeyboardThatSomebodyHoldsIsNoDenial)
{
    const auto x = ToolkitServer::ofApplication();
    const auto devices = xcb_input_xi_query_device(x->xcb(), XCB_INPUT_DEVICE_ALL);
    const XcbReply<xcb_input_xi_query_device_reply_t> reply(
        xcb_input_xi_query_device_reply(x->xcb(), devices, nullptr));
    xcb_input_device_id_t keyboard = 0;
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem;
         xcb_input_xi_device_info_next(&each)) {
        if (QByteArray(xcb_input_xi_device_info_name(each.data), each.data->name_len) == "testkbd")
            keyboard = each.data->deviceid;
    }
    const auto grab = xcb_input_xi_grab_device(x->xcb(), x->root(), XCB_CURRENT_TIME, XCB_CURSOR_NONE,
                                               keyboard, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                               XCB_INPUT_GRAB_MODE_22_ASYNC, false, 0, nullptr);
    const XcbReply<xcb_input_xi_grab_device_reply_t> grabbed(
        xcb_input_xi_grab_device_reply(x->xcb(), grab, nullptr));
    ASSERT_TRUE(grabbed && grabbed->status == XCB_GRAB_STATUS_SUCCESS);
    m_permissions.requestListenEventAccess();
    EXPECT_TRUE(m_permissions.preflightListenEventAccess());
    xcb_input_xi_ungrab_device(x->xcb(), XCB_CURRENT_TIME, keyboard);
    xcb_flush(x->xcb());
}

TEST_F(LinuxPermissionsLive, AnyOtherTargetIsNotThere)
{
    EXPECT_EQ(m_permissions.determinePermissionToAutomateTarget(QStringLiteral("org.mozilla.firefox"),
                                                                Permissions::Prompt::no),
              Permissions::procNotFound);
}

TEST_F(LinuxPermissionsLive, AWaylandSessionDeniesWhatItsXServerWouldAllow)
{
    LinuxPermissions permissions(m_log, m_center, SessionKind::xwayland);
    EXPECT_FALSE(permissions.axIsProcessTrusted());
    EXPECT_FALSE(permissions.preflightListenEventAccess());
    EXPECT_FALSE(permissions.preflightScreenCaptureAccess());
    EXPECT_EQ(m_log.messages().size(), 3) << "each says why by itself";
}

} // namespace orvane::tests

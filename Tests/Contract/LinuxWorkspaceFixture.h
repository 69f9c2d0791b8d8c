// The workspace of the Linux layer on the private desktop, with windows of this process and of terminals.
#pragma once

#include "Contract/Support/ForeignProgram.h"
#include "Contract/Support/ToolkitServer.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Session/LinuxWorkspace.h"
#include "PlatformLinux/Session/SingleInstance.h"
#include "Support/Eventually.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QWidget>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <vector>

namespace orvane::tests {

/// Makes a change on the root window that has no other effect, and notices when the server announces it:
/// earlier changes have been handled by then.
class Mark : private QAbstractNativeEventFilter {
public:
    Mark() { qApp->installNativeEventFilter(this); }
    ~Mark() override { qApp->removeNativeEventFilter(this); }

    void make()
    {
        m_isHeard = false;
        xcb_change_property(m_x.xcb(), XCB_PROP_MODE_REPLACE, m_x.root(), m_name, XCB_ATOM_CARDINAL, 32, 0,
                            nullptr);
        xcb_flush(m_x.xcb());
    }

    [[nodiscard]] bool isHeard() const { return m_isHeard; }

private:
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override
    {
        const auto* told = static_cast<const xcb_property_notify_event_t*>(message);
        if ((told->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && told->atom == m_name)
            m_isHeard = true;
        return false;
    }

    ToolkitServer m_x = *ToolkitServer::ofApplication();
    xcb_atom_t m_name = m_x.atom("_ORVANE_TEST_MARK");
    bool m_isHeard = false;
};

class LinuxWorkspaceFixture : public ::testing::Test {
protected:
    static constexpr auto deadline = 15s;
    /// In m_activated, it stands for no program.
    const QString none = QStringLiteral("none");

    LinuxWorkspaceFixture()
    {
        m_token = m_workspace.notificationCenter().addObserver(
            Workspace::didActivateApplicationNotification(), [this](const Notification& notification) {
                const QVariant told = notification.userInfo.value(Workspace::applicationKey());
                m_activated.append(
                    told.isValid()
                        ? told.value<RunningApplication>().bundleIdentifier.value_or(QStringLiteral("absent"))
                        : none);
            });
    }

    bool isFrontmost(const QString& identifier)
    {
        const auto frontmost = m_workspace.frontmostApplication();
        return frontmost && frontmost->bundleIdentifier == identifier;
    }

    xcb_window_t activeWindow()
    {
        const QByteArray bytes = m_x->property(m_x->root(), m_x->atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
        xcb_window_t window = XCB_WINDOW_NONE;
        if (bytes.size() >= 4)
            std::memcpy(&window, bytes.constData(), sizeof window);
        return window;
    }

    /// Sets the active window as the window manager does, which writes again only when the focus moves.
    void tellActive(xcb_window_t window)
    {
        xcb_change_property(m_x->xcb(), XCB_PROP_MODE_REPLACE, m_x->root(), m_x->atom("_NET_ACTIVE_WINDOW"),
                            XCB_ATOM_WINDOW, 32, 1, &window);
        xcb_flush(m_x->xcb());
    }

    /// Sets it and waits until the workspace has looked.
    void tellActiveAndLetLook(xcb_window_t window)
    {
        tellActive(window);
        m_mark.make();
        EXPECT_TRUE(eventually(deadline, [this] { return m_mark.isHeard(); }));
    }

    xcb_window_t windowOfTerminal()
    {
        m_programs.push_back(std::make_unique<ForeignProgram>(
            u"xterm"_qs, QStringList{u"-fa"_qs, u"monospace"_qs, u"-e"_qs, u"cat"_qs}));
        const qint64 pid = m_programs.back()->pid();
        EXPECT_TRUE(eventually(deadline, [&] {
            const auto frontmost = m_workspace.frontmostApplication();
            return frontmost && frontmost->processIdentifier == pid;
        }));
        return activeWindow();
    }

    xcb_window_t ownWindow()
    {
        m_own = std::make_unique<QWidget>();
        m_own->resize(200, 100);
        m_own->show();
        m_own->activateWindow();
        const auto id = static_cast<xcb_window_t>(m_own->winId());
        EXPECT_TRUE(eventually(deadline, [&] { return activeWindow() == id; }));
        EXPECT_TRUE(eventually(deadline, [&] { return isFrontmost(u"net.lindenrow.orvane"_qs); }));
        return id;
    }

    FakeLogSink m_log;
    SingleInstance m_singleInstance{m_log};
    LinuxWorkspace m_workspace{m_log, m_singleInstance};
    std::optional<ToolkitServer> m_x = ToolkitServer::ofApplication();
    Mark m_mark;
    std::vector<std::unique_ptr<ForeignProgram>> m_programs;
    std::unique_ptr<QWidget> m_own;
    std::unique_ptr<NotificationCenter::Token> m_token;
    QStringList m_activated;
};

} // namespace orvane::tests

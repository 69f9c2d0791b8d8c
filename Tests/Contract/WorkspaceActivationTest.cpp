// The window that comes to the front when a program is activated, and the requests for it.
#include "Contract/LinuxWorkspaceFixture.h"

namespace orvane::tests {

namespace {

class WorkspaceActivationTest : public LinuxWorkspaceFixture {
protected:
    std::uint32_t value(xcb_window_t window, const char* name, xcb_atom_t type)
    {
        const QByteArray bytes = m_x->property(window, m_x->atom(name), type);
        std::uint32_t value = 0;
        if (bytes.size() >= 4)
            std::memcpy(&value, bytes.constData(), sizeof value);
        return value;
    }

    /// Asks as a panel or a pager does.
    void ask(xcb_window_t window, const char* name, std::uint32_t first, std::uint32_t second = 0)
    {
        xcb_client_message_event_t request = {};
        request.response_type = XCB_CLIENT_MESSAGE;
        request.format = 32;
        request.window = window;
        request.type = m_x->atom(name);
        request.data.data32[0] = first;
        request.data.data32[1] = second;
        xcb_send_event(m_x->xcb(), 0, m_x->root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&request));
        xcb_flush(m_x->xcb());
    }
};

} // namespace

TEST_F(WorkspaceActivationTest, OfSeveralWindowsTheOneComesBackThatWasActiveLast)
{
    const xcb_window_t first = ownWindow();
    QWidget second;
    second.resize(100, 100);
    second.show();
    second.activateWindow();
    const auto id = static_cast<xcb_window_t>(second.winId());
    ASSERT_TRUE(eventually(deadline, [&] { return activeWindow() == id; }));
    const RunningApplication ourselves = *m_workspace.frontmostApplication();
    for (const xcb_window_t last : {first, id}) {
        ask(last, "_NET_ACTIVE_WINDOW", 2);
        ASSERT_TRUE(eventually(deadline, [&] { return activeWindow() == last; }));
        windowOfTerminal();
        EXPECT_TRUE(m_workspace.activateApplication(ourselves));
        EXPECT_TRUE(eventually(deadline, [&] { return activeWindow() == last; }));
    }
    windowOfTerminal();
    second.close();
    ASSERT_TRUE(eventually(deadline, [&] { return value(id, "WM_STATE", m_x->atom("WM_STATE")) == 0; }));
    EXPECT_TRUE(eventually(deadline, [&] {
        return m_workspace.activateApplication(ourselves) && activeWindow() == first;
    })) << "the one before it, now that it is closed";
}

TEST_F(WorkspaceActivationTest, AWindowThatWasNeverSeenActiveIsFound)
{
    windowOfTerminal();
    const xcb_window_t terminal = activeWindow();
    const RunningApplication application = *m_workspace.frontmostApplication();
    ownWindow();
    LinuxWorkspace another(m_log, m_singleInstance);
    EXPECT_TRUE(another.activateApplication(application));
    EXPECT_TRUE(eventually(deadline, [&] { return activeWindow() == terminal; }));
}

TEST_F(WorkspaceActivationTest, AMinimizedWindowIsRestored)
{
    const xcb_window_t terminal = windowOfTerminal();
    const RunningApplication application = *m_workspace.frontmostApplication();
    ownWindow();
    constexpr std::uint32_t iconic = 3;
    const auto isIconic = [&] { return value(terminal, "WM_STATE", m_x->atom("WM_STATE")) == iconic; };
    ask(terminal, "WM_CHANGE_STATE", iconic);
    ASSERT_TRUE(eventually(deadline, isIconic));
    EXPECT_TRUE(m_workspace.activateApplication(application));
    EXPECT_TRUE(eventually(deadline, [&] { return activeWindow() == terminal && !isIconic(); }));
}

TEST_F(WorkspaceActivationTest, AWindowOnAnotherDesktopBringsThatDesktop)
{
    const auto currentDesktop = [&] { return value(m_x->root(), "_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL); };
    ASSERT_GE(value(m_x->root(), "_NET_NUMBER_OF_DESKTOPS", XCB_ATOM_CARDINAL), 2u);
    ask(m_x->root(), "_NET_CURRENT_DESKTOP", 0);
    ASSERT_TRUE(eventually(deadline, [&] { return currentDesktop() == 0; }));
    const xcb_window_t terminal = windowOfTerminal();
    const RunningApplication application = *m_workspace.frontmostApplication();
    ownWindow();
    ask(terminal, "_NET_WM_DESKTOP", 1, 2);
    ASSERT_TRUE(
        eventually(deadline, [&] { return value(terminal, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL) == 1; }));
    EXPECT_TRUE(m_workspace.activateApplication(application));
    EXPECT_TRUE(eventually(deadline, [&] { return activeWindow() == terminal && currentDesktop() == 1; }));
    EXPECT_EQ(value(terminal, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL), 1u) << "it stays where it lives";
    ask(m_x->root(), "_NET_CURRENT_DESKTOP", 0);
    EXPECT_TRUE(eventually(deadline, [&] { return currentDesktop() == 0; }));
}

TEST_F(WorkspaceActivationTest, AProgramWithoutAWindowIsNotActivated)
{
    const ForeignProgram silent(u"tail"_qs, {u"-f"_qs, u"/dev/null"_qs});
    EXPECT_FALSE(m_workspace.activateApplication({silent.pid(), std::nullopt, u"tail"_qs}));
    EXPECT_FALSE(m_workspace.activateApplication({}));
}

} // namespace orvane::tests

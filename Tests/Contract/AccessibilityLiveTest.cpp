// The reports about programs and their windows that only a real X server and window manager give.
#include "Contract/AccessibilityFixture.h"

#include "Contract/Support/ToolkitServer.h"
#include "PlatformLinux/Accessibility/WindowReader.h"

#include <QWidget>

#include <cstring>
#include <limits>

#include <unistd.h>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;

/// Grabs the whole server, as some programs do during a drag.
class ServerGrab {
public:
    ServerGrab() : m_connection(xcb_connect(nullptr, nullptr))
    {
        xcb_grab_server(m_connection.get());
        sync();
    }
    ~ServerGrab()
    {
        xcb_ungrab_server(m_connection.get());
        sync();
    }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;

private:
    void sync()
    {
        const auto cookie = xcb_get_input_focus(m_connection.get());
        const XcbReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(m_connection.get(), cookie, nullptr));
    }

    XcbConnection m_connection;
};

} // namespace

class X11ElementsLiveTest : public X11ElementsTest {
protected:
    QString titleOf(const AXUIElement& element)
    {
        return read<QString>(element, "AXTitle").value_or(QString());
    }

    QList<WindowId> stacking()
    {
        const QByteArray bytes =
            m_x.property(m_x.root(), m_x.atom("_NET_CLIENT_LIST_STACKING"), XCB_ATOM_WINDOW);
        QList<WindowId> list(bytes.size() / 4);
        if (!list.isEmpty())
            std::memcpy(list.data(), bytes.constData(), std::size_t(list.size()) * 4);
        return list;
    }

    /// Changes the state as another program would do it.
    void changeState(WindowId window, const char* state)
    {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = m_x.atom("_NET_WM_STATE");
        message.data.data32[0] = 1;
        message.data.data32[1] = m_x.atom(state);
        xcb_send_event(m_x.xcb(), 0, m_x.root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&message));
        xcb_flush(m_x.xcb());
        EXPECT_TRUE(eventually(deadline, [&] { return m_windows.hasState(window, state); }));
        EXPECT_TRUE(settleWindowManager());
    }

    ToolkitServer m_x = *ToolkitServer::ofApplication();
};

TEST_F(X11ElementsLiveTest, AnApplicationKnowsItsWindowsTheFrontOneFirst)
{
    QWidget first, second;
    for (QWidget* window : {&first, &second}) {
        window->setWindowTitle(window == &first ? u"First"_qs : u"Second – zwölf"_qs);
        window->setGeometry(100, 100, 300, 200);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(eventually(deadline, [&] { return m_windows.active() == window->winId(); }));
    }
    ASSERT_TRUE(settleWindowManager());
    const AXUIElement application = m_accessibility.createApplication(::getpid());
    EXPECT_EQ(read<QString>(application, "AXRole"), u"AXApplication"_qs);
    EXPECT_FALSE(titleOf(application).isEmpty());
    const auto windows = read<QList<AXUIElement>>(application, "AXWindows");
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 2);
    EXPECT_EQ(titleOf(windows->at(0)), u"Second – zwölf"_qs);
    EXPECT_EQ(titleOf(windows->at(1)), u"First"_qs);
    EXPECT_EQ(read<QList<AXUIElement>>(application, "AXChildren"), windows);
    EXPECT_EQ(read<AXUIElement>(application, "AXFocusedWindow"), windows->at(0));
    EXPECT_EQ(read<AXUIElement>(application, "AXMainWindow"), windows->at(0));
    EXPECT_EQ(read<bool>(windows->at(0), "AXMain"), true);
    EXPECT_EQ(read<bool>(windows->at(1), "AXMain"), false);
    EXPECT_EQ(read<bool>(windows->at(0), "AXFocused"), true);
    EXPECT_EQ(read<bool>(windows->at(1), "AXFocused"), false);
    EXPECT_EQ(read<AXUIElement>(windows->at(1), "AXParent"), application);
    EXPECT_EQ(read<QString>(windows->at(1), "AXRole"), u"AXWindow"_qs);
    EXPECT_EQ(read<AXUIElement>(m_accessibility.createSystemWide(), "AXFocusedApplication"), application);

    EXPECT_EQ(set(windows->at(1), "AXMain", true), AXError::success);
    EXPECT_TRUE(eventually(deadline, [&] { return m_windows.active() == first.winId(); }));
    EXPECT_EQ(set(windows->at(1), "AXMain", false), AXError::illegalArgument);
}

TEST_F(X11ElementsLiveTest, AnApplicationInTheBackgroundStillHasItsMainWindow)
{
    const ForeignWindow behind(m_windows, WindowKind::qt, u"Behind"_qs);
    const ForeignWindow front(m_windows, WindowKind::terminal, u"Front"_qs);
    const AXUIElement application = m_accessibility.createApplication(behind.pid());
    const auto window = read<AXUIElement>(application, "AXFocusedWindow");
    ASSERT_TRUE(window);
    EXPECT_EQ(titleOf(*window), u"Behind"_qs);
    EXPECT_EQ(read<bool>(*window, "AXMain"), true);
    EXPECT_EQ(read<bool>(*window, "AXFocused"), false);
    EXPECT_EQ(set(*window, "AXFocused", true), AXError::success);
    EXPECT_TRUE(eventually(deadline, [&] { return m_windows.active() == behind.id; }));
}

TEST_F(X11ElementsLiveTest, AnApplicationWithoutWindowsHasAnEmptyListAndAProcessThatIsNoneIsInvalid)
{
    const AXUIElement withoutWindows = m_accessibility.createApplication(::getppid());
    EXPECT_EQ(read<QList<AXUIElement>>(withoutWindows, "AXWindows"), QList<AXUIElement>());
    EXPECT_EQ(errorOf(withoutWindows, "AXFocusedWindow"), AXError::noValue);
    for (const std::int64_t process : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{0x7FFFFFF0}})
        EXPECT_EQ(errorOf(m_accessibility.createApplication(process), "AXWindows"),
                  AXError::invalidUIElement);
}

TEST_F(X11ElementsLiveTest, TheDesktopAndThePanelAreNoWindows)
{
    std::optional<WindowId> ofDesktop;
    ASSERT_TRUE(
        eventually(deadline, [&] { return (ofDesktop = m_windows.find(u"Desktop"_qs)).has_value(); }));
    const QByteArray bytes = m_x.property(*ofDesktop, m_x.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL);
    std::uint32_t process = 0;
    ASSERT_EQ(bytes.size(), 4);
    std::memcpy(&process, bytes.constData(), 4);
    EXPECT_EQ(read<QList<AXUIElement>>(m_accessibility.createApplication(process), "AXWindows"),
              QList<AXUIElement>());
}

TEST_F(X11ElementsLiveTest, TheCloseButtonClosesTheWindow)
{
    const ForeignWindow window(m_windows, WindowKind::gtkHeaderBar, u"To be closed"_qs);
    const AXUIElement element = elementOf(window);
    const auto button = read<AXUIElement>(element, "AXCloseButton");
    ASSERT_TRUE(button);
    EXPECT_EQ(read<QString>(*button, "AXRole"), u"AXButton"_qs);
    EXPECT_EQ(read<AXUIElement>(*button, "AXParent"), element);
    EXPECT_EQ(perform(*button, "AXRaise"), AXError::actionUnsupported);
    EXPECT_EQ(perform(*button, "AXPress"), AXError::success);
    EXPECT_TRUE(
        eventually(deadline, [&] { return errorOf(element, "AXTitle") == AXError::invalidUIElement; }));
    EXPECT_EQ(perform(*button, "AXPress"), AXError::invalidUIElement);
    EXPECT_EQ(errorOf(*button, "AXRole"), AXError::invalidUIElement);
}

TEST_F(X11ElementsLiveTest, TheZoomButtonMaximizesAndRestores)
{
    const ForeignWindow window(m_windows, WindowKind::qt, u"To be zoomed"_qs);
    const AXUIElement element = elementOf(window);
    const auto button = read<AXUIElement>(element, "AXZoomButton");
    ASSERT_TRUE(button);
    EXPECT_TRUE(read<QList<AXUIElement>>(element, "AXChildren")->contains(*button));
    const QRect before = window.frame();
    EXPECT_EQ(perform(*button, "AXPress"), AXError::success);
    EXPECT_TRUE(eventually(deadline, [&] { return window.hasState("_NET_WM_STATE_MAXIMIZED_VERT"); }));
    EXPECT_TRUE(settleWindowManager());
    EXPECT_EQ(perform(*button, "AXPress"), AXError::success);
    EXPECT_TRUE(eventually(deadline, [&] { return window.frame() == before; }));
}

TEST_F(X11ElementsLiveTest, AWindowThatCanNotBeMaximizedHasNoZoomButton)
{
    QWidget window;
    window.setFixedSize(300, 200);
    window.setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    window.show();
    ASSERT_TRUE(eventually(deadline, [&] { return m_windows.active() == window.winId(); }));
    ASSERT_TRUE(settleWindowManager());
    const auto element = read<AXUIElement>(m_accessibility.createApplication(::getpid()), "AXFocusedWindow");
    ASSERT_TRUE(element);
    EXPECT_EQ(errorOf(*element, "AXZoomButton"), AXError::noValue);
    EXPECT_NE(read<AXUIElement>(*element, "AXCloseButton"), std::nullopt);
    EXPECT_EQ(read<QList<AXUIElement>>(*element, "AXChildren")->size(), 1);
}

TEST_F(X11ElementsLiveTest, MinimizedIsReadAndWritten)
{
    for (const WindowKind kind : {WindowKind::qt, WindowKind::gtkHeaderBar, WindowKind::terminal}) {
        const ForeignWindow window(m_windows, kind, u"To be minimized"_qs);
        const AXUIElement element = elementOf(window);
        const auto isMinimized = [&] { return read<bool>(element, "AXMinimized"); };
        EXPECT_EQ(isMinimized(), false);
        EXPECT_EQ(set(element, "AXMinimized", true), AXError::success);
        EXPECT_TRUE(eventually(deadline, [&] { return isMinimized() == true; }));
        EXPECT_TRUE(window.hasState("_NET_WM_STATE_HIDDEN"));
        EXPECT_TRUE(settleWindowManager());
        EXPECT_EQ(set(element, "AXMinimized", false), AXError::success);
        EXPECT_TRUE(eventually(deadline, [&] { return isMinimized() == false; }));
        EXPECT_TRUE(eventually(deadline, [&] { return m_windows.active() == window.id; }));
    }
}

TEST_F(X11ElementsLiveTest, ARolledUpWindowIsNotMinimizedAndIsUnrolledToBePlaced)
{
    const ForeignWindow window(m_windows, WindowKind::qt, u"Rolled up"_qs);
    const AXUIElement element = elementOf(window);
    changeState(window.id, "_NET_WM_STATE_SHADED");
    EXPECT_EQ(read<bool>(element, "AXMinimized"), false);
    EXPECT_TRUE(eventually(deadline, [&] { return read<Size>(element, "AXSize")->height < 100; }));
    place(element, {100, 200, 500, 400});
    EXPECT_TRUE(eventually(deadline, [&] { return window.frame() == QRect(100, 200, 500, 400); }));
    EXPECT_FALSE(window.hasState("_NET_WM_STATE_SHADED"));
}

TEST_F(X11ElementsLiveTest, AFullScreenWindowIsToldAndLeftAlone)
{
    const ForeignWindow window(m_windows, WindowKind::qt, u"Full screen"_qs);
    const AXUIElement element = elementOf(window);
    EXPECT_EQ(set(element, "AXFullScreen", true), AXError::success);
    EXPECT_TRUE(eventually(deadline, [&] { return read<bool>(element, "AXFullScreen") == true; }));
    EXPECT_TRUE(eventually(deadline, [&] { return window.frame().size() == QSize(1440, 900); }));
    EXPECT_EQ(set(element, "AXPosition", Point{100, 100}), AXError::failure);
    EXPECT_EQ(set(element, "AXSize", Size{100, 100}), AXError::failure);
    EXPECT_TRUE(settleWindowManager());
    EXPECT_EQ(window.frame(), QRect(0, 0, 1440, 900));
    EXPECT_EQ(set(element, "AXFullScreen", false), AXError::success);
    EXPECT_TRUE(eventually(deadline, [&] { return read<bool>(element, "AXFullScreen") == false; }));
}

TEST_F(X11ElementsLiveTest, RaisingPutsAWindowInFront)
{
    const ForeignWindow below(m_windows, WindowKind::qt, u"Below"_qs);
    const AXUIElement element = elementOf(below);
    const ForeignWindow above(m_windows, WindowKind::qt, u"Above"_qs);
    const auto height = [this](const ForeignWindow& window) { return stacking().indexOf(window.id); };
    ASSERT_TRUE(eventually(deadline, [&] { return height(above) > height(below); }));
    EXPECT_EQ(perform(element, "AXRaise"), AXError::success);
    EXPECT_TRUE(eventually(deadline, [&] { return height(below) > height(above); }));
}

TEST_F(X11ElementsLiveTest, TheLeastSizeOfAWindowIsKept)
{
    const ForeignWindow window(m_windows, WindowKind::gtkHeaderBar, u"Not that small"_qs);
    const AXUIElement element = elementOf(window);
    place(element, {300, 200, 10, 10});
    EXPECT_TRUE(eventually(deadline, [&] {
        const QRect frame = window.frame();
        return frame.topLeft() == QPoint(300, 200) && frame.width() < 480 && frame.height() < 320;
    }));
    EXPECT_TRUE(settleWindowManager());
    EXPECT_GT(window.frame().width(), 100);
    EXPECT_GT(window.frame().height(), 20);
}

TEST_F(X11ElementsLiveTest, ASizeAloneLeavesTheWindowWhereItIs)
{
    for (const WindowKind kind : {WindowKind::qt, WindowKind::gtkHeaderBar}) {
        const ForeignWindow window(m_windows, kind, u"Sized"_qs);
        const AXUIElement element = elementOf(window);
        const QPoint before = window.frame().topLeft();
        EXPECT_EQ(set(element, "AXSize", Size{600, 400}), AXError::success);
        EXPECT_TRUE(eventually(deadline, [&] { return window.frame() == QRect(before, QSize(600, 400)); }));
        EXPECT_EQ(set(element, "AXPosition", Point{330, 240}), AXError::success);
        EXPECT_TRUE(eventually(deadline, [&] { return window.frame() == QRect(330, 240, 600, 400); }));
    }
}

TEST_F(X11ElementsLiveTest, WhatIsNoPlaceIsRefused)
{
    const ForeignWindow window(m_windows, WindowKind::qt, u"Somewhere"_qs);
    const AXUIElement element = elementOf(window);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(set(element, "AXPosition", Point{nan, 0}), AXError::illegalArgument);
    EXPECT_EQ(set(element, "AXPosition", Point{0, -infinity}), AXError::illegalArgument);
    EXPECT_EQ(set(element, "AXSize", Size{1e12, 10}), AXError::illegalArgument);
    EXPECT_EQ(set(element, "AXSize", Size{-1, 10}), AXError::illegalArgument);
}

TEST_F(X11ElementsLiveTest, AHungProgramIsReadWithoutWaiting)
{
    const ForeignWindow window(m_windows, WindowKind::qt, u"Hung"_qs);
    const AXUIElement element = elementOf(window);
    window.hang();
    const AXUIElement application = m_accessibility.createApplication(window.pid());
    for (const AXUIElement& handle : {element, application})
        m_accessibility.setMessagingTimeout(handle, 200ms);
    EXPECT_EQ(titleOf(element), u"Hung"_qs);
    EXPECT_EQ(frameOf(element), QRectF(window.frame()));
    EXPECT_EQ(read<bool>(element, "AXFullScreen"), false);
    EXPECT_EQ(read<AXUIElement>(application, "AXFocusedWindow"), element);
}

TEST_F(X11ElementsLiveTest, AServerThatDoesNotAnswerEndsTheCallByItsTimeout)
{
    const ForeignWindow window(m_windows, WindowKind::qt, u"Grabbed"_qs);
    const AXUIElement element = elementOf(window);
    m_accessibility.setMessagingTimeout(element, 30ms);
    {
        const ServerGrab grab;
        EXPECT_EQ(errorOf(element, "AXTitle"), AXError::cannotComplete);
        EXPECT_EQ(errorOf(element, "AXPosition"), AXError::cannotComplete);
        EXPECT_EQ(set(element, "AXPosition", Point{1, 1}), AXError::cannotComplete);
        EXPECT_EQ(perform(element, "AXRaise"), AXError::cannotComplete);
    }
    // The requests that had no effect must not disturb later ones.
    m_accessibility.setMessagingTimeout(element, 0s);
    EXPECT_EQ(titleOf(element), u"Grabbed"_qs);
    EXPECT_EQ(frameOf(element), QRectF(window.frame()));
}

TEST_F(X11ElementsLiveTest, AWindowThatWasHiddenIsNoneAnyMore)
{
    QWidget window;
    window.show();
    ASSERT_TRUE(eventually(deadline, [&] { return m_windows.active() == window.winId(); }));
    ASSERT_TRUE(settleWindowManager());
    const auto element = read<AXUIElement>(m_accessibility.createApplication(::getpid()), "AXFocusedWindow");
    ASSERT_TRUE(element);
    window.hide();
    EXPECT_TRUE(
        eventually(deadline, [&] { return errorOf(*element, "AXTitle") == AXError::invalidUIElement; }));
    EXPECT_FALSE(m_windows.geometry(WindowId(window.winId())).isEmpty()) << "the server still has it";
    EXPECT_EQ(set(*element, "AXPosition", Point{1, 1}), AXError::invalidUIElement);
}

TEST_F(X11ElementsLiveTest, AWindowThatGoesWhileItIsBeingPlacedEndsNothing)
{
    auto window = std::make_unique<ForeignWindow>(m_windows, WindowKind::qt, u"Going"_qs);
    const AXUIElement element = elementOf(*window);
    EXPECT_EQ(set(element, "AXPosition", Point{100, 100}), AXError::success);
    const WindowId id = window->id;
    window.reset();
    EXPECT_TRUE(eventually(deadline, [&] { return m_windows.geometry(id).isEmpty(); }));
    EXPECT_EQ(set(element, "AXSize", Size{300, 300}), AXError::invalidUIElement);
    // The next window is placed as usual.
    const ForeignWindow next(m_windows, WindowKind::qt, u"Next"_qs);
    place(elementOf(next), {100, 100, 400, 300});
    EXPECT_TRUE(eventually(deadline, [&] { return next.frame() == QRect(100, 100, 400, 300); }));
}

TEST_F(X11ElementsLiveTest, AWindowThatThePersonMovesAfterwardsIsNotPutBack)
{
    const ForeignWindow window(m_windows, WindowKind::qt, u"Moved"_qs);
    place(elementOf(window), {100, 100, 400, 300});
    ASSERT_TRUE(eventually(deadline, [&] { return window.frame() == QRect(100, 100, 400, 300); }));
    const std::uint32_t elsewhere[] = {600, 400};
    xcb_configure_window(m_x.xcb(), window.id, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, elsewhere);
    xcb_flush(m_x.xcb());
    ASSERT_TRUE(eventually(deadline, [&] { return window.frame().topLeft() == QPoint(600, 400); }));
    // Once this is done, an effect of the earlier request would have shown.
    EXPECT_EQ(set(elementOf(window), "AXMinimized", true), AXError::success);
    EXPECT_TRUE(eventually(deadline, [&] { return window.hasState("_NET_WM_STATE_HIDDEN"); }));
    EXPECT_EQ(window.frame().topLeft(), QPoint(600, 400));
}

} // namespace orvane::tests

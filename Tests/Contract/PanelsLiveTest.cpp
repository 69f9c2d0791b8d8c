// The Linux layer's part of panels, on the private desktop with its window manager and its compositor.
#include "Contract/Support/ToolkitServer.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/WindowManager.h"
#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Panels/X11Panels.h"
#include "Support/Eventually.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QProcess>
#include <QScopeGuard>
#include <QWindow>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace orvane::tests {
namespace {

class ClickedWindow : public QWidget {
public:
    int clicks = 0;

private:
    void mousePressEvent(QMouseEvent*) override { ++clicks; }
};

class PanelsLiveTest : public ::testing::Test {
protected:
    static constexpr auto deadline = std::chrono::seconds(10);

    PanelsLiveTest() { EXPECT_TRUE(settleWindowManager()); }

    static std::vector<std::uint32_t> numbers(const QByteArray& bytes)
    {
        std::vector<std::uint32_t> found(static_cast<std::size_t>(bytes.size()) / sizeof(std::uint32_t));
        if (!found.empty())
            std::memcpy(found.data(), bytes.constData(), found.size() * sizeof(std::uint32_t));
        return found;
    }
    [[nodiscard]] std::vector<std::uint32_t> property(const QWidget& window, const char* name,
                                                      xcb_atom_t type) const
    {
        return numbers(x11->property(static_cast<xcb_window_t>(window.winId()), x11->atom(name), type));
    }
    [[nodiscard]] bool isOnAllSpaces(const QWidget& window) const
    {
        const auto states = property(window, "_NET_WM_STATE", XCB_ATOM_ATOM);
        const auto has = [&](const char* name) {
            return std::find(states.begin(), states.end(), x11->atom(name)) != states.end();
        };
        return property(window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL) ==
                   std::vector<std::uint32_t>{0xFFFFFFFF} &&
               has("_NET_WM_STATE_STICKY") && has("_NET_WM_STATE_SKIP_TASKBAR") &&
               has("_NET_WM_STATE_SKIP_PAGER") && has("_NET_WM_STATE_ABOVE");
    }
    /// Returns whether the window manager has mapped the window: the last that it does then is to tell the
    /// state.
    [[nodiscard]] bool isNormal(const QWidget& window) const
    {
        const auto state = property(window, "WM_STATE", x11->atom("WM_STATE"));
        constexpr std::uint32_t normal = 1; // ICCCM 4.1.3.1, NormalState
        return !state.empty() && state.front() == normal;
    }
    static bool setCompositing(bool isOn)
    {
        return QProcess::execute(QStringLiteral("xfconf-query"),
                                 {QStringLiteral("-c"), QStringLiteral("xfwm4"), QStringLiteral("-p"),
                                  QStringLiteral("/general/use_compositing"), QStringLiteral("-n"),
                                  QStringLiteral("-t"), QStringLiteral("bool"), QStringLiteral("-s"),
                                  isOn ? QStringLiteral("true") : QStringLiteral("false")}) == 0;
    }

    std::optional<ToolkitServer> x11 = ToolkitServer::ofApplication();
    NotificationCenter center;
    X11Panels panels{center};
    Hardware hardware;
};

TEST_F(PanelsLiveTest, TheCompositorIsFollowedAsItComesAndGoes)
{
    int changes = 0;
    const auto observer = center.addObserver(Panels::didChangeCompositingNotification(),
                                             [&](const Notification&) { ++changes; });
    ASSERT_TRUE(panels.isCompositing());
    const auto restore = qScopeGuard([] { setCompositing(true); });
    ASSERT_TRUE(setCompositing(false));
    EXPECT_TRUE(eventually(deadline, [&] { return !panels.isCompositing(); }));
    EXPECT_TRUE(eventually(deadline, [&] { return changes == 1; })) << changes;
    EXPECT_FALSE(X11Panels(center).isCompositing());
    ASSERT_TRUE(setCompositing(true));
    EXPECT_TRUE(eventually(deadline, [&] { return panels.isCompositing(); }));
    EXPECT_TRUE(eventually(deadline, [&] { return changes == 2; })) << changes;
}

TEST_F(PanelsLiveTest, AJoinedWindowIsOnAllSpacesAtEachShowing)
{
    QWidget window(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    window.setGeometry(300, 300, 200, 100);
    for (int showing = 0; showing < 2; ++showing) {
        window.winId();
        panels.joinAllSpaces(*window.windowHandle());
        window.show();
        EXPECT_TRUE(eventually(deadline, [&] { return isOnAllSpaces(window); })) << showing;
        // Hidden before the window manager is done with mapping it, it would be mapped for good.
        EXPECT_TRUE(eventually(deadline, [&] { return isNormal(window); })) << showing;
        window.hide();
        EXPECT_TRUE(eventually(deadline, [&] {
            return property(window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL).empty();
        })) << showing;
    }
}

TEST_F(PanelsLiveTest, AClickInTheShadowGoesToWhatIsBehind)
{
    ClickedWindow behind;
    behind.setWindowFlag(Qt::X11BypassWindowManagerHint);
    behind.setGeometry(300, 300, 400, 300);
    behind.show();
    ClickedWindow panel;
    panel.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                         Qt::X11BypassWindowManagerHint);
    panel.setGeometry(350, 350, 200, 200);
    panel.winId();
    panels.setShadowMargins(*panel.windowHandle(), QMargins(20, 20, 20, 20));
    panel.show();
    panel.raise();
    ASSERT_TRUE(eventually(deadline, [&] { return panel.windowHandle()->isExposed(); }));
    EXPECT_EQ(property(panel, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL),
              (std::vector<std::uint32_t>{20, 20, 20, 20}));

    hardware.click(QPoint(360, 450));
    EXPECT_TRUE(eventually(deadline, [&] { return behind.clicks == 1; }));
    EXPECT_EQ(panel.clicks, 0);
    hardware.click(QPoint(380, 450));
    EXPECT_TRUE(eventually(deadline, [&] { return panel.clicks == 1; }));
    EXPECT_EQ(behind.clicks, 1);

    panels.setShadowMargins(*panel.windowHandle(), QMargins());
    EXPECT_TRUE(property(panel, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL).empty());
    hardware.click(QPoint(360, 450));
    EXPECT_TRUE(eventually(deadline, [&] { return panel.clicks == 2; }));
}

TEST_F(PanelsLiveTest, AWindowThatIsMadeKeyGetsTheKeyboard)
{
    QLineEdit other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(eventually(deadline, [&] { return other.isActiveWindow(); }));

    QLineEdit panel;
    panel.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    panel.setAttribute(Qt::WA_ShowWithoutActivating);
    panel.setGeometry(300, 300, 200, 40);
    panel.show();
    panels.makeKey(*panel.windowHandle());
    ASSERT_TRUE(eventually(deadline, [&] { return panel.isActiveWindow(); }));
    hardware.tap("x");
    EXPECT_TRUE(eventually(deadline, [&] { return panel.text() == QStringLiteral("x"); }));
    EXPECT_TRUE(other.text().isEmpty());
}

} // namespace
} // namespace orvane::tests

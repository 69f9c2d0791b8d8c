// The displays of a real X server, with real panels.
#include "Contract/Support/PluggedMonitor.h"
#include "Contract/Support/ToolkitServer.h"
#include "Desktop/Support/Screen.h"
#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Screens/X11Screens.h"
#include "Support/Eventually.h"
#include "Support/PrintGeometry.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <gmock/gmock.h>

#include <array>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;

using Place = PluggedMonitor::Place;
using StrutValues = std::array<std::uint32_t, 12>;

/// A panel of the test that reserves the space it is told to.
class Panel {
public:
    explicit Panel(QRect geometry)
    {
        m_window.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
        m_window.setGeometry(geometry);
    }

    void keep(const StrutValues& values)
    {
        const ToolkitServer x = *ToolkitServer::ofApplication();
        xcb_change_property(x.xcb(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(m_window.winId()),
                            x.atom("_NET_WM_STRUT_PARTIAL"), XCB_ATOM_CARDINAL, 32,
                            std::uint32_t{std::tuple_size_v<StrutValues>}, values.data());
        xcb_flush(x.xcb());
    }
    void show() { m_window.show(); }

private:
    QWidget m_window;
};

class ScreensLiveTest : public ::testing::Test {
protected:
    ScreensLiveTest()
    {
        m_token = m_center.addObserver(Screens::didChangeScreenParametersNotification(),
                                       [this](const Notification&) { ++posted; });
    }

    Rect visibleFrame(qsizetype screen)
    {
        const QList<orvane::Screen> list = screens.screens();
        return screen < list.size() ? list[screen].visibleFrame : Rect{};
    }

    bool becomesVisible(qsizetype screen, const Rect& frame)
    {
        return eventually(deadline, [&] { return visibleFrame(screen) == frame; });
    }

    bool hasScreens(qsizetype count)
    {
        return eventually(deadline, [&] { return screens.screens().size() == count; });
    }

    NotificationCenter m_center;
    X11Screens screens{m_center};
    std::unique_ptr<NotificationCenter::Token> m_token;
    int posted = 0;
};

} // namespace

TEST_F(ScreensLiveTest, NothingIsListenedToBeforeSomebodyAsks)
{
    EXPECT_FALSE(screens.isListening());
    EXPECT_EQ(screens.screens().size(), 1);
    EXPECT_TRUE(screens.isListening());
}

TEST_F(ScreensLiveTest, TheDesktopsOwnPanelAndDockAreNotInTheVisibleFrame)
{
    QRect bar, dock;
    const Screen screen;
    ASSERT_TRUE(eventually(deadline, [&] {
        for (const ScreenWindow& window : screen.windows()) {
            if (window.type == WindowType::dock)
                (window.geometry.top() == 0 ? bar : dock) = window.geometry;
        }
        return bar.isValid() && dock.isValid();
    }));
    EXPECT_TRUE(eventually(deadline,
                           [&] {
                               const Rect visible = visibleFrame(0);
                               // The dock's window is taller than the space that it reserves: its icons grow
                               // under the pointer.
                               return visible.maxY() == 900 - bar.height() && visible.minY() > 0 &&
                                      visible.minY() <= dock.height() && visible.minX() == 0 &&
                                      visible.width() == 1440;
                           }))
        << ::testing::PrintToString(visibleFrame(0)) << bar.height() << ' ' << dock.height();
}

TEST_F(ScreensLiveTest, APanelThatComesChangesWhatItKeepsAndGoesIsFollowed)
{
    const Rect before = visibleFrame(0);
    {
        Panel panel({0, 100, 40, 600});
        panel.keep({40, 0, 0, 0, 0, 899});
        panel.show();
        EXPECT_TRUE(becomesVisible(0, {{40, before.minY()}, {1400, before.height()}}));
        EXPECT_EQ(posted, 1);
        panel.keep({70, 0, 0, 0, 0, 899});
        EXPECT_TRUE(becomesVisible(0, {{70, before.minY()}, {1370, before.height()}}));
        EXPECT_EQ(posted, 2);
    }
    EXPECT_TRUE(becomesVisible(0, before));
    EXPECT_EQ(posted, 3);
}

TEST_F(ScreensLiveTest, APanelAtTheInnerEdgeOfTwoMonitorsKeepsOfItsOwnAlone)
{
    const PluggedMonitor second(Place::right);
    ASSERT_TRUE(hasScreens(2));
    const Rect other{{1440, -100}, {1280, 1000}};
    EXPECT_TRUE(becomesVisible(1, other));
    Panel panel({1390, 100, 50, 600});
    panel.keep({0, 1280 + 50, 0, 0, 0, 0, 0, 899});
    panel.show();
    EXPECT_TRUE(eventually(deadline, [&] { return visibleFrame(0).maxX() == 1390; }));
    EXPECT_EQ(visibleFrame(1), other);
}

TEST_F(ScreensLiveTest, AMonitorOnEachSideHasItsPlaceInTheSpaceOfThePrimaryOne)
{
    const std::pair<Place, Rect> places[] = {
        {Place::left, {{-1280, -100}, {1280, 1000}}},
        {Place::above, {{0, 900}, {1280, 1000}}},
        {Place::below, {{0, -1000}, {1280, 1000}}},
    };
    for (const auto& [place, frame] : places) {
        const PluggedMonitor second(place);
        EXPECT_TRUE(eventually(deadline, [&] {
            const auto list = screens.screens();
            return list.size() == 2 && list[0].frame == Rect{{0, 0}, {1440, 900}} && list[1].frame == frame;
        })) << ::testing::PrintToString(frame);
        EXPECT_EQ(screens.space().axFromNative(Point{0, 0}),
                  (Point{place == Place::left ? -1280.0 : 0.0, place == Place::above ? -1000.0 : 0.0}));
    }
}

TEST_F(ScreensLiveTest, AFrameIsWhereTheToolkitHasTheScreen)
{
    const PluggedMonitor second(Place::above);
    ASSERT_TRUE(hasScreens(2));
    EXPECT_TRUE(eventually(deadline, [&] {
        const QList<orvane::Screen> list = screens.screens();
        return std::ranges::all_of(list, [&](const orvane::Screen& screen) {
            return std::ranges::any_of(QGuiApplication::screens(), [&](const QScreen* toolkitScreen) {
                return toolkitScreen->name() == screen.localizedName &&
                       screens.windowGeometry(screen.frame) == QRectF(toolkitScreen->geometry());
            });
        });
    }));
}

TEST_F(ScreensLiveTest, APanelOfAMonitorThatIsUnpluggedKeepsNothingOfTheOther)
{
    const Rect before = visibleFrame(0);
    Panel panel({1440, 0, 1280, 30});
    {
        const PluggedMonitor second(Place::right);
        ASSERT_TRUE(hasScreens(2));
        panel.keep({0, 0, 30, 0, 0, 0, 0, 0, 1440, 2719});
        panel.show();
        EXPECT_TRUE(becomesVisible(1, {{1440, -100}, {1280, 970}}));
    }
    EXPECT_TRUE(hasScreens(1));
    EXPECT_TRUE(becomesVisible(0, before));
}

TEST_F(ScreensLiveTest, TheMainScreenHasTheActiveWindow)
{
    const PluggedMonitor second(Place::right);
    ASSERT_TRUE(hasScreens(2));
    QWidget window;
    window.resize(300, 200);
    const auto isMain = [&](qsizetype screen) {
        return eventually(deadline, [&] { return screens.mainScreen() == screens.screens()[screen]; });
    };
    window.move(1700, 300);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(isMain(1));
    window.move(300, 300);
    EXPECT_TRUE(isMain(0));
    window.move(1700, 300);
    EXPECT_TRUE(isMain(1));
    window.hide();
    EXPECT_TRUE(isMain(0)) << "no window is active then";
}

} // namespace orvane::tests

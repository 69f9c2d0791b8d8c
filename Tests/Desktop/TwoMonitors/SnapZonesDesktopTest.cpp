// Windows that a person drags to the edges of two monitors.
#include "Desktop/Support/SnapZonesFixture.h"
#include "Desktop/Support/WindowManager.h"
#include "Support/Eventually.h"

#include <QProcess>

#include <tuple>

namespace orvane::tests {
namespace {

/// Returns where on a monitor the pointer has to be for a zone.
QPoint edgeFor(Zone zone, QRect monitor)
{
    const QPoint center = monitor.center();
    switch (zone) {
    case Zone::leftHalf:
        return {monitor.left(), center.y()};
    case Zone::rightHalf:
        return {monitor.right(), center.y()};
    case Zone::bottomHalf:
        return {center.x(), monitor.bottom()};
    case Zone::topLeft:
        return monitor.topLeft() + QPoint(0, 40);
    case Zone::topRight:
        return monitor.topRight() + QPoint(0, 40);
    case Zone::bottomLeft:
        return monitor.bottomLeft() + QPoint(40, 0);
    case Zone::bottomRight:
        return monitor.bottomRight() - QPoint(40, 0);
    case Zone::maximize:
        return {center.x(), monitor.top()};
    default:
        return center;
    }
}

/// Makes xfwm4 tile windows at edges that don't lead to another desktop, which is its default.
class TilingOfXfwm4 {
public:
    TilingOfXfwm4() { setEdgesLeadOn("false"); }
    ~TilingOfXfwm4() { setEdgesLeadOn("true"); }
    TilingOfXfwm4(const TilingOfXfwm4&) = delete;
    TilingOfXfwm4& operator=(const TilingOfXfwm4&) = delete;

private:
    static void setEdgesLeadOn(const char* value)
    {
        EXPECT_EQ(QProcess::execute(QStringLiteral("xfconf-query"),
                                    {QStringLiteral("--channel"), QStringLiteral("xfwm4"),
                                     QStringLiteral("--property"), QStringLiteral("/general/wrap_windows"),
                                     QStringLiteral("--create"), QStringLiteral("--type"),
                                     QStringLiteral("bool"), QStringLiteral("--set"), QLatin1String(value)}),
                  0);
    }
};

class SnapDragDesktopTest : public SnapZonesDesktopTest {
protected:
    /// Drags a window to an edge, looks at the preview, lets go, and looks where the window ends up.
    void snapByDrag(const Target& target, Zone zone, QRect monitor)
    {
        const QRectF place = placeOf(zone, m_windows.workArea(monitor));
        WindowDrag hand = drag(target);
        ASSERT_TRUE(hand.begin());
        ASSERT_TRUE(hand.moveTo(monitor.center()));
        EXPECT_TRUE(nothingIsShownSoon()) << "the preview of an edge that was passed stays";
        const Look before = look(target);
        ASSERT_TRUE(hand.moveTo(edgeFor(zone, monitor)));
        EXPECT_TRUE(previewCovers(place, before, target));
        hand.release();
        EXPECT_TRUE(comesToFill(target, place));
        EXPECT_TRUE(eventually(5s, [&] { return shown().isEmpty(); })) << "the preview stays";
    }
};

class SnapDragOfAKind : public SnapDragDesktopTest,
                        public testing::WithParamInterface<std::tuple<WindowKind, Zone>> {};

std::string nameOfCase(const testing::TestParamInfo<std::tuple<WindowKind, Zone>>& info)
{
    constexpr const char* kinds[] = {"Qt", "Gtk", "Terminal"};
    return kinds[static_cast<int>(std::get<0>(info.param))] +
           ("To_" + nameOf(std::get<1>(info.param)).toStdString());
}

} // namespace

TEST_P(SnapDragOfAKind, ShowsThePreviewAndLandsOnItsFrame)
{
    const auto [kind, zone] = GetParam();
    startSnapping();
    for (const QRect& monitor : {primary, second}) {
        const Target target = open(kind, initial);
        ASSERT_NE(target.window, 0u);
        snapByDrag(target, zone, monitor);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Windows, SnapDragOfAKind,
    testing::Combine(testing::Values(WindowKind::qt, WindowKind::gtkHeaderBar, WindowKind::terminal),
                     testing::Values(Zone::leftHalf, Zone::rightHalf, Zone::bottomHalf, Zone::topLeft,
                                     Zone::topRight, Zone::bottomLeft, Zone::bottomRight, Zone::maximize)),
    nameOfCase);

TEST_F(SnapDragDesktopTest, ADragInsideTheContentOfAWindowShowsNothing)
{
    // The whole monitor is an edge.
    startSnapping({.settings = {{QStringLiteral("edgeThreshold"), 2000}}});
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    const QRect frame = m_windows.frame(target.window);
    m_hardware.movePointer(frame.center());
    m_hardware.press(Button::left);
    for (const int x : {600, 400, 200, 100, 20, 4}) {
        m_hardware.movePointer({x, frame.center().y()});
        EXPECT_TRUE(nothingIsShown());
    }
    m_hardware.release(Button::left);
    EXPECT_TRUE(nothingIsShown());
    EXPECT_EQ(m_windows.frame(target.window), frame);
}

TEST_F(SnapDragDesktopTest, AMoveOfSixPointsDoesntArmAndOneOfSevenDoes)
{
    startSnapping({.settings = {{QStringLiteral("edgeThreshold"), 2000}}});
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    const QRect frame = m_windows.frame(target.window);
    const auto moved = [&] { return m_windows.frame(target.window).left() - frame.left(); };
    const QPoint handle = WindowDrag::handle(m_windows, target.window);
    WindowDrag hand = drag(target);
    ASSERT_TRUE(hand.begin());
    hand.movePointer(handle + QPoint(1, 0));
    settle();
    ASSERT_EQ(moved(), 0) << "the window manager has no play, so where the drag began isn't sure";
    // The window manager moves the window only after some pixels; then the window is at the pointer again.
    for (int dx = 2; dx <= 6; ++dx)
        hand.movePointer(handle + QPoint(dx, 0));
    for (int time = 0; time < 10; ++time) {
        hand.movePointer(handle + QPoint(5, 0));
        hand.movePointer(handle + QPoint(6, 0));
        ASSERT_TRUE(eventually(5s, [&] { return moved() == 6; })) << moved();
        EXPECT_TRUE(nothingIsShown());
    }
    hand.movePointer(handle + QPoint(7, 0));
    ASSERT_TRUE(eventually(5s, [&] { return moved() == 7; })) << moved();
    hand.movePointer(handle + QPoint(8, 0));
    EXPECT_TRUE(eventually(5s, [&] { return !shown().isEmpty(); }));
}

TEST_F(SnapDragDesktopTest, LeavingTheEdgeHidesThePreviewAndTheWindowStaysWhereItIsLetGo)
{
    startSnapping();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    WindowDrag hand = drag(target);
    ASSERT_TRUE(hand.begin());
    const Look before = look(target);
    ASSERT_TRUE(hand.moveTo(edgeFor(Zone::leftHalf, primary)));
    ASSERT_TRUE(previewCovers(placeOf(Zone::leftHalf, m_windows.workArea(primary)), before, target));
    ASSERT_TRUE(hand.moveTo(primary.center()));
    EXPECT_TRUE(eventually(5s, [&] { return shown().isEmpty(); }));
    ASSERT_TRUE(settleWindowManager()); // the window is where the pointer has drawn it
    const QRect last = m_windows.frame(target.window);
    hand.release();
    EXPECT_TRUE(nothingIsShown());
    EXPECT_EQ(m_windows.frame(target.window).topLeft(), last.topLeft());
    EXPECT_FALSE(fills(m_windows.frame(target.window), placeOf(Zone::leftHalf, m_windows.workArea(primary))));
}

TEST_F(SnapDragDesktopTest, PassingTheEdgesBetweenTwoMonitorsInHasteLeavesNoPreviewBehind)
{
    startSnapping();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    WindowDrag hand = drag(target);
    ASSERT_TRUE(hand.begin());
    for (int time = 0; time < 12; ++time) {
        ASSERT_TRUE(hand.moveTo({second.left() + 120, 450}));
        ASSERT_TRUE(hand.moveTo({primary.right() - 120, 450}));
        EXPECT_TRUE(nothingIsShownSoon()) << "after the " << time + 1 << ". time";
    }
}

TEST_F(SnapDragDesktopTest, TheGapsAreLeftFree)
{
    startSnapping({.settings = {{QStringLiteral("outerGap"), 12}, {QStringLiteral("innerGap"), 10}}});
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    WindowDrag hand = drag(target);
    ASSERT_TRUE(hand.begin());
    ASSERT_TRUE(hand.moveTo(edgeFor(Zone::topLeft, second)));
    hand.release();
    EXPECT_TRUE(comesToFill(target, {1440 + 12, 12, (1280 - 24 - 10) / 2., (1000 - 24 - 10) / 2.}));
}

TEST_F(SnapDragDesktopTest, TheWindowLandsInItsZoneThoughTheWindowManagerTilesItByItself)
{
    const TilingOfXfwm4 tiling;
    // The window manager has no gaps, so these make sure that the place is set by the program.
    const Gaps gaps{.outer = 20, .inner = 12};
    startSnapping(
        {.settings = {{QStringLiteral("outerGap"), gaps.outer}, {QStringLiteral("innerGap"), gaps.inner}}});
    bool hasTiled = false;
    for (const Zone zone : {Zone::leftHalf, Zone::maximize, Zone::topLeft, Zone::bottomHalf}) {
        const Target target = open(WindowKind::qt, initial);
        ASSERT_NE(target.window, 0u);
        const QSize before = m_windows.frame(target.window).size();
        WindowDrag hand = drag(target);
        ASSERT_TRUE(hand.begin());
        ASSERT_TRUE(hand.moveTo(primary.center()));
        ASSERT_TRUE(hand.moveTo(edgeFor(zone, primary)));
        ASSERT_TRUE(eventually(5s, [&] { return !shown().isEmpty(); }));
        if (zone == Zone::leftHalf)
            hasTiled = eventually(5s, [&] { return m_windows.frame(target.window).size() != before; });
        hand.release();
        EXPECT_TRUE(comesToFill(target, placeOf(zone, m_windows.workArea(primary), gaps)))
            << nameOf(zone).toStdString();
    }
    EXPECT_TRUE(hasTiled) << "the window manager didn't do what this test is about";
}

TEST_F(SnapDragDesktopTest, WithDragsTurnedOffNothingIsShown)
{
    startSnapping({.settings = {{QStringLiteral("dragToSnap"), false}}});
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    WindowDrag hand = drag(target);
    ASSERT_TRUE(hand.begin());
    ASSERT_TRUE(hand.moveTo({720, 450}));
    ASSERT_TRUE(hand.moveTo({720, 880}));
    ASSERT_TRUE(hand.moveTo(edgeFor(Zone::bottomHalf, primary)));
    EXPECT_TRUE(nothingIsShown());
}

TEST_F(SnapDragDesktopTest, WindowsInTwoNeighbouringZonesMeetWithoutAGap)
{
    startSnapping();
    const std::pair<Zone, Zone> neighbours[] = {{Zone::leftHalf, Zone::rightHalf},
                                                {Zone::topHalf, Zone::bottomHalf},
                                                {Zone::topLeft, Zone::bottomLeft}};
    for (const auto& [one, other] : neighbours) {
        const Target first = open(WindowKind::qt, initial);
        pressShortcut(one);
        const QRectF area = m_windows.workArea(primary);
        ASSERT_TRUE(comesToFill(first, placeOf(one, area)));
        const Target neighbour = open(WindowKind::gtkHeaderBar, initial);
        pressShortcut(other);
        ASSERT_TRUE(comesToFill(neighbour, placeOf(other, area)));
        const QRect a = m_windows.frame(first.window);
        const QRect b = m_windows.frame(neighbour.window);
        EXPECT_FALSE(a.intersects(b)) << nameOf(one).toStdString();
        EXPECT_TRUE(a.right() + 1 == b.left() || a.bottom() + 1 == b.top()) << nameOf(one).toStdString();
    }
}

} // namespace orvane::tests

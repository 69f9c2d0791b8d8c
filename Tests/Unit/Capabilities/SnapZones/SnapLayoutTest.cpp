// Snapping without a drag: by shortcut, and from the panel of layouts.
#include "Capabilities/SnapZones/Layouts/SnapLayoutCellView.h"
#include "Capabilities/SnapZones/Layouts/SnapLayoutGridView.h"
#include "SnapZonesFixture.h"

#include "OrvaneKit/Controls/OrvaTextView.h"

#include <QApplication>
#include <QEnterEvent>
#include <QMouseEvent>

using namespace orvane;
using namespace orvane::tests;

namespace {

struct SnapLayoutTest : SnapZonesFixture {
    EventMonitors::Disposition key(std::int64_t code)
    {
        return fake.eventMonitors.sendToWindow(
            {.event = {.type = EventType::keyDown, .keycode = code}, .location = {}});
    }
    OrvaPanelWindow& panel() { return *controller().flyout().panel(); }
    QList<SnapLayoutCellView*> cells() { return panel().findChildren<SnapLayoutCellView*>(); }
    void choose(SnapZone zone)
    {
        for (SnapLayoutCellView* cell : cells()) {
            if (cell->zone() == zone)
                return cell->click();
        }
        FAIL() << "no cell of " << title(zone).toStdString();
    }

    static constexpr std::int64_t escape = 53;
    static constexpr Rect topHalf{{0, 24}, {1440, 403}};
};

} // namespace

// By shortcut.

TEST_F(SnapLayoutTest, AShortcutPlacesTheFocusedWindow)
{
    controller().snap(SnapZone::topHalf);
    EXPECT_EQ(windowFrame(), topHalf);
}

TEST_F(SnapLayoutTest, AShortcutSetsPositionSizeAndPositionAgain)
{
    controller().snap(SnapZone::topHalf);
    const std::vector<std::pair<QString, AXValue>> expected{
        {AXAttr::position, topHalf.origin},
        {AXAttr::size, topHalf.size},
        {AXAttr::position, topHalf.origin},
    };
    EXPECT_EQ(written(), expected);
}

TEST_F(SnapLayoutTest, AShortcutWithoutAWindowDoesNothing)
{
    takeFocusAway();
    controller().snap(SnapZone::topHalf);
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapLayoutTest, AShortcutNeedsNoMonitors)
{
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0u);
    controller().snap(SnapZone::maximize);
    EXPECT_EQ(windowFrame(), (Rect{{0, 24}, {1440, 806}}));
}

TEST_F(SnapLayoutTest, TheScreenIsTheOneOfTheWindowsMiddle)
{
    const Rect second{{1440, -180}, {1920, 1080}};
    fake.screens.arrange({fake.screens.list.first(), FakeScreens::screen(2, second, second)});
    moveWindow({1139, 100});
    controller().snap(SnapZone::maximize);
    EXPECT_EQ(windowFrame().origin, (Point{0, 24}));
    moveWindow({1141, 100});
    node(window).attributes.insert_or_assign(AXAttr::size, Size{600, 400});
    controller().snap(SnapZone::maximize);
    EXPECT_EQ(windowFrame(), (Rect{{1440, 0}, {1920, 1080}}));
}

TEST_F(SnapLayoutTest, AWindowBetweenScreensGoesToTheMainOne)
{
    const Screen second = FakeScreens::screen(2, {{1440, 0}, {800, 900}}, {{1440, 0}, {800, 900}});
    fake.screens.arrange({fake.screens.list.first(), second});
    fake.screens.main = second;
    moveWindow({500, 5000});
    controller().snap(SnapZone::maximize);
    EXPECT_EQ(windowFrame(), (Rect{{1440, 0}, {800, 900}}));
}

TEST_F(SnapLayoutTest, AWindowWithoutAFrameGoesToTheMainScreen)
{
    const Screen second = FakeScreens::screen(2, {{1440, 0}, {800, 900}}, {{1440, 0}, {800, 900}});
    fake.screens.arrange({fake.screens.list.first(), second});
    fake.screens.main = second;
    node(window).attributes.erase(AXAttr::size);
    controller().snap(SnapZone::maximize);
    EXPECT_EQ(written().front().second, AXValue(Point{1440, 0}));
}

TEST_F(SnapLayoutTest, WithoutAnyScreenAShortcutDoesNothing)
{
    fake.screens.arrange({});
    controller().snap(SnapZone::maximize);
    EXPECT_TRUE(written().empty());
}

// The panel.

TEST_F(SnapLayoutTest, ThePanelOpensInTheMiddleOfTheMainScreen)
{
    controller().showFlyout();
    EXPECT_TRUE(isFlyoutShown());
    const Rect frame = panel().frame();
    EXPECT_DOUBLE_EQ(frame.midX(), 720);
    EXPECT_DOUBLE_EQ(frame.midY(), 473);
    EXPECT_GT(frame.width(), 3 * 74 + 2 * 10);
    EXPECT_GT(frame.height(), 3 * 56 + 2 * 10);
}

TEST_F(SnapLayoutTest, ThePanelOpensOnTheMainScreenWhereverItsWindowIs)
{
    const Screen second = FakeScreens::screen(2, {{1440, 0}, {800, 900}}, {{1440, 0}, {800, 900}});
    fake.screens.arrange({fake.screens.list.first(), second});
    fake.screens.main = second;
    controller().showFlyout();
    EXPECT_DOUBLE_EQ(panel().frame().midX(), 1840);
    choose(SnapZone::maximize);
    EXPECT_EQ(windowFrame(), (Rect{{0, 24}, {1440, 806}})) << "the window stays on its own screen";
}

TEST_F(SnapLayoutTest, WithoutAnyScreenThePanelStaysClosed)
{
    fake.screens.arrange({});
    controller().showFlyout();
    EXPECT_FALSE(isFlyoutShown());
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0u);
    EXPECT_EQ(fake.eventMonitors.localCount(), 0u) << "Escape is nobody's";
    fake.screens.arrange({FakeScreens::screen(1, {{0, 0}, {1440, 900}}, {{0, 70}, {1440, 806}})});
    controller().showFlyout();
    EXPECT_TRUE(isFlyoutShown());
}

TEST_F(SnapLayoutTest, AnOpenPanelClosesThoughThereIsNoScreenAnyMore)
{
    controller().showFlyout();
    fake.screens.arrange({});
    controller().showFlyout();
    EXPECT_FALSE(isFlyoutShown());
}

TEST_F(SnapLayoutTest, ThePanelNeverTakesTheKeyboard)
{
    controller().showFlyout();
    EXPECT_TRUE(panel().windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(panel().testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(fake.panels.keyRequests, 0);
}

TEST_F(SnapLayoutTest, TheShortcutPressedTwiceHidesThePanel)
{
    controller().showFlyout();
    controller().showFlyout();
    EXPECT_FALSE(isFlyoutShown());
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0u);
    EXPECT_EQ(fake.eventMonitors.localCount(), 0u);
    controller().showFlyout();
    EXPECT_TRUE(isFlyoutShown());
    EXPECT_EQ(fake.eventMonitors.globalCount(), 1u);
    EXPECT_EQ(fake.eventMonitors.localCount(), 1u);
}

TEST_F(SnapLayoutTest, ChoosingALayoutHidesThePanelAndPlacesTheWindow)
{
    controller().showFlyout();
    choose(SnapZone::topHalf);
    EXPECT_FALSE(isFlyoutShown());
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0u);
    EXPECT_EQ(fake.eventMonitors.localCount(), 0u);
    EXPECT_EQ(windowFrame(), topHalf);
}

TEST_F(SnapLayoutTest, ChoosingALayoutPlacesTheWindowThatHadTheFocusAtTheOpening)
{
    controller().showFlyout();
    fake.accessibility.focusNewWindow({0, 0}, {100, 100});
    choose(SnapZone::topHalf);
    EXPECT_EQ(windowFrame(), topHalf);
}

TEST_F(SnapLayoutTest, ChoosingALayoutWithoutAFocusedWindowOnlyHidesThePanel)
{
    takeFocusAway();
    controller().showFlyout();
    choose(SnapZone::topHalf);
    EXPECT_FALSE(isFlyoutShown());
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapLayoutTest, ThePanelForgetsTheWindowOfAnEarlierOpening)
{
    controller().showFlyout();
    controller().showFlyout();
    takeFocusAway();
    controller().showFlyout();
    choose(SnapZone::topHalf);
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapLayoutTest, AClickOnAnotherProgramHidesThePanelInATurnOfItsOwn)
{
    for (const EventType type : {EventType::leftMouseDown, EventType::rightMouseDown}) {
        controller().showFlyout();
        send(type);
        EXPECT_TRUE(isFlyoutShown());
        fake.runLoop.drain();
        EXPECT_FALSE(isFlyoutShown());
        EXPECT_EQ(fake.eventMonitors.globalCount(), 0u);
    }
}

TEST_F(SnapLayoutTest, EscapeIsSwallowedAndHidesThePanel)
{
    controller().showFlyout();
    EXPECT_EQ(key(escape), EventMonitors::Disposition::swallow);
    EXPECT_TRUE(isFlyoutShown());
    fake.runLoop.drain();
    EXPECT_FALSE(isFlyoutShown());
    EXPECT_EQ(key(escape), EventMonitors::Disposition::pass);
}

TEST_F(SnapLayoutTest, OtherKeysPass)
{
    controller().showFlyout();
    for (const std::int64_t code : {0, 36, 48, 49, 52, 54})
        EXPECT_EQ(key(code), EventMonitors::Disposition::pass) << code;
    fake.runLoop.drain();
    EXPECT_TRUE(isFlyoutShown());
}

TEST_F(SnapLayoutTest, EscapeOfAnotherProgramLeavesThePanel)
{
    controller().showFlyout();
    fake.eventMonitors.sendToOthers(
        {.event = {.type = EventType::keyDown, .keycode = escape}, .location = {}});
    fake.runLoop.drain();
    EXPECT_TRUE(isFlyoutShown());
}

TEST_F(SnapLayoutTest, ShowingThePanelAgainReplacesItsMonitors)
{
    SnapLayoutFlyoutController& flyout = controller().flyout();
    flyout.show();
    flyout.show();
    EXPECT_EQ(fake.eventMonitors.globalCount(), 1u);
    EXPECT_EQ(fake.eventMonitors.localCount(), 1u);
}

TEST_F(SnapLayoutTest, ADismissalThatComesAfterTheEndIsHarmless)
{
    controller().showFlyout();
    key(escape);
    dropController();
    fake.runLoop.drain();
    EXPECT_EQ(fake.eventMonitors.localCount(), 0u);
}

TEST_F(SnapLayoutTest, ClosingThePanelFromOutsideTakesItsMonitorsAway)
{
    controller().showFlyout();
    panel().close();
    EXPECT_FALSE(isFlyoutShown());
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0u);
}

// The grid.

TEST_F(SnapLayoutTest, TheGridHasItsHeadingAndNineCells)
{
    controller().showFlyout();
    const auto texts = panel().findChildren<OrvaTextView*>();
    ASSERT_EQ(texts.size(), 1);
    EXPECT_EQ(texts.first()->text(), QStringLiteral("Snap Layouts"));
    QStringList names;
    for (const SnapLayoutCellView* cell : cells())
        names.append(rawValue(cell->zone()));
    EXPECT_EQ(names,
              (QStringList{QStringLiteral("leftHalf"), QStringLiteral("rightHalf"),
                           QStringLiteral("maximize"), QStringLiteral("topLeft"), QStringLiteral("topRight"),
                           QStringLiteral("center"), QStringLiteral("bottomLeft"),
                           QStringLiteral("bottomRight"), QStringLiteral("topHalf")}));
}

TEST_F(SnapLayoutTest, TheCellsStandInThreeColumns)
{
    controller().showFlyout();
    const auto list = cells();
    ASSERT_EQ(list.size(), 9);
    for (int index = 0; index < 9; ++index) {
        EXPECT_EQ(list[index]->x() - list[0]->x(), (index % 3) * (74 + 10)) << index;
        EXPECT_EQ(list[index]->y() - list[0]->y(), (index / 3) * (56 + 10)) << index;
        EXPECT_EQ(list[index]->size(), QSize(76, 62)) << "with the room for the focus ring";
    }
    // The grid has as much room on the left as on the right.
    const QWidget* grid = list[0]->parentWidget();
    EXPECT_EQ(list[0]->x(), grid->width() - list[2]->geometry().right() - 1);
    // The heading begins where the first cell's box does.
    const QWidget* heading = panel().findChildren<OrvaTextView*>().first();
    EXPECT_EQ(heading->mapTo(grid, QPoint()).x(), list[0]->x() + orvaRingMargin);
}

TEST_F(SnapLayoutTest, CellsSayTheirNamesAndAreReachedByKeyboard)
{
    controller().showFlyout();
    for (const SnapLayoutCellView* cell : cells()) {
        EXPECT_EQ(cell->accessibleName(), title(cell->zone()));
        EXPECT_EQ(cell->text(), title(cell->zone()));
        EXPECT_EQ(cell->focusPolicy(), Qt::StrongFocus);
    }
}

TEST_F(SnapLayoutTest, HoveredPressedAndFocusedCellsLookDifferent)
{
    SnapLayoutCellView cell(SnapZone::leftHalf);
    cell.show();
    const QImage plain = cell.grab().toImage();
    cell.setAttribute(Qt::WA_UnderMouse);
    const QImage hovered = cell.grab().toImage();
    cell.setDown(true);
    const QImage pressed = cell.grab().toImage();
    cell.setDown(false);
    cell.setAttribute(Qt::WA_UnderMouse, false);
    cell.activateWindow();
    cell.setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
    ASSERT_TRUE(cell.hasFocus());
    const QImage focused = cell.grab().toImage();
    EXPECT_NE(plain, hovered);
    EXPECT_NE(hovered, pressed);
    EXPECT_NE(plain, pressed);
    EXPECT_NE(plain, focused);
}

TEST_F(SnapLayoutTest, EveryZoneIsDrawnOfItsOwn)
{
    std::vector<QImage> seen;
    for (const SnapZone zone : allCases<SnapZone>()) {
        SnapLayoutCellView cell(zone);
        cell.setText({}); // the picture alone
        const QImage image = cell.grab().toImage();
        for (const QImage& other : seen)
            EXPECT_NE(image, other) << title(zone).toStdString();
        seen.push_back(image);
    }
}

TEST_F(SnapLayoutTest, AGridWithoutAListenerIsHarmless)
{
    const auto model = std::make_shared<SnapLayoutModel>();
    const std::unique_ptr<QWidget> grid(makeOrvaWidget(SnapLayoutGridView{.model = model}));
    for (SnapLayoutCellView* cell : grid->findChildren<SnapLayoutCellView*>())
        cell->click();
    std::optional<SnapZone> chosen;
    model->onSelect = [&](SnapZone zone) { chosen = zone; };
    grid->findChildren<SnapLayoutCellView*>().last()->click();
    EXPECT_EQ(chosen, SnapZone::topHalf);
}

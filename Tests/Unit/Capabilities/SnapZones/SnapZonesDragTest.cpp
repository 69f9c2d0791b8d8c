// Dragging a window, from the press to the release.
#include "SnapZonesFixture.h"

using namespace orvane;
using namespace orvane::tests;
using State = SnapDrag::State;

namespace {

struct SnapZonesDragTest : SnapZonesFixture {
    SnapZonesDragTest() { controller().start(); }

    /// The visible frame's left and right half, in coordinates from the upper left of the display.
    static constexpr Rect leftHalf{{0, 24}, {720, 806}};
    static constexpr Rect rightHalf{{720, 24}, {720, 806}};
};

} // namespace

// The states, in the order of the table.

TEST_F(SnapZonesDragTest, APressBeginsAnew)
{
    beginMoving();
    drag(leftEdge);
    ASSERT_EQ(state(), State::zoned);
    press();
    EXPECT_EQ(state(), State::idle);
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, ADragWithAFocusedWindowIsArmed)
{
    press();
    EXPECT_EQ(state(), State::idle);
    EXPECT_EQ(callCount(), 0u) << "a press alone asks nobody";
    drag(middle);
    EXPECT_EQ(state(), State::armed);
    EXPECT_EQ(controller().drag().window(), window);
    EXPECT_EQ(controller().drag().initialPosition(), start);
}

TEST_F(SnapZonesDragTest, ADragWithoutAFocusedWindowStaysIdle)
{
    takeFocusAway();
    press();
    drag(leftEdge);
    EXPECT_EQ(state(), State::idle);
    release();
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, AMoveOfExactlySixPointsDoesntArm)
{
    press();
    drag(middle);
    moveWindow({start.x + 6, start.y});
    drag(leftEdge);
    EXPECT_EQ(state(), State::armed);
    EXPECT_FALSE(isPreviewShown());
    moveWindow({start.x + 6, start.y + 1});
    drag(leftEdge);
    EXPECT_EQ(state(), State::zoned);
    EXPECT_TRUE(isPreviewShown());
}

TEST_F(SnapZonesDragTest, AWindowThatTheWindowManagerHasPutBackIsNotSnapped)
{
    fake.eventMonitors.pointer = middle;
    beginMoving();
    drag(leftEdge);
    ASSERT_TRUE(isPreviewShown());
    moveWindow(start);
    EXPECT_FALSE(isPreviewShown());
    EXPECT_EQ(state(), State::idle);
    drag(leftEdge);
    EXPECT_FALSE(isPreviewShown());
    release();
    fake.runLoop.advance(std::chrono::seconds(1));
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, APutBackIsAlsoSeenAtTheReleaseAndLeavesTheNextDragAlone)
{
    fake.eventMonitors.pointer = middle;
    beginMoving();
    drag(leftEdge);
    setPosition(window, start);
    release();
    EXPECT_TRUE(written().empty());
    fake.eventMonitors.pointer = middle;
    beginMoving();
    drag(leftEdge);
    release();
    EXPECT_FALSE(written().empty());
}

TEST_F(SnapZonesDragTest, AWindowMayPassItsFirstPlaceBesideThePress)
{
    fake.eventMonitors.pointer = leftEdge;
    press();
    drag(middle);
    moveWindow({start.x + 50, start.y});
    drag(leftEdge);
    moveWindow(start);
    EXPECT_EQ(state(), State::zoned);
    release();
    EXPECT_FALSE(written().empty());
}

TEST_F(SnapZonesDragTest, AReleaseOfAnArmedDragPlacesNothing)
{
    press();
    drag(leftEdge);
    drag(leftEdge);
    ASSERT_EQ(state(), State::armed);
    release();
    EXPECT_EQ(state(), State::idle);
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, AZoneShowsItsPreview)
{
    beginMoving();
    EXPECT_EQ(state(), State::moving);
    EXPECT_FALSE(isPreviewShown());
    drag(leftEdge);
    EXPECT_EQ(state(), State::zoned);
    EXPECT_TRUE(isPreviewShown());
    EXPECT_EQ(previewFrame(), (Rect{{0, 70}, {720, 806}}));
}

TEST_F(SnapZonesDragTest, TheSameZoneLeavesThePreviewAlone)
{
    beginMoving();
    drag(leftEdge);
    settings->outerGap.set(10);
    drag({leftEdge.x + 1, leftEdge.y - 30});
    EXPECT_EQ(previewFrame(), (Rect{{0, 70}, {720, 806}}));
    EXPECT_EQ(state(), State::zoned);
}

TEST_F(SnapZonesDragTest, AnotherZoneMovesThePreview)
{
    beginMoving();
    drag(leftEdge);
    drag(rightEdge);
    EXPECT_EQ(state(), State::zoned);
    EXPECT_TRUE(isPreviewShown());
    EXPECT_EQ(previewFrame(), (Rect{{720, 70}, {720, 806}}));
    drag(topEdge);
    EXPECT_EQ(previewFrame(), (Rect{{0, 70}, {1440, 806}}));
}

TEST_F(SnapZonesDragTest, BackInTheMiddleThePreviewIsGoneAndTheReleaseLeavesTheWindow)
{
    beginMoving();
    drag(leftEdge);
    drag(middle);
    EXPECT_EQ(state(), State::moving);
    EXPECT_FALSE(isPreviewShown());
    release();
    EXPECT_EQ(state(), State::idle);
    EXPECT_TRUE(written().empty());
    EXPECT_EQ(windowFrame().origin, (Point{start.x + 50, start.y}));
}

TEST_F(SnapZonesDragTest, AReleaseOfAMovingDragPlacesNothing)
{
    beginMoving();
    release();
    EXPECT_EQ(state(), State::idle);
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, AReleaseInAZonePlacesTheWindow)
{
    beginMoving();
    drag(leftEdge);
    release();
    EXPECT_EQ(state(), State::idle);
    EXPECT_FALSE(isPreviewShown());
    EXPECT_EQ(windowFrame(), leftHalf);
}

TEST_F(SnapZonesDragTest, TheEdgesAreThoseOfTheScreenAndNotOfItsFreePart)
{
    beginMoving();
    // The pointer is on the bar at the top, and on the dock.
    for (const Point pointer : {Point{700, 885}, Point{700, 60}}) {
        drag(pointer);
        EXPECT_EQ(state(), State::moving) << pointer.y;
    }
}

TEST_F(SnapZonesDragTest, EveryEdgeAndCornerHasItsFrame)
{
    struct Case {
        Point pointer;
        Rect frame; // from the upper left
    };
    for (const auto& [pointer, frame] : {
             Case{{3, 450}, leftHalf},
             Case{{1437, 450}, rightHalf},
             Case{{700, 897}, {{0, 24}, {1440, 806}}},
             Case{{700, 3}, {{0, 427}, {1440, 403}}},
             Case{{3, 897}, {{0, 24}, {720, 403}}},
             Case{{1437, 897}, {{720, 24}, {720, 403}}},
             Case{{3, 3}, {{0, 427}, {720, 403}}},
             Case{{1437, 3}, {{720, 427}, {720, 403}}},
         }) {
        moveWindow(start);
        beginMoving();
        drag(pointer);
        release();
        EXPECT_EQ(windowFrame(), frame) << pointer.x << ", " << pointer.y;
    }
}

// The placing itself.

TEST_F(SnapZonesDragTest, PlacingSetsPositionSizeAndPositionAgain)
{
    beginMoving();
    drag(rightEdge);
    const std::size_t before = callCount();
    release();
    const std::vector<std::pair<QString, AXValue>> expected{
        {AXAttr::position, rightHalf.origin},
        {AXAttr::size, rightHalf.size},
        {AXAttr::position, rightHalf.origin},
    };
    EXPECT_EQ(written(before), expected);
    EXPECT_EQ(callCount(), before + 3) << "nothing is read or examined";
}

TEST_F(SnapZonesDragTest, AWindowThatIsShiftedByItsResizeIsPutBack)
{
    node(window).adjust = [this](const QString& attribute, const AXValue& value) {
        if (attribute == AXAttr::size)
            moveWindow({900, 300});
        return value;
    };
    beginMoving();
    drag(leftEdge);
    release();
    EXPECT_EQ(windowFrame(), leftHalf);
}

TEST_F(SnapZonesDragTest, AWindowThatRefusesToShrinkIsPlacedAllTheSame)
{
    node(window).adjust = [](const QString& attribute, const AXValue& value) {
        return attribute == AXAttr::size ? AXValue(Size{1000, 806}) : value;
    };
    beginMoving();
    drag(leftEdge);
    release();
    EXPECT_EQ(windowFrame(), (Rect{{0, 24}, {1000, 806}}));
}

TEST_F(SnapZonesDragTest, AWindowThatIsGoneAtTheReleaseEndsInNothing)
{
    beginMoving();
    drag(leftEdge);
    node(window).failure = AXError::invalidUIElement;
    release();
    EXPECT_EQ(state(), State::idle);
    EXPECT_FALSE(isPreviewShown());
}

TEST_F(SnapZonesDragTest, TheGapsAtTheReleaseCountAndNotThoseOfThePreview)
{
    beginMoving();
    drag(leftEdge);
    settings->outerGap.set(8);
    settings->innerGap.set(10);
    release();
    EXPECT_EQ(windowFrame(), (Rect{{8, 32}, {707, 790}}));
}

// Presses and motions that are no drag of a window.

TEST_F(SnapZonesDragTest, ADragInsideAWindowsContentShowsAndPlacesNothing)
{
    press();
    for (const Point pointer : {middle, topEdge, leftEdge})
        drag(pointer);
    EXPECT_FALSE(isPreviewShown());
    release();
    EXPECT_TRUE(written().empty());
    EXPECT_EQ(controller().preview().panel(), nullptr) << "no panel was needed so far";
}

TEST_F(SnapZonesDragTest, AResizeByTheLeftEdgeCountsAsADrag)
{
    press();
    drag(middle);
    moveWindow({start.x - 10, start.y});
    node(window).attributes.insert_or_assign(AXAttr::size, Size{610, 400});
    drag(leftEdge);
    EXPECT_EQ(state(), State::zoned);
    EXPECT_TRUE(isPreviewShown());
}

TEST_F(SnapZonesDragTest, AWindowWhosePositionCannotBeReadNeverMoves)
{
    node(window).attributes.erase(AXAttr::position);
    press();
    drag(leftEdge);
    EXPECT_EQ(state(), State::armed);
    moveWindow({start.x + 300, start.y});
    const std::size_t before = callCount();
    drag(leftEdge);
    EXPECT_EQ(state(), State::armed);
    EXPECT_EQ(callCount(), before) << "without a first position nothing is asked any more";
}

TEST_F(SnapZonesDragTest, APositionThatCannotBeReadForAMomentIsReadAtTheNextMotion)
{
    press();
    drag(middle);
    node(window).failure = AXError::cannotComplete;
    drag(leftEdge);
    EXPECT_EQ(state(), State::armed);
    node(window).failure = AXError::success;
    moveWindow({start.x + 300, start.y});
    drag(leftEdge);
    EXPECT_EQ(state(), State::zoned);
}

TEST_F(SnapZonesDragTest, AFullScreenWindowIsNeverArmed)
{
    node(window).attributes.insert_or_assign(AXAttr::fullScreen, true);
    press();
    drag(leftEdge);
    EXPECT_EQ(state(), State::idle);
}

TEST_F(SnapZonesDragTest, WithoutThePermissionNoDragArms)
{
    node(fake.accessibility.systemWide).failure = AXError::apiDisabled;
    press();
    drag(leftEdge);
    drag(leftEdge);
    EXPECT_EQ(state(), State::idle);
}

TEST_F(SnapZonesDragTest, OnceTheWindowMovesTheFocusMayGo)
{
    beginMoving();
    fake.accessibility.focusNewWindow({900, 100}, {200, 200});
    drag(leftEdge);
    release();
    EXPECT_EQ(windowFrame(), leftHalf);
}

TEST_F(SnapZonesDragTest, UntilAWindowMovesItIsTheOneThatHasTheFocusNow)
{
    const AXUIElement behind = window;
    const AXUIElement inFront = fake.accessibility.focusNewWindow({900, 100}, {200, 200});
    press();
    drag(middle);
    EXPECT_EQ(controller().drag().window(), inFront);
    focus(behind); // by the press, a moment after it
    setPosition(behind, {start.x + 300, start.y});
    drag(leftEdge);
    EXPECT_EQ(state(), State::zoned);
    release();
    EXPECT_EQ(windowFrame(), leftHalf);
    EXPECT_EQ(std::get<Point>(node(inFront).attributes.at(AXAttr::position)), (Point{900, 100}));
}

TEST_F(SnapZonesDragTest, AWindowThatCameAfterThePressIsNotDragged)
{
    press();
    const AXUIElement later = fake.accessibility.focusNewWindow({900, 100}, {200, 200});
    drag(middle);
    setPosition(later, {100, 100});
    drag(leftEdge);
    EXPECT_EQ(state(), State::armed);
}

TEST_F(SnapZonesDragTest, TheFirstPlaceIsThatOfThePressAndNotOfTheFirstMotion)
{
    press();
    moveWindow({start.x + 300, start.y});
    drag(leftEdge);
    EXPECT_EQ(state(), State::zoned);
    release();
    EXPECT_EQ(windowFrame(), leftHalf);
}

// A window manager that is late.

TEST_F(SnapZonesDragTest, AWindowThatMovesAfterThePointerCameToRestShowsThePreview)
{
    press();
    drag(leftEdge);
    ASSERT_FALSE(isPreviewShown());
    moveWindow({start.x + 300, start.y});
    EXPECT_EQ(state(), State::zoned);
    EXPECT_TRUE(isPreviewShown());
}

TEST_F(SnapZonesDragTest, AWindowThatMovesSoonAfterItsReleaseInAZoneIsPlaced)
{
    press();
    drag(leftEdge);
    release();
    fake.runLoop.advance(std::chrono::milliseconds(299));
    EXPECT_TRUE(written().empty());
    moveWindow({start.x + 300, start.y});
    EXPECT_EQ(windowFrame(), leftHalf);
    EXPECT_FALSE(isPreviewShown());
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(SnapZonesDragTest, TheFocusMayComeAfterTheReleaseToo)
{
    takeFocusAway();
    press();
    drag(leftEdge);
    release();
    setPosition(window, {start.x + 300, start.y});
    focus(window);
    EXPECT_EQ(windowFrame(), leftHalf);
}

TEST_F(SnapZonesDragTest, AWindowThatMovesLaterIsLeftAlone)
{
    press();
    drag(leftEdge);
    release();
    fake.runLoop.advance(std::chrono::milliseconds(301));
    moveWindow({start.x + 300, start.y});
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, AWindowThatStirsAfterTheReleaseIsStillAwaited)
{
    press();
    drag(leftEdge);
    release();
    moveWindow({start.x + 6, start.y});
    EXPECT_TRUE(written().empty());
    moveWindow({start.x + 300, start.y});
    EXPECT_EQ(windowFrame(), leftHalf);
}

TEST_F(SnapZonesDragTest, TheNextPressEndsTheWait)
{
    press();
    drag(leftEdge);
    release();
    press();
    moveWindow({start.x + 300, start.y});
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, AReleaseOutsideOfTheZonesAwaitsNothing)
{
    press();
    drag(leftEdge);
    drag(middle);
    release();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    moveWindow({start.x + 300, start.y});
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, AClickInAZoneAwaitsNothing)
{
    fake.eventMonitors.pointer = leftEdge;
    press();
    release();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    moveWindow({start.x + 300, start.y});
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, StoppingEndsTheWait)
{
    press();
    drag(leftEdge);
    release();
    controller().stop();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

// Switched off.

TEST_F(SnapZonesDragTest, SwitchedOffADragBuildsNothing)
{
    settings->dragToSnap.set(false);
    beginMoving();
    drag(leftEdge);
    EXPECT_EQ(state(), State::idle);
    EXPECT_EQ(callCount(), 0u);
    release();
    EXPECT_EQ(state(), State::idle);
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, SwitchedOffInAZoneThePreviewGoesAndTheReleasePlacesNothing)
{
    beginMoving();
    drag(leftEdge);
    settings->dragToSnap.set(false);
    EXPECT_FALSE(isPreviewShown());
    EXPECT_EQ(state(), State::idle);
    release();
    EXPECT_TRUE(written().empty());
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(SnapZonesDragTest, SwitchedOffAfterTheReleaseNothingIsAwaited)
{
    press();
    drag(leftEdge);
    release();
    settings->dragToSnap.set(false);
    moveWindow({start.x + 300, start.y});
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesDragTest, SwitchedOnInTheMiddleTheRestOfTheDragCounts)
{
    settings->dragToSnap.set(false);
    beginMoving();
    settings->dragToSnap.set(true);
    drag(leftEdge);
    EXPECT_EQ(state(), State::zoned);
    release();
    EXPECT_EQ(windowFrame(), leftHalf);
}

TEST_F(SnapZonesDragTest, SwitchedOffInTheMiddleTheReleaseStillEndsTheDrag)
{
    beginMoving();
    settings->dragToSnap.set(false);
    drag(leftEdge);
    release();
    EXPECT_EQ(state(), State::idle);
    EXPECT_TRUE(written().empty());
}

#include "Capabilities/SnapZones/SnapDrag.h"
#include "Fakes/FakeAccessibility.h"
#include "Fakes/FakeScreens.h"

#include <gtest/gtest.h>

using namespace orvane;
using State = SnapDrag::State;
using Preview = SnapDrag::Preview;

namespace {

struct SnapDragTest : testing::Test {
    void arm() { drag.arm(window, Point{100, 100}); }
    void move()
    {
        arm();
        drag.windowIsAt({200, 100});
    }
    Preview over(std::optional<SnapZone> zone) { return drag.pointerIsOn(screen, zone); }

    AXUIElement window = FakeAccessibility::makeElement();
    Screen screen = FakeScreens::screen(1, {{0, 0}, {1440, 900}}, {{0, 70}, {1440, 806}});
    Screen other = FakeScreens::screen(2, {{1440, 0}, {1920, 1080}}, {{1440, 0}, {1920, 1080}});
    SnapDrag drag;
};

} // namespace

TEST_F(SnapDragTest, ADragWithAFocusedWindowIsArmed)
{
    EXPECT_EQ(drag.state(), State::idle);
    arm();
    EXPECT_EQ(drag.state(), State::armed);
    EXPECT_EQ(drag.window(), window);
    EXPECT_EQ(drag.initialPosition(), (Point{100, 100}));
}

TEST_F(SnapDragTest, OnlyMoreThanSixPointsMove)
{
    struct Case {
        Point position;
        State state;
    };
    for (const auto& [position, state] : {
             Case{{100, 100}, State::armed},
             Case{{106, 100}, State::armed},
             Case{{100, 94}, State::armed},
             Case{{104, 104}, State::armed},
             Case{{106.01, 100}, State::moving},
             Case{{105, 104}, State::moving},
             Case{{93, 100}, State::moving},
             Case{{100, 107}, State::moving},
         }) {
        drag.reset();
        arm();
        drag.windowIsAt(position);
        EXPECT_EQ(drag.state(), state) << position.x << ", " << position.y;
    }
}

TEST_F(SnapDragTest, TheDistanceIsFromTheFirstPlaceAndNotFromTheLast)
{
    arm();
    drag.windowIsAt({104, 100});
    EXPECT_EQ(drag.state(), State::armed);
    drag.windowIsAt({108, 100});
    EXPECT_EQ(drag.state(), State::moving);
}

TEST_F(SnapDragTest, OnceMovingAWindowMovesUntilTheEnd)
{
    move();
    drag.windowIsAt({100, 100});
    EXPECT_EQ(drag.state(), State::moving);
}

TEST_F(SnapDragTest, UntilItMovesAnotherWindowMayTakeItsPlace)
{
    arm();
    const AXUIElement another = FakeAccessibility::makeElement();
    drag.arm(another, Point{300, 300});
    EXPECT_EQ(drag.window(), another);
    drag.windowIsAt({310, 300});
    ASSERT_EQ(drag.state(), State::moving);
    arm();
    EXPECT_EQ(drag.window(), another);
}

TEST_F(SnapDragTest, AWindowWithoutAPositionNeverMoves)
{
    drag.arm(window, std::nullopt);
    drag.windowIsAt({900, 900});
    EXPECT_EQ(drag.state(), State::armed);
}

TEST_F(SnapDragTest, AZoneIsShownOnce)
{
    move();
    EXPECT_EQ(over(SnapZone::leftHalf), Preview::shown);
    EXPECT_EQ(drag.state(), State::zoned);
    EXPECT_EQ(over(SnapZone::leftHalf), Preview::unchanged);
    EXPECT_EQ(drag.state(), State::zoned);
}

TEST_F(SnapDragTest, AnotherZoneMovesThePreview)
{
    move();
    over(SnapZone::leftHalf);
    EXPECT_EQ(over(SnapZone::topLeft), Preview::shown);
    EXPECT_EQ(drag.target()->zone, SnapZone::topLeft);
}

TEST_F(SnapDragTest, NoZoneHidesThePreviewOnce)
{
    move();
    EXPECT_EQ(over(std::nullopt), Preview::unchanged);
    over(SnapZone::maximize);
    EXPECT_EQ(over(std::nullopt), Preview::hidden);
    EXPECT_EQ(drag.state(), State::moving);
    EXPECT_EQ(over(std::nullopt), Preview::unchanged);
    EXPECT_FALSE(drag.target());
}

TEST_F(SnapDragTest, TheSameZoneOfAnotherScreenIsAnotherPlace)
{
    move();
    over(SnapZone::maximize);
    EXPECT_EQ(drag.pointerIsOn(other, SnapZone::maximize), Preview::shown);
    EXPECT_EQ(drag.target()->screen, other);
}

TEST_F(SnapDragTest, TheSameZoneIsAnotherPlaceWhenAPanelHasMadeRoom)
{
    move();
    over(SnapZone::maximize);
    screen.visibleFrame = screen.frame;
    EXPECT_EQ(over(SnapZone::maximize), Preview::shown);
}

TEST_F(SnapDragTest, ThereIsATargetOnlyInAZone)
{
    EXPECT_FALSE(drag.target());
    move();
    EXPECT_FALSE(drag.target());
    over(SnapZone::bottomRight);
    ASSERT_TRUE(drag.target());
    EXPECT_EQ(drag.target()->window, window);
    EXPECT_EQ(drag.target()->zone, SnapZone::bottomRight);
    EXPECT_EQ(drag.target()->screen, screen);
}

TEST_F(SnapDragTest, AResetLeavesNothing)
{
    move();
    over(SnapZone::bottomRight);
    drag.reset();
    EXPECT_EQ(drag.state(), State::idle);
    EXPECT_FALSE(drag.window());
    EXPECT_FALSE(drag.initialPosition());
    EXPECT_FALSE(drag.target());
}

// Drags over several screens, their cost, and the monitors that watch them.
#include "SnapZonesFixture.h"

using namespace orvane;
using namespace orvane::tests;
using State = SnapDrag::State;

namespace {

struct SnapZonesScreensTest : SnapZonesFixture {
    SnapZonesScreensTest() { controller().start(); }

    static constexpr Rect rightHalf{{720, 24}, {720, 806}};
};

constexpr Rect secondFrame{{1440, 0}, {1920, 1080}};

Screen secondScreen()
{
    return FakeScreens::screen(2, secondFrame, secondFrame);
}

} // namespace

TEST_F(SnapZonesScreensTest, AcrossTwoScreensTheOneUnderThePointerCounts)
{
    fake.screens.arrange({fake.screens.list.first(), secondScreen()});
    beginMoving();
    drag({1437, 450});
    EXPECT_EQ(previewFrame(), (Rect{{720, 70}, {720, 806}}));
    drag({1443, 450});
    EXPECT_EQ(previewFrame(), (Rect{{1440, 0}, {960, 1080}}));
    release();
    EXPECT_EQ(windowFrame(), (Rect{{1440, -180}, {960, 1080}}));
}

TEST_F(SnapZonesScreensTest, TheSameZoneOfTheNextScreenTakesThePreviewAlong)
{
    fake.screens.arrange({fake.screens.list.first(), secondScreen()});
    beginMoving();
    drag(topEdge);
    drag({2400, 1077});
    EXPECT_EQ(previewFrame(), secondFrame);
}

TEST_F(SnapZonesScreensTest, APointerOnNoScreenIsTakenToBeOnTheMainOne)
{
    fake.screens.arrange({fake.screens.list.first(), secondScreen()});
    fake.screens.main = secondScreen();
    beginMoving();
    drag({2000, 2000});
    EXPECT_EQ(previewFrame(), secondFrame);
}

TEST_F(SnapZonesScreensTest, WithoutAnyScreenNothingIsShownOrPlaced)
{
    beginMoving();
    fake.screens.arrange({});
    drag(leftEdge);
    EXPECT_EQ(state(), State::moving);
    release();
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesScreensTest, AScreenThatIsUnpluggedInTheMiddleIsNoPlaceForTheWindow)
{
    fake.screens.arrange({fake.screens.list.first(), secondScreen()});
    beginMoving();
    drag({3358, 450});
    ASSERT_EQ(state(), State::zoned);
    fake.screens.arrange({fake.screens.list.first()});
    release();
    EXPECT_EQ(state(), State::idle);
    EXPECT_FALSE(isPreviewShown());
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesScreensTest, AfterAnUnpluggedScreenTheDragGoesOnOnTheOther)
{
    fake.screens.arrange({fake.screens.list.first(), secondScreen()});
    beginMoving();
    drag({3358, 450});
    fake.screens.arrange({fake.screens.list.first()});
    drag(rightEdge);
    EXPECT_EQ(previewFrame(), (Rect{{720, 70}, {720, 806}}));
    release();
    EXPECT_EQ(windowFrame(), rightHalf);
}

TEST_F(SnapZonesScreensTest, APanelThatMadeRoomBeforeTheReleaseIsHeeded)
{
    beginMoving();
    drag(leftEdge);
    fake.screens.arrange({FakeScreens::screen(1, {{0, 0}, {1440, 900}}, {{0, 0}, {1440, 876}})});
    release();
    EXPECT_EQ(windowFrame(), (Rect{{0, 24}, {720, 876}}));
}

namespace {

struct SnapZonesWatchTest : SnapZonesFixture {
    SnapZonesWatchTest() { controller().start(); }
};

} // namespace

// The cost.

TEST_F(SnapZonesWatchTest, WhileTheWindowMovesNobodyIsAsked)
{
    beginMoving();
    const std::size_t before = callCount();
    for (int round = 0; round < 100; ++round) {
        for (const Point pointer : {middle, leftEdge, topEdge, rightEdge})
            drag(pointer);
    }
    EXPECT_EQ(callCount(), before);
}

TEST_F(SnapZonesWatchTest, FromThePressToTheReleaseNobodyIsAsked)
{
    beginMoving();
    drag(leftEdge);
    ASSERT_EQ(state(), State::zoned);
    EXPECT_EQ(callCount(), 0u);
}

// The monitors.

TEST_F(SnapZonesWatchTest, StartWatchesBothOtherProgramsAndOurOwnWindows)
{
    EXPECT_EQ(fake.eventMonitors.globalCount(), 1u);
    EXPECT_EQ(fake.eventMonitors.localCount(), 1u);
    EXPECT_EQ(fake.windowDrags.watchCount(), 1u);
    EXPECT_EQ(fake.log.messages().last(), QStringLiteral("Snap Zones active"));
    EXPECT_EQ(fake.log.entries().back().level, LogLevel::info);
}

TEST_F(SnapZonesWatchTest, AnEventOfOurOwnWindowsCountsAndPasses)
{
    fake.eventMonitors.pointer = middle;
    EXPECT_EQ(
        fake.eventMonitors.sendToWindow({.event = {.type = EventType::leftMouseDragged}, .location = {}}),
        EventMonitors::Disposition::pass);
    EXPECT_EQ(state(), State::armed);
}

TEST_F(SnapZonesWatchTest, OtherEventsAreNotWatched)
{
    for (const EventType type : {EventType::rightMouseDown, EventType::rightMouseDragged,
                                 EventType::mouseMoved, EventType::otherMouseDragged, EventType::keyDown})
        send(type);
    EXPECT_EQ(state(), State::idle);
    EXPECT_EQ(callCount(), 0u);
}

TEST_F(SnapZonesWatchTest, StopTakesEverythingAway)
{
    beginMoving();
    drag(leftEdge);
    controller().showFlyout();
    controller().stop();
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0u);
    EXPECT_EQ(fake.eventMonitors.localCount(), 0u);
    EXPECT_EQ(fake.windowDrags.watchCount(), 0u);
    EXPECT_FALSE(isPreviewShown());
    EXPECT_FALSE(isFlyoutShown());
    EXPECT_EQ(state(), State::idle);
    release();
    EXPECT_TRUE(written().empty());
}

TEST_F(SnapZonesWatchTest, TheMonitorsDontKeepTheControllerAlive)
{
    const std::weak_ptr<SnapZonesController> weak = sharedController();
    dropController();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(fake.windowDrags.watchCount(), 0u);
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0u);
}

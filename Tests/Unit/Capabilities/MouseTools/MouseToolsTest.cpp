#include "Capabilities/MouseTools/MouseToolsCapability.h"
#include "Capabilities/MouseTools/MouseToolsSettingsPane.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

#include <QApplication>
#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace std::chrono_literals;
using Disposition = EventMonitors::Disposition;

const QString id = QStringLiteral("net.lindenrow.orvane.mousetools");

class MouseToolsTest : public testing::Test {
protected:
    MouseToolsTest()
    {
        fake.eventMonitors.pointer = {100, 800};
        eventTap->start();
    }

    static EventMonitors::MonitoredEvent event(EventType type)
    {
        EventMonitors::MonitoredEvent monitored;
        monitored.event.type = type;
        return monitored;
    }
    Disposition send(EventType type) { return fake.eventMonitors.sendToWindow(event(type)); }
    void pressControl()
    {
        flags(eventFlag::control);
        flags(0);
    }
    void flags(EventFlags value)
    {
        Event changed;
        changed.type = EventType::flagsChanged;
        changed.flags = value;
        (void)fake.eventTaps.send(changed);
        fake.runLoop.drain();
    }
    void show()
    {
        controller->showSpotlight();
        fake.runLoop.drain();
    }
    [[nodiscard]] bool isShown() const { return controller->spotlight() != nullptr; }
    [[nodiscard]] static qsizetype windows() { return QApplication::topLevelWidgets().size(); }
    /// True if nothing of the overlays is left; the tap's watchdog is the one timer.
    [[nodiscard]] bool isClear() const
    {
        return !isShown() && !controller->crosshairs() && windows() == 0 &&
               fake.eventMonitors.localCount() == 0 && fake.eventMonitors.globalCount() == 0 &&
               fake.overlays.holdCount() == 0;
    }

    FakePlatform fake;
    std::shared_ptr<EventTapService> eventTap =
        std::make_shared<EventTapService>(Log::make({QStringLiteral("test")}));
    std::shared_ptr<MouseToolsSettings> settings =
        std::make_shared<MouseToolsSettings>(ScopedPreferences(fake.defaults, {id}));
    std::shared_ptr<MouseToolsController> controller =
        MouseToolsController::make(settings, eventTap, Log::make({id}));
};

} // namespace

TEST_F(MouseToolsTest, TwoQuickPressesOfControlShowTheSpotlight)
{
    controller->start();
    pressControl();
    fake.runLoop.advance(399ms);
    EXPECT_FALSE(isShown());
    pressControl();
    EXPECT_TRUE(isShown());
    EXPECT_EQ(controller->spotlight()->point.get(), QPointF(100, 100));
}

TEST_F(MouseToolsTest, TwoSlowPressesDoNothingAndTheSecondBeginsAPair)
{
    controller->start();
    pressControl();
    fake.runLoop.advance(400ms);
    pressControl();
    EXPECT_FALSE(isShown());
    fake.runLoop.advance(399ms);
    pressControl();
    EXPECT_TRUE(isShown());
}

TEST_F(MouseToolsTest, AHeldControlCountsFromItsPress)
{
    controller->start();
    flags(eventFlag::control);
    fake.runLoop.advance(2s);
    flags(0);
    pressControl();
    EXPECT_FALSE(isShown());
    fake.runLoop.advance(100ms);
    pressControl();
    EXPECT_TRUE(isShown());
}

TEST_F(MouseToolsTest, TheGestureOnlyListensAndFollowsItsSetting)
{
    EXPECT_EQ(fake.eventTaps.taps.size(), 0u);
    controller->start();
    ASSERT_EQ(fake.eventTaps.taps.size(), 1u);
    EXPECT_EQ(fake.eventTaps.taps[0]->options(), EventTaps::Options::listenOnly);
    EXPECT_EQ(fake.eventTaps.taps[0]->mask(), 0x1000u);
    EXPECT_FALSE(fake.eventTaps.holdsKeyboards());
    settings->doubleCtrlSpotlight.set(false);
    EXPECT_EQ(fake.eventTaps.taps.size(), 0u);
    settings->doubleCtrlSpotlight.set(true);
    EXPECT_EQ(fake.eventTaps.taps.size(), 1u);
    controller->stop();
    EXPECT_EQ(fake.eventTaps.taps.size(), 0u);
    settings->doubleCtrlSpotlight.set(true);
    EXPECT_EQ(fake.eventTaps.taps.size(), 0u) << "it is stopped";
}

TEST_F(MouseToolsTest, TurningTheGestureOffLeavesTheSpotlightUp)
{
    controller->start();
    show();
    settings->doubleCtrlSpotlight.set(false);
    EXPECT_TRUE(isShown());
    fake.runLoop.advance(2500ms);
    EXPECT_TRUE(isClear());
}

TEST_F(MouseToolsTest, TheSpotlightEndsAfterTwoAndAHalfSeconds)
{
    show();
    fake.runLoop.advance(2500ms - 1ms);
    EXPECT_TRUE(isShown());
    fake.runLoop.advance(1ms);
    EXPECT_TRUE(isClear());
}

TEST_F(MouseToolsTest, ASecondSpotlightBeginsAnew)
{
    show();
    fake.runLoop.advance(2s);
    show();
    EXPECT_EQ(windows(), 1);
    fake.runLoop.advance(2500ms - 1ms);
    EXPECT_TRUE(isShown());
    fake.runLoop.advance(1ms);
    EXPECT_TRUE(isClear());
}

TEST_F(MouseToolsTest, AKeyOrAClickEndsItAndGoesNoFurther)
{
    for (const EventType type : {EventType::keyDown, EventType::leftMouseDown, EventType::rightMouseDown}) {
        show();
        EXPECT_TRUE(fake.overlays.isInputHeld());
        EXPECT_EQ(send(type), Disposition::swallow);
        EXPECT_TRUE(isClear());
    }
}

TEST_F(MouseToolsTest, ARepeatOfTheShortcutsKeyDoesNotEndIt)
{
    show();
    auto repeat = event(EventType::keyDown);
    repeat.event.autorepeat = 1;
    EXPECT_EQ(fake.eventMonitors.sendToWindow(repeat), Disposition::swallow);
    EXPECT_TRUE(isShown());
}

TEST_F(MouseToolsTest, TheSpotlightFollowsThePointer)
{
    show();
    fake.eventMonitors.pointer = {300, 650};
    EXPECT_EQ(send(EventType::mouseMoved), Disposition::pass);
    EXPECT_EQ(controller->spotlight()->point.get(), QPointF(300, 250));
    fake.eventMonitors.pointer = {310, 640};
    (void)send(EventType::leftMouseDragged);
    EXPECT_EQ(controller->spotlight()->point.get(), QPointF(310, 260));
}

TEST_F(MouseToolsTest, WhileAnotherProgramHasTheInputItLetsEverythingThroughAndFollows)
{
    fake.overlays.otherHasInput = true;
    show();
    EXPECT_EQ(fake.overlays.prepared, std::vector{Overlays::Input::passesThrough});
    EXPECT_EQ(fake.eventMonitors.localCount(), 0u);
    fake.eventMonitors.pointer = {300, 650};
    fake.eventMonitors.sendToOthers(event(EventType::mouseMoved));
    EXPECT_EQ(controller->spotlight()->point.get(), QPointF(300, 250));
    fake.runLoop.advance(2500ms);
    EXPECT_TRUE(isClear());
}

TEST_F(MouseToolsTest, OneOverlayCoversDisplaysOfDifferentHeights)
{
    const Rect second{{1440, -200}, {1280, 1000}};
    fake.screens.arrange(fake.screens.list + QList<Screen>{FakeScreens::screen(2, second, second)});
    fake.eventMonitors.pointer = {1500, -100};
    show();
    ASSERT_EQ(windows(), 1);
    EXPECT_EQ(QApplication::topLevelWidgets()[0]->size(), QSize(2720, 1100));
    EXPECT_EQ(controller->spotlight()->point.get(), QPointF(1500, 1000));
}

TEST_F(MouseToolsTest, CrosshairsFollowThePointerOverOtherProgramsAndTakeNoInput)
{
    controller->toggleCrosshairs();
    ASSERT_TRUE(controller->crosshairs());
    EXPECT_EQ(fake.overlays.prepared, std::vector{Overlays::Input::passesThrough});
    EXPECT_EQ(fake.overlays.holdCount(), 0u);
    for (const EventType type :
         {EventType::mouseMoved, EventType::leftMouseDragged, EventType::rightMouseDragged}) {
        fake.eventMonitors.pointer.x += 10;
        fake.eventMonitors.sendToOthers(event(type));
        EXPECT_EQ(controller->crosshairs()->point.get(), QPointF(fake.eventMonitors.pointer.x, 100));
    }
    controller->toggleCrosshairs();
    EXPECT_TRUE(isClear());
}

TEST_F(MouseToolsTest, TogglingQuicklyLeavesNothing)
{
    for (int i = 0; i < 20; ++i)
        controller->toggleCrosshairs();
    EXPECT_TRUE(isClear());
}

TEST_F(MouseToolsTest, StopTakesBothAway)
{
    controller->start();
    show();
    controller->toggleCrosshairs();
    controller->stop();
    EXPECT_TRUE(isClear());
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(MouseToolsTest, AfterStopAShortcutStillShowsTheSpotlight)
{
    controller->start();
    controller->stop();
    show();
    EXPECT_TRUE(isShown());
    fake.runLoop.advance(2500ms);
    EXPECT_TRUE(isClear());
}

TEST_F(MouseToolsTest, AnEndWhileTheGestureIsOnItsWayDoesNothing)
{
    controller->start();
    pressControl();
    Event changed;
    changed.type = EventType::flagsChanged;
    changed.flags = eventFlag::control;
    (void)fake.eventTaps.send(changed);
    controller.reset();
    fake.runLoop.drain();
    EXPECT_EQ(windows(), 0);
}

TEST_F(MouseToolsTest, AChangedSettingReachesTheNextOverlay)
{
    settings->spotlightRadius.set(80);
    show();
    EXPECT_EQ(controller->spotlight()->spotlightRadius, 80);
    settings->spotlightRadius.set(90);
    EXPECT_EQ(controller->spotlight()->spotlightRadius, 80);
    show();
    EXPECT_EQ(controller->spotlight()->spotlightRadius, 90);
}

TEST_F(MouseToolsTest, WithACompositorAllIsDimButTheCircle)
{
    fake.panels.setCompositing(true);
    fake.eventMonitors.pointer = {500, 500};
    show();
    QWidget* window = QApplication::topLevelWidgets().value(0);
    EXPECT_TRUE(window->mask().isEmpty());
    QImage image(window->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    window->render(&image, {}, {}, QWidget::DrawChildren);
    EXPECT_EQ(image.pixelColor(500, 400).alpha(), 0);
    EXPECT_NEAR(image.pixelColor(20, 20).alphaF(), 0.45, 0.01);
    const QColor ring = image.pixelColor(500, 400 - 109);
    EXPECT_GT(ring.alpha(), 200);
    EXPECT_EQ(ring.blue(), 0);
}

TEST_F(MouseToolsTest, WithoutACompositorTheSpotlightIsItsRingAndTheCrosshairsAreTheirLines)
{
    fake.panels.setCompositing(false);
    fake.eventMonitors.pointer = {500, 500};
    show();
    const QRegion ring = QApplication::topLevelWidgets().value(0)->mask();
    EXPECT_FALSE(ring.contains(QPoint(500, 400)));
    EXPECT_FALSE(ring.contains(QPoint(20, 20)));
    EXPECT_TRUE(ring.contains(QPoint(500, 400 - 109)));
    controller->hideSpotlight();

    controller->toggleCrosshairs();
    const QRegion lines = QApplication::topLevelWidgets().value(0)->mask();
    EXPECT_TRUE(lines.contains(QPoint(500, 10)));
    EXPECT_TRUE(lines.contains(QPoint(10, 400)));
    EXPECT_FALSE(lines.contains(QPoint(480, 380)));
    fake.panels.setCompositing(true);
    EXPECT_TRUE(QApplication::topLevelWidgets().value(0)->mask().isEmpty());
}

TEST_F(MouseToolsTest, ThePaneHasItsRows)
{
    const AnyView pane = MouseToolsSettingsPane::make(settings);
    const auto sections = pane.all<OrvaSection>();
    ASSERT_EQ(sections.size(), 2);
    EXPECT_EQ(sections[0]->title, QStringLiteral("Find My Cursor"));
    EXPECT_EQ(sections[1]->systemImage, QStringLiteral("plus.viewfinder"));
    const auto sliders = pane.all<OrvaSliderRow>();
    ASSERT_EQ(sliders.size(), 4);
    EXPECT_EQ(sliders[0]->detail.get(), QStringLiteral("110 pt"));
    EXPECT_EQ(sliders[1]->detail.get(), QStringLiteral("45%"));
    EXPECT_EQ(sliders[2]->detail.get(), QStringLiteral("2 pt"));
    EXPECT_EQ(sliders[3]->detail.get(), QStringLiteral("80%"));
}

TEST_F(MouseToolsTest, TheCapabilitySaysWhatItIs)
{
    const CapabilityMetadata& metadata = MouseToolsCapability::metadata();
    EXPECT_EQ(metadata.id.rawValue, id);
    EXPECT_EQ(metadata.symbolName, QStringLiteral("cursorarrow.rays"));
    EXPECT_EQ(metadata.category, CapabilityCategory::input);
    const auto capability = std::make_shared<MouseToolsCapability>();
    EXPECT_TRUE(capability->menuBarContributions().isEmpty()) << "there is no controller yet";
    const auto actions = capability->hotkeyActions();
    ASSERT_EQ(actions.size(), 2);
    EXPECT_EQ(actions[0].title, QStringLiteral("Find My Cursor (Spotlight)"));
    EXPECT_EQ(actions[1].title, QStringLiteral("Toggle Crosshairs"));
    const auto requirements = capability->permissionRequirements();
    ASSERT_EQ(requirements.size(), 1);
    EXPECT_EQ(requirements[0].permission, SystemPermission::inputMonitoring);
    EXPECT_EQ(requirements[0].level, PermissionRequirement::Level::optional);
}

} // namespace orvane

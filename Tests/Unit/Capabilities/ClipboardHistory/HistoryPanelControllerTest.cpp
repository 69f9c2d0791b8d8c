// Opening and closing of the history's panel.
#include "Capabilities/ClipboardHistory/Panel/HistoryPanelController.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryListView.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryPanelView.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneKit/Panels/OrvaPanelWindow.h"
#include "Unit/Capabilities/ClipboardHistory/ClipItems.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

class HistoryPanelControllerTest : public testing::Test {
protected:
    FakePlatform fake;
    std::unique_ptr<HistoryPanelController> controller = std::make_unique<HistoryPanelController>();

    HistoryPanelControllerTest() { fake.eventMonitors.pointer = {500, 700}; }

    static KeyablePanel* panel()
    {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (auto* found = dynamic_cast<KeyablePanel*>(top))
                return found;
        }
        return nullptr;
    }
    void clickElsewhere(EventType type)
    {
        fake.eventMonitors.sendToOthers({.event = {.type = type}, .location = {}});
    }
};

TEST_F(HistoryPanelControllerTest, NothingIsMadeBeforeTheFirstShowing)
{
    controller->model.items.set({textClip(QStringLiteral("a"))});
    controller->hide();
    EXPECT_FALSE(controller->isVisible());
    EXPECT_EQ(panel(), nullptr);
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0U);
}

TEST_F(HistoryPanelControllerTest, ShowPutsItAtThePointerWithTheKeyboard)
{
    controller->show();
    EXPECT_TRUE(controller->isVisible());
    ASSERT_TRUE(panel());
    EXPECT_EQ(panel()->frame(), (Rect{{500, 280}, {360, 420}}));
    EXPECT_EQ(fake.panels.keyRequests, 1);
    EXPECT_EQ(fake.application.activations, 1);
    EXPECT_EQ(fake.eventMonitors.globalCount(), 1U);
}

TEST_F(HistoryPanelControllerTest, TheWindowIsMadeOnce)
{
    controller->show();
    const KeyablePanel* first = panel();
    controller->hide();
    fake.eventMonitors.pointer = {10, 100};
    controller->show();
    EXPECT_EQ(panel(), first);
    EXPECT_EQ(panel()->frame(), (Rect{{10, 78}, {360, 420}}));
}

TEST_F(HistoryPanelControllerTest, EveryShowingStartsUnfiltered)
{
    controller->model.items.set({textClip(QStringLiteral("apple")), textClip(QStringLiteral("pear"))});
    controller->show();
    controller->model.query.set(QStringLiteral("pear"));
    controller->hide();
    controller->show();
    EXPECT_EQ(controller->model.query.get(), QString());
    EXPECT_EQ(panel()->findChild<HistoryPanelView*>()->field().text(), QString());
}

TEST_F(HistoryPanelControllerTest, ASecondShowKeepsOneMonitor)
{
    controller->show();
    controller->show();
    EXPECT_EQ(fake.eventMonitors.globalCount(), 1U);
    EXPECT_TRUE(controller->isVisible());
}

TEST_F(HistoryPanelControllerTest, AClickElsewhereHidesItInALaterTurn)
{
    for (const EventType type : {EventType::leftMouseDown, EventType::rightMouseDown}) {
        controller->show();
        clickElsewhere(type);
        EXPECT_TRUE(controller->isVisible());
        fake.runLoop.drain();
        EXPECT_FALSE(controller->isVisible());
        EXPECT_EQ(fake.eventMonitors.globalCount(), 0U);
    }
}

TEST_F(HistoryPanelControllerTest, OtherEventsElsewhereDoNot)
{
    controller->show();
    for (const EventType type : {EventType::otherMouseDown, EventType::leftMouseUp, EventType::keyDown,
                                 EventType::mouseMoved, EventType::scrollWheel})
        clickElsewhere(type);
    fake.runLoop.drain();
    EXPECT_TRUE(controller->isVisible());
}

TEST_F(HistoryPanelControllerTest, HideTakesTheMonitorAway)
{
    controller->show();
    controller->hide();
    EXPECT_FALSE(controller->isVisible());
    EXPECT_EQ(fake.eventMonitors.globalCount(), 0U);
    controller->hide();
    EXPECT_FALSE(controller->isVisible());
}

TEST_F(HistoryPanelControllerTest, CloseIsHide)
{
    controller->show();
    controller->model.onClose();
    EXPECT_FALSE(controller->isVisible());
    controller->show();
    panel()->close();
    EXPECT_FALSE(controller->isVisible());
}

TEST_F(HistoryPanelControllerTest, AClickThatArrivesAfterTheEndDoesNothing)
{
    controller->show();
    clickElsewhere(EventType::leftMouseDown);
    controller.reset();
    fake.runLoop.drain();
    EXPECT_EQ(panel(), nullptr);
}

TEST_F(HistoryPanelControllerTest, WithoutAScreenItIsShownAllTheSame)
{
    fake.screens.list.clear();
    controller->show();
    EXPECT_TRUE(controller->isVisible());
    EXPECT_EQ(panel()->frame().origin, (Point{500, 280}));
}

TEST_F(HistoryPanelControllerTest, TheListShowsWhatTheModelHeldBefore)
{
    controller->model.items.set({textClip(QStringLiteral("a")), textClip(QStringLiteral("b"))});
    controller->show();
    EXPECT_EQ(panel()->findChild<HistoryPanelView*>()->list().rowCount(), 2);
}

} // namespace

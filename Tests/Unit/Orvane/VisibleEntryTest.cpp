// One way to the program stays in sight: with a status area, without one, and when it comes and goes.
#include "Orvane/Home/VisibleEntry.h"
#include "Fakes/FakePlatform.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "Orvane/Home/HomeWindowController.h"
#include "Orvane/Launch/AppDelegate.h"
#include "Orvane/Launch/AppEnvironment.h"

#include <QCoreApplication>
#include <QWidget>

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

using namespace std::chrono_literals;
using Area = StatusBar::Area;
using Policy = Application::ActivationPolicy;
using StartedBy = Application::StartedBy;

enum class Sight { window, taskBar, none };

class VisibleEntryTest : public testing::Test {
protected:
    VisibleEntryTest() { fake.defaults.stored[QStringLiteral("hasOnboarded")] = true; }
    ~VisibleEntryTest() override
    {
        if (QWidget* window = home().window())
            window->hide();
    }

    void launch(StartedBy starter, Area area)
    {
        fake.application.starter = starter;
        fake.statusBar.setArea(area);
        delegate.applicationDidFinishLaunching();
    }
    HomeWindowController& home() { return environment->homeWindow(); }
    Sight sight()
    {
        QCoreApplication::sendPostedEvents();
        const QWidget* window = home().window();
        if (!window || !window->isVisible())
            return Sight::none;
        return window->isMinimized() ? Sight::taskBar : Sight::window;
    }

    FakePlatform fake;
    KeyboardShortcuts::StateScope shortcuts;
    std::shared_ptr<AppEnvironment> environment = AppEnvironment::make([](CapabilityRegistry&) {});
    AppDelegate delegate{[this] { return environment; }};
};

class HiddenIconTest : public VisibleEntryTest {
protected:
    HiddenIconTest()
    {
        environment->appPreferences().setShowMenuBarItem(false);
        EXPECT_TRUE(environment->appPreferences().showDockIcon());
    }
};

TEST_F(VisibleEntryTest, WithTheStatusItemInSightTheWindowComesAndGoesAsAsked)
{
    launch(StartedBy::person, Area::present);
    EXPECT_EQ(sight(), Sight::none);
    EXPECT_EQ(fake.application.policy, Policy::accessory);
    home().show();
    EXPECT_EQ(sight(), Sight::window);
    home().window()->close();
    EXPECT_EQ(sight(), Sight::none);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(VisibleEntryTest, APersonWhoStartsItWithoutAStatusAreaSeesTheWindow)
{
    launch(StartedBy::person, Area::absent);
    EXPECT_EQ(sight(), Sight::window);
    EXPECT_EQ(fake.application.policy, Policy::regular);
    home().window()->close();
    EXPECT_EQ(sight(), Sight::taskBar);
    home().show();
    EXPECT_EQ(sight(), Sight::window);
}

TEST_F(VisibleEntryTest, TheWindowWaitsUntilItIsKnownWhetherThereIsAStatusArea)
{
    launch(StartedBy::person, Area::unknown);
    EXPECT_EQ(sight(), Sight::none);
    fake.statusBar.setArea(Area::absent);
    EXPECT_EQ(sight(), Sight::window);
}

TEST_F(VisibleEntryTest, AStatusAreaThatIsFoundLeavesTheWindowClosedForGood)
{
    launch(StartedBy::person, Area::unknown);
    fake.statusBar.setArea(Area::present);
    EXPECT_EQ(sight(), Sight::none);
    fake.statusBar.setArea(Area::absent);
    EXPECT_EQ(sight(), Sight::none) << "a panel that is started again has its time";
    fake.runLoop.advance(VisibleEntry::patience);
    EXPECT_EQ(sight(), Sight::taskBar);
}

TEST_F(VisibleEntryTest, AStartAtLoginGivesThePanelItsTimeAndTakesNoFocus)
{
    launch(StartedBy::session, Area::absent);
    EXPECT_EQ(sight(), Sight::none);
    fake.runLoop.advance(VisibleEntry::patience - 1ms);
    EXPECT_EQ(sight(), Sight::none);
    fake.runLoop.advance(1ms);
    EXPECT_EQ(sight(), Sight::taskBar);
    EXPECT_EQ(fake.application.activations, 0);

    fake.statusBar.setArea(Area::present);
    EXPECT_EQ(sight(), Sight::none) << "the item takes its place";
    EXPECT_EQ(fake.application.policy, Policy::accessory);
}

TEST_F(VisibleEntryTest, APanelThatComesInTimeLeavesNothingElseInSight)
{
    launch(StartedBy::session, Area::absent);
    fake.runLoop.advance(1s);
    fake.statusBar.setArea(Area::present);
    fake.runLoop.advance(1h);
    EXPECT_EQ(sight(), Sight::none);
}

TEST_F(VisibleEntryTest, AWindowThatAPersonHasOpenedStaysWhenThePanelComes)
{
    launch(StartedBy::person, Area::absent);
    ASSERT_EQ(sight(), Sight::window);
    fake.statusBar.setArea(Area::present);
    EXPECT_EQ(sight(), Sight::window);
}

TEST_F(VisibleEntryTest, WithTheDockIconWantedTheClosedWindowStaysInTheTaskBar)
{
    environment->appPreferences().setShowDockIcon(true);
    launch(StartedBy::person, Area::present);
    EXPECT_EQ(sight(), Sight::taskBar);
    home().show();
    home().window()->close();
    EXPECT_EQ(sight(), Sight::taskBar);
    environment->appPreferences().setShowDockIcon(false);
    EXPECT_EQ(sight(), Sight::none);
    environment->appPreferences().setShowDockIcon(true);
    EXPECT_EQ(sight(), Sight::taskBar);
    EXPECT_EQ(fake.application.activations, 1) << "only by the show";
}

TEST_F(VisibleEntryTest, AWindowThatAPersonHasMinimizedStaysInTheTaskBar)
{
    launch(StartedBy::person, Area::present);
    home().show();
    home().window()->showMinimized();
    fake.statusBar.setArea(Area::absent);
    fake.statusBar.setArea(Area::present);
    EXPECT_EQ(sight(), Sight::taskBar);
}

TEST_F(HiddenIconTest, TheWindowStaysInTheTaskBarWhenItIsClosed)
{
    launch(StartedBy::person, Area::present);
    EXPECT_EQ(sight(), Sight::window) << "a start by a person shows it";
    home().window()->close();
    EXPECT_EQ(sight(), Sight::taskBar);
    EXPECT_EQ(fake.application.policy, Policy::regular);
    home().window()->hide(); // as hiding the program does
    EXPECT_EQ(sight(), Sight::taskBar);
}

TEST_F(HiddenIconTest, AStartAtLoginIsSeenInTheTaskBarAtOnce)
{
    launch(StartedBy::session, Area::present);
    EXPECT_EQ(sight(), Sight::taskBar);
    environment->appPreferences().setShowMenuBarItem(true);
    home().show();
    home().window()->close();
    EXPECT_EQ(sight(), Sight::taskBar) << "the Dock icon is still wanted";
    environment->appPreferences().setShowDockIcon(false);
    EXPECT_EQ(sight(), Sight::none);
}

} // namespace
} // namespace orvane::tests

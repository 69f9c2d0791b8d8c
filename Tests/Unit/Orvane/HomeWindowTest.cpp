// The home window as widgets: its sizes, its life, its keyboard, its tickers and its scrolling.
#include "Fakes/FakePlatform.h"
#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Home/CapabilityDetailView.h"
#include "Orvane/Home/HomeWindowController.h"
#include "Orvane/Home/HomeWindowPlacement.h"
#include "Orvane/Home/RootView.h"
#include "Orvane/Navigation/OrvaSidebarView.h"
#include "OrvaneKit/Controls/OrvaSwitchView.h"
#include "OrvaneKit/Controls/OrvaTextButtonView.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "Unit/Orvane/HomeFixture.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>

namespace orvane::tests {
namespace {

using namespace std::chrono_literals;

// Placement

TEST(HomeWindowPlacement, StandsInTheMiddleOfTheScreen)
{
    const QRect screen(100, 50, 1600, 1000);
    const QRect window = HomeWindowPlacement::centred({940, 640}, screen);
    EXPECT_EQ(window.size(), QSize(940, 640));
    EXPECT_NEAR(window.center().x(), screen.center().x(), 1);
    EXPECT_NEAR(window.center().y(), screen.center().y(), 16);
}

TEST(HomeWindowPlacement, OnASmallScreenNothingOfItIsOutside)
{
    const QRect screen(0, 28, 720, 422);
    const QRect window = HomeWindowPlacement::centred({940, 640}, screen);
    EXPECT_TRUE(screen.contains(window.marginsAdded(HomeWindowPlacement::frameRoom)));
    EXPECT_GE(window.width(), 700);
}

TEST(HomeWindowPlacement, AWindowWhoseTitleBarIsOnNoScreenCannotBeReached)
{
    const QList<QRect> screens{{0, 0, 1000, 800}, {1000, 0, 1000, 800}};
    EXPECT_TRUE(HomeWindowPlacement::isReachable({30, 60, 940, 640}, screens));
    EXPECT_TRUE(HomeWindowPlacement::isReachable({1900, 60, 940, 640}, screens)) << "a corner is enough";
    EXPECT_FALSE(HomeWindowPlacement::isReachable({1960, 60, 940, 640}, screens));
    EXPECT_FALSE(HomeWindowPlacement::isReachable({2100, 60, 940, 640}, screens));
    EXPECT_FALSE(HomeWindowPlacement::isReachable({30, -40, 940, 640}, screens));
    EXPECT_FALSE(HomeWindowPlacement::isReachable({30, 60, 940, 640}, {}));
}

// Window

struct HomeWindowTest : HomeFixture {
    HomeWindowTest() : root(makeRoot())
    {
        controller.setMakeContentView([this] { return root; });
    }
    ~HomeWindowTest() override
    {
        if (QWidget* window = controller.window())
            window->hide();
    }

    AnyView makeRoot()
    {
        const Binding<bool> flag([this] { return onboarded->get(); }, [this](bool on) { onboarded->set(on); },
                                 {onboarded});
        return RootView{flag, registry, permissions, preferences};
    }
    QWidget& window() { return *controller.window(); }
    template <class Widget>
    Widget* one()
    {
        const auto found = all<Widget>(window());
        return found.isEmpty() ? nullptr : found.constLast();
    }
    OrvaSidebarView& sidebar() { return *one<OrvaSidebarView>(); }
    void choose(const char* title)
    {
        const QAbstractItemModel& model = *sidebar().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            if (model.index(row, 0).data().toString() == QString::fromLatin1(title))
                sidebar().setCurrentIndex(model.index(row, 0));
        }
        settle();
    }
    /// Widgets that go with a page are deleted in a later turn.
    void settle()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    bool shows(const char* text) { return shownTexts(window()).contains(QString::fromUtf8(text)); }

    std::shared_ptr<Observable<bool>> onboarded = std::make_shared<Observable<bool>>(true);
    AnyView root;
    HomeWindowController controller;
};

TEST_F(HomeWindowTest, WithoutAContentToMakeNothingIsShown)
{
    HomeWindowController empty;
    empty.show();
    EXPECT_EQ(empty.window(), nullptr);
    EXPECT_EQ(fake.application.activations, 0);
}

TEST_F(HomeWindowTest, ItHasItsNameAndItsSizes)
{
    controller.show();
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Orvane"));
    EXPECT_FALSE(window().windowIcon().isNull());
    EXPECT_EQ(window().size(), QSize(940, 640));
    EXPECT_EQ(window().minimumSize(), QSize(820, 560));
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(fake.application.activations, 1);
}

TEST_F(HomeWindowTest, ClosingOnlyHidesItAndTheSameWindowComesBack)
{
    add("one");
    controller.show();
    choose("The one");
    const QPointer<QWidget> first = controller.window();
    first->close();
    settle();
    ASSERT_FALSE(first.isNull());
    EXPECT_FALSE(first->isVisible());
    controller.show();
    EXPECT_EQ(controller.window(), first);
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(fake.application.activations, 2);
    EXPECT_EQ(sidebar().currentIndex().data().toString(), QStringLiteral("The one"));
}

TEST_F(HomeWindowTest, AWindowThatWasLeftOutsideOfAllScreensComesBackToTheMiddle)
{
    controller.show();
    const QRect before = window().geometry();
    window().close();
    window().move(-5000, -5000);
    controller.show();
    EXPECT_EQ(window().geometry(), before);
}

TEST_F(HomeWindowTest, ItsPlaceAndSizeComeBackInTheNextRun)
{
    controller.show();
    window().setGeometry(60, 70, 850, 600);
    window().close();
    HomeWindowController next;
    next.setMakeContentView([this] { return makeRoot(); });
    next.show();
    EXPECT_EQ(next.window()->geometry(), QRect(60, 70, 850, 600));
    next.window()->hide();
}

TEST_F(HomeWindowTest, AStoredPlaceThatIsNoneOrOutOfReachIsTheMiddle)
{
    controller.show();
    const QRect middle = window().geometry();
    for (const char* stored : {"-9000 -9000 850 600", "10 10 850", "10 10 850 high", "10 10 0 0", ""}) {
        fake.defaults.stored[QStringLiteral("app.homeFrame")] = QString::fromLatin1(stored);
        HomeWindowController next;
        next.setMakeContentView([this] { return makeRoot(); });
        next.show();
        EXPECT_EQ(next.window()->geometry(), middle) << stored;
        next.window()->hide();
    }
}

TEST_F(HomeWindowTest, TheNextRunBeginsWithThePageThatWasShownLast)
{
    add("one");
    EXPECT_EQ(HomeNavigation::remembered()->selection.get(), std::nullopt);
    HomeNavigation::remembered()->selection.set(HomeSelection::capability(id("one")));
    EXPECT_EQ(HomeNavigation::remembered()->selection.get(), HomeSelection::capability(id("one")));
    HomeNavigation::remembered()->selection.set(HomeSelection::general());
    EXPECT_EQ((HomeView{registry, permissions, preferences, HomeNavigation::remembered()}.shown()),
              HomeSelection::general());
}

TEST_F(HomeWindowTest, FinishingTheFirstRunShowsTheHomeViewForGood)
{
    onboarded->set(false);
    controller.show();
    EXPECT_EQ(all<OrvaSidebarView>(window()).size(), 0);
    onboarded->set(true);
    settle();
    EXPECT_EQ(all<OrvaSidebarView>(window()).size(), 1);
    EXPECT_TRUE(shows("General"));
}

// Ticking

TEST_F(HomeWindowTest, OneTickerRunsWhileThePageIsInSightAndNoneAfterwards)
{
    add("one");
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    controller.show();
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector{2000ms});
    choose("The one");
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector{2000ms}) << "the page's own";
    window().close();
    settle();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    controller.show();
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector{2000ms});
}

TEST_F(HomeWindowTest, APermissionGrantedWhileThePageIsOpenMakesTheCapabilityActiveWithinATick)
{
    add("one")->requirements = {requirement(SystemPermission::inputMonitoring)};
    controller.show();
    choose("The one");
    auto* toggle = all<OrvaSwitchView>(window()).constFirst();
    toggle->click();
    fake.runLoop.drain();
    EXPECT_FALSE(toggle->isChecked());
    EXPECT_TRUE(shows("Input Monitoring"));
    EXPECT_FALSE(all<OrvaTextButtonView>(window()).size());

    fake.permissions.inputMonitoring = true;
    fake.runLoop.advance(1999ms);
    EXPECT_FALSE(toggle->isChecked());
    fake.runLoop.advance(1ms);
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_TRUE(shows("All permissions granted"));
}

TEST_F(HomeWindowTest, WithTheWindowClosedAGrantGoesUnnoticed)
{
    const auto capability = add("one");
    capability->requirements = {requirement(SystemPermission::inputMonitoring)};
    controller.show();
    choose("The one");
    switchOn("one");
    window().close();
    fake.permissions.inputMonitoring = true;
    fake.runLoop.advance(10s);
    EXPECT_TRUE(capability->calls->isEmpty());
}

// Pages

TEST_F(HomeWindowTest, ChoosingAnotherCapabilityMakesAFreshPageAndComingBackToo)
{
    const auto capability = add("one");
    add("two");
    controller.show();
    EXPECT_EQ(capability->panes, 0) << "only what is shown is made";
    choose("The one");
    EXPECT_EQ(capability->panes, 1);
    switchOn("one");
    permissions->refresh();
    EXPECT_EQ(capability->panes, 1) << "a change isn't a new page";
    choose("The two");
    choose("The one");
    EXPECT_EQ(capability->panes, 2);
}

TEST_F(HomeWindowTest, ThePaneReactsOnlyWhileTheCapabilityIsActive)
{
    const auto capability = add("one");
    controller.show();
    choose("The one");
    QPushButton* button = nullptr;
    for (QPushButton* found : window().findChildren<QPushButton*>()) {
        if (found->text() == QStringLiteral("In the pane"))
            button = found;
    }
    ASSERT_NE(button, nullptr);
    EXPECT_FALSE(button->isEnabled());
    switchOn("one");
    EXPECT_TRUE(button->isEnabled());
    button->click();
    EXPECT_EQ(capability->presses, 1);
}

TEST_F(HomeWindowTest, TheSwitchInTheSidebarsPageStaysStillWhileActivationIsSuspended)
{
    const auto capability = add("one");
    capability->activateGate.close();
    controller.show();
    choose("The one");
    auto* toggle = all<OrvaSwitchView>(window()).constFirst();
    QList<bool> changes;
    QObject::connect(toggle, &QAbstractButton::toggled, toggle, [&](bool on) { changes.append(on); });
    toggle->click();
    fake.runLoop.drain();
    EXPECT_TRUE(changes.isEmpty());
    capability->activateGate.open();
    EXPECT_EQ(changes, QList<bool>{true});
}

// Sidebar

TEST_F(HomeWindowTest, ArrowKeysMoveOverHeadingsFromPageToPage)
{
    add("one", CapabilityCategory::desktop);
    add("two", CapabilityCategory::system);
    controller.show();
    sidebar().setFocus(Qt::TabFocusReason);
    const auto current = [&] { return sidebar().currentIndex().data().toString(); };
    EXPECT_EQ(current(), QStringLiteral("General"));
    press(sidebar(), Qt::Key_Down);
    EXPECT_EQ(current(), QStringLiteral("The one"));
    EXPECT_TRUE(shows("What it does."));
    press(sidebar(), Qt::Key_Down);
    EXPECT_EQ(current(), QStringLiteral("The two"));
    press(sidebar(), Qt::Key_Down);
    EXPECT_EQ(current(), QStringLiteral("The two"));
    press(sidebar(), Qt::Key_Home);
    EXPECT_EQ(current(), QStringLiteral("General"));
    press(sidebar(), Qt::Key_End);
    EXPECT_EQ(current(), QStringLiteral("The two"));
}

TEST_F(HomeWindowTest, AClickOnTheRowOfTheFallbackPageChoosesIt)
{
    add("one");
    controller.show();
    Q_EMIT sidebar().clicked(sidebar().model()->index(0, 0));
    EXPECT_EQ(sidebar().currentIndex().row(), 0);
    clickAt(*sidebar().viewport(), QRectF(sidebar().visualRect(sidebar().model()->index(1, 0))).center());
    EXPECT_EQ(sidebar().currentIndex().row(), 0) << "a heading can't be chosen";
    clickAt(*sidebar().viewport(), QPointF(40, sidebar().viewport()->height() - 5));
    EXPECT_TRUE(sidebar().selectionModel()->isSelected(sidebar().model()->index(0, 0)))
        << "and neither it nor the empty room takes the mark away";
    clickAt(*sidebar().viewport(), QRectF(sidebar().visualRect(sidebar().model()->index(2, 0))).center());
    EXPECT_EQ(sidebar().currentIndex().row(), 2);
}

// Scrolling

struct ScrollTest : HomeWindowTest {
    ScrollTest()
    {
        add("one")->requirements = {requirement(SystemPermission::inputMonitoring)};
        grantInputMonitoring();
        root = home();
        controller.show();
    }
    /// Returns the distance of the permissions' section from the top of the visible part.
    int distance()
    {
        auto* anchor = window().findChild<QWidget*>(QStringLiteral("general.permissions"));
        return anchor ? anchor->mapTo(scrollArea().viewport(), QPoint()).y() : -1;
    }
    QScrollArea& scrollArea()
    {
        for (QScrollArea* area : window().findChildren<QScrollArea*>()) {
            if (area->isVisible())
                return *area;
        }
        throw std::logic_error("no page");
    }
    void manageInGeneral()
    {
        choose("The one");
        auto* button = one<OrvaTextButtonView>();
        ASSERT_NE(button, nullptr);
        button->click();
        settle();
    }
};

TEST_F(ScrollTest, ManageInGeneralBringsThePermissionsToTheTopEachTime)
{
    const int before = distance();
    manageInGeneral();
    ASSERT_GT(scrollArea().verticalScrollBar()->maximum(), 0);
    EXPECT_LT(distance(), before);
    EXPECT_NEAR(distance(), Orva::pagePadding, 1);
    scrollArea().verticalScrollBar()->setValue(0);
    manageInGeneral();
    EXPECT_NEAR(distance(), Orva::pagePadding, 1);
}

TEST_F(ScrollTest, AnOpenGeneralPageScrollsAtEachChangeOfTheCounter)
{
    for (int time = 0; time < 2; ++time) {
        scrollArea().verticalScrollBar()->setValue(0);
        navigation->showPermissions();
        EXPECT_NEAR(distance(), Orva::pagePadding, 1);
    }
}

} // namespace
} // namespace orvane::tests

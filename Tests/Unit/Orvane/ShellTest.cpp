#include "Fakes/FakePlatform.h"
#include "Fakes/RecordingCapability.h"
#include "Orvane/AppDelegate.h"
#include "Orvane/AppEnvironment.h"
#include "Orvane/AppRelaunch.h"
#include "Orvane/HomeWindowController.h"
#include "Orvane/MenuBarController.h"
#include "Orvane/MenuBarIcon.h"
#include "OrvaneCore/OrvaNotifications.h"

#include <QWidget>

#include <gtest/gtest.h>

using namespace orvane;

namespace {

const CapabilityID awake{QStringLiteral("net.lindenrow.orvane.awake")};

struct ShellTest : testing::Test {
    ShellTest() { fake.defaults.stored[QStringLiteral("hasOnboarded")] = true; }

    std::shared_ptr<AppEnvironment> environment()
    {
        if (!m_environment)
            m_environment = AppEnvironment::make();
        return m_environment;
    }
    void launch() { delegate.applicationDidFinishLaunching(); }
    bool homeIsShown()
    {
        const QWidget* window = environment()->homeWindow().window();
        return window && window->isVisible();
    }
    Menu statusMenu() { return fake.statusBar.items.at(0)->menu(); }
    static QStringList titles(const Menu& menu)
    {
        QStringList list;
        for (const MenuItem& item : menu.items)
            list.append(item.kind == MenuItem::Kind::separator ? QStringLiteral("-") : item.title);
        return list;
    }

    FakePlatform fake;
    AppDelegate delegate{[this] { return environment(); }};

private:
    std::shared_ptr<AppEnvironment> m_environment;
};

using AppEnvironmentTest = ShellTest;
using AppDelegateTest = ShellTest;
using MenuBarControllerTest = ShellTest;

} // namespace

TEST_F(AppEnvironmentTest, RegistersTheCapabilitiesInTheirFixedOrder)
{
    const QStringList order{
        QStringLiteral("dailyframe"),       QStringLiteral("dockpeek"),      QStringLiteral("snapzones"),
        QStringLiteral("findercutpaste"),   QStringLiteral("finderactions"), QStringLiteral("dropshelf"),
        QStringLiteral("imageresizer"),     QStringLiteral("keyswap"),       QStringLiteral("mousetools"),
        QStringLiteral("clipboardhistory"), QStringLiteral("colorpicker"),   QStringLiteral("textextractor"),
        QStringLiteral("magnifier"),        QStringLiteral("awake"),         QStringLiteral("plainpaste")};
    qsizetype last = -1;
    for (const auto& entry : environment()->registry().entries()) {
        const qsizetype place = order.indexOf(entry.id().rawValue.section(QLatin1Char('.'), -1));
        EXPECT_GT(place, last) << entry.id().rawValue.toStdString();
        last = place;
        EXPECT_EQ(entry.state, CapabilityState{});
    }
    EXPECT_TRUE(environment()->registry().entry(awake).has_value());
}

TEST_F(AppEnvironmentTest, EachCapabilityHasAContextOfItsOwn)
{
    const auto context = environment()->registry().context(awake);
    ASSERT_TRUE(context);
    EXPECT_EQ(context->id, awake);
    EXPECT_EQ(context->preferences.prefix(), awake.rawValue);
    EXPECT_EQ(context->logger.category(), awake.rawValue);
    EXPECT_EQ(context->logger.subsystem(), QStringLiteral("net.lindenrow.orvane"));
    EXPECT_EQ(context->appInfo.supportDirectory,
              QStringLiteral("/fake/support/Orvane/net.lindenrow.orvane.awake"));
    EXPECT_EQ(context->permissions.get(), &environment()->permissions());
    ASSERT_NE(context->serviceHost, nullptr);
}

TEST_F(AppEnvironmentTest, MakingItReadsThePermissionsOnceAndStartsNothing)
{
    environment();
    EXPECT_EQ(fake.permissions.automationTargets.size(), 1);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    EXPECT_TRUE(fake.statusBar.items.empty());
    EXPECT_EQ(environment()->homeWindow().window(), nullptr);
}

TEST_F(AppEnvironmentTest, IsBuiltInItsFixedOrder)
{
    QStringList order;
    fake.permissions.onRead = [&] {
        order.append(QStringLiteral("permissions"));
        EXPECT_EQ(fake.defaults.registrations, 1) << "the application's preferences come first";
        EXPECT_EQ(fake.fileManager.reads, 0) << "no capability is registered yet";
    };
    fake.workspace.onUse = [&] {
        order.append(QStringLiteral("tap armed"));
        EXPECT_GE(fake.fileManager.reads, 2) << "the capabilities are registered";
    };
    const auto made = AppEnvironment::make();
    EXPECT_EQ(fake.fileManager.reads, made->registry().entries().size());
    EXPECT_EQ(order, (QStringList{QStringLiteral("permissions"), QStringLiteral("tap armed")}));
}

TEST_F(AppDelegateTest, LaunchingTakesItsStepsInOrder)
{
    fake.defaults.stored.clear();
    fake.application.policy = Application::ActivationPolicy::regular;
    std::optional<Application::ActivationPolicy> policyAtItem;
    fake.statusBar.onMake = [&] {
        if (!policyAtItem)
            policyAtItem = fake.application.policy;
        EXPECT_FALSE(homeIsShown());
    };
    launch();
    EXPECT_EQ(policyAtItem, Application::ActivationPolicy::accessory) << "the policy is set before the item";
    EXPECT_TRUE(homeIsShown());
    EXPECT_TRUE(environment()->registry().activeEntries().isEmpty()) << "restoring is a task";
}

TEST_F(AppDelegateTest, NothingIsDoneBeforeTheLaunch)
{
    EXPECT_TRUE(fake.defaults.registered.isEmpty());
}

TEST_F(AppDelegateTest, AFirstLaunchIsAnAccessoryWithAnItemAndTheHomeWindowAndNothingActive)
{
    fake.defaults.stored.clear();
    launch();
    fake.runLoop.drain();
    EXPECT_EQ(fake.application.policy, Application::ActivationPolicy::accessory);
    EXPECT_EQ(fake.statusBar.items.size(), 1u);
    EXPECT_TRUE(homeIsShown());
    EXPECT_TRUE(environment()->registry().activeEntries().isEmpty());
}

TEST_F(AppDelegateTest, OnceOnboardedTheHomeWindowStaysClosedUntilAskedFor)
{
    launch();
    EXPECT_FALSE(homeIsShown());
    fake.notificationCenter.post(OrvaNotifications::openHome);
    EXPECT_TRUE(homeIsShown());
}

TEST_F(AppDelegateTest, ReopeningShowsTheHomeWindowWhateverIsVisible)
{
    launch();
    EXPECT_TRUE(delegate.applicationShouldHandleReopen(false));
    EXPECT_TRUE(homeIsShown());
    const QWidget* window = environment()->homeWindow().window();
    EXPECT_EQ(fake.application.activations, 1);
    EXPECT_TRUE(delegate.applicationShouldHandleReopen(true));
    EXPECT_EQ(fake.application.activations, 2);
    EXPECT_EQ(environment()->homeWindow().window(), window);
}

TEST_F(AppDelegateTest, AClosedHomeWindowComesBackAsTheSame)
{
    launch();
    environment()->homeWindow().show();
    QWidget* window = environment()->homeWindow().window();
    window->close();
    EXPECT_FALSE(homeIsShown());
    environment()->homeWindow().show();
    EXPECT_EQ(environment()->homeWindow().window(), window);
    EXPECT_TRUE(homeIsShown());
}

TEST_F(AppDelegateTest, TheStoredSetIsRestoredAfterTheLaunchHasReturned)
{
    fake.defaults.stored[QStringLiteral("Orvane.enabledCapabilities")] = QVariantMap{{awake.rawValue, true}};
    fake.defaults.stored[awake.rawValue + QStringLiteral(".awakeOnLaunch")] = true;
    launch();
    EXPECT_FALSE(environment()->registry().isActive(awake));
    EXPECT_EQ(fake.statusBar.items.size(), 1u);
    fake.runLoop.drain();
    EXPECT_TRUE(environment()->registry().isActive(awake));
    EXPECT_EQ(fake.powerAssertions.held.size(), 1u);
    EXPECT_EQ(fake.statusBar.items.size(), 2u);
}

TEST_F(AppDelegateTest, ThePolicyAndTheItemFollowTheirSwitches)
{
    launch();
    environment()->appPreferences().setShowMenuBarItem(false);
    EXPECT_TRUE(fake.statusBar.items.empty());
    EXPECT_EQ(fake.application.policy, Application::ActivationPolicy::regular);
    environment()->appPreferences().setShowDockIcon(false);
    EXPECT_EQ(fake.statusBar.items.size(), 1u);
    EXPECT_EQ(fake.application.policy, Application::ActivationPolicy::accessory);
}

TEST(AppRelaunchTest, StartsANewInstanceAndEndsThisOneInATask)
{
    FakePlatform fake;
    AppRelaunch::relaunch();
    ASSERT_EQ(fake.workspace.opened.size(), 1u);
    EXPECT_EQ(fake.workspace.opened[0].path, QStringLiteral("/fake/bin/orvane"));
    EXPECT_TRUE(fake.workspace.opened[0].configuration.createsNewApplicationInstance);
    EXPECT_EQ(fake.application.terminations, 0);
    fake.workspace.opened[0].completion(std::nullopt);
    EXPECT_EQ(fake.application.terminations, 0);
    fake.runLoop.drain();
    EXPECT_EQ(fake.application.terminations, 1);
}

TEST(AppRelaunchTest, EndsThisOneAlsoWhenTheNewOneDidntStart)
{
    FakePlatform fake;
    AppRelaunch::relaunch();
    fake.workspace.opened.at(0).completion(QStringLiteral("no such file"));
    fake.runLoop.drain();
    EXPECT_EQ(fake.application.terminations, 1);
}

TEST_F(MenuBarControllerTest, WithNothingActiveTheMenuSaysSo)
{
    launch();
    EXPECT_EQ(
        titles(statusMenu()),
        (QStringList{QStringLiteral("Orvane"), QStringLiteral("-"), QStringLiteral("No capabilities are on"),
                     QStringLiteral("Turn features on…"), QStringLiteral("-"), QStringLiteral("Open Orvane…"),
                     QStringLiteral("Quit Orvane")}));
    EXPECT_FALSE(findItem(statusMenu(), QStringLiteral("No capabilities are on"))->enabled);
    EXPECT_EQ(findItem(statusMenu(), QStringLiteral("Turn features on…"))->image->symbolName,
              QStringLiteral("switch.2"));
    EXPECT_EQ(findItem(statusMenu(), QStringLiteral("Open Orvane…"))->image->symbolName,
              QStringLiteral("macwindow"));
    EXPECT_EQ(findItem(statusMenu(), QStringLiteral("Quit Orvane"))->image->symbolName,
              QStringLiteral("power"));
    EXPECT_EQ(findItem(statusMenu(), QStringLiteral("Quit Orvane"))->keyEquivalent, QStringLiteral("q"));
}

TEST_F(MenuBarControllerTest, AnActiveCapabilityOffersItsItemsInASubmenu)
{
    launch();
    environment()->registry().setEnabled(true, awake);
    const Menu menu = statusMenu();
    const MenuItem* item = findItem(menu, QStringLiteral("Awake"));
    ASSERT_NE(item, nullptr);
    EXPECT_FALSE(item->action);
    ASSERT_NE(item->submenu, nullptr);
    EXPECT_EQ(titles(*item->submenu), QStringList{QStringLiteral("Keep Awake")});
    EXPECT_TRUE(choose(*item->submenu, QStringLiteral("Keep Awake")));
    EXPECT_EQ(fake.powerAssertions.held.size(), 1u);
    EXPECT_EQ(titles(*findItem(statusMenu(), QStringLiteral("Awake"))->submenu),
              QStringList{QStringLiteral("Let Mac Sleep")})
        << "each opening shows the present state";
}

TEST_F(MenuBarControllerTest, AnActiveCapabilityWithoutItemsOpensTheHomeWindow)
{
    launch();
    const auto plain = std::make_shared<RecordingCapability>(QStringLiteral("Plain"));
    environment()->registry().registerCapability(plain);
    environment()->registry().setEnabled(true, {QStringLiteral("Plain")});
    const Menu menu = statusMenu();
    EXPECT_EQ(findItem(menu, QStringLiteral("Plain"))->submenu, nullptr);
    EXPECT_TRUE(choose(menu, QStringLiteral("Plain")));
    EXPECT_TRUE(homeIsShown());
}

TEST_F(MenuBarControllerTest, AFailedOrGatedCapabilityHasNoPlace)
{
    launch();
    const auto failing = std::make_shared<RecordingCapability>(QStringLiteral("Failing"));
    failing->activateError = QStringLiteral("dark");
    const auto gated = std::make_shared<RecordingCapability>(QStringLiteral("Gated"));
    gated->requirements = {{SystemPermission::accessibility, PermissionRequirement::Level::required}};
    for (const auto& capability : {failing, gated}) {
        environment()->registry().registerCapability(capability);
        environment()->registry().setEnabled(true, capability->classMetadata().id);
    }
    EXPECT_TRUE(titles(statusMenu()).contains(QStringLiteral("No capabilities are on")));
}

TEST_F(MenuBarControllerTest, OpenAndQuit)
{
    launch();
    EXPECT_TRUE(choose(statusMenu(), QStringLiteral("Open Orvane…")));
    EXPECT_TRUE(homeIsShown());
    EXPECT_TRUE(choose(statusMenu(), QStringLiteral("Quit Orvane")));
    EXPECT_EQ(fake.application.terminations, 1);
}

TEST_F(MenuBarControllerTest, ShowingTwiceMakesOneItemOnly)
{
    const auto controller = std::make_shared<MenuBarController>(environment());
    controller->setVisible(false);
    controller->setVisible(true);
    controller->setVisible(true);
    ASSERT_EQ(fake.statusBar.items.size(), 1u);
    EXPECT_EQ(fake.statusBar.items[0]->length, StatusItem::variableLength);
    EXPECT_EQ(fake.statusBar.items[0]->toolTip, QStringLiteral("Orvane"));
    EXPECT_EQ(fake.statusBar.items[0]->autosaveName, QStringLiteral("net.lindenrow.orvane"));
    controller->setVisible(false);
    controller->setVisible(false);
    EXPECT_TRUE(fake.statusBar.items.empty());
}

TEST(MenuBarIcon, FourCellsByTheNumbers)
{
    const MenuBarIcon::Shape shape = MenuBarIcon::shape(QRectF(0, 0, 18, 18));
    const double width = 15;
    const double cell = (width - 0.18 * width) / 2;
    const double step = 0.18 * width + cell;
    const std::array expected{QRectF(1.5, 1.5, cell, cell), QRectF(1.5, 1.5 + step, cell, cell),
                              QRectF(1.5 + step, 1.5, cell, cell),
                              QRectF(1.5 + step, 1.5 + step, cell, cell)};
    EXPECT_EQ(shape.cells, expected);
    EXPECT_DOUBLE_EQ(shape.cornerRadius, 0.3 * cell);
    EXPECT_EQ(MenuBarIcon::statusImage().size, QSizeF(18, 18));
}

#include "Fakes/FakePlatform.h"
#include "Fakes/RecordingCapability.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Home/HomeWindowController.h"
#include "Orvane/Launch/AppDelegate.h"
#include "Orvane/Launch/AppEnvironment.h"
#include "Orvane/Launch/AppRelaunch.h"
#include "Orvane/Menus/MenuBarController.h"
#include "OrvaneCore/Base/OrvaNotifications.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

#include <set>

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
    KeyboardShortcuts::StateScope shortcuts;
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
    // Those that exist, each once, as they follow each other in lists and menus.
    QStringList registered;
    for (const auto& entry : environment()->registry().entries()) {
        registered.append(entry.id().rawValue);
        EXPECT_EQ(entry.state, CapabilityState{});
    }
    EXPECT_EQ(registered, (QStringList{QStringLiteral("net.lindenrow.orvane.dailyframe"),
                                       QStringLiteral("net.lindenrow.orvane.snapzones"),
                                       QStringLiteral("net.lindenrow.orvane.imageresizer"),
                                       QStringLiteral("net.lindenrow.orvane.keyswap"),
                                       QStringLiteral("net.lindenrow.orvane.clipboardhistory"),
                                       QStringLiteral("net.lindenrow.orvane.mousetools"),
                                       QStringLiteral("net.lindenrow.orvane.colorpicker"),
                                       QStringLiteral("net.lindenrow.orvane.textextractor"),
                                       QStringLiteral("net.lindenrow.orvane.awake"),
                                       QStringLiteral("net.lindenrow.orvane.plainpaste")}));
}

TEST_F(AppEnvironmentTest, EachCapabilityHasAContextAndAHostOfItsOwn)
{
    std::set<const ServiceHost*> hosts;
    const auto& entries = environment()->registry().entries();
    for (const auto& entry : entries) {
        const CapabilityID& id = entry.id();
        SCOPED_TRACE(id.rawValue.toStdString());
        const auto context = environment()->registry().context(id);
        ASSERT_TRUE(context);
        EXPECT_EQ(context->id, id);
        EXPECT_EQ(context->preferences.prefix(), id.rawValue);
        EXPECT_EQ(context->logger.category(), id.rawValue);
        EXPECT_EQ(context->logger.subsystem(), QStringLiteral("net.lindenrow.orvane"));
        EXPECT_EQ(context->appInfo.supportDirectory, QStringLiteral("/fake/support/Orvane/") + id.rawValue);
        EXPECT_EQ(context->permissions.get(), &environment()->permissions());
        EXPECT_EQ(context->eventTap.get(), &environment()->eventTap());
        ASSERT_NE(context->serviceHost, nullptr);
        hosts.insert(context->serviceHost.get());
    }
    EXPECT_EQ(hosts.size(), static_cast<std::size_t>(entries.size())) << "two share a host";
}

TEST_F(AppEnvironmentTest, MakingItReadsThePermissionsOnceAndStartsNothing)
{
    environment();
    EXPECT_EQ(fake.permissions.automationTargets.size(), 1);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    EXPECT_TRUE(fake.statusBar.items.empty());
    EXPECT_EQ(environment()->homeWindow().window(), nullptr);
}

TEST_F(AppEnvironmentTest, AnAbilityThatComesStartsWhatWaitsForItWithoutAnyPageOrTimer)
{
    const auto gated = std::make_shared<RecordingCapability>(QStringLiteral("Gated"));
    gated->requirements = {{SystemPermission::accessibility, PermissionRequirement::Level::required}};
    const CapabilityID id{QStringLiteral("Gated")};
    CapabilityRegistry& registry = environment()->registry();
    registry.registerCapability(gated);
    registry.setEnabled(true, id);
    ASSERT_EQ(registry.state(id), CapabilityState::Kind::needsPermission);
    ASSERT_EQ(fake.runLoop.timerCount(), 0u);

    fake.permissions.changeAutomation(Permissions::noErr);
    fake.runLoop.drain();
    EXPECT_EQ(registry.state(id), CapabilityState::Kind::needsPermission) << "it waits for another one";
    fake.permissions.change(&FakePermissions::accessibility, true);
    fake.runLoop.drain();
    EXPECT_EQ(registry.state(id), CapabilityState::Kind::active);
    EXPECT_EQ(environment()->permissions().status(SystemPermission::accessibility),
              PermissionStatus::granted);

    // One that goes changes no state, and its return starts nothing twice.
    fake.permissions.change(&FakePermissions::accessibility, false);
    fake.permissions.change(&FakePermissions::accessibility, true);
    fake.runLoop.drain();
    EXPECT_EQ(gated->calls->count(QStringLiteral("activate")), 1);
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
        EXPECT_NE(fake.application.menu, nullptr) << "the menu bar is installed before the item";
        EXPECT_FALSE(homeIsShown());
    };
    launch();
    EXPECT_EQ(policyAtItem, Application::ActivationPolicy::accessory) << "the policy is set before the item";
    EXPECT_TRUE(homeIsShown());
    EXPECT_TRUE(environment()->registry().activeEntries().isEmpty()) << "restoring is a task";
}

TEST_F(AppDelegateTest, TheMainMenuIsInstalledWithoutAnEntryThatNothingStandsBehind)
{
    launch();
    ASSERT_NE(fake.application.menu, nullptr);
    ASSERT_EQ(fake.application.menu->items.size(), 3);
    EXPECT_EQ(titles(*fake.application.menu->items.at(0).submenu),
              (QStringList{QStringLiteral("About Orvane"), QStringLiteral("-"), QStringLiteral("Hide Orvane"),
                           QStringLiteral("Quit Orvane")}));
    EXPECT_EQ(fake.application.windowsMenu, fake.application.menu->items.at(2).submenu);
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

TEST_F(MenuBarControllerTest, TheHeaderShowsTheWordmarkInItsBox)
{
    launch();
    const MenuItem header = statusMenu().items.first();
    EXPECT_EQ(header.title, QStringLiteral("Orvane"));
    EXPECT_FALSE(header.enabled);
    EXPECT_FALSE(header.action);
    ASSERT_TRUE(header.view);
    EXPECT_EQ(header.view->size, QSizeF(230, 30));

    QImage picture(460, 60, QImage::Format_ARGB32_Premultiplied); // at twice the scale
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    header.view->draw(painter, picture.rect(), Qt::red);
    painter.end();
    QRect ink;
    QRect head;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            if (pixel.alpha() > 20)
                ink |= QRect(x, y, 1, 1);
            if (pixel.alpha() > 250 && pixel.red() > 200)
                head |= QRect(x, y, 1, 1);
        }
    }
    const QSizeF word = OrvaneBrand::wordmarkSize(14) * 2;
    EXPECT_NEAR(ink.left(), 26, 4) << "leading, behind the padding";
    EXPECT_GE(ink.top(), 14);
    EXPECT_LT(ink.bottom(), 54);
    EXPECT_NEAR(ink.width(), word.width(), 8);
    EXPECT_FALSE(head.isEmpty()) << "the first part has the colour of text";
    EXPECT_LT(head.right(), ink.center().x()) << "the rest hasn't";
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
    EXPECT_EQ(item->image->symbolName, QStringLiteral("eye.fill"));
    EXPECT_EQ(item->submenu->items.first().image->symbolName, QStringLiteral("eye.fill"));
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
    EXPECT_EQ(findItem(menu, QStringLiteral("Plain"))->image->symbolName, QStringLiteral("eye"));
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

TEST_F(MenuBarControllerTest, ActiveCapabilitiesStandInTheirOrderAndAPictureIsOptional)
{
    launch();
    const auto last = std::make_shared<RecordingCapability>(QStringLiteral("Last"));
    QStringList chosen;
    for (const char* title : {"One", "Two"}) {
        last->contributions.append({QLatin1String(title), QLatin1String(title), std::nullopt,
                                    [&, title] { chosen.append(QLatin1String(title)); }});
    }
    environment()->registry().registerCapability(last);
    environment()->registry().setEnabled(true, {QStringLiteral("Last")});
    environment()->registry().setEnabled(true, awake);
    const Menu menu = statusMenu();
    EXPECT_EQ(titles(menu), (QStringList{QStringLiteral("Orvane"), QStringLiteral("-"),
                                         QStringLiteral("Awake"), QStringLiteral("Last"), QStringLiteral("-"),
                                         QStringLiteral("Open Orvane…"), QStringLiteral("Quit Orvane")}));
    const Menu& submenu = *findItem(menu, QStringLiteral("Last"))->submenu;
    EXPECT_EQ(titles(submenu), (QStringList{QStringLiteral("One"), QStringLiteral("Two")}));
    EXPECT_FALSE(submenu.items.first().image);
    EXPECT_TRUE(choose(submenu, QStringLiteral("Two")));
    EXPECT_EQ(chosen, QStringList{QStringLiteral("Two")});
}

TEST_F(MenuBarControllerTest, RunningAnItemThatCarriesNoActionDoesNothing)
{
    launch();
    const auto plain = std::make_shared<RecordingCapability>(QStringLiteral("Plain"));
    int runs = 0;
    plain->contributions = {{QStringLiteral("a"), QStringLiteral("A"), std::nullopt, [&] { ++runs; }}};
    environment()->registry().registerCapability(plain);
    environment()->registry().setEnabled(true, {QStringLiteral("Plain")});
    MenuItem item = findItem(statusMenu(), QStringLiteral("Plain"))->submenu->items.first();
    item.action(item);
    EXPECT_EQ(runs, 1);
    item.representedObject = QStringLiteral("something else");
    item.action(item);
    item.representedObject.reset();
    item.action(item);
    EXPECT_EQ(runs, 1);
}

TEST_F(MenuBarControllerTest, AMenuThatOutlivesTheEnvironmentIsEmptyOfCapabilitiesAndHarmless)
{
    auto made = AppEnvironment::make();
    const auto controller = std::make_shared<MenuBarController>(made);
    made->registry().setEnabled(true, awake);
    made.reset();
    const Menu menu = controller->menuNeedsUpdate();
    EXPECT_TRUE(titles(menu).contains(QStringLiteral("No capabilities are on")));
    EXPECT_TRUE(choose(menu, QStringLiteral("Open Orvane…")));
    EXPECT_EQ(fake.application.activations, 0);
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

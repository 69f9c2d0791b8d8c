#include "Capabilities/Awake/AwakeCapability.h"
#include "Capabilities/Awake/AwakeController.h"
#include "Capabilities/Awake/AwakeSettingsPane.h"
#include "Capabilities/Awake/AwakeStatus.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Base/OrvaNotifications.h"
#include "OrvaneCore/Capability/ControllerService.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"

#include <gtest/gtest.h>

using namespace orvane;
using namespace std::chrono_literals;

namespace {

const QString awakeID = QStringLiteral("net.lindenrow.orvane.awake");
constexpr StatusItemEvent leftClick{StatusItemEvent::Type::leftMouseUp};
constexpr StatusItemEvent rightClick{StatusItemEvent::Type::rightMouseUp};
constexpr StatusItemEvent controlClick{StatusItemEvent::Type::leftMouseUp, eventFlag::control};

struct AwakeTest : testing::Test {
    void store(const char* key, const QVariant& value)
    {
        fake.defaults.stored[awakeID + QLatin1Char('.') + QLatin1String(key)] = value;
    }
    [[nodiscard]] QVariant stored(const char* key) const
    {
        return fake.defaults.stored.value(awakeID + QLatin1Char('.') + QLatin1String(key));
    }

    AwakeController& controller()
    {
        if (!m_controller) {
            settings = std::make_shared<AwakeSettings>(ScopedPreferences(fake.defaults, awakeID));
            m_controller = AwakeController::make(settings, Log::make(awakeID));
        }
        return *m_controller;
    }
    std::shared_ptr<AwakeController> sharedController()
    {
        controller();
        return m_controller;
    }
    FakeStatusItem& item() { return *fake.statusBar.items.at(0); }
    [[nodiscard]] std::size_t itemCount() const { return fake.statusBar.items.size(); }
    const Menu& openMenu()
    {
        item().click(rightClick);
        return item().openedMenus.back();
    }
    [[nodiscard]] std::vector<FakePowerAssertions::Held> held() const
    {
        std::vector<FakePowerAssertions::Held> list;
        for (const auto& [id, assertion] : fake.powerAssertions.held)
            list.push_back(assertion);
        return list;
    }
    void refuseAssertions() { fake.powerAssertions.nextStatus = PowerAssertions::Status::error; }

    FakePlatform fake;
    std::shared_ptr<AwakeSettings> settings;

private:
    std::shared_ptr<AwakeController> m_controller;
};

QStringList titles(const Menu& menu)
{
    QStringList list;
    for (const MenuItem& item : menu.items)
        list.append(item.kind == MenuItem::Kind::separator ? QStringLiteral("-") : item.title);
    return list;
}

QStringList checked(const Menu& menu)
{
    QStringList list;
    for (const MenuItem& item : menu.items) {
        if (item.state == MenuItem::State::on)
            list.append(item.title);
    }
    return list;
}

const FakePowerAssertions::Held displayHold{PowerAssertionType::preventUserIdleDisplaySleep, 255,
                                            QStringLiteral("Orvane Awake")};
const FakePowerAssertions::Held systemHold{PowerAssertionType::preventUserIdleSystemSleep, 255,
                                           QStringLiteral("Orvane Awake")};

} // namespace

TEST(AwakeDuration, TheTable)
{
    struct Row {
        const char* raw;
        const char* name;
        std::optional<std::chrono::seconds> length;
    };
    const std::array rows{Row{"indefinite", "Until I turn it off", std::nullopt},
                          Row{"minutes30", "30 minutes", 1800s}, Row{"hours1", "1 hour", 3600s},
                          Row{"hours2", "2 hours", 7200s}, Row{"hours4", "4 hours", 14400s}};
    ASSERT_EQ(rows.size(), allCases<AwakeDuration>().size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const AwakeDuration duration = allCases<AwakeDuration>()[i];
        EXPECT_EQ(QString(rawValue(duration)).toStdString(), rows[i].raw);
        EXPECT_EQ(title(duration).toStdString(), rows[i].name);
        EXPECT_EQ(seconds(duration), rows[i].length);
        EXPECT_EQ(fromRawValue<AwakeDuration>(QString(rawValue(duration))), duration);
    }
    EXPECT_EQ(fromRawValue<AwakeDuration>(u"hours3"), std::nullopt);
}

// Periods.

TEST_F(AwakeTest, AnIndefinitePeriodHoldsOneAssertionAndHasNoEnd)
{
    controller().activate(AwakeDuration::indefinite);
    EXPECT_TRUE(controller().isAwake.get());
    EXPECT_EQ(controller().expiresAt.get(), std::nullopt);
    EXPECT_EQ(held(), std::vector{displayHold});
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    EXPECT_EQ(fake.log.entries().back(),
              (FakeLogSink::Entry{LogLevel::info, QStringLiteral("net.lindenrow.orvane"), awakeID,
                                  QStringLiteral("Awake on (indefinite, display=true)")}));
}

TEST_F(AwakeTest, WithoutTheDisplayOnlyTheSystemIsHeld)
{
    store("keepDisplayAwake", false);
    controller().activate(AwakeDuration::hours2);
    EXPECT_EQ(held(), std::vector{systemHold});
    EXPECT_EQ(fake.log.messages().back(), QStringLiteral("Awake on (hours2, display=false)"));
}

TEST_F(AwakeTest, ATimedPeriodEndsByItselfThroughATask)
{
    const Clock::Date start = fake.clock.date();
    controller().activate(AwakeDuration::minutes30);
    EXPECT_EQ(controller().expiresAt.get(), start + 30min);
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector<std::chrono::milliseconds>{30min});
    fake.runLoop.advance(30min - 1ms);
    EXPECT_TRUE(controller().isAwake.get());
    fake.runLoop.advance(1ms);
    EXPECT_FALSE(controller().isAwake.get());
    EXPECT_EQ(controller().expiresAt.get(), std::nullopt);
    EXPECT_TRUE(held().empty());
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(AwakeTest, PickingADurationAgainRestartsTheTimeFromNow)
{
    controller().activate(AwakeDuration::hours1);
    fake.runLoop.advance(59min);
    controller().activate(AwakeDuration::hours1);
    EXPECT_EQ(held().size(), 1u);
    EXPECT_EQ(controller().expiresAt.get(), fake.clock.date() + 1h);
    fake.runLoop.advance(59min);
    EXPECT_TRUE(controller().isAwake.get());
    fake.runLoop.advance(1min);
    EXPECT_FALSE(controller().isAwake.get());
}

TEST_F(AwakeTest, ANewPeriodReleasesTheOldAssertionBeforeItAsksForAnother)
{
    controller().activate(AwakeDuration::indefinite);
    const PowerAssertionID first = fake.powerAssertions.held.begin()->first;
    controller().activate(AwakeDuration::hours4);
    EXPECT_EQ(fake.powerAssertions.releases, std::vector{first});
    EXPECT_EQ(held().size(), 1u);
}

TEST_F(AwakeTest, AnIndefinitePeriodAfterATimedOneHasNoEnd)
{
    controller().activate(AwakeDuration::minutes30);
    controller().activate(AwakeDuration::indefinite);
    EXPECT_EQ(controller().expiresAt.get(), std::nullopt);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    fake.runLoop.advance(24h);
    EXPECT_TRUE(controller().isAwake.get());
}

TEST_F(AwakeTest, ATimedPeriodEndedByHandLeavesNoTimer)
{
    controller().activate(AwakeDuration::hours1);
    controller().deactivate();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    controller().activate(AwakeDuration::indefinite);
    fake.runLoop.advance(2h);
    EXPECT_TRUE(controller().isAwake.get());
}

TEST_F(AwakeTest, AnAssertionThatNothingCanHoldLeavesAsleepAndIsLogged)
{
    fake.powerAssertions.nextStatus = PowerAssertions::Status::unsupported;
    controller().activate(AwakeDuration::hours1);
    EXPECT_FALSE(controller().isAwake.get());
    EXPECT_EQ(controller().expiresAt.get(), std::nullopt);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    EXPECT_EQ(fake.log.entries().back(),
              (FakeLogSink::Entry{LogLevel::error, QStringLiteral("net.lindenrow.orvane"), awakeID,
                                  QStringLiteral("Failed to create power assertion: -536870201")}));
}

TEST_F(AwakeTest, AFailureDuringAPeriodShowsThatNothingIsHeld)
{
    controller().activate(AwakeDuration::hours1);
    refuseAssertions();
    controller().activate(AwakeDuration::hours4);
    EXPECT_FALSE(controller().isAwake.get());
    EXPECT_EQ(controller().expiresAt.get(), std::nullopt);
    EXPECT_TRUE(held().empty());
}

TEST_F(AwakeTest, AFailureThatPassesIsMadeUpAndThePeriodEndsWhenItWasToEnd)
{
    refuseAssertions();
    const Clock::Date start = fake.clock.date();
    controller().activate(AwakeDuration::minutes30);
    EXPECT_FALSE(controller().isAwake.get());
    fake.runLoop.advance(1s);
    EXPECT_EQ(fake.powerAssertions.creations, 2);
    fake.powerAssertions.nextStatus = PowerAssertions::Status::success;
    fake.runLoop.advance(2s);
    EXPECT_TRUE(controller().isAwake.get());
    EXPECT_EQ(controller().expiresAt.get(), start + 30min);
    fake.runLoop.advance(30min - 3s);
    EXPECT_FALSE(controller().isAwake.get());
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(AwakeTest, RetriesGrowFarApartAndEndWithThePeriod)
{
    refuseAssertions();
    controller().activate(AwakeDuration::minutes30);
    fake.runLoop.advance(10min);
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector<std::chrono::milliseconds>{60s});
    fake.runLoop.advance(21min);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

TEST_F(AwakeTest, TurningItOffEndsTheRetries)
{
    refuseAssertions();
    controller().activate(AwakeDuration::indefinite);
    EXPECT_EQ(fake.runLoop.timerCount(), 1u);
    controller().deactivate();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    fake.powerAssertions.nextStatus = PowerAssertions::Status::success;
    fake.runLoop.advance(1h);
    EXPECT_FALSE(controller().isAwake.get());
}

TEST_F(AwakeTest, ATogglePressedDuringTheRetriesCallsThePeriodOff)
{
    refuseAssertions();
    controller().toggleDefault();
    EXPECT_EQ(fake.runLoop.timerCount(), 1u);
    controller().toggleDefault();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    fake.powerAssertions.nextStatus = PowerAssertions::Status::success;
    fake.runLoop.advance(1h);
    EXPECT_FALSE(controller().isAwake.get());
    controller().toggleDefault();
    EXPECT_TRUE(controller().isAwake.get());
}

TEST_F(AwakeTest, AToggleAfterAFailureThatStaysAsksAgain)
{
    fake.powerAssertions.nextStatus = PowerAssertions::Status::unsupported;
    controller().toggleDefault();
    fake.powerAssertions.nextStatus = PowerAssertions::Status::success;
    controller().toggleDefault();
    EXPECT_TRUE(controller().isAwake.get());

    fake.powerAssertions.nextStatus = PowerAssertions::Status::notPermitted;
    settings->keepDisplayAwake.set(false);
    EXPECT_FALSE(controller().isAwake.get());
    fake.powerAssertions.nextStatus = PowerAssertions::Status::success;
    controller().toggleDefault();
    EXPECT_TRUE(controller().isAwake.get());
}

TEST_F(AwakeTest, TheRetriesLogEachKindOfFailureOnce)
{
    const auto failures = [this](PowerAssertions::Status status) {
        return fake.log.messages().count(
            QStringLiteral("Failed to create power assertion: %1").arg(static_cast<std::int32_t>(status)));
    };
    refuseAssertions();
    controller().activate(AwakeDuration::indefinite);
    fake.runLoop.advance(10min);
    EXPECT_EQ(failures(PowerAssertions::Status::error), 1);
    fake.powerAssertions.nextStatus = PowerAssertions::Status::timeout;
    fake.runLoop.advance(10min);
    refuseAssertions();
    fake.runLoop.advance(10min);
    EXPECT_EQ(failures(PowerAssertions::Status::error), 1);
    EXPECT_EQ(failures(PowerAssertions::Status::timeout), 1);

    // After a success and after a new request it is news again.
    fake.powerAssertions.nextStatus = PowerAssertions::Status::success;
    fake.runLoop.advance(1min);
    EXPECT_TRUE(controller().isAwake.get());
    refuseAssertions();
    settings->keepDisplayAwake.set(false);
    fake.runLoop.advance(10min);
    EXPECT_EQ(failures(PowerAssertions::Status::error), 2);
    controller().activate(AwakeDuration::indefinite);
    EXPECT_EQ(failures(PowerAssertions::Status::error), 3);
}

TEST_F(AwakeTest, APeriodThatEndsDuringASuspendEndsAtTheWake)
{
    controller().activate(AwakeDuration::minutes30);
    fake.clock.advance(2h); // only the clock moves, the run loop's timers don't
    EXPECT_TRUE(controller().isAwake.get());
    fake.workspace.notificationCenter().post(Workspace::didWakeNotification());
    EXPECT_FALSE(controller().isAwake.get());
    EXPECT_TRUE(held().empty());
}

TEST_F(AwakeTest, APeriodThatOutlastsASuspendEndsAtItsTime)
{
    const Clock::Date start = fake.clock.date();
    controller().activate(AwakeDuration::hours1);
    fake.clock.advance(40min);
    fake.workspace.notificationCenter().post(Workspace::didWakeNotification());
    EXPECT_TRUE(controller().isAwake.get());
    EXPECT_EQ(controller().expiresAt.get(), start + 1h);
    fake.runLoop.advance(20min);
    EXPECT_FALSE(controller().isAwake.get());
}

TEST_F(AwakeTest, ToggleUsesTheDefaultDuration)
{
    store("defaultDuration", QStringLiteral("hours2"));
    controller().toggleDefault();
    EXPECT_EQ(controller().expiresAt.get(), fake.clock.date() + 2h);
    controller().toggleDefault();
    EXPECT_FALSE(controller().isAwake.get());
}

TEST_F(AwakeTest, AnUnknownDefaultDurationIsIndefiniteAndIsNotRepaired)
{
    store("defaultDuration", QStringLiteral("a fortnight"));
    controller().toggleDefault();
    EXPECT_EQ(stored("defaultDuration"), QStringLiteral("a fortnight"));
    EXPECT_TRUE(controller().isAwake.get());
    EXPECT_EQ(controller().expiresAt.get(), std::nullopt);
}

TEST_F(AwakeTest, AChangedKindIsAppliedAtOnceAndTheTimeRunsOn)
{
    controller().activate(AwakeDuration::hours1);
    const auto end = controller().expiresAt.get();
    fake.runLoop.advance(10min);
    settings->keepDisplayAwake.set(false);
    EXPECT_EQ(held(), std::vector{systemHold});
    EXPECT_EQ(controller().expiresAt.get(), end);
    fake.runLoop.advance(50min);
    EXPECT_FALSE(controller().isAwake.get());
}

TEST_F(AwakeTest, AChangedKindWhileAsleepTouchesNothing)
{
    controller();
    settings->keepDisplayAwake.set(false);
    EXPECT_EQ(fake.powerAssertions.creations, 0);
}

TEST_F(AwakeTest, AFailureOfTheChangedKindShowsAsleepUntilItIsMadeUp)
{
    controller().activate(AwakeDuration::hours1);
    const auto end = controller().expiresAt.get();
    refuseAssertions();
    settings->keepDisplayAwake.set(false);
    EXPECT_FALSE(controller().isAwake.get());
    EXPECT_TRUE(held().empty());
    fake.powerAssertions.nextStatus = PowerAssertions::Status::success;
    fake.runLoop.advance(1s);
    EXPECT_EQ(held(), std::vector{systemHold});
    EXPECT_EQ(controller().expiresAt.get(), end);
    fake.runLoop.advance(59min + 59s);
    EXPECT_FALSE(controller().isAwake.get());
}

TEST_F(AwakeTest, MakingAControllerNeitherHoldsNorShowsAnything)
{
    controller();
    EXPECT_EQ(fake.powerAssertions.creations, 0);
    EXPECT_EQ(itemCount(), 0u);
}

TEST_F(AwakeTest, TheTimerDoesntKeepTheControllerAlive)
{
    const std::weak_ptr<AwakeController> weak = sharedController();
    {
        auto other = AwakeController::make(settings, Log::make(awakeID));
        other->activate(AwakeDuration::hours1);
        const std::weak_ptr<AwakeController> gone = other;
        other.reset();
        EXPECT_TRUE(gone.expired());
    }
    EXPECT_TRUE(held().empty());
    fake.runLoop.advance(2h);
    EXPECT_FALSE(weak.expired());
}

// The status item.

TEST_F(AwakeTest, TheStatusItemStandsWhileTheServiceRuns)
{
    ControllerService<AwakeController> service(sharedController());
    service.start();
    ASSERT_EQ(itemCount(), 1u);
    EXPECT_EQ(item().length, StatusItem::squareLength);
    EXPECT_EQ(item().toolTip, QStringLiteral("Orvane Awake"));
    EXPECT_EQ(item().autosaveName, awakeID);
    EXPECT_EQ(item().image.symbolName, QStringLiteral("eye.slash"));
    EXPECT_EQ(item().image.accessibilityDescription, QStringLiteral("Asleep"));
    service.stop();
    EXPECT_EQ(itemCount(), 0u);
}

TEST_F(AwakeTest, TheIconFollowsTheState)
{
    controller().start();
    item().click(leftClick);
    EXPECT_EQ(item().image.symbolName, QStringLiteral("eye.fill"));
    EXPECT_EQ(item().image.accessibilityDescription, QStringLiteral("Awake"));
    item().click(leftClick);
    EXPECT_EQ(item().image.symbolName, QStringLiteral("eye.slash"));
}

TEST_F(AwakeTest, TheIconShowsTheEndOfATimedPeriod)
{
    controller().start();
    controller().activate(AwakeDuration::minutes30);
    fake.runLoop.advance(30min);
    EXPECT_EQ(item().image.symbolName, QStringLiteral("eye.slash"));
}

TEST_F(AwakeTest, TheStatusItemComesAndGoesWithItsSetting)
{
    controller().start();
    settings->showMenuBarIcon.set(false);
    EXPECT_EQ(itemCount(), 0u);
    settings->showMenuBarIcon.set(true);
    EXPECT_EQ(itemCount(), 1u);
    settings->showMenuBarIcon.set(true);
    EXPECT_EQ(itemCount(), 1u);
}

TEST_F(AwakeTest, TheSettingChangesNothingWhileTheServiceIsStopped)
{
    controller();
    settings->showMenuBarIcon.set(false);
    settings->showMenuBarIcon.set(true);
    EXPECT_EQ(itemCount(), 0u);
}

TEST_F(AwakeTest, AnItemThatComesBackShowsThePresentState)
{
    store("showMenuBarIcon", false);
    controller().start();
    controller().activate(AwakeDuration::indefinite);
    settings->showMenuBarIcon.set(true);
    EXPECT_EQ(item().image.symbolName, QStringLiteral("eye.fill"));
}

TEST_F(AwakeTest, APlainLeftClickTogglesAndNeverOpensTheMenu)
{
    controller().start();
    item().click(leftClick);
    EXPECT_TRUE(controller().isAwake.get());
    item().click({StatusItemEvent::Type::leftMouseUp, eventFlag::shift | eventFlag::command});
    EXPECT_FALSE(controller().isAwake.get());
    EXPECT_TRUE(item().openedMenus.empty());
}

TEST_F(AwakeTest, AClickOfAnUnknownKindToggles)
{
    controller().start();
    item().click(nullptr);
    EXPECT_TRUE(controller().isAwake.get());
    EXPECT_TRUE(item().openedMenus.empty());
}

TEST_F(AwakeTest, RightClickAndControlClickOpenTheMenuAndToggleNothing)
{
    controller().start();
    for (const StatusItemEvent& event : {rightClick, controlClick}) {
        item().click(event);
        EXPECT_FALSE(controller().isAwake.get());
        EXPECT_EQ(item().menu, nullptr) << "taken off, so that the next click toggles again";
    }
    EXPECT_EQ(item().openedMenus.size(), 2u);
    item().click(leftClick);
    EXPECT_TRUE(controller().isAwake.get());
}

TEST_F(AwakeTest, TheMenuHasItsItemsInOrder)
{
    controller().start();
    const QStringList asleep{QStringLiteral("Keep Awake"),
                             QStringLiteral("-"),
                             QStringLiteral("Keep awake for…"),
                             QStringLiteral("Until I turn it off"),
                             QStringLiteral("30 minutes"),
                             QStringLiteral("1 hour"),
                             QStringLiteral("2 hours"),
                             QStringLiteral("4 hours"),
                             QStringLiteral("-"),
                             QStringLiteral("Awake Settings…")};
    EXPECT_EQ(titles(openMenu()), asleep);
    EXPECT_FALSE(findItem(openMenu(), QStringLiteral("Keep awake for…"))->enabled);
    controller().activate(AwakeDuration::indefinite);
    QStringList awake = asleep;
    awake[0] = QStringLiteral("Turn Off Awake");
    EXPECT_EQ(titles(openMenu()), awake);
}

TEST_F(AwakeTest, TheCheckMarkShowsOnTheDefaultDurationWhileAwakeOnly)
{
    store("defaultDuration", QStringLiteral("hours1"));
    controller().start();
    EXPECT_TRUE(checked(openMenu()).isEmpty());
    controller().activate(AwakeDuration::hours1);
    EXPECT_EQ(checked(openMenu()), QStringList{QStringLiteral("1 hour")});
    // The choice in the picker changes: the running period stays, the mark moves.
    settings->defaultDuration.set(AwakeDuration::hours4);
    EXPECT_EQ(checked(openMenu()), QStringList{QStringLiteral("4 hours")});
    EXPECT_EQ(controller().expiresAt.get(), fake.clock.date() + 1h);
}

TEST_F(AwakeTest, TheFirstMenuItemToggles)
{
    controller().start();
    EXPECT_TRUE(choose(openMenu(), QStringLiteral("Keep Awake")));
    EXPECT_TRUE(controller().isAwake.get());
    EXPECT_TRUE(choose(openMenu(), QStringLiteral("Turn Off Awake")));
    EXPECT_FALSE(controller().isAwake.get());
}

TEST_F(AwakeTest, TheFirstMenuItemCallsOffAPeriodThatIsStillTriedFor)
{
    controller().start();
    refuseAssertions();
    controller().activateDefault();
    const Menu menu = openMenu();
    EXPECT_TRUE(checked(menu).isEmpty());
    EXPECT_TRUE(choose(menu, QStringLiteral("Turn Off Awake")));
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    EXPECT_EQ(openMenu().items.first().title, QStringLiteral("Keep Awake"));
}

TEST_F(AwakeTest, APickedDurationBecomesTheDefaultAndStartsNow)
{
    controller().start();
    EXPECT_TRUE(choose(openMenu(), QStringLiteral("30 minutes")));
    EXPECT_EQ(stored("defaultDuration"), QStringLiteral("minutes30"));
    EXPECT_EQ(controller().expiresAt.get(), fake.clock.date() + 30min);
}

TEST_F(AwakeTest, AnItemWithoutADurationPicksNothing)
{
    controller().start();
    MenuItem stray = *findItem(openMenu(), QStringLiteral("30 minutes"));
    stray.representedObject = QStringLiteral("a fortnight");
    stray.action(stray);
    stray.representedObject = 30;
    stray.action(stray);
    EXPECT_FALSE(controller().isAwake.get());
    EXPECT_FALSE(stored("defaultDuration").isValid());
}

TEST_F(AwakeTest, AwakeSettingsAsksForTheHomeWindow)
{
    int requests = 0;
    const auto observer = fake.notificationCenter.addObserver(OrvaNotifications::openHome,
                                                              [&](const Notification&) { ++requests; });
    controller().start();
    EXPECT_TRUE(choose(openMenu(), QStringLiteral("Awake Settings…")));
    EXPECT_EQ(requests, 1);
}

TEST_F(AwakeTest, AMenuThatOutlivesItsItemDoesNothing)
{
    controller().start();
    const Menu menu = openMenu();
    controller().stop();
    EXPECT_TRUE(choose(menu, QStringLiteral("Keep Awake")));
    EXPECT_TRUE(choose(menu, QStringLiteral("2 hours")));
    EXPECT_FALSE(controller().isAwake.get());
}

// The service and the capability.

TEST_F(AwakeTest, AwakeOnLaunchTakesEffectAtEachStart)
{
    store("awakeOnLaunch", true);
    store("defaultDuration", QStringLiteral("hours1"));
    ControllerService<AwakeController> service(sharedController());
    for (int round = 0; round < 2; ++round) {
        service.start();
        EXPECT_TRUE(service.isRunning());
        EXPECT_EQ(controller().expiresAt.get(), fake.clock.date() + 1h);
        service.stop();
        EXPECT_FALSE(service.isRunning());
        EXPECT_FALSE(controller().isAwake.get());
        EXPECT_TRUE(held().empty());
    }
}

TEST_F(AwakeTest, StartingOrStoppingTwiceDoesItOnce)
{
    store("awakeOnLaunch", true);
    ControllerService<AwakeController> service(sharedController());
    service.start();
    service.start();
    EXPECT_EQ(fake.powerAssertions.creations, 1);
    service.stop();
    controller().activate(AwakeDuration::indefinite);
    service.stop();
    EXPECT_TRUE(controller().isAwake.get()) << "a stopped service has nothing to stop";
}

namespace {

struct AwakeCapabilityTest : AwakeTest {
    CapabilityContext context{.id = {awakeID},
                              .preferences = ScopedPreferences(fake.defaults, awakeID),
                              .permissions = nullptr,
                              .serviceHost = std::make_shared<ServiceHost>(),
                              .eventTap = nullptr,
                              .logger = Log::make(awakeID),
                              .appInfo = {}};
    std::shared_ptr<AwakeCapability> capability = std::make_shared<AwakeCapability>();

    QStringList contributionIDs()
    {
        QStringList ids;
        for (const MenuBarItem& contribution : capability->menuBarContributions())
            ids.append(contribution.id);
        return ids;
    }
};

} // namespace

TEST_F(AwakeCapabilityTest, Metadata)
{
    const CapabilityMetadata& metadata = AwakeCapability::metadata();
    EXPECT_EQ(metadata.id.rawValue, awakeID);
    EXPECT_EQ(metadata.displayName, QStringLiteral("Awake"));
    EXPECT_EQ(metadata.summary,
              QStringLiteral("Keep your Mac awake on demand — for a set time or until you turn it off."));
    EXPECT_EQ(metadata.symbolName, QStringLiteral("eye.fill"));
    EXPECT_EQ(metadata.category, CapabilityCategory::system);
    EXPECT_TRUE(capability->permissionRequirements().isEmpty());
}

TEST_F(AwakeCapabilityTest, OffItOffersAHotkeyThatDoesNothingAndNoMenu)
{
    const auto actions = capability->hotkeyActions();
    ASSERT_EQ(actions.size(), 1);
    EXPECT_EQ(actions.first().id, QStringLiteral("awake.toggle"));
    EXPECT_EQ(actions.first().title, QStringLiteral("Toggle Keep Awake"));
    actions.first().handler();
    EXPECT_EQ(fake.powerAssertions.creations, 0);
    EXPECT_TRUE(contributionIDs().isEmpty());
}

TEST_F(AwakeCapabilityTest, AHotkeyBoundBeforeActivationWorksAfterIt)
{
    const auto handler = capability->hotkeyActions().first().handler;
    capability->activate(context);
    handler();
    EXPECT_EQ(held().size(), 1u);
    handler();
    EXPECT_TRUE(held().empty());
}

TEST_F(AwakeCapabilityTest, AHotkeyOutlivesItsCapability)
{
    const auto handler = capability->hotkeyActions().first().handler;
    capability.reset();
    handler();
    EXPECT_EQ(fake.powerAssertions.creations, 0);
}

TEST_F(AwakeCapabilityTest, TheMenuEntryFollowsTheState)
{
    store("defaultDuration", QStringLiteral("hours1"));
    capability->activate(context);
    auto contribution = capability->menuBarContributions().first();
    EXPECT_EQ(contribution.id, QStringLiteral("awake.on"));
    EXPECT_EQ(contribution.title, QStringLiteral("Keep Awake"));
    EXPECT_EQ(contribution.systemImage, QStringLiteral("eye.fill"));
    contribution.action();
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector<std::chrono::milliseconds>{1h});

    contribution = capability->menuBarContributions().first();
    EXPECT_EQ(contribution.id, QStringLiteral("awake.off"));
    EXPECT_EQ(contribution.title, QStringLiteral("Let Mac Sleep"));
    EXPECT_EQ(contribution.systemImage, QStringLiteral("eye.slash"));
    contribution.action();
    EXPECT_TRUE(held().empty());
    EXPECT_EQ(capability->menuBarContributions().size(), 1);
}

TEST_F(AwakeCapabilityTest, TheMenuEntryCallsOffAPeriodThatIsStillTriedFor)
{
    capability->activate(context);
    refuseAssertions();
    capability->menuBarContributions().first().action();
    EXPECT_EQ(fake.runLoop.timerCount(), 1u);
    const auto contribution = capability->menuBarContributions().first();
    EXPECT_EQ(contribution.id, QStringLiteral("awake.off"));
    contribution.action();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    EXPECT_EQ(capability->menuBarContributions().first().id, QStringLiteral("awake.on"));
}

TEST_F(AwakeCapabilityTest, ActivationRunsOneServiceInItsHost)
{
    capability->activate(context);
    EXPECT_EQ(context.serviceHost->runningCount(), 1);
    EXPECT_EQ(itemCount(), 1u);
    capability->deactivate();
    EXPECT_EQ(itemCount(), 0u);
    EXPECT_EQ(context.serviceHost->runningCount(), 0);
    EXPECT_EQ(contributionIDs(), QStringList{QStringLiteral("awake.on")}) << "the controller stays";
}

TEST_F(AwakeCapabilityTest, ThePaneActivatesNothingAndSharesItsSettingsWithALaterActivation)
{
    const AnyView pane = capability->makeSettingsPane(context);
    EXPECT_EQ(itemCount(), 0u);
    EXPECT_EQ(fake.powerAssertions.creations, 0);
    pane.all<OrvaToggleRow>().at(3)->isOn.set(true); // start keeping awake
    capability->activate(context);
    EXPECT_EQ(held().size(), 1u);
}

TEST_F(AwakeCapabilityTest, DeactivatingWhatNeverRanIsHarmless)
{
    capability->deactivate();
    EXPECT_EQ(itemCount(), 0u);
}

TEST_F(AwakeCapabilityTest, UninstallingReleasesForgetsAndStartsFromDefaultsNextTime)
{
    store("defaultDuration", QStringLiteral("hours4"));
    fake.defaults.stored[QStringLiteral("app.showDockIcon")] = true;
    capability->activate(context);
    capability->hotkeyActions().first().handler();
    capability->deactivate();
    capability->uninstall(context);
    EXPECT_TRUE(held().empty());
    EXPECT_EQ(fake.defaults.stored, (QVariantMap{{QStringLiteral("app.showDockIcon"), true}}));
    EXPECT_TRUE(contributionIDs().isEmpty());
    const auto picker = capability->makeSettingsPane(context).all<OrvaPickerRow>().first();
    EXPECT_EQ(picker->selection.get(), QStringLiteral("indefinite"));
}

// The pane.

namespace {

struct AwakePaneTest : AwakeTest {
    AnyView pane = AwakeSettingsPane::make(sharedController());

    const OrvaToggleRow& toggle(const char* title)
    {
        for (const auto& row : pane.all<OrvaToggleRow>()) {
            if (row->title.get() == QString::fromUtf8(title))
                return *row;
        }
        ADD_FAILURE() << "no toggle " << title;
        std::abort();
    }
    QString footnote() { return pane.all<OrvaSection>().first()->footnote->get(); }
};

} // namespace

TEST_F(AwakePaneTest, SectionsAndRowsInOrder)
{
    QStringList sections;
    for (const auto& section : pane.all<OrvaSection>())
        sections.append(*section->title + QLatin1Char('/') + *section->systemImage);
    EXPECT_EQ(sections, (QStringList{QStringLiteral("Keep Awake/eye"),
                                     QStringLiteral("Menu Bar/menubar.arrow.up.rectangle"),
                                     QStringLiteral("Startup/power")}));
    QStringList toggles;
    for (const auto& row : pane.all<OrvaToggleRow>())
        toggles.append(row->title.get() + QLatin1Char('|') +
                       (row->caption ? row->caption->get() : QString()));
    EXPECT_EQ(toggles,
              (QStringList{
                  QStringLiteral("Keep my Mac awake now|Prevents display and system sleep without touching "
                                 "your power settings."),
                  QStringLiteral("Keep the display awake too|Like Caffeine — stops the screen from dimming "
                                 "and sleeping. Off keeps only the system awake."),
                  QStringLiteral("Show a dedicated coffee-cup menu-bar icon|Click it to toggle Awake; "
                                 "right-click for durations — just like the Caffeine app."),
                  QStringLiteral("Start keeping awake when this feature turns on|")}));
    ASSERT_EQ(pane.all<OrvaCalloutText>().size(), 1);
    EXPECT_EQ(pane.all<OrvaCalloutText>().first()->text.get(),
              QStringLiteral("Use the coffee-cup icon, the Orvane menu, or a keyboard shortcut to flip Awake "
                             "on and off from anywhere."));
    // The picker stands between the first two toggles.
    const QList<AnyView> rows = pane.all<OrvaSection>().first()->content;
    ASSERT_EQ(rows.size(), 3);
    EXPECT_NE(rows[1].as<OrvaPickerRow>(), nullptr);
}

TEST_F(AwakePaneTest, TheFirstToggleShowsAndSetsTheState)
{
    const auto& row = toggle("Keep my Mac awake now");
    EXPECT_FALSE(row.isOn.get());
    settings->defaultDuration.set(AwakeDuration::hours2);
    row.isOn.set(true);
    EXPECT_TRUE(row.isOn.get());
    EXPECT_EQ(controller().expiresAt.get(), fake.clock.date() + 2h);
    row.isOn.set(false);
    EXPECT_FALSE(controller().isAwake.get());
}

TEST_F(AwakePaneTest, WhileARetryIsPendingTheToggleShowsTheWishAndTheLineTheState)
{
    const auto& row = toggle("Keep my Mac awake now");
    fake.powerAssertions.nextStatus = PowerAssertions::Status::timeout;
    row.isOn.set(true);
    EXPECT_TRUE(row.isOn.get());
    EXPECT_FALSE(controller().isAwake.get());
    EXPECT_EQ(footnote(), QStringLiteral("Your Mac can't be kept awake at the moment. Orvane keeps trying."));
    row.isOn.set(false); // one flip calls the wish off
    EXPECT_FALSE(row.isOn.get());
    EXPECT_EQ(footnote(), QStringLiteral("Your Mac sleeps normally."));
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);

    row.isOn.set(true);
    fake.powerAssertions.nextStatus = PowerAssertions::Status::success;
    fake.runLoop.advance(2s);
    EXPECT_TRUE(controller().isAwake.get());
    EXPECT_EQ(footnote(), QStringLiteral("Awake until you turn it off."));
    EXPECT_TRUE(row.isOn.get());

    // A refusal for good isn't a wish that waits.
    row.isOn.set(false);
    fake.powerAssertions.nextStatus = PowerAssertions::Status::notPermitted;
    row.isOn.set(true);
    EXPECT_FALSE(row.isOn.get());
    EXPECT_EQ(footnote(), QStringLiteral("Your Mac sleeps normally."));
}

TEST_F(AwakePaneTest, TheDurationPickerLeavesARunningPeriodAlone)
{
    const auto picker = pane.all<OrvaPickerRow>().first();
    EXPECT_EQ(picker->title, QStringLiteral("Duration"));
    const QList<OrvaPickerOption> options = picker->content.get();
    ASSERT_EQ(options.size(), 5);
    EXPECT_EQ(options[1], (OrvaPickerOption{QStringLiteral("30 minutes"), QStringLiteral("minutes30")}));
    controller().activate(AwakeDuration::hours1);
    const auto end = controller().expiresAt.get();
    picker->selection.set(QStringLiteral("hours4"));
    EXPECT_EQ(stored("defaultDuration"), QStringLiteral("hours4"));
    EXPECT_EQ(controller().expiresAt.get(), end);
}

TEST_F(AwakePaneTest, TheOtherTogglesWriteTheirSettings)
{
    toggle("Keep the display awake too").isOn.set(false);
    toggle("Show a dedicated coffee-cup menu-bar icon").isOn.set(false);
    toggle("Start keeping awake when this feature turns on").isOn.set(true);
    EXPECT_EQ(stored("keepDisplayAwake"), false);
    EXPECT_EQ(stored("showMenuBarIcon"), false);
    EXPECT_EQ(stored("awakeOnLaunch"), true);
}

TEST_F(AwakePaneTest, TheStatusLineFollowsTheState)
{
    int changes = 0;
    const auto subscriptions = pane.all<OrvaSection>().first()->footnote->onChange([&] { ++changes; });
    EXPECT_EQ(footnote(), QStringLiteral("Your Mac sleeps normally."));
    controller().activate(AwakeDuration::indefinite);
    EXPECT_EQ(footnote(), QStringLiteral("Awake until you turn it off."));
    EXPECT_GT(changes, 0);
    controller().activate(AwakeDuration::hours1);
    const QString oneHour = footnote();
    EXPECT_TRUE(oneHour.startsWith(QStringLiteral("Awake until ")));
    changes = 0;
    controller().expiresAt.set(fake.clock.date() + 4h);
    EXPECT_EQ(changes, 1) << "only the end has changed";
    EXPECT_NE(footnote(), oneHour);
}

TEST(AwakeStatusFootnote, TheTimeIsLocalInTheShortStyleWithoutSeconds)
{
    const Clock::Date end{std::chrono::seconds{1'750'000'000}}; // 2025-06-15 15:06:40 UTC
    const auto line = [&](const QLocale& locale, const QTimeZone& zone) {
        return AwakeStatus::footnote(true, end, locale, zone);
    };
    EXPECT_EQ(line(QLocale::c(), QTimeZone::utc()), QStringLiteral("Awake until 15:06."));
    EXPECT_EQ(line(QLocale(QLocale::German), QTimeZone(2 * 3600)), QStringLiteral("Awake until 17:06."));
    EXPECT_EQ(line(QLocale(QLocale::English, QLocale::UnitedStates), QTimeZone::utc()).simplified(),
              QStringLiteral("Awake until 3:06 PM."));
    EXPECT_EQ(AwakeStatus::footnote(false, end, QLocale::c(), QTimeZone::utc()),
              QStringLiteral("Your Mac sleeps normally."));
    EXPECT_EQ(AwakeStatus::footnote(true, std::nullopt, QLocale::c(), QTimeZone::utc()),
              QStringLiteral("Awake until you turn it off."));
}

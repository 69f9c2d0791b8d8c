#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "Fakes/FakePlatform.h"
#include "Fakes/RecordingCapability.h"
#include "OrvaneCore/Permissions/PermissionManager.h"

#include <gtest/gtest.h>

using namespace orvane;
using Kind = CapabilityState::Kind;

namespace {

QStringList calls(std::initializer_list<const char*> names)
{
    QStringList list;
    for (const char* name : names)
        list.append(QLatin1String(name));
    return list;
}

struct CapabilityRegistryTest : testing::Test {
    CapabilityRegistryTest()
    {
        registry = std::make_shared<CapabilityRegistry>(store, [this](const CapabilityID& contextID) {
            madeContexts.append(contextID.rawValue);
            return CapabilityContext{.id = contextID,
                                     .preferences = ScopedPreferences(fake.defaults, contextID.rawValue),
                                     .permissions = permissions,
                                     .serviceHost = std::make_shared<ServiceHost>(),
                                     .eventTap = nullptr,
                                     .logger = Log::make(contextID.rawValue),
                                     .appInfo = {}};
        });
    }

    std::shared_ptr<RecordingCapability> add(const QString& name)
    {
        auto capability = std::make_shared<RecordingCapability>(name);
        registry->registerCapability(capability);
        return capability;
    }

    void addRequiringAccessibility()
    {
        one = add(id.rawValue);
        one->requirements = {{SystemPermission::accessibility, PermissionRequirement::Level::required}};
    }

    void addOne() { one = add(id.rawValue); }

    [[nodiscard]] Kind kind() const { return registry->state(id).kind; }
    void enable() { registry->setEnabled(true, id); }
    void disable() { registry->setEnabled(false, id); }
    void grantAccessibility(bool granted)
    {
        fake.permissions.accessibility = granted;
        permissions->refresh();
    }
    [[nodiscard]] bool storedFlag() const { return store->isEnabled(id); }

    FakePlatform fake;
    CapabilityID id{QStringLiteral("net.lindenrow.orvane.one")};
    QStringList madeContexts;
    std::shared_ptr<CapabilityStore> store = std::make_shared<CapabilityStore>(fake.defaults);
    std::shared_ptr<PermissionManager> permissions = PermissionManager::make();
    std::shared_ptr<CapabilityRegistry> registry;
    std::shared_ptr<RecordingCapability> one;
};

} // namespace

// Every row of the transition table: from, event, calls in order, to.

TEST_F(CapabilityRegistryTest, RegisteringMakesTheContextAndLeavesDisabled)
{
    addOne();
    EXPECT_EQ(madeContexts, QStringList{id.rawValue});
    EXPECT_EQ(kind(), Kind::disabled);
    EXPECT_TRUE(one->calls->isEmpty());
}

TEST_F(CapabilityRegistryTest, DisabledEnableWithPermissionsMissing)
{
    addRequiringAccessibility();
    enable();
    EXPECT_EQ(kind(), Kind::needsPermission);
    EXPECT_TRUE(one->calls->isEmpty());
    EXPECT_TRUE(storedFlag());
}

TEST_F(CapabilityRegistryTest, DisabledEnableWithPermissionsMet)
{
    addRequiringAccessibility();
    grantAccessibility(true);
    enable();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_EQ(*one->calls, calls({"install", "activate"}));
}

TEST_F(CapabilityRegistryTest, DisabledEnableWhereInstallThrows)
{
    addOne();
    one->installError = QStringLiteral("no room");
    enable();
    EXPECT_EQ(registry->state(id), CapabilityState::failed(QStringLiteral("no room")));
    EXPECT_EQ(*one->calls, calls({"install"}));
}

TEST_F(CapabilityRegistryTest, DisabledEnableWhereActivateThrows)
{
    addOne();
    one->activateError = QStringLiteral("no lamp");
    enable();
    EXPECT_EQ(registry->state(id), CapabilityState::failed(QStringLiteral("no lamp")));
    EXPECT_EQ(*one->calls, calls({"install", "activate"}));
    EXPECT_TRUE(storedFlag());
    EXPECT_FALSE(registry->isActive(id));
}

TEST_F(CapabilityRegistryTest, InstalledEnableWithPermissionsMissing)
{
    addRequiringAccessibility();
    disable();
    ASSERT_EQ(kind(), Kind::installed);
    one->calls->clear();
    enable();
    EXPECT_EQ(kind(), Kind::needsPermission);
    EXPECT_TRUE(one->calls->isEmpty());
}

TEST_F(CapabilityRegistryTest, InstalledEnableWithPermissionsMet)
{
    addOne();
    enable();
    disable();
    one->calls->clear();
    enable();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_EQ(*one->calls, calls({"activate"}));
}

TEST_F(CapabilityRegistryTest, InstalledEnableWhereActivateThrows)
{
    addOne();
    disable();
    one->calls->clear();
    one->activateError = QStringLiteral("dark");
    enable();
    EXPECT_EQ(registry->state(id), CapabilityState::failed(QStringLiteral("dark")));
    EXPECT_EQ(*one->calls, calls({"activate"}));
}

TEST_F(CapabilityRegistryTest, NeedsPermissionEnableWithPermissionsStillMissing)
{
    addRequiringAccessibility();
    enable();
    enable();
    EXPECT_EQ(kind(), Kind::needsPermission);
    EXPECT_TRUE(one->calls->isEmpty());
}

TEST_F(CapabilityRegistryTest, NeedsPermissionEnableWithPermissionsMetSkipsInstall)
{
    addRequiringAccessibility();
    enable();
    grantAccessibility(true);
    enable();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_EQ(*one->calls, calls({"activate"}));
}

TEST_F(CapabilityRegistryTest, NeedsPermissionEnableWhereActivateThrows)
{
    addRequiringAccessibility();
    enable();
    grantAccessibility(true);
    one->activateError = QStringLiteral("dark");
    enable();
    EXPECT_EQ(registry->state(id), CapabilityState::failed(QStringLiteral("dark")));
    EXPECT_EQ(*one->calls, calls({"activate"}));
}

TEST_F(CapabilityRegistryTest, FailedEnableWithPermissionsMissing)
{
    addRequiringAccessibility();
    grantAccessibility(true);
    one->activateError = QStringLiteral("dark");
    enable();
    grantAccessibility(false);
    one->calls->clear();
    enable();
    EXPECT_EQ(kind(), Kind::needsPermission);
    EXPECT_TRUE(one->calls->isEmpty());
}

TEST_F(CapabilityRegistryTest, FailedEnableWithPermissionsMetCallsActivateDirectly)
{
    addOne();
    one->activateError = QStringLiteral("dark");
    enable();
    one->calls->clear();
    one->activateError.clear();
    enable();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_EQ(*one->calls, calls({"activate"}));
}

TEST_F(CapabilityRegistryTest, FailedInstallIsNotTriedAgain)
{
    addOne();
    one->installError = QStringLiteral("no room");
    enable();
    one->calls->clear();
    enable();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_EQ(*one->calls, calls({"activate"}));
}

TEST_F(CapabilityRegistryTest, FailedEnableThatFailsAgain)
{
    addOne();
    one->activateError = QStringLiteral("dark");
    enable();
    one->activateError = QStringLiteral("darker");
    enable();
    EXPECT_EQ(registry->state(id), CapabilityState::failed(QStringLiteral("darker")));
}

TEST_F(CapabilityRegistryTest, ActiveEnableWithPermissionsMissingKeepsRunning)
{
    addRequiringAccessibility();
    one->service = std::make_shared<RecordingService>(QStringLiteral("s"), one->calls);
    grantAccessibility(true);
    enable();
    grantAccessibility(false);
    one->calls->clear();
    enable();
    EXPECT_EQ(kind(), Kind::needsPermission);
    EXPECT_TRUE(one->calls->isEmpty());
    EXPECT_EQ(registry->context(id)->serviceHost->runningCount(), 1);
}

TEST_F(CapabilityRegistryTest, ActiveEnableWithPermissionsMetActivatesAgain)
{
    addOne();
    enable();
    one->calls->clear();
    enable();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_EQ(*one->calls, calls({"activate"}));
}

TEST_F(CapabilityRegistryTest, ActiveEnableWhereActivateThrows)
{
    addOne();
    enable();
    one->activateError = QStringLiteral("dark");
    enable();
    EXPECT_EQ(registry->state(id), CapabilityState::failed(QStringLiteral("dark")));
}

TEST_F(CapabilityRegistryTest, DisableFromAnyStateDeactivatesStopsTheHostAndLeavesInstalled)
{
    const auto reach = [this](Kind from) {
        switch (from) {
        case Kind::disabled:
            break;
        case Kind::installed:
            disable();
            break;
        case Kind::active:
            enable();
            break;
        case Kind::needsPermission:
            grantAccessibility(false);
            enable();
            break;
        case Kind::failed:
            one->activateError = QStringLiteral("dark");
            enable();
            break;
        }
    };
    for (const Kind from :
         {Kind::disabled, Kind::installed, Kind::active, Kind::needsPermission, Kind::failed}) {
        id = {QStringLiteral("from %1").arg(static_cast<int>(from))};
        addRequiringAccessibility();
        one->service = std::make_shared<RecordingService>(QStringLiteral("s"), one->calls);
        grantAccessibility(true);
        reach(from);
        ASSERT_EQ(kind(), from);
        const bool held = registry->context(id)->serviceHost->runningCount() == 1;
        one->calls->clear();
        disable();
        EXPECT_EQ(*one->calls, held ? calls({"deactivate", "stop s"}) : calls({"deactivate"}));
        EXPECT_EQ(kind(), Kind::installed);
        EXPECT_FALSE(storedFlag());
    }
}

TEST_F(CapabilityRegistryTest, UninstallFromAnyStateGoesThroughAllItsSteps)
{
    addOne();
    one->service = std::make_shared<RecordingService>(QStringLiteral("s"), one->calls);
    enable();
    one->calls->clear();
    registry->uninstall(id);
    EXPECT_EQ(*one->calls, calls({"deactivate", "stop s", "uninstall"}));
    EXPECT_EQ(kind(), Kind::disabled);
    EXPECT_FALSE(storedFlag());

    one->calls->clear();
    registry->uninstall(id);
    EXPECT_EQ(*one->calls, calls({"deactivate", "uninstall"}));
    EXPECT_EQ(kind(), Kind::disabled);

    // It is disabled again, so the next start installs again.
    one->calls->clear();
    enable();
    EXPECT_EQ(*one->calls, calls({"install", "activate", "start s"}));
}

TEST_F(CapabilityRegistryTest, AnErrorOfUninstallIsDropped)
{
    addOne();
    enable();
    one->uninstallError = QStringLiteral("clinging");
    registry->uninstall(id);
    EXPECT_EQ(kind(), Kind::disabled);
    EXPECT_FALSE(storedFlag());
    EXPECT_TRUE(fake.log.entries().empty());
}

// Storing and logging, and when.

TEST_F(CapabilityRegistryTest, TheFlagIsStoredBeforeAnythingElse)
{
    addOne();
    one->installGate.close();
    enable();
    EXPECT_TRUE(one->installGate.hasWaiter());
    EXPECT_TRUE(storedFlag());
    EXPECT_EQ(kind(), Kind::disabled);

    one->deactivateGate.close();
    disable();
    EXPECT_TRUE(one->deactivateGate.hasWaiter());
    EXPECT_FALSE(storedFlag());
    one->deactivateGate.open();
    one->installGate.open();
}

TEST_F(CapabilityRegistryTest, InstalledShowsBetweenInstallAndActivate)
{
    addOne();
    one->activateGate.close();
    enable();
    EXPECT_EQ(kind(), Kind::installed);
    one->activateGate.open();
    EXPECT_EQ(kind(), Kind::active);
}

TEST_F(CapabilityRegistryTest, AFailureOfEitherIsLoggedInTheSameWordsOnTheCapabilitysLogger)
{
    addOne();
    one->installError = QStringLiteral("no room");
    enable();
    one->activateError = QStringLiteral("no lamp");
    enable();
    const std::vector<FakeLogSink::Entry> expected{
        {LogLevel::error, QStringLiteral("net.lindenrow.orvane"), id.rawValue,
         QStringLiteral("activate failed: no room")},
        {LogLevel::error, QStringLiteral("net.lindenrow.orvane"), id.rawValue,
         QStringLiteral("activate failed: no lamp")},
    };
    EXPECT_EQ(fake.log.entries(), expected);
}

TEST_F(CapabilityRegistryTest, ServicesRegisteredBeforeAFailureStayUntilTheNextDisable)
{
    addOne();
    one->service = std::make_shared<RecordingService>(QStringLiteral("s"), one->calls);
    one->activateError = QStringLiteral("dark");
    enable();
    EXPECT_EQ(registry->context(id)->serviceHost->runningCount(), 1);
    disable();
    EXPECT_EQ(registry->context(id)->serviceHost->runningCount(), 0);
    EXPECT_FALSE(one->service->isRunning());
}

TEST_F(CapabilityRegistryTest, AServiceThatSaysItStillRunsIsNoFaultOnceTheHostIsEmpty)
{
    addOne();
    one->service = std::make_shared<RecordingService>(QStringLiteral("s"), one->calls);
    std::static_pointer_cast<RecordingService>(one->service)->staysRunning = true;
    enable();
    disable();
    EXPECT_TRUE(fake.log.entries().empty());
    EXPECT_EQ(kind(), Kind::installed);
}

TEST_F(CapabilityRegistryTest, AnUnknownIdChangesAndStoresNothing)
{
    const CapabilityID unknown{QStringLiteral("nobody")};
    registry->setEnabled(true, unknown);
    registry->setEnabled(false, unknown);
    registry->uninstall(unknown);
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
    EXPECT_EQ(registry->state(unknown), CapabilityState{});
    EXPECT_FALSE(registry->isActive(unknown));
    EXPECT_FALSE(registry->context(unknown).has_value());
    EXPECT_FALSE(registry->entry(unknown).has_value());
    EXPECT_FALSE(registry->permissionsSatisfied(RecordingCapability(unknown.rawValue)));
}

TEST_F(CapabilityRegistryTest, RegisteringAnIdTwiceReplacesTheContextAndLeavesTwoEntries)
{
    addOne();
    const auto firstHost = registry->context(id)->serviceHost;
    const auto second = add(id.rawValue);
    EXPECT_EQ(registry->entries().size(), 2);
    EXPECT_NE(registry->context(id)->serviceHost, firstHost);
    enable();
    EXPECT_EQ(*one->calls, calls({"install", "activate"}));
    EXPECT_TRUE(second->calls->isEmpty());
    EXPECT_EQ(registry->entries().at(1).state, Kind::disabled);
}

TEST_F(CapabilityRegistryTest, ActiveEntriesComeInOrderOfRegistering)
{
    for (const char* name : {"a", "b", "c"})
        add(QLatin1String(name));
    registry->setEnabled(true, {QStringLiteral("c")});
    registry->setEnabled(true, {QStringLiteral("a")});
    QStringList active;
    for (const auto& entry : registry->activeEntries())
        active.append(entry.id().rawValue);
    EXPECT_EQ(active, calls({"a", "c"}));
}

TEST_F(CapabilityRegistryTest, OptionalPermissionsDontGate)
{
    addOne();
    one->requirements = {{SystemPermission::accessibility, PermissionRequirement::Level::optional}};
    enable();
    EXPECT_EQ(kind(), Kind::active);
}

TEST_F(CapabilityRegistryTest, EveryRequiredPermissionHasToBeGranted)
{
    addOne();
    one->requirements = {{SystemPermission::accessibility, PermissionRequirement::Level::required},
                         {SystemPermission::appleEvents, PermissionRequirement::Level::required}};
    fake.permissions.accessibility = true;
    fake.permissions.automation = Permissions::errAEEventWouldRequireUserConsent;
    permissions->refresh();
    EXPECT_FALSE(registry->permissionsSatisfied(*one));
    fake.permissions.automation = Permissions::noErr;
    EXPECT_FALSE(registry->permissionsSatisfied(*one)) << "the statuses are as last read";
    permissions->refresh();
    EXPECT_TRUE(registry->permissionsSatisfied(*one));
}

TEST_F(CapabilityRegistryTest, APermissionThatIsntListedCountsAsNotGranted)
{
    permissions = PermissionManager::make(PermissionStatuses{});
    addRequiringAccessibility();
    EXPECT_FALSE(registry->permissionsSatisfied(*one));
}

// Restoring and re-evaluating.

TEST_F(CapabilityRegistryTest, AFirstLaunchStartsNothing)
{
    addOne();
    registry->restorePersistedState();
    EXPECT_EQ(kind(), Kind::disabled);
    EXPECT_TRUE(one->calls->isEmpty());
}

TEST_F(CapabilityRegistryTest, RestoringStartsTheEnabledOnesStrictlyOneAfterTheOther)
{
    const auto first = add(QStringLiteral("a"));
    const auto off = add(QStringLiteral("b"));
    const auto last = add(QStringLiteral("c"));
    store->setEnabled({QStringLiteral("c")}, true);
    store->setEnabled({QStringLiteral("a")}, true);
    first->activateGate.close();
    registry->restorePersistedState();
    EXPECT_EQ(*first->calls, calls({"install", "activate"}));
    EXPECT_TRUE(last->calls->isEmpty());
    first->activateGate.open();
    EXPECT_EQ(*last->calls, calls({"install", "activate"}));
    EXPECT_TRUE(off->calls->isEmpty());
}

TEST_F(CapabilityRegistryTest, AFailureDoesntKeepTheNextFromStarting)
{
    const auto first = add(QStringLiteral("a"));
    const auto last = add(QStringLiteral("b"));
    store->setEnabled({QStringLiteral("a")}, true);
    store->setEnabled({QStringLiteral("b")}, true);
    first->activateError = QStringLiteral("dark");
    registry->restorePersistedState();
    EXPECT_TRUE(registry->isActive({QStringLiteral("b")}));
}

TEST_F(CapabilityRegistryTest, ManualStartModeKeepsOutOfRestoring)
{
    addOne();
    store->setEnabled(id, true);
    store->setStartMode(id, CapabilityStartMode::manual);
    registry->restorePersistedState();
    EXPECT_EQ(kind(), Kind::disabled);
    EXPECT_TRUE(one->calls->isEmpty());
    EXPECT_TRUE(storedFlag());
}

TEST_F(CapabilityRegistryTest, RestoringReadsTheFlagsFreshButWalksASnapshot)
{
    const auto first = add(QStringLiteral("a"));
    const auto second = add(QStringLiteral("b"));
    store->setEnabled({QStringLiteral("a")}, true);
    store->setEnabled({QStringLiteral("b")}, true);
    first->activateGate.close();
    registry->restorePersistedState();
    store->setEnabled({QStringLiteral("b")}, false);
    const auto late = add(QStringLiteral("c"));
    store->setEnabled({QStringLiteral("c")}, true);
    first->activateGate.open();
    EXPECT_TRUE(second->calls->isEmpty());
    EXPECT_TRUE(late->calls->isEmpty());
}

TEST_F(CapabilityRegistryTest, AGrantedPermissionActivatesAtReevaluationWithoutInstall)
{
    addRequiringAccessibility();
    enable();
    registry->reevaluatePermissionGated();
    EXPECT_TRUE(one->calls->isEmpty());
    grantAccessibility(true);
    registry->reevaluatePermissionGated();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_EQ(*one->calls, calls({"activate"}));
}

TEST_F(CapabilityRegistryTest, ASecondReevaluationLeavesAloneWhatTheFirstIsJustTrying)
{
    addRequiringAccessibility();
    enable();
    grantAccessibility(true);
    one->activateGate.close();
    registry->reevaluatePermissionGated();
    registry->reevaluatePermissionGated();
    EXPECT_EQ(*one->calls, calls({"activate"}));
    one->activateGate.open();
    EXPECT_EQ(kind(), Kind::active);

    // What lost its permission again is tried anew.
    grantAccessibility(false);
    enable();
    ASSERT_EQ(kind(), Kind::needsPermission);
    grantAccessibility(true);
    registry->reevaluatePermissionGated();
    EXPECT_EQ(*one->calls, calls({"activate", "activate"}));
}

TEST_F(CapabilityRegistryTest, AReevaluationLeavesAloneWhatASecondOneHasStartedMeanwhile)
{
    addRequiringAccessibility();
    const CapabilityID laterID{QStringLiteral("later")};
    const auto later = add(laterID.rawValue);
    later->requirements = one->requirements;
    enable();
    registry->setEnabled(true, laterID);
    grantAccessibility(true);
    one->activateGate.close();
    registry->reevaluatePermissionGated(); // stands still at the first one
    registry->reevaluatePermissionGated();
    ASSERT_EQ(registry->state(laterID), Kind::active);
    later->calls->clear();
    one->activateGate.open();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_TRUE(later->calls->isEmpty());
}

TEST_F(CapabilityRegistryTest, ReevaluationTakesManualOnesTooAndLeavesTheDisabledAndTheActiveAlone)
{
    addRequiringAccessibility();
    const auto running = add(QStringLiteral("running"));
    registry->setEnabled(true, {QStringLiteral("running")});
    running->calls->clear();
    store->setStartMode(id, CapabilityStartMode::manual);
    enable();
    grantAccessibility(true);
    registry->reevaluatePermissionGated();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_TRUE(running->calls->isEmpty());

    const CapabilityID unwanted{QStringLiteral("unwanted")};
    grantAccessibility(false);
    const auto gated = add(unwanted.rawValue);
    gated->requirements = one->requirements;
    registry->setEnabled(true, unwanted);
    store->setEnabled(unwanted, false);
    grantAccessibility(true);
    registry->reevaluatePermissionGated();
    EXPECT_EQ(registry->state(unwanted), Kind::needsPermission);
}

TEST_F(CapabilityRegistryTest, NothingSerialisesTwoCallsForOneCapability)
{
    addOne();
    one->installGate.close();
    enable();
    registry->setEnabled(false, id);
    EXPECT_EQ(kind(), Kind::installed) << "the disable ran through while the install was suspended";
    one->installGate.open();
    EXPECT_EQ(kind(), Kind::active);
    EXPECT_EQ(*one->calls, calls({"install", "deactivate", "activate"}));
}

// Observers.

TEST_F(CapabilityRegistryTest, EachChangeOfStateIsAnnounced)
{
    addOne();
    std::vector<Kind> seen;
    const auto subscription = registry->onChange([&] { seen.push_back(kind()); });
    enable();
    disable();
    EXPECT_EQ(seen, (std::vector{Kind::installed, Kind::active, Kind::installed}));
}

TEST_F(CapabilityRegistryTest, SettingTheStartModeIsAnnouncedAndStored)
{
    addOne();
    int announcements = 0;
    const auto subscription = registry->onChange([&] { ++announcements; });
    registry->setStartMode(CapabilityStartMode::manual, id);
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(registry->startMode(id), CapabilityStartMode::manual);
    EXPECT_EQ(store->startMode(id), CapabilityStartMode::manual);
}

TEST_F(CapabilityRegistryTest, TheContextIsHandedToTheCapability)
{
    addOne();
    enable();
    ASSERT_TRUE(one->lastContext);
    EXPECT_EQ(one->lastContext->id, id);
    EXPECT_EQ(one->lastContext->serviceHost, registry->context(id)->serviceHost);
    EXPECT_EQ(one->lastContext->logger.category(), id.rawValue);
}

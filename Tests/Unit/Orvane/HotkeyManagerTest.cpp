// The action that a shortcut runs, and the conditions for it.
#include "Orvane/Shortcuts/HotkeyManager.h"
#include "Fakes/FakePlatform.h"
#include "Fakes/RecordingCapability.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "Orvane/Home/HomeWindowController.h"
#include "Orvane/Launch/AppEnvironment.h"

#include <QWidget>

#include <gtest/gtest.h>

using namespace orvane;

namespace {

using Combination = FakeHotKeys::Combination;

constexpr Combination controlSpace{49, carbonModifier::control};
constexpr Combination commandK{40, carbonModifier::command};
constexpr Combination commandJ{38, carbonModifier::command};

struct HotkeyTest : testing::Test {
    void store(const QString& id, Combination combination)
    {
        fake.defaults.stored[QStringLiteral("KeyboardShortcuts_") + id] =
            QStringLiteral("{\"carbonKeyCode\":%1,\"carbonModifiers\":%2}")
                .arg(combination.keyCode)
                .arg(combination.modifiers);
    }
    HotkeyAction action(const QString& id)
    {
        return {id, id, [this, id] { fired.append(id); }};
    }
    static std::shared_ptr<RecordingCapability> capability(const QString& id, QList<HotkeyAction> actions)
    {
        const auto made = std::make_shared<RecordingCapability>(id);
        made->hotkeys = std::move(actions);
        return made;
    }
    static std::shared_ptr<AppEnvironment>
    environmentWith(const QList<std::shared_ptr<RecordingCapability>>& capabilities)
    {
        return AppEnvironment::make([&](CapabilityRegistry& registry) {
            for (const auto& each : capabilities)
                registry.registerCapability(each);
        });
    }
    [[nodiscard]] QStringList registrations() const
    {
        return fake.hotKeys.calls.filter(QStringLiteral("register "));
    }

    FakePlatform fake;
    KeyboardShortcuts::StateScope shortcuts;
    QStringList fired;
};

using HotkeyManagerTest = HotkeyTest;
using RegisterHotkeysTest = HotkeyTest;

const CapabilityID first{QStringLiteral("First")};

} // namespace

TEST_F(HotkeyManagerTest, AnActionRunsOnceAndNotBeforeTheKeysAreLetGo)
{
    store(QStringLiteral("go"), controlSpace);
    HotkeyManager().registerAppLevel(QStringLiteral("go"), [&] { fired.append(QStringLiteral("go")); });
    fake.hotKeys.press(controlSpace);
    EXPECT_TRUE(fired.isEmpty());
    fake.hotKeys.release(controlSpace.keyCode);
    EXPECT_EQ(fired, QStringList{QStringLiteral("go")});
}

TEST_F(HotkeyManagerTest, TheGateIsAskedAtEachFiringAndNeverBefore)
{
    store(QStringLiteral("go"), controlSpace);
    int asked = 0;
    bool isActive = false;
    HotkeyManager().registerHotkey(
        QStringLiteral("go"), [&] { return ++asked, isActive; }, [&] { fired.append(QStringLiteral("go")); });
    EXPECT_EQ(asked, 0);
    fake.hotKeys.press(controlSpace);
    EXPECT_EQ(asked, 0);
    fake.hotKeys.release(controlSpace.keyCode);
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(fired.isEmpty());

    isActive = true;
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(fired.size(), 1);

    isActive = false;
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired.size(), 1);
}

TEST_F(HotkeyManagerTest, AnActionStartsWithoutAShortcutAndFollowsTheOneThatIsStoredLater)
{
    HotkeyManager().registerAppLevel(QStringLiteral("go"), [&] { fired.append(QStringLiteral("go")); });
    EXPECT_TRUE(registrations().isEmpty());
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
    fake.hotKeys.tap(controlSpace);
    EXPECT_TRUE(fired.isEmpty());

    const KeyboardShortcuts::Name name(QStringLiteral("go"));
    name.setShortcut(KeyboardShortcuts::Shortcut(controlSpace.keyCode, controlSpace.modifiers));
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired.size(), 1);

    name.setShortcut(KeyboardShortcuts::Shortcut(commandK.keyCode, commandK.modifiers));
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired.size(), 1);
    fake.hotKeys.tap(commandK);
    EXPECT_EQ(fired.size(), 2);

    name.setShortcut(std::nullopt);
    fake.hotKeys.tap(commandK);
    EXPECT_EQ(fired.size(), 2);
}

TEST_F(HotkeyManagerTest, EveryHandlerOfAnIdRuns)
{
    store(QStringLiteral("go"), controlSpace);
    HotkeyManager().registerAppLevel(QStringLiteral("go"), [&] { fired.append(QStringLiteral("one")); });
    HotkeyManager().registerAppLevel(QStringLiteral("go"), [&] { fired.append(QStringLiteral("two")); });
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired, (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
}

TEST_F(RegisterHotkeysTest, TheApplicationsComesFirstThenTheCapabilitiesInOrder)
{
    store(QStringLiteral("first.b"), commandJ);
    store(QStringLiteral("second.a"), controlSpace);
    store(QStringLiteral("first.a"), commandK);
    store(QStringLiteral("app.openOrvane"), {0, carbonModifier::command});
    const auto environment =
        environmentWith({capability(QStringLiteral("First"),
                                    {action(QStringLiteral("first.b")), action(QStringLiteral("first.a"))}),
                         capability(QStringLiteral("None"), {}),
                         capability(QStringLiteral("Second"), {action(QStringLiteral("second.a"))})});
    EXPECT_EQ(registrations(), QStringList{QStringLiteral("register 0 256 1")});
    environment->registry().setEnabled(true, first);
    environment->registry().setEnabled(true, {QStringLiteral("Second")});
    EXPECT_EQ(registrations(),
              (QStringList{QStringLiteral("register 0 256 1"), QStringLiteral("register 38 256 2"),
                           QStringLiteral("register 40 256 3"), QStringLiteral("register 49 4096 4")}));
}

TEST_F(RegisterHotkeysTest, IsTheLastStepOfTheConstruction)
{
    store(QStringLiteral("app.openOrvane"), controlSpace);
    bool isArmed = false;
    fake.workspace.onUse = [&] {
        isArmed = true;
        EXPECT_TRUE(registrations().isEmpty()) << "the event tap is armed first";
    };
    const auto environment = AppEnvironment::make();
    EXPECT_TRUE(isArmed);
    EXPECT_EQ(registrations().size(), 1);
}

TEST_F(RegisterHotkeysTest, TheActionsAreReadOnceForAllActivations)
{
    store(QStringLiteral("first.a"), controlSpace);
    const auto made = capability(QStringLiteral("First"), {action(QStringLiteral("first.a"))});
    const auto environment = environmentWith({made});
    environment->registry().setEnabled(true, first);
    environment->registry().setEnabled(false, first);
    environment->registry().setEnabled(true, first);
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired.size(), 1);
    EXPECT_EQ(made->calls->count(QStringLiteral("hotkeyActions")), 1);
}

TEST_F(RegisterHotkeysTest, AShortcutIsTakenFromOtherProgramsOnlyWhileItsCapabilityIsOn)
{
    store(QStringLiteral("first.a"), controlSpace);
    const auto environment =
        environmentWith({capability(QStringLiteral("First"), {action(QStringLiteral("first.a"))})});
    EXPECT_FALSE(fake.hotKeys.isRegistered(controlSpace));
    environment->registry().setEnabled(true, first);
    EXPECT_TRUE(fake.hotKeys.isRegistered(controlSpace));
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired.size(), 1);
    environment->registry().setEnabled(false, first);
    EXPECT_FALSE(fake.hotKeys.isRegistered(controlSpace));

    const KeyboardShortcuts::Name name(QStringLiteral("first.a"));
    name.setShortcut(KeyboardShortcuts::Shortcut(commandK.keyCode, commandK.modifiers));
    EXPECT_FALSE(fake.hotKeys.isRegistered(commandK)) << "also when it is set meanwhile";
    environment->registry().setEnabled(true, first);
    EXPECT_TRUE(fake.hotKeys.isRegistered(commandK));
}

TEST_F(RegisterHotkeysTest, AShortcutThatAnotherActionStillNeedsStaysTaken)
{
    store(QStringLiteral("first.a"), controlSpace);
    store(QStringLiteral("second.a"), controlSpace);
    const auto environment =
        environmentWith({capability(QStringLiteral("First"), {action(QStringLiteral("first.a"))}),
                         capability(QStringLiteral("Second"), {action(QStringLiteral("second.a"))})});
    environment->registry().setEnabled(true, first);
    environment->registry().setEnabled(true, {QStringLiteral("Second")});
    environment->registry().setEnabled(false, first);
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired, QStringList{QStringLiteral("second.a")});
    environment->registry().setEnabled(false, {QStringLiteral("Second")});
    EXPECT_FALSE(fake.hotKeys.isRegistered(controlSpace));
}

TEST_F(RegisterHotkeysTest, AnActionKeepsTheShortcutThatAnotherOneGivesUp)
{
    store(QStringLiteral("first.a"), controlSpace);
    store(QStringLiteral("second.a"), controlSpace);
    const auto environment =
        environmentWith({capability(QStringLiteral("First"), {action(QStringLiteral("first.a"))}),
                         capability(QStringLiteral("Second"), {action(QStringLiteral("second.a"))})});
    environment->registry().setEnabled(true, first);
    environment->registry().setEnabled(true, {QStringLiteral("Second")});
    const KeyboardShortcuts::Name name(QStringLiteral("first.a"));
    name.setShortcut(KeyboardShortcuts::Shortcut(commandK.keyCode, commandK.modifiers));
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired, QStringList{QStringLiteral("second.a")});
    fake.hotKeys.tap(commandK);
    EXPECT_EQ(fired.last(), QStringLiteral("first.a"));

    name.setShortcut(KeyboardShortcuts::Shortcut(controlSpace.keyCode, controlSpace.modifiers));
    name.setShortcut(std::nullopt);
    fired.clear();
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired, QStringList{QStringLiteral("second.a")});
}

TEST_F(RegisterHotkeysTest, ARefusedShortcutSaysSoAndIsTriedAgainUntilTheOtherProgramLetsItGo)
{
    fake.hotKeys.taken = {controlSpace};
    store(QStringLiteral("first.a"), controlSpace);
    const auto environment =
        environmentWith({capability(QStringLiteral("First"), {action(QStringLiteral("first.a"))})});
    const KeyboardShortcuts::Name name(QStringLiteral("first.a"));
    EXPECT_EQ(KeyboardShortcuts::refusal(name), std::nullopt) << "nobody has asked for it";
    environment->registry().setEnabled(true, first);
    EXPECT_EQ(KeyboardShortcuts::refusal(name), eventHotKeyExistsErr);
    fake.runLoop.advance(std::chrono::minutes(1));
    EXPECT_EQ(KeyboardShortcuts::refusal(name), eventHotKeyExistsErr);

    fake.hotKeys.taken.clear();
    fake.runLoop.advance(std::chrono::seconds(10));
    EXPECT_EQ(KeyboardShortcuts::refusal(name), std::nullopt);
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired.size(), 1);
    EXPECT_EQ(fake.runLoop.timerCount(), 0u) << "nothing is left to be tried";
}

TEST_F(RegisterHotkeysTest, ACapabilityThatNeedsAPermissionDoesNothingUntilItHasIt)
{
    store(QStringLiteral("first.a"), controlSpace);
    const auto gated = capability(QStringLiteral("First"), {action(QStringLiteral("first.a"))});
    gated->requirements = {{SystemPermission::accessibility, PermissionRequirement::Level::required}};
    const auto environment = environmentWith({gated});
    environment->registry().setEnabled(true, first);
    ASSERT_EQ(environment->registry().state(first).kind, CapabilityState::Kind::needsPermission);
    EXPECT_FALSE(fake.hotKeys.isRegistered(controlSpace));

    fake.permissions.accessibility = true;
    environment->permissions().refresh();
    environment->registry().reevaluatePermissionGated();
    ASSERT_TRUE(environment->registry().isActive(first));
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired.size(), 1);
}

TEST_F(RegisterHotkeysTest, ACapabilityThatFailedOrIsStillStartingDoesNothing)
{
    store(QStringLiteral("first.a"), controlSpace);
    const auto made = capability(QStringLiteral("First"), {action(QStringLiteral("first.a"))});
    made->activateError = QStringLiteral("dark");
    const auto environment = environmentWith({made});
    environment->registry().setEnabled(true, first);
    fake.hotKeys.tap(controlSpace);
    EXPECT_TRUE(fired.isEmpty());

    made->activateError.clear();
    made->activateGate.close();
    environment->registry().setEnabled(true, first);
    ASSERT_TRUE(made->activateGate.hasWaiter());
    fake.hotKeys.tap(controlSpace);
    EXPECT_TRUE(fired.isEmpty());
    made->activateGate.open();
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired.size(), 1);
}

TEST_F(RegisterHotkeysTest, ActionsWithOneShortcutAllFireEachBehindItsOwnGate)
{
    for (const char* id : {"app.openOrvane", "first.a", "second.a"})
        store(QLatin1String(id), controlSpace);
    const auto environment =
        environmentWith({capability(QStringLiteral("First"), {action(QStringLiteral("first.a"))}),
                         capability(QStringLiteral("Second"), {action(QStringLiteral("second.a"))})});
    EXPECT_EQ(registrations().size(), 1);
    environment->registry().setEnabled(true, {QStringLiteral("Second")});
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fired, QStringList{QStringLiteral("second.a")});
    ASSERT_NE(environment->homeWindow().window(), nullptr);
    EXPECT_TRUE(environment->homeWindow().window()->isVisible());
}

TEST_F(RegisterHotkeysTest, AShortcutThatAnotherProgramHoldsLeavesTheOthersAlone)
{
    fake.hotKeys.taken = {controlSpace};
    store(QStringLiteral("first.a"), controlSpace);
    store(QStringLiteral("first.b"), commandK);
    const auto environment = environmentWith({capability(
        QStringLiteral("First"), {action(QStringLiteral("first.a")), action(QStringLiteral("first.b"))})});
    environment->registry().setEnabled(true, first);
    fake.hotKeys.tap(controlSpace);
    EXPECT_TRUE(fired.isEmpty());
    fake.hotKeys.tap(commandK);
    EXPECT_EQ(fired, QStringList{QStringLiteral("first.b")});
    EXPECT_TRUE(fake.log.messages().filter(QStringLiteral("hortcut")).isEmpty());
}

TEST_F(RegisterHotkeysTest, ShortcutsDontKeepTheEnvironmentAndDoNothingOnceItIsGone)
{
    store(QStringLiteral("first.a"), controlSpace);
    store(QStringLiteral("app.openOrvane"), commandK);
    auto environment =
        environmentWith({capability(QStringLiteral("First"), {action(QStringLiteral("first.a"))})});
    environment->registry().setEnabled(true, first);
    const std::weak_ptr<AppEnvironment> weak = environment;
    environment.reset();
    ASSERT_TRUE(weak.expired());
    fake.hotKeys.tap(controlSpace);
    fake.hotKeys.tap(commandK);
    EXPECT_TRUE(fired.isEmpty());
    EXPECT_EQ(fake.application.activations, 0);
}

TEST_F(RegisterHotkeysTest, AwakeIsToggledByItsShortcut)
{
    store(QStringLiteral("awake.toggle"), controlSpace);
    const auto environment = AppEnvironment::make();
    environment->registry().setEnabled(true, {QStringLiteral("net.lindenrow.orvane.awake")});
    fake.hotKeys.tap(controlSpace);
    EXPECT_EQ(fake.powerAssertions.held.size(), 1u);
    fake.hotKeys.tap(controlSpace);
    EXPECT_TRUE(fake.powerAssertions.held.empty());
}

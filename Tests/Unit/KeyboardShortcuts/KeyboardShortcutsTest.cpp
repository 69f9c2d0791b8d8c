#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "StoredShortcutsFixture.h"

#include <unordered_set>

using namespace orvane;
using namespace orvane::KeyboardShortcuts;
using namespace orvane::tests;

namespace {

class KeyboardShortcutsTest : public StoredShortcutsFixture {};

} // namespace

// Names

TEST_F(KeyboardShortcutsTest, ANameIsItsRawValueWhateverItsDefault)
{
    const Name plain = named("panel");
    const Name withDefault(QStringLiteral("panel"), controlSpace);
    EXPECT_EQ(plain, withDefault);
    EXPECT_EQ(std::hash<Name>()(plain), std::hash<Name>()(withDefault));
    EXPECT_NE(plain, named("Panel"));
    EXPECT_EQ(std::unordered_set<Name>({plain, withDefault, named("other")}).size(), 2U);
    EXPECT_EQ(plain.rawValue(), QStringLiteral("panel"));
    EXPECT_EQ(plain.defaultShortcut(), std::nullopt);
    EXPECT_EQ(withDefault.defaultShortcut(), controlSpace);
}

TEST_F(KeyboardShortcutsTest, ANameWithoutDefaultStoresNothing)
{
    (void)named("panel");
    EXPECT_EQ(takeJournal(), QStringList());
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
}

TEST_F(KeyboardShortcutsTest, ANameWithADefaultStoresItWhereNothingIsStored)
{
    const Name name(QStringLiteral("panel"), controlSpace);
    EXPECT_EQ(takeJournal(), list({"register 49 4096 1", "install", "add 5", "add 6",
                                   "store KeyboardShortcuts_panel "
                                   "{\"carbonKeyCode\":49,\"carbonModifiers\":4096}",
                                   "post panel"}));
    EXPECT_EQ(name.shortcut(), controlSpace);

    const Name again(QStringLiteral("panel"), commandK);
    EXPECT_EQ(takeJournal(), QStringList());
    EXPECT_EQ(again.shortcut(), controlSpace);
}

TEST_F(KeyboardShortcutsTest, AnythingStoredStandsAgainstTheDefault)
{
    for (const QVariant& value : {QVariant(false), QVariant(QStringLiteral("junk")), QVariant(7)}) {
        fake.defaults.stored.insert(key("panel"), value);
        const Name name(QStringLiteral("panel"), controlSpace);
        EXPECT_EQ(takeJournal(), QStringList());
        EXPECT_EQ(stored("panel"), value);
        EXPECT_EQ(name.shortcut(), std::nullopt);
    }
}

TEST_F(KeyboardShortcutsTest, ANamesShortcutReadsAndWritesTheStore)
{
    const Name name = named("panel");
    EXPECT_EQ(name.shortcut(), std::nullopt);
    name.setShortcut(commandK);
    EXPECT_EQ(getShortcut(name), commandK);
    EXPECT_EQ(name.shortcut(), commandK);
    name.setShortcut(std::nullopt);
    EXPECT_EQ(getShortcut(name), std::nullopt);
}

// Reading

TEST_F(KeyboardShortcutsTest, OnlyATextThatDecodesIsAShortcut)
{
    const Name name = named("panel");
    for (const QVariant& value : {QVariant(), QVariant(false), QVariant(true), QVariant(49), QVariant(4.9),
                                  QVariant(QStringLiteral("")), QVariant(QStringLiteral("false")),
                                  QVariant(QStringLiteral("{\"carbonKeyCode\":49}")),
                                  QVariant(QByteArray("{\"carbonKeyCode\":49,\"carbonModifiers\":4096}")),
                                  QVariant(QVariantMap{{QStringLiteral("carbonKeyCode"), 49},
                                                       {QStringLiteral("carbonModifiers"), 4096}})}) {
        fake.defaults.stored.insert(key("panel"), value);
        EXPECT_EQ(getShortcut(name), std::nullopt) << value.typeName();
    }
    fake.defaults.stored.insert(key("panel"),
                                QStringLiteral("{\"carbonModifiers\":4096.0,\"carbonKeyCode\":49}"));
    EXPECT_EQ(getShortcut(name), controlSpace);
    EXPECT_EQ(takeJournal(), QStringList());
}

// Setting and clearing

TEST_F(KeyboardShortcutsTest, SettingRegistersThenStoresThenTells)
{
    setShortcut(controlSpace, named("panel"));
    EXPECT_EQ(takeJournal(), list({"register 49 4096 1", "install", "add 5", "add 6",
                                   "store KeyboardShortcuts_panel "
                                   "{\"carbonKeyCode\":49,\"carbonModifiers\":4096}",
                                   "post panel"}));
    EXPECT_EQ(stored("panel"), QVariant(QStringLiteral("{\"carbonKeyCode\":49,\"carbonModifiers\":4096}")));
    EXPECT_TRUE(countsAsRegistered(controlSpace));
}

TEST_F(KeyboardShortcutsTest, TheFormerShortcutGoesFirst)
{
    setShortcut(controlSpace, named("panel"));
    takeJournal();
    userDefaultsSet(named("panel"), commandK);
    EXPECT_EQ(takeJournal(), list({"unregister 1", "register 40 256 2",
                                   "store KeyboardShortcuts_panel "
                                   "{\"carbonKeyCode\":40,\"carbonModifiers\":256}",
                                   "post panel"}));
    EXPECT_FALSE(countsAsRegistered(controlSpace));
    EXPECT_TRUE(countsAsRegistered(commandK));
}

TEST_F(KeyboardShortcutsTest, TheFormerShortcutGoesFirstEvenIfItIsTheNewOne)
{
    setShortcut(controlSpace, named("panel"));
    takeJournal();
    setShortcut(controlSpace, named("panel"));
    EXPECT_EQ(takeJournal(), list({"unregister 1", "register 49 4096 2",
                                   "store KeyboardShortcuts_panel "
                                   "{\"carbonKeyCode\":49,\"carbonModifiers\":4096}",
                                   "post panel"}));
}

TEST_F(KeyboardShortcutsTest, AShortcutThatIsRegisteredIsNotRegisteredTwice)
{
    setShortcut(controlSpace, named("panel"));
    takeJournal();
    setShortcut(controlSpace, named("other"));
    EXPECT_EQ(takeJournal(), list({"store KeyboardShortcuts_other "
                                   "{\"carbonKeyCode\":49,\"carbonModifiers\":4096}",
                                   "post other"}));
    EXPECT_EQ(fake.hotKeys.registered.size(), 1U);
}

TEST_F(KeyboardShortcutsTest, AnObserverOfTheChangeFindsAllInPlace)
{
    std::optional<Shortcut> seen;
    bool wasRegistered = false;
    const auto observer = fake.notificationCenter.addObserver(
        shortcutByNameDidChangeNotification(), [&](const Notification& notification) {
            seen = getShortcut(*changedName(notification));
            wasRegistered = isRegistered(controlSpace);
        });
    setShortcut(controlSpace, named("panel"));
    EXPECT_EQ(seen, controlSpace);
    EXPECT_TRUE(wasRegistered);
    setShortcut(std::nullopt, named("panel"));
    EXPECT_EQ(seen, std::nullopt);
    EXPECT_FALSE(wasRegistered);
}

TEST_F(KeyboardShortcutsTest, TheChangeCarriesTheNameWithItsDefault)
{
    EXPECT_EQ(shortcutByNameDidChangeNotification(),
              QStringLiteral("KeyboardShortcuts_shortcutByNameDidChange"));
    QVariantMap userInfo;
    std::optional<Name> name;
    const auto observer = fake.notificationCenter.addObserver(
        QStringLiteral("KeyboardShortcuts_shortcutByNameDidChange"), [&](const Notification& notification) {
            userInfo = notification.userInfo;
            name = changedName(notification);
        });
    (void)Name(QStringLiteral("panel"), controlSpace);
    EXPECT_EQ(userInfo.keys(), list({"name"}));
    ASSERT_TRUE(name);
    EXPECT_EQ(*name, named("panel"));
    EXPECT_EQ(name->defaultShortcut(), controlSpace);
}

TEST_F(KeyboardShortcutsTest, ANotificationWithoutANameIsAboutNobody)
{
    EXPECT_EQ(changedName({QStringLiteral("x"), {}}), std::nullopt);
    EXPECT_EQ(changedName({QStringLiteral("x"), {{QStringLiteral("name"), QStringLiteral("panel")}}}),
              std::nullopt);
}

TEST_F(KeyboardShortcutsTest, ClearingANameWithoutDefaultRemovesItsKey)
{
    setShortcut(controlSpace, named("panel"));
    takeJournal();
    setShortcut(std::nullopt, named("panel"));
    EXPECT_EQ(takeJournal(), list({"store KeyboardShortcuts_panel nothing", "unregister 1", "post panel"}));
    EXPECT_FALSE(isStored("panel"));
    EXPECT_FALSE(countsAsRegistered(controlSpace));
}

TEST_F(KeyboardShortcutsTest, ClearingANameWithADefaultIsRememberedAcrossLaunches)
{
    const Name name(QStringLiteral("panel"), controlSpace);
    takeJournal();
    setShortcut(std::nullopt, name);
    EXPECT_EQ(takeJournal(),
              list({"store KeyboardShortcuts_panel bool false", "unregister 1", "post panel"}));
    EXPECT_EQ(getShortcut(name), std::nullopt);

    const StateScope nextLaunch;
    const Name again(QStringLiteral("panel"), controlSpace);
    EXPECT_EQ(again.shortcut(), std::nullopt);
    EXPECT_EQ(stored("panel"), QVariant(false));
    EXPECT_EQ(takeJournal(), QStringList());
}

TEST_F(KeyboardShortcutsTest, ClearingANameThatHasNoShortcutDoesNothing)
{
    setShortcut(std::nullopt, named("panel"));
    EXPECT_EQ(takeJournal(), QStringList());
    fake.defaults.stored.insert(key("panel"), QStringLiteral("junk"));
    setShortcut(std::nullopt, Name(QStringLiteral("panel"), controlSpace));
    EXPECT_EQ(takeJournal(), QStringList());
    EXPECT_EQ(stored("panel"), QVariant(QStringLiteral("junk")));
}

// Resetting

TEST_F(KeyboardShortcutsTest, ResettingGoesBackToTheDefault)
{
    const Name name(QStringLiteral("panel"), controlSpace);
    setShortcut(commandK, name);
    takeJournal();
    reset({name});
    EXPECT_EQ(takeJournal(), list({"unregister 2", "register 49 4096 3",
                                   "store KeyboardShortcuts_panel "
                                   "{\"carbonKeyCode\":49,\"carbonModifiers\":4096}",
                                   "post panel"}));
    EXPECT_EQ(name.shortcut(), controlSpace);
}

TEST_F(KeyboardShortcutsTest, ResettingBringsBackADefaultThatWasCleared)
{
    const Name name(QStringLiteral("panel"), controlSpace);
    setShortcut(std::nullopt, name);
    reset({name});
    EXPECT_EQ(name.shortcut(), controlSpace);
    EXPECT_TRUE(isRegistered(controlSpace));
}

TEST_F(KeyboardShortcutsTest, ResettingANameWithoutDefaultRemovesItsKey)
{
    setShortcut(commandK, named("panel"));
    setShortcut(controlSpace, named("other"));
    takeJournal();
    reset({named("panel"), named("nothing"), named("other")});
    EXPECT_EQ(takeJournal(), list({"store KeyboardShortcuts_panel nothing", "unregister 1", "post panel",
                                   "store KeyboardShortcuts_other nothing", "unregister 2", "post other"}));
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
}

// The switches

TEST_F(KeyboardShortcutsTest, TheSwitchesStandAtFirstForShortcutsThatFire)
{
    EXPECT_TRUE(isEnabled());
    EXPECT_FALSE(isPaused());
    EXPECT_FALSE(isMenuOpen());
}

TEST_F(KeyboardShortcutsTest, OnlyARealChangeOfTheSwitchReachesTheSystem)
{
    setShortcut(commandK, named("panel"));
    takeJournal();
    setEnabled(true);
    EXPECT_EQ(takeJournal(), QStringList());
    setEnabled(false);
    EXPECT_FALSE(isEnabled());
    EXPECT_EQ(takeJournal(), list({"unregister 1", "remove 5", "remove 6"}));
    setEnabled(false);
    EXPECT_EQ(takeJournal(), QStringList());
    setEnabled(true);
    EXPECT_EQ(takeJournal(), list({"register 40 256 1", "add 5", "add 6"}));
}

TEST_F(KeyboardShortcutsTest, MenusAreWatchedFromTheFirstNameOn)
{
    openMenu();
    EXPECT_FALSE(isMenuOpen());
    closeMenu();
    (void)named("panel");
    openMenu();
    EXPECT_TRUE(isMenuOpen());
    closeMenu();
    EXPECT_FALSE(isMenuOpen());
}

TEST_F(KeyboardShortcutsTest, EachRealChangeOfTheMenusReachesTheSystemOnce)
{
    setShortcut(commandK, named("panel"));
    (void)named("another");
    takeJournal();
    openMenu();
    EXPECT_EQ(takeJournal(), list({"unregister 1", "remove 5", "remove 6"}));
    openMenu();
    EXPECT_EQ(takeJournal(), QStringList());
    closeMenu();
    EXPECT_EQ(takeJournal(), list({"register 40 256 1", "add 5", "add 6"}));
    closeMenu();
    EXPECT_EQ(takeJournal(), QStringList());
}

#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Preferences/AppPreferences.h"
#include "OrvaneCore/Preferences/LaunchAtLogin.h"
#include "OrvaneCore/Preferences/ScopedPreferences.h"
#include "OrvaneCore/Preferences/SettingsObject.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

const QString dockKey = QStringLiteral("app.showDockIcon");
const QString itemKey = QStringLiteral("app.showMenuBarItem");

enum class Shade { linen, silk };

inline constexpr std::array shadeNames{EnumName{Shade::linen, "linen"}, EnumName{Shade::silk, "silk"}};
constexpr const auto& enumNames(Shade)
{
    return shadeNames;
}

class LampSettings : public SettingsObject {
public:
    explicit LampSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences)) { load(); }

    Setting<bool> glow{*this, u"glow", true};
    Setting<QString> name{*this, u"name", QStringLiteral("lamp")};
    Setting<Shade> shade{*this, u"shade", Shade::linen};
    Setting<double> reach{*this, u"reach", 1.5};
    Setting<int> bulbs{*this, u"bulbs", 3};
    Setting<QStringList> rooms{*this, u"rooms", {QStringLiteral("hall")}};
};

struct SettingsTest : testing::Test {
    ScopedPreferences scope(const QString& prefix = QStringLiteral("lamp")) { return {defaults, prefix}; }
    void store(const char* key, const QVariant& value)
    {
        defaults.stored[QStringLiteral("lamp.") + QLatin1String(key)] = value;
    }

    FakeDefaultsStore defaults;
};

using ScopedPreferencesTest = SettingsTest;

} // namespace

TEST_F(ScopedPreferencesTest, KeysCarryThePrefixAndAFullStop)
{
    const ScopedPreferences prefs = scope(QStringLiteral("net.lindenrow.orvane.awake"));
    prefs.set(true, QStringLiteral("keepDisplayAwake"));
    EXPECT_EQ(defaults.stored,
              (QVariantMap{{QStringLiteral("net.lindenrow.orvane.awake.keepDisplayAwake"), true}}));
    EXPECT_TRUE(prefs.boolean(QStringLiteral("keepDisplayAwake")));
}

TEST_F(ScopedPreferencesTest, TypedGettersTakeAValueOfAnotherTypeForAbsent)
{
    const ScopedPreferences prefs = scope();
    store("n", 7);
    store("s", QStringLiteral("text"));
    store("d", QByteArray("\x01\x02"));
    EXPECT_EQ(prefs.string(QStringLiteral("n")), std::nullopt);
    EXPECT_EQ(prefs.string(QStringLiteral("s")), QStringLiteral("text"));
    EXPECT_EQ(prefs.integer(QStringLiteral("n")), 7);
    EXPECT_EQ(prefs.integer(QStringLiteral("s")), 0);
    EXPECT_EQ(prefs.integer(QStringLiteral("absent")), 0);
    EXPECT_FALSE(prefs.boolean(QStringLiteral("absent")));
    EXPECT_EQ(prefs.data(QStringLiteral("d")), QByteArray("\x01\x02"));
    EXPECT_EQ(prefs.data(QStringLiteral("s")), std::nullopt);
    EXPECT_FALSE(prefs.object(QStringLiteral("absent")).isValid());
}

TEST_F(ScopedPreferencesTest, RegisteredDefaultsShowUntilAValueIsStoredAndAgainAfterItIsRemoved)
{
    const ScopedPreferences prefs = scope();
    prefs.registerDefaults({{QStringLiteral("shade"), QStringLiteral("linen")}});
    EXPECT_EQ(defaults.registered.keys(), QStringList{QStringLiteral("lamp.shade")});
    prefs.set(QStringLiteral("silk"), QStringLiteral("shade"));
    EXPECT_EQ(prefs.string(QStringLiteral("shade")), QStringLiteral("silk"));
    prefs.set({}, QStringLiteral("shade"));
    EXPECT_TRUE(defaults.stored.isEmpty());
    EXPECT_EQ(prefs.string(QStringLiteral("shade")), QStringLiteral("linen"));
}

TEST_F(ScopedPreferencesTest, RemoveAllLeavesScopesThatMerelyBeginWithTheSameLetters)
{
    scope().set(1, QStringLiteral("a"));
    scope().set(2, QStringLiteral("b.c"));
    scope(QStringLiteral("lamppost")).set(3, QStringLiteral("a"));
    scope().registerDefaults({{QStringLiteral("d"), 4}});
    defaults.stored[QStringLiteral("lamp")] = 5;
    scope().removeAll();
    EXPECT_EQ(defaults.stored, (QVariantMap{{QStringLiteral("lamppost.a"), 3}, {QStringLiteral("lamp"), 5}}));
    EXPECT_EQ(scope().integer(QStringLiteral("d")), 4);
}

TEST_F(SettingsTest, AnEmptyStoreGivesEachDefaultAndIsNotWrittenTo)
{
    const LampSettings settings(scope());
    EXPECT_TRUE(settings.glow.get());
    EXPECT_EQ(settings.name.get(), QStringLiteral("lamp"));
    EXPECT_EQ(settings.shade.get(), Shade::linen);
    EXPECT_EQ(settings.reach.get(), 1.5);
    EXPECT_EQ(settings.bulbs.get(), 3);
    EXPECT_EQ(settings.rooms.get(), QStringList{QStringLiteral("hall")});
    EXPECT_TRUE(defaults.stored.isEmpty());
}

TEST_F(SettingsTest, TheDefaultsOfAllKeysAreRegisteredAsOneDictionary)
{
    const LampSettings settings(scope());
    EXPECT_EQ(defaults.registrations, 1);
    EXPECT_EQ(defaults.registered,
              (QVariantMap{{QStringLiteral("lamp.glow"), true},
                           {QStringLiteral("lamp.name"), QStringLiteral("lamp")},
                           {QStringLiteral("lamp.shade"), QStringLiteral("linen")},
                           {QStringLiteral("lamp.reach"), 1.5},
                           {QStringLiteral("lamp.bulbs"), 3},
                           {QStringLiteral("lamp.rooms"), QStringList{QStringLiteral("hall")}}}));
}

TEST_F(SettingsTest, StoredValuesAreRead)
{
    store("glow", false);
    store("name", QStringLiteral("lantern"));
    store("shade", QStringLiteral("silk"));
    store("reach", 2); // a whole number is a number
    store("bulbs", qint64(5));
    store("rooms", QVariantList{QStringLiteral("attic"), QStringLiteral("cellar")});
    const LampSettings settings(scope());
    EXPECT_FALSE(settings.glow.get());
    EXPECT_EQ(settings.name.get(), QStringLiteral("lantern"));
    EXPECT_EQ(settings.shade.get(), Shade::silk);
    EXPECT_EQ(settings.reach.get(), 2.0);
    EXPECT_EQ(settings.bulbs.get(), 5);
    EXPECT_EQ(settings.rooms.get(), (QStringList{QStringLiteral("attic"), QStringLiteral("cellar")}));
}

TEST_F(SettingsTest, AnEnumIsStoredByName)
{
    LampSettings settings(scope());
    settings.shade.set(Shade::silk);
    EXPECT_EQ(defaults.stored.value(QStringLiteral("lamp.shade")), QVariant(QStringLiteral("silk")));
    EXPECT_EQ(LampSettings(scope()).shade.get(), Shade::silk);
}

TEST_F(SettingsTest, AnUnknownNameOfAnEnumGivesTheDefaultAndStaysStored)
{
    store("shade", QStringLiteral("velvet"));
    const LampSettings settings(scope());
    EXPECT_EQ(settings.shade.get(), Shade::linen);
    EXPECT_EQ(defaults.stored.value(QStringLiteral("lamp.shade")), QVariant(QStringLiteral("velvet")));
}

TEST_F(SettingsTest, AStoredValueOfAnotherTypeGivesTheDefault)
{
    store("glow", QVariantList{});
    store("name", 3);
    store("shade", 3);
    store("reach", QStringLiteral("far"));
    store("bulbs", 2.5);
    store("rooms", QVariantList{QStringLiteral("attic"), 4});
    const LampSettings settings(scope());
    EXPECT_TRUE(settings.glow.get());
    EXPECT_EQ(settings.name.get(), QStringLiteral("lamp"));
    EXPECT_EQ(settings.shade.get(), Shade::linen);
    EXPECT_EQ(settings.reach.get(), 1.5);
    EXPECT_EQ(settings.bulbs.get(), 3);
    EXPECT_EQ(settings.rooms.get(), QStringList{QStringLiteral("hall")});
    store("glow", QStringLiteral("no"));
    EXPECT_FALSE(LampSettings(scope()).glow.get());
    store("bulbs", 4e12);
    store("rooms", QStringLiteral("attic"));
    const LampSettings again(scope());
    EXPECT_EQ(again.bulbs.get(), 3);
    EXPECT_EQ(again.rooms.get(), QStringList{QStringLiteral("hall")});
}

TEST_F(SettingsTest, ASetIsPublishedAndStoredAtOnceAndNotClamped)
{
    LampSettings settings(scope());
    std::vector<int> seen;
    int changes = 0;
    const auto property = settings.bulbs.subscribeToChanges([&](int value) { seen.push_back(value); });
    const auto object = settings.onChange([&] { ++changes; });
    settings.bulbs.set(-400);
    EXPECT_EQ(seen, std::vector{-400});
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(defaults.stored.value(QStringLiteral("lamp.bulbs")), -400);
    EXPECT_EQ(LampSettings(scope()).bulbs.get(), -400);
}

TEST_F(SettingsTest, AnObserverThatSetsTheSameSettingHasTheLastWordInTheStore)
{
    LampSettings settings(scope());
    const auto correction = settings.bulbs.subscribeToChanges([&](int value) {
        if (value > 10)
            settings.bulbs.set(10);
    });
    settings.bulbs.set(11);
    EXPECT_EQ(settings.bulbs.get(), 10);
    EXPECT_EQ(defaults.stored.value(QStringLiteral("lamp.bulbs")), 10);
}

TEST(DefaultsStore, BooleansAreConvertedFromNumbersAndWords)
{
    FakeDefaultsStore defaults;
    const auto reads = [&](const QVariant& value) {
        defaults.stored[QStringLiteral("k")] = value;
        return defaults.boolean(QStringLiteral("k"));
    };
    for (const QVariant& truth :
         {QVariant(true), QVariant(1), QVariant(-2), QVariant(0.5), QVariant(QStringLiteral("YES")),
          QVariant(QStringLiteral("yes")), QVariant(QStringLiteral("True")), QVariant(QStringLiteral("1"))})
        EXPECT_TRUE(reads(truth)) << truth.toString().toStdString();
    for (const QVariant& falsehood :
         {QVariant(false), QVariant(0), QVariant(0.0), QVariant(QStringLiteral("no")),
          QVariant(QStringLiteral("2")), QVariant(QVariantList{true}), QVariant(QByteArray("1"))})
        EXPECT_FALSE(reads(falsehood)) << falsehood.toString().toStdString();
}

TEST(DefaultsStore, IntegersAreCutFromFractionsAndBounded)
{
    FakeDefaultsStore defaults;
    const auto reads = [&](const QVariant& value) {
        defaults.stored[QStringLiteral("k")] = value;
        return defaults.integer(QStringLiteral("k"));
    };
    EXPECT_EQ(reads(2.9), 2);
    EXPECT_EQ(reads(-2.9), -2);
    EXPECT_EQ(reads(true), 1);
    EXPECT_EQ(reads(std::numeric_limits<qint64>::max()), std::numeric_limits<qint64>::max());
    EXPECT_EQ(reads(1e300), 0);
    EXPECT_EQ(reads(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(reads(QStringLiteral("5")), 0);
}

TEST(AppPreferences, AFirstStartShowsTheMenuBarItemAlone)
{
    FakePlatform fake;
    const AppPreferences preferences(fake.defaults);
    EXPECT_FALSE(preferences.showDockIcon());
    EXPECT_TRUE(preferences.showMenuBarItem());
    EXPECT_FALSE(preferences.launchAtLogin());
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
    EXPECT_EQ(fake.defaults.registered, (QVariantMap{{dockKey, false}, {itemKey, true}}));
}

TEST(AppPreferences, ClearingTheMenuBarItemSetsTheDockIcon)
{
    FakePlatform fake;
    AppPreferences preferences(fake.defaults);
    preferences.setShowMenuBarItem(false);
    EXPECT_TRUE(preferences.showDockIcon());
    EXPECT_FALSE(preferences.showMenuBarItem());
    EXPECT_EQ(fake.defaults.stored, (QVariantMap{{dockKey, true}, {itemKey, false}}));
}

TEST(AppPreferences, ClearingTheDockIconSetsTheMenuBarItem)
{
    FakePlatform fake;
    fake.defaults.stored = {{dockKey, true}, {itemKey, false}};
    AppPreferences preferences(fake.defaults);
    preferences.setShowDockIcon(false);
    EXPECT_FALSE(preferences.showDockIcon());
    EXPECT_TRUE(preferences.showMenuBarItem());
    EXPECT_EQ(fake.defaults.stored, (QVariantMap{{dockKey, false}, {itemKey, true}}));
}

TEST(AppPreferences, AStoredValueOfAnotherTypeIsTakenForAbsent)
{
    const QVariantList damaged{QStringLiteral("half"), QString(), QVariantList{true}, QVariantMap{},
                               QByteArray("1")};
    for (const QVariant& value : damaged) {
        FakePlatform fake;
        fake.defaults.stored = {{dockKey, value}, {itemKey, value}};
        const AppPreferences preferences(fake.defaults);
        EXPECT_TRUE(preferences.showMenuBarItem()) << value.typeName();
        EXPECT_FALSE(preferences.showDockIcon()) << value.typeName();
    }
}

TEST(AppPreferences, StoredNumbersCountAsTruthValues)
{
    FakePlatform fake;
    fake.defaults.stored = {{dockKey, 1LL}, {itemKey, 0}};
    const AppPreferences preferences(fake.defaults);
    EXPECT_TRUE(preferences.showDockIcon());
    EXPECT_FALSE(preferences.showMenuBarItem());
}

TEST(AppPreferences, TwoStoredFalsesBringTheMenuBarItemBack)
{
    FakePlatform fake;
    fake.defaults.stored = {{dockKey, false}, {itemKey, false}};
    const AppPreferences preferences(fake.defaults);
    EXPECT_TRUE(preferences.showMenuBarItem());
    EXPECT_FALSE(preferences.showDockIcon());
    EXPECT_EQ(fake.defaults.stored, (QVariantMap{{dockKey, false}, {itemKey, true}}));
}

TEST(AppPreferences, AHiddenMenuBarItemBesideADamagedDockIconComesBackToo)
{
    FakePlatform fake;
    fake.defaults.stored = {{dockKey, QStringLiteral("half")}, {itemKey, false}};
    const AppPreferences preferences(fake.defaults);
    EXPECT_TRUE(preferences.showMenuBarItem());
}

TEST(AppPreferences, WithBothShownEitherCanGo)
{
    FakePlatform fake;
    fake.defaults.stored = {{dockKey, true}, {itemKey, true}};
    AppPreferences preferences(fake.defaults);
    preferences.setShowDockIcon(false);
    EXPECT_TRUE(preferences.showMenuBarItem());
    preferences.setShowDockIcon(true);
    preferences.setShowMenuBarItem(false);
    EXPECT_TRUE(preferences.showDockIcon());
    EXPECT_EQ(fake.defaults.stored, (QVariantMap{{dockKey, true}, {itemKey, false}}));
}

TEST(AppPreferences, PropertiesEmitThePresentValueAndEachNewOne)
{
    FakePlatform fake;
    AppPreferences preferences(fake.defaults);
    std::vector<bool> dock;
    std::vector<bool> item;
    const auto first = preferences.showDockIconValue().subscribe([&](bool value) { dock.push_back(value); });
    const auto second =
        preferences.showMenuBarItemValue().subscribe([&](bool value) { item.push_back(value); });
    preferences.setShowMenuBarItem(false);
    EXPECT_EQ(dock, (std::vector{false, true}));
    EXPECT_EQ(item, (std::vector{true, false}));
}

TEST(AppPreferences, LaunchAtLoginIsTheSystemsAndIsntStored)
{
    FakePlatform fake;
    fake.loginItem.current = LoginItem::Status::enabled;
    AppPreferences preferences(fake.defaults);
    EXPECT_TRUE(preferences.launchAtLogin());
    preferences.setLaunchAtLogin(false);
    EXPECT_EQ(fake.loginItem.current, LoginItem::Status::notRegistered);
    EXPECT_FALSE(preferences.launchAtLogin());
    preferences.setLaunchAtLogin(false);
    EXPECT_EQ(fake.loginItem.unregistrations, 1);
    EXPECT_TRUE(fake.defaults.stored.isEmpty());
}

TEST(AppPreferences, ARefusedLoginItemSpringsBackInSilence)
{
    FakePlatform fake;
    AppPreferences preferences(fake.defaults);
    fake.loginItem.refusal = QStringLiteral("not today");
    std::vector<bool> seen;
    const auto subscription =
        preferences.launchAtLoginValue().subscribeToChanges([&](bool value) { seen.push_back(value); });
    preferences.setLaunchAtLogin(true);
    EXPECT_FALSE(preferences.launchAtLogin());
    EXPECT_EQ(seen, (std::vector{true, false}));
    EXPECT_EQ(fake.loginItem.registrations, 1);
    EXPECT_TRUE(fake.log.entries().empty());
}

TEST(LaunchAtLogin, OnlyTheStatusEnabledCounts)
{
    FakePlatform fake;
    for (const auto status : {LoginItem::Status::notRegistered, LoginItem::Status::requiresApproval,
                              LoginItem::Status::notFound}) {
        fake.loginItem.current = status;
        EXPECT_FALSE(LaunchAtLogin::isEnabled());
    }
    fake.loginItem.current = LoginItem::Status::enabled;
    EXPECT_TRUE(LaunchAtLogin::isEnabled());
}

TEST(LaunchAtLogin, SettingWhatIsAlreadySetDoesNothing)
{
    FakePlatform fake;
    LaunchAtLogin::set(false);
    EXPECT_EQ(fake.loginItem.unregistrations, 0);
    LaunchAtLogin::set(true);
    LaunchAtLogin::set(true);
    EXPECT_EQ(fake.loginItem.registrations, 1);
}

TEST(LaunchAtLogin, AnItemThatWaitsForApprovalIsRegisteredAgainButNotUnregistered)
{
    FakePlatform fake;
    fake.loginItem.current = LoginItem::Status::requiresApproval;
    LaunchAtLogin::set(false);
    EXPECT_EQ(fake.loginItem.unregistrations, 0);
    LaunchAtLogin::set(true);
    EXPECT_EQ(fake.loginItem.registrations, 1);
}

TEST(LaunchAtLogin, TheSystemsRefusalIsThrown)
{
    FakePlatform fake;
    fake.loginItem.refusal = QStringLiteral("not today");
    EXPECT_THROW(LaunchAtLogin::set(true), PlatformError);
}

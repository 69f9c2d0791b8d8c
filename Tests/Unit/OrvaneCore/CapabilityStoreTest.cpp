#include "OrvaneCore/Capability/CapabilityStore.h"
#include "Fakes/FakeDefaultsStore.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

const QString enabledKey = QStringLiteral("Orvane.enabledCapabilities");
const QString modesKey = QStringLiteral("Orvane.capabilityStartModes");
const CapabilityID awake{QStringLiteral("net.lindenrow.orvane.awake")};
const CapabilityID other{QStringLiteral("net.lindenrow.orvane.other")};

} // namespace

TEST(CapabilityStore, AnEmptyStoreEnablesNothingAndStartsAutomatically)
{
    FakeDefaultsStore defaults;
    const CapabilityStore store(defaults);
    EXPECT_FALSE(store.isEnabled(awake));
    EXPECT_TRUE(store.enabledIDs().isEmpty());
    EXPECT_EQ(store.startMode(awake), CapabilityStartMode::automatic);
}

TEST(CapabilityStore, EnablingKeepsTheOtherEntriesAndDisablingKeepsAFalseOne)
{
    FakeDefaultsStore defaults;
    CapabilityStore store(defaults);
    store.setEnabled(awake, true);
    store.setEnabled(other, true);
    store.setEnabled(awake, false);
    EXPECT_EQ(defaults.stored.value(enabledKey),
              (QVariantMap{{awake.rawValue, false}, {other.rawValue, true}}));
    EXPECT_EQ(store.enabledIDs(), QSet{other.rawValue});
}

TEST(CapabilityStore, StartModesAreStoredAsRawStrings)
{
    FakeDefaultsStore defaults;
    CapabilityStore store(defaults);
    store.setStartMode(awake, CapabilityStartMode::manual);
    store.setStartMode(other, CapabilityStartMode::automatic);
    EXPECT_EQ(defaults.stored.value(modesKey), (QVariantMap{{awake.rawValue, QStringLiteral("manual")},
                                                            {other.rawValue, QStringLiteral("automatic")}}));
    EXPECT_EQ(store.startMode(awake), CapabilityStartMode::manual);
}

TEST(CapabilityStore, AnUnknownStartModeIsAutomatic)
{
    FakeDefaultsStore defaults;
    defaults.stored[modesKey] = QVariantMap{{awake.rawValue, QStringLiteral("sometimes")}};
    EXPECT_EQ(CapabilityStore(defaults).startMode(awake), CapabilityStartMode::automatic);
}

TEST(CapabilityStore, AValueOfAnotherShapeCountsAsAbsent)
{
    for (const QVariant& shape :
         {QVariant(QStringLiteral("text")), QVariant(7), QVariant(QVariantList{true}),
          QVariant(QVariantMap{{awake.rawValue, true}, {other.rawValue, QStringLiteral("yes")}})}) {
        FakeDefaultsStore defaults;
        defaults.stored[enabledKey] = shape;
        CapabilityStore store(defaults);
        EXPECT_FALSE(store.isEnabled(awake));
        store.setEnabled(awake, true);
        EXPECT_EQ(defaults.stored.value(enabledKey), (QVariantMap{{awake.rawValue, true}}));
    }
    FakeDefaultsStore defaults;
    defaults.stored[modesKey] = QVariantMap{{awake.rawValue, QStringLiteral("manual")}, {other.rawValue, 1}};
    EXPECT_EQ(CapabilityStore(defaults).startMode(awake), CapabilityStartMode::automatic);
}

TEST(CapabilityStartMode, Names)
{
    EXPECT_EQ(rawValue(CapabilityStartMode::automatic), QStringLiteral("automatic"));
    EXPECT_EQ(rawValue(CapabilityStartMode::manual), QStringLiteral("manual"));
    EXPECT_EQ(title(CapabilityStartMode::automatic), QStringLiteral("Start automatically"));
    EXPECT_EQ(title(CapabilityStartMode::manual), QStringLiteral("Start manually"));
}

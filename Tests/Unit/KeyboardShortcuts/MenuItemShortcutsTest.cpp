#include "KeyboardShortcuts/Registration/MenuItemShortcuts.h"
#include "ShortcutsFixture.h"

#include <thread>

using namespace orvane;
using namespace orvane::KeyboardShortcuts;
using namespace orvane::tests;

namespace {

constexpr Shortcut commandK(40, 256);
constexpr Shortcut shiftF5(96, 0x200);

class MenuItemShortcutsTest : public ShortcutsFixture {
protected:
    std::shared_ptr<MenuItem> item = std::make_shared<MenuItem>();

    void expectNone() const
    {
        EXPECT_EQ(item->keyEquivalent, QString());
        EXPECT_EQ(item->keyEquivalentModifierMask, 0U);
    }
    void expectCommandK() const
    {
        EXPECT_EQ(item->keyEquivalent, QStringLiteral("k"));
        EXPECT_EQ(item->keyEquivalentModifierMask, eventFlag::command);
    }
};

} // namespace

TEST_F(MenuItemShortcutsTest, AShortcutSetsTheEquivalentAndItsMaskAndKeepsItThroughOtherLayouts)
{
    setShortcut(item, commandK);
    expectCommandK();
    EXPECT_FALSE(item->allowsAutomaticKeyEquivalentLocalization);
    setShortcut(item, shiftF5);
    EXPECT_EQ(item->keyEquivalent, QStringLiteral("\uF708"));
    EXPECT_EQ(item->keyEquivalentModifierMask, eventFlag::shift);
}

TEST_F(MenuItemShortcutsTest, NoShortcutClearsBothAndLeavesLocalizationAsItWas)
{
    setShortcut(item, std::nullopt);
    expectNone();
    EXPECT_TRUE(item->allowsAutomaticKeyEquivalentLocalization);
    setShortcut(item, commandK);
    setShortcut(item, std::nullopt);
    expectNone();
    EXPECT_FALSE(item->allowsAutomaticKeyEquivalentLocalization);
}

TEST_F(MenuItemShortcutsTest, ABoundItemFollowsItsName)
{
    setShortcut(commandK, named("panel"));
    setShortcutFor(item, named("panel"));
    expectCommandK();
    setShortcut(shiftF5, named("panel"));
    EXPECT_EQ(item->keyEquivalent, QStringLiteral("\uF708"));
    setShortcut(std::nullopt, named("panel"));
    expectNone();
    setShortcut(commandK, named("panel"));
    expectCommandK();
    setShortcut(shiftF5, named("another"));
    expectCommandK();
}

TEST_F(MenuItemShortcutsTest, AnItemBoundToANameWithoutShortcutHasNoneAtFirst)
{
    item->keyEquivalent = QStringLiteral("x");
    setShortcutFor(item, named("panel"));
    expectNone();
}

TEST_F(MenuItemShortcutsTest, ANewBindingEndsTheOneBefore)
{
    setShortcutFor(item, named("panel"));
    setShortcutFor(item, named("another"));
    setShortcut(commandK, named("panel"));
    expectNone();
    setShortcut(commandK, named("another"));
    expectCommandK();
}

TEST_F(MenuItemShortcutsTest, WithoutANameTheItemIsClearedAndFollowsNobody)
{
    setShortcut(commandK, named("panel"));
    setShortcutFor(item, named("panel"));
    setShortcutFor(item, std::nullopt);
    expectNone();
    EXPECT_TRUE(item->allowsAutomaticKeyEquivalentLocalization);
    EXPECT_EQ(item->association, nullptr);
    setShortcut(shiftF5, named("panel"));
    expectNone();
}

TEST_F(MenuItemShortcutsTest, DroppingTheAssociationEndsTheBinding)
{
    setShortcutFor(item, named("panel"));
    item->association.reset();
    setShortcut(commandK, named("panel"));
    expectNone();
}

TEST_F(MenuItemShortcutsTest, ABindingKeepsNoItemAliveAndSurvivesInACopyWithoutHarm)
{
    setShortcutFor(item, named("panel"));
    const MenuItem copy = *item;
    const std::weak_ptr<MenuItem> weakItem = item;
    item.reset();
    EXPECT_TRUE(weakItem.expired());
    setShortcut(commandK, named("panel"));
    EXPECT_EQ(copy.keyEquivalent, QString());
}

TEST_F(MenuItemShortcutsTest, AwayFromTheMainThreadItIsDoneInTheMainThreadsNextTurn)
{
    std::thread([this] { setShortcut(item, commandK); }).join();
    EXPECT_EQ(item->keyEquivalent, QString());
    fake.runLoop.drain();
    expectCommandK();

    std::thread([this] { setShortcut(item, shiftF5); }).join();
    item.reset();
    fake.runLoop.drain();
}

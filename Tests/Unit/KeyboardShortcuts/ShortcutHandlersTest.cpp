#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "StoredShortcutsFixture.h"

#include <unordered_set>

using namespace orvane;
using namespace orvane::KeyboardShortcuts;
using namespace orvane::tests;

namespace {

class ShortcutHandlersTest : public StoredShortcutsFixture {};

} // namespace

// Handlers

TEST_F(ShortcutHandlersTest, AddingAHandlerRegistersTheStoredShortcut)
{
    store("panel", controlSpace);
    onKeyUp(named("panel"), note("up"));
    EXPECT_EQ(takeJournal(), list({"register 49 4096 1", "install", "add 5", "add 6"}));
    onKeyDown(named("panel"), note("down"));
    onKeyUp(named("panel"), note("up again"));
    EXPECT_EQ(takeJournal(), QStringList());

    press(controlSpace);
    EXPECT_EQ(fired, list({"down"}));
    release(controlSpace);
    EXPECT_EQ(fired, list({"down", "up", "up again"}));
}

TEST_F(ShortcutHandlersTest, AHandlerFiresOnceAShortcutIsSet)
{
    fake.defaults.stored.insert(key("panel"), QStringLiteral("junk"));
    onKeyUp(named("panel"), note("up"));
    EXPECT_EQ(takeJournal(), QStringList());
    setShortcut(commandK, named("panel"));
    tap(commandK);
    EXPECT_EQ(fired, list({"up"}));
}

TEST_F(ShortcutHandlersTest, HandlersOfOneNameRunInTheOrderOfTheirAdding)
{
    onKeyDown(named("panel"), note("1"));
    onKeyDown(named("panel"), note("2"));
    onKeyDown(named("panel"), note("3"));
    setShortcut(commandK, named("panel"));
    tap(commandK);
    tap(commandK);
    EXPECT_EQ(fired, list({"1", "2", "3", "1", "2", "3"}));
}

TEST_F(ShortcutHandlersTest, EveryNameThatHoldsTheShortcutFires)
{
    onKeyUp(named("a"), note("a"));
    onKeyUp(named("b"), note("b"));
    onKeyUp(named("c"), note("c"));
    setShortcut(commandK, named("a"));
    setShortcut(commandK, named("b"));
    setShortcut(controlSpace, named("c"));
    EXPECT_EQ(fake.hotKeys.registered.size(), 2U);
    tap(commandK);
    fired.sort();
    EXPECT_EQ(fired, list({"a", "b"}));
}

TEST_F(ShortcutHandlersTest, ClearingOneOfTwoNamesSilencesBothUntilItIsRegisteredAgain)
{
    onKeyUp(named("a"), note("a"));
    onKeyUp(named("b"), note("b"));
    setShortcut(commandK, named("a"));
    setShortcut(commandK, named("b"));
    setShortcut(std::nullopt, named("a"));
    EXPECT_FALSE(isRegistered(commandK));
    tap(commandK);
    EXPECT_EQ(fired, QStringList());
    enable({named("b")});
    tap(commandK);
    EXPECT_EQ(fired, list({"b"}));
}

TEST_F(ShortcutHandlersTest, TheStoreIsAskedAtEachFiring)
{
    onKeyUp(named("panel"), note("up"));
    setShortcut(commandK, named("panel"));
    store("panel", controlSpace); // without the registrations being told
    tap(commandK);
    EXPECT_EQ(fired, QStringList());
    store("panel", commandK);
    tap(commandK);
    EXPECT_EQ(fired, list({"up"}));
}

TEST_F(ShortcutHandlersTest, WhilePausedTheKeysArriveAndCallNobody)
{
    EXPECT_FALSE(isPaused());
    onKeyDown(named("panel"), note("down"));
    onKeyUp(named("panel"), note("up"));
    setShortcut(commandK, named("panel"));
    takeJournal();
    setPaused(true);
    EXPECT_TRUE(isPaused());
    EXPECT_EQ(takeJournal(), QStringList());
    EXPECT_TRUE(isRegistered(commandK));
    const KeyboardEvent event{KeyboardEvent::Kind::hotKeyPressed,
                              EventHotKeyID{CarbonKeyboardShortcuts::hotKeySignature, 1},
                              {},
                              {}};
    EXPECT_EQ(fake.hotKeys.send(&event), noErr);
    tap(commandK);
    EXPECT_EQ(fired, QStringList());
    setPaused(false);
    tap(commandK);
    EXPECT_EQ(fired, list({"down", "up"}));
}

// Handlers that change things while they run

TEST_F(ShortcutHandlersTest, AHandlerMayClearItsOwnShortcut)
{
    onKeyDown(named("panel"), [this] {
        fired.append(QStringLiteral("cleared"));
        setShortcut(std::nullopt, named("panel"));
    });
    onKeyDown(named("panel"), note("second"));
    setShortcut(commandK, named("panel"));
    tap(commandK);
    tap(commandK);
    EXPECT_EQ(fired, list({"cleared", "second"}));
}

TEST_F(ShortcutHandlersTest, AHandlerMaySetItsOwnShortcut)
{
    onKeyUp(named("panel"), [this] {
        fired.append(QStringLiteral("moved"));
        setShortcut(controlSpace, named("panel"));
    });
    setShortcut(commandK, named("panel"));
    tap(commandK);
    tap(commandK);
    EXPECT_EQ(fired, list({"moved"}));
    tap(controlSpace);
    EXPECT_EQ(fired, list({"moved", "moved"}));
}

TEST_F(ShortcutHandlersTest, AHandlerThatIsAddedByAnotherWaitsForTheNextPress)
{
    onKeyUp(named("a"), [this] {
        fired.append(QStringLiteral("a"));
        if (fired.size() > 1)
            return;
        for (int i = 0; i < 200; ++i) {
            onKeyUp(named("a"), note("more a"));
            onKeyUp(named("b"), note("more b"));
            onKeyUp(Name(QStringLiteral("new %1").arg(i)), note("never"));
        }
    });
    onKeyUp(named("b"), note("b"));
    setShortcut(commandK, named("a"));
    setShortcut(commandK, named("b"));
    tap(commandK);
    EXPECT_EQ(fired, list({"a", "b"}));
    tap(commandK);
    EXPECT_EQ(fired.size(), 2 + 2 + 400);
    EXPECT_EQ(fired.count(QStringLiteral("more b")), 200);
}

TEST_F(ShortcutHandlersTest, AHandlerMayTakeTheShortcutFromANameWhoseTurnIsStillToCome)
{
    onKeyUp(named("a"), [this] {
        fired.append(QStringLiteral("a"));
        setShortcut(std::nullopt, named("b"));
    });
    onKeyUp(named("b"), [this] {
        fired.append(QStringLiteral("b"));
        setShortcut(std::nullopt, named("a"));
    });
    setShortcut(commandK, named("a"));
    setShortcut(commandK, named("b"));
    tap(commandK);
    EXPECT_EQ(fired.size(), 1);
}

TEST_F(ShortcutHandlersTest, AHandlerMayTurnAllOffAndOnAgain)
{
    onKeyDown(named("panel"), [this] {
        fired.append(QStringLiteral("down"));
        setEnabled(false);
        setEnabled(true);
    });
    setShortcut(commandK, named("panel"));
    tap(commandK);
    tap(commandK);
    EXPECT_EQ(fired, list({"down", "down"}));
}

TEST_F(ShortcutHandlersTest, AHandlerThatPausesLetsTheOthersOfThatPressRun)
{
    onKeyDown(named("panel"), [this] {
        fired.append(QStringLiteral("first"));
        setPaused(true);
    });
    onKeyDown(named("panel"), note("second"));
    setShortcut(commandK, named("panel"));
    tap(commandK);
    tap(commandK);
    EXPECT_EQ(fired, list({"first", "second"}));
}

// Enabling and disabling

TEST_F(ShortcutHandlersTest, DisablingKeepsHandlersAndStoredValuesForALaterEnabling)
{
    onKeyUp(named("panel"), note("up"));
    setShortcut(commandK, named("panel"));
    takeJournal();
    disable({named("panel"), named("without")});
    EXPECT_EQ(takeJournal(), list({"unregister 1"}));
    EXPECT_FALSE(countsAsRegistered(commandK));
    EXPECT_EQ(getShortcut(named("panel")), commandK);
    tap(commandK);
    EXPECT_EQ(fired, QStringList());

    enable({named("without"), named("panel"), named("panel")});
    EXPECT_EQ(takeJournal(), list({"register 40 256 2"}));
    tap(commandK);
    EXPECT_EQ(fired, list({"up"}));
}

TEST_F(ShortcutHandlersTest, EnablingSkipsWhatCannotBeRead)
{
    fake.defaults.stored.insert(key("junk"), QStringLiteral("junk"));
    fake.defaults.stored.insert(key("cleared"), false);
    enable({named("junk"), named("cleared"), named("none")});
    disable({named("junk"), named("cleared"), named("none")});
    EXPECT_EQ(takeJournal(), QStringList());
}

TEST_F(ShortcutHandlersTest, DisablingWhatIsNotRegisteredDoesNothing)
{
    store("panel", commandK);
    disable({named("panel")});
    EXPECT_EQ(takeJournal(), QStringList());
}

// What the system refuses

TEST_F(ShortcutHandlersTest, ARefusedShortcutCountsAsRegisteredAndIsNotTriedAgain)
{
    fake.hotKeys.taken.insert(combination(commandK));
    onKeyUp(named("panel"), note("up"));
    setShortcut(commandK, named("panel"));
    EXPECT_EQ(takeJournal(), list({"register 40 256 1",
                                   "store KeyboardShortcuts_panel "
                                   "{\"carbonKeyCode\":40,\"carbonModifiers\":256}",
                                   "post panel"}));
    EXPECT_TRUE(countsAsRegistered(commandK));
    EXPECT_TRUE(fake.log.entries().empty());

    fake.hotKeys.taken.clear();
    enable({named("panel")});
    onKeyUp(named("panel"), note("again"));
    EXPECT_EQ(takeJournal(), QStringList());
    tap(commandK);
    EXPECT_EQ(fired, QStringList());

    disable({named("panel")}); // the set doesn't hold it any more
    enable({named("panel")});
    EXPECT_EQ(takeJournal(), list({"register 40 256 2", "install", "add 5", "add 6"}));
    tap(commandK);
    EXPECT_EQ(fired, list({"up", "again"}));
}

// The scope of tests

TEST_F(ShortcutHandlersTest, AFreshStateEndsWithItsScope)
{
    onKeyUp(named("panel"), note("outer"));
    setShortcut(commandK, named("panel"));
    setPaused(true);
    takeJournal();
    {
        const StateScope inner;
        EXPECT_FALSE(isPaused());
        store("other", controlSpace);
        onKeyUp(named("other"), note("inner"));
        EXPECT_EQ(takeJournal(), list({"register 49 4096 1", "install", "add 5", "add 6"}));
        tap(controlSpace);
        EXPECT_EQ(fired, list({"inner"}));
        takeJournal();
    }
    EXPECT_EQ(journal().size(), 2);
    EXPECT_TRUE(journal().contains(QStringLiteral("unregister 1")));
    EXPECT_TRUE(journal().contains(QStringLiteral("uninstall")));
    EXPECT_TRUE(isPaused());
    setPaused(false);
    fired.clear();
    tap(commandK);
    EXPECT_EQ(fired, list({"outer"}));
}

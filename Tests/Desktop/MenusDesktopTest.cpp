// The status menu as the panel gets it, in each state of the suite.
#include "Desktop/Support/ShellFixture.h"
#include "Desktop/Support/WindowManagersWord.h"
#include "Support/Eventually.h"

#include <QImage>

#include <gmock/gmock.h>

namespace orvane::tests {

namespace {

using ::testing::ElementsAre;

const QString orvane = QStringLiteral("Orvane");
const QString separator = QStringLiteral("-");
const QString openItem = QStringLiteral("Open Orvane…");
const QString quitItem = QStringLiteral("Quit Orvane");
const QString awake = QStringLiteral("Awake");
const QString keySwap = QStringLiteral("Ctrl Shortcuts");
const QString nothingIsOn = QStringLiteral("No features are on");
const QString turnOn = QStringLiteral("Turn features on…");

/// Returns the labels once they are the expected ones, or the last others.
class MenusDesktopTest : public ShellDesktopTest {
protected:
    bool menuBecomes(const QStringList& labels)
    {
        QStringList seen;
        const bool is = eventually(10s, [&] { return (seen = statusMenu().labels()) == labels; });
        EXPECT_TRUE(is) << seen.join(QLatin1Char('\n')).toStdString();
        return is;
    }
    static QImage icon(const MenuNode& menu, const QString& label)
    {
        const MenuNode* node = menu.find({label});
        return node ? QImage::fromData(node->properties.value(QStringLiteral("icon-data")).toByteArray(),
                                       "PNG")
                    : QImage();
    }
};

} // namespace

TEST_F(MenusDesktopTest, WithNothingOnItSaysSoAndOffersTheHomeWindow)
{
    start({});
    ASSERT_TRUE(menuBecomes({orvane, separator, nothingIsOn, turnOn, separator, openItem, quitItem}));
    const MenuNode menu = statusMenu();
    EXPECT_FALSE(menu.find({orvane})->enabled);
    EXPECT_FALSE(menu.find({nothingIsOn})->enabled);
    for (const QString& label : {turnOn, openItem, quitItem}) {
        EXPECT_TRUE(menu.find({label})->selectable()) << label.toStdString();
        EXPECT_FALSE(icon(menu, label).isNull()) << label.toStdString();
    }
    EXPECT_TRUE(icon(menu, orvane).isNull()) << "a word doesn't fit into a square";
    EXPECT_TRUE(menu.find({quitItem})->properties.contains(QStringLiteral("shortcut")));
    EXPECT_FALSE(menu.find({openItem})->properties.contains(QStringLiteral("shortcut")));

    EXPECT_TRUE(statusItem().menu().click(menu.find({turnOn})->id));
    EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(); }));
}

TEST_F(MenusDesktopTest, AwakesEntryFollowsItsState)
{
    start({.enabled = {QStringLiteral("awake")}});
    ASSERT_TRUE(menuBecomes({orvane, separator, awake, separator, openItem, quitItem}));
    MenuNode menu = statusMenu();
    EXPECT_THAT(menu.find({awake})->labels(), ElementsAre(QStringLiteral("Keep Awake")));
    EXPECT_FALSE(icon(menu, awake).isNull());
    EXPECT_TRUE(statusItem().menu().click(menu.find({awake, QStringLiteral("Keep Awake")})->id));
    ASSERT_TRUE(becomesAwake());

    menu = statusMenu();
    EXPECT_THAT(menu.find({awake})->labels(), ElementsAre(QStringLiteral("Let Computer Sleep")));
    EXPECT_TRUE(statusItem().menu().click(menu.find({awake, QStringLiteral("Let Computer Sleep")})->id));
    ASSERT_TRUE(becomesAsleep());
    EXPECT_THAT(statusMenu().find({awake})->labels(), ElementsAre(QStringLiteral("Keep Awake")));
}

TEST_F(MenusDesktopTest, ACapabilityThatNeedsAPermissionHasNoPlace)
{
    // Windows need a window manager.
    WindowManagersWord word;
    word.remove();
    start({.enabled = {QStringLiteral("snapzones"), QStringLiteral("awake")}});
    ASSERT_TRUE(program().waitForLog(QRegularExpression(QStringLiteral("no window manager is running"))));
    // Awake is restored after the other feature, so with Awake in the menu both have been tried.
    EXPECT_TRUE(menuBecomes({orvane, separator, awake, separator, openItem, quitItem}));
}

TEST_F(MenusDesktopTest, WithOnlyAGatedCapabilityNothingIsOn)
{
    WindowManagersWord word;
    word.remove();
    start({.enabled = {QStringLiteral("snapzones")}});
    EXPECT_TRUE(menuBecomes({orvane, separator, nothingIsOn, turnOn, separator, openItem, quitItem}));
}

TEST_F(MenusDesktopTest, TwoCapabilitiesStandInTheirOrderAndOneWithoutEntriesOpensTheHomeWindow)
{
    start({.enabled = {QStringLiteral("awake"), QStringLiteral("keyswap")}});
    ASSERT_TRUE(menuBecomes({orvane, separator, keySwap, awake, separator, openItem, quitItem}));
    const MenuNode menu = statusMenu();
    EXPECT_TRUE(menu.find({keySwap})->children.isEmpty());
    EXPECT_FALSE(menu.find({awake})->children.isEmpty());
    EXPECT_FALSE(icon(menu, keySwap).isNull());
    EXPECT_TRUE(statusItem().menu().click(menu.find({keySwap})->id));
    EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(); }));
}

TEST_F(MenusDesktopTest, QuitEndsTheProgram)
{
    start({});
    ASSERT_TRUE(menuBecomes({orvane, separator, nothingIsOn, turnOn, separator, openItem, quitItem}));
    (void)statusItem().menu().click(statusMenu().find({quitItem})->id);
    const auto exit = program().wait();
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->code, 0);
    EXPECT_EQ(exit->signal, 0);
}

} // namespace orvane::tests

// The application's menu bar.
#include "Orvane/Menus/MainMenu.h"
#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

struct MainMenuTest : testing::Test {
    /// Returns "Title command key" of each item, "-" for a separator.
    static QStringList rows(const Menu& menu)
    {
        QStringList list;
        for (const MenuItem& item : menu.items) {
            if (item.kind == MenuItem::Kind::separator)
                list.append(QStringLiteral("-"));
            else
                list.append(
                    QStringList{item.title, item.selector, item.keyEquivalent}.join(QLatin1Char('|')));
        }
        return list;
    }

    FakePlatform fake;
};

} // namespace

TEST_F(MainMenuTest, HasThreeMenusInOrder)
{
    const auto bar = MainMenu::build();
    ASSERT_EQ(bar->items.size(), 3);
    const QStringList titles{QStringLiteral("Orvane"), QStringLiteral("Edit"), QStringLiteral("Window")};
    for (int index = 0; index < 3; ++index) {
        ASSERT_NE(bar->items.at(index).submenu, nullptr);
        EXPECT_EQ(bar->items.at(index).title, titles.at(index));
        EXPECT_EQ(bar->items.at(index).submenu->title, titles.at(index));
    }
}

TEST_F(MainMenuTest, EveryRowHasItsCommandAndItsKey)
{
    const auto bar = MainMenu::build();
    EXPECT_EQ(
        rows(*bar->items.at(0).submenu),
        (QStringList{QStringLiteral("About Orvane|orderFrontStandardAboutPanel:|"), QStringLiteral("-"),
                     QStringLiteral("Hide Orvane|hide:|h"), QStringLiteral("Quit Orvane|terminate:|q")}));
    EXPECT_EQ(rows(*bar->items.at(1).submenu),
              (QStringList{QStringLiteral("Undo|undo:|z"), QStringLiteral("Redo|redo:|Z"),
                           QStringLiteral("-"), QStringLiteral("Cut|cut:|x"), QStringLiteral("Copy|copy:|c"),
                           QStringLiteral("Paste|paste:|v"), QStringLiteral("Select All|selectAll:|a")}));
    EXPECT_EQ(rows(*bar->items.at(2).submenu), (QStringList{QStringLiteral("Minimize|performMiniaturize:|m"),
                                                            QStringLiteral("Close|performClose:|w")}));
    for (const MenuItem& menu : bar->items) {
        for (const MenuItem& item : menu.submenu->items) {
            EXPECT_EQ(item.keyEquivalentModifierMask, eventFlag::command);
            EXPECT_FALSE(item.action) << "commands go to whatever has the focus";
        }
    }
}

TEST_F(MainMenuTest, UpdatesAreOfferedOnlyWhereThereIsAnUpdater)
{
    int checks = 0;
    const auto bar = MainMenu::build([&](const MenuItem&) { ++checks; });
    const Menu& application = *bar->items.at(0).submenu;
    EXPECT_EQ(rows(application), (QStringList{QStringLiteral("About Orvane|orderFrontStandardAboutPanel:|"),
                                              QStringLiteral("-"), QStringLiteral("Check for Updates…||"),
                                              QStringLiteral("-"), QStringLiteral("Hide Orvane|hide:|h"),
                                              QStringLiteral("Quit Orvane|terminate:|q")}));
    EXPECT_TRUE(choose(application, QStringLiteral("Check for Updates…")));
    EXPECT_EQ(checks, 1);
}

TEST_F(MainMenuTest, TheWindowMenuIsTheApplicationsWindowsMenu)
{
    const auto bar = MainMenu::build();
    EXPECT_EQ(fake.application.windowsMenu, bar->items.at(2).submenu);
    EXPECT_EQ(fake.application.menu, nullptr) << "it is the caller who installs it";
}

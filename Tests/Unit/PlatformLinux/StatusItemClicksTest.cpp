#include "PlatformLinux/Tray/StatusItemClicks.h"

#include <gmock/gmock.h>

#include <vector>

namespace orvane {
namespace {

constexpr StatusItemEvent left{StatusItemEvent::Type::leftMouseUp, 0};
constexpr StatusItemEvent right{StatusItemEvent::Type::rightMouseUp, eventFlag::shift};

Menu menuOf(const QString& title)
{
    MenuItem item;
    item.title = title;
    Menu menu;
    menu.items << item;
    return menu;
}

class StatusItemClicksTest : public testing::Test {
protected:
    /// Acts like an item that toggles on a click and builds a menu for a right click.
    StatusItem::Action togglingAction()
    {
        return [this](const StatusItemEvent* event) {
            if (event && event->type == StatusItemEvent::Type::rightMouseUp) {
                clicks.setMenu([this] { return menuOf(QString::number(++built)); });
                clicks.performClick();
                clicks.setMenu(nullptr);
                return;
            }
            ++toggled;
        };
    }

    std::vector<Menu> opened;
    int built = 0;
    int toggled = 0;
    StatusItemClicks clicks{[this](const Menu& menu) { opened.push_back(menu); }};
};

TEST_F(StatusItemClicksTest, AClickTellsTheActionItsKindAndModifiers)
{
    std::optional<StatusItemEvent> told;
    clicks.setAction([&](const StatusItemEvent* event) { told = *event; });
    clicks.click(right);
    ASSERT_TRUE(told);
    EXPECT_EQ(told->type, StatusItemEvent::Type::rightMouseUp);
    EXPECT_EQ(told->modifierFlags, eventFlag::shift);
}

TEST_F(StatusItemClicksTest, EveryClickOpensAnAttachedMenuWithFreshContent)
{
    clicks.setAction([this](const StatusItemEvent*) { ++toggled; });
    clicks.setMenu([this] { return menuOf(QString::number(++built)); });
    clicks.click(left);
    clicks.click(right);
    clicks.performClick();
    ASSERT_EQ(opened.size(), 3u);
    EXPECT_EQ(opened[0].items[0].title, QStringLiteral("1"));
    EXPECT_EQ(opened[2].items[0].title, QStringLiteral("3"));
    EXPECT_EQ(toggled, 0);
}

TEST_F(StatusItemClicksTest, AMenuAttachedForOneClickOpensAndIsGone)
{
    clicks.setAction(togglingAction());
    clicks.click(right);
    EXPECT_EQ(opened.size(), 1u);
    EXPECT_FALSE(clicks.hasMenu());
    clicks.click(left);
    EXPECT_EQ(opened.size(), 1u);
    EXPECT_EQ(toggled, 1);
}

TEST_F(StatusItemClicksTest, AHostThatAsksGetsTheMenuOfARightClickAndNothingOpens)
{
    clicks.setAction(togglingAction());
    const Menu menu = clicks.menuForHost();
    ASSERT_EQ(menu.items.size(), 1);
    EXPECT_EQ(menu.items[0].title, QStringLiteral("1"));
    EXPECT_TRUE(opened.empty());
    EXPECT_EQ(toggled, 0);
    clicks.click(right);
    EXPECT_EQ(opened.size(), 1u) << "a real click opens again";
}

TEST_F(StatusItemClicksTest, AHostThatAsksGetsTheAttachedMenu)
{
    clicks.setMenu([] { return menuOf(QStringLiteral("attached")); });
    EXPECT_EQ(clicks.menuForHost().items[0].title, QStringLiteral("attached"));
    EXPECT_TRUE(opened.empty());
}

TEST_F(StatusItemClicksTest, AHostGetsAnEmptyMenuWhereARightClickOpensNone)
{
    EXPECT_TRUE(clicks.menuForHost().items.isEmpty());
    clicks.setAction([](const StatusItemEvent*) {});
    EXPECT_TRUE(clicks.menuForHost().items.isEmpty());
}

TEST_F(StatusItemClicksTest, PerformingAClickWithoutAMenuCallsTheActionWithoutAnEvent)
{
    bool absent = false;
    clicks.setAction([&](const StatusItemEvent* event) { absent = event == nullptr; });
    clicks.performClick();
    EXPECT_TRUE(absent);
}

TEST_F(StatusItemClicksTest, AnActionThatPerformsAClickDoesNotCallItselfForEver)
{
    clicks.setAction([this](const StatusItemEvent*) {
        ++toggled;
        clicks.performClick();
    });
    clicks.performClick();
    EXPECT_EQ(toggled, 1);
}

TEST_F(StatusItemClicksTest, AnActionMayDestroyTheItem)
{
    auto own = std::make_unique<StatusItemClicks>([](const Menu&) {});
    own->setAction([&](const StatusItemEvent*) { own.reset(); });
    own->click(left);
    EXPECT_FALSE(own);

    own = std::make_unique<StatusItemClicks>([](const Menu&) {});
    own->setAction([&](const StatusItemEvent*) { own.reset(); });
    EXPECT_TRUE(own->menuForHost().items.isEmpty());
    EXPECT_FALSE(own);
}

} // namespace
} // namespace orvane

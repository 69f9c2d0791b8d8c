// Menus of the program while they are open: in its own windows, and drawn by the panel of the private
// desktop.
#include "Contract/PanelMenuFixture.h"
#include "PlatformLinux/Menus/TrayMenuView.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDeadlineTimer>
#include <QMenu>

namespace orvane::tests {
namespace {

TEST_F(MenuTrackingTest, AMenuOfAWindowIsTrackedFromItsOpeningToItsClosingAndItsSubmenusAreNot)
{
    NotingWindow window;
    QMenu menu;
    QMenu* more = menu.addMenu(QStringLiteral("More"));
    more->addAction(QStringLiteral("Inner"));
    menu.popup(window.mapToGlobal(QPoint(5, 5)));
    EXPECT_EQ(posted, QStringList{began});
    ASSERT_TRUE(eventually(deadline, [&] { return menu.windowHandle()->isExposed(); }));
    hardware.tap("Down");
    hardware.tap("Right");
    EXPECT_TRUE(eventually(deadline, [&] { return more->isVisible(); }));
    hardware.tap("Left");
    EXPECT_TRUE(eventually(deadline, [&] { return !more->isVisible(); }));
    EXPECT_EQ(posted, QStringList{began});
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_EQ(menus.place(), MenuTracking::Place::none);
}

TEST_F(MenuTrackingTest, ALineEditsContextMenuAndAComboBoxesListAreMenus)
{
    NotingWindow window;
    QComboBox box(&window);
    box.addItems({QStringLiteral("One"), QStringLiteral("Two")});
    box.show();
    QContextMenuEvent request(QContextMenuEvent::Keyboard, QPoint(2, 2),
                              window.edit.mapToGlobal(QPoint(2, 2)));
    QCoreApplication::sendEvent(&window.edit, &request);
    EXPECT_TRUE(hasPosted({began}));
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
    box.showPopup();
    EXPECT_TRUE(hasPosted({began, ended, began}));
    box.hidePopup();
    EXPECT_TRUE(hasPosted({began, ended, began, ended}));
}

TEST_F(MenuTrackingTest, AMenuThatIsDeletedWhileItIsOpenHasClosed)
{
    auto menu = std::make_unique<QMenu>();
    menu->addAction(QStringLiteral("Item"));
    menu->popup(QPoint(300, 300));
    EXPECT_EQ(posted, QStringList{began});
    menu.reset();
    EXPECT_EQ(posted, (QStringList{began, ended}));
}

TEST_F(MenuTrackingTest, AStatusMenuInAWindowOfTheProgramIsTracked)
{
    TrayMenuView view;
    view.popUp(Menu{{}, {choice(QStringLiteral("Item"))}}, QRect(300, 300, 20, 20));
    EXPECT_EQ(posted, QStringList{began});
    view.close();
    EXPECT_EQ(posted, (QStringList{began, ended}));
}

TEST_F(PanelMenuTest, TheMenuThatThePanelDrawsIsTrackedFromItsOpeningToItsClosing)
{
    ASSERT_TRUE(openByClick());
    EXPECT_TRUE(eventually(deadline, [this] { return screen.openMenus().size() == 1; }));
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(eventually(deadline, [this] { return screen.openMenus().isEmpty(); }));
    ASSERT_TRUE(openByClick());
    hardware.click(QPoint(600, 800));
    EXPECT_TRUE(hasPosted({began, ended, began, ended}));
}

TEST_F(PanelMenuTest, ItsSubmenuIsNoFurtherMenu)
{
    ASSERT_TRUE(openByClick());
    for (const char* key : {"Down", "Down", "Down", "Right"})
        hardware.tap(key);
    EXPECT_TRUE(eventually(deadline, [this] { return screen.openMenus().size() == 2; }));
    EXPECT_EQ(posted, QStringList{began});
    hardware.tap("Return");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(eventually(deadline, [this] { return chosen == QStringList{QStringLiteral("Inner")}; }));
}

TEST_F(PanelMenuTest, AChoiceClosesItAndIsMade)
{
    ASSERT_TRUE(openByClick());
    hardware.tap("Down");
    hardware.tap("Return");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(eventually(deadline, [this] { return chosen == QStringList{QStringLiteral("One")}; }));
}

TEST_F(PanelMenuTest, AMonitorTakesItsKeyFromThePanelAndTheOthersWorkTheMenu)
{
    const auto monitor = takeC();
    EXPECT_FALSE(monitors.isTapping());
    ASSERT_TRUE(openByClick());
    ASSERT_TRUE(hasTheKeyboard());
    hardware.tap("c");
    hardware.tap("Down");
    hardware.tap("Down");
    hardware.tap("c");
    hardware.tap("Return");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(eventually(deadline, [this] { return chosen == QStringList{QStringLiteral("Two")}; }));
    EXPECT_FALSE(monitors.isTapping());
    ASSERT_GE(seen.size(), 9u);
    EXPECT_EQ(seen[0].keycode, 8);
    EXPECT_EQ(seen[0].type, EventType::keyDown);
    EXPECT_EQ(seen[1].type, EventType::keyUp);
    EXPECT_EQ(seen[2].flags, eventFlag::numericPad | eventFlag::secondaryFn) << "the down key";
}

TEST_F(PanelMenuTest, AMonitorThatComesWhileTheMenuIsOpenIsAskedAndEscapeStillCloses)
{
    ASSERT_TRUE(openByClick());
    EXPECT_FALSE(monitors.isTapping());
    auto monitor = takeC();
    ASSERT_TRUE(hasTheKeyboard());
    hardware.tap("c");
    EXPECT_TRUE(eventually(deadline, [this] { return seen.size() == 2; }));
    monitor.reset();
    EXPECT_FALSE(monitors.isTapping());
    hardware.tap("Escape");
    EXPECT_TRUE(hasPosted({began, ended}));
}

TEST_F(PanelMenuTest, AnEventTapOfSomebodyElsesIsNoHindrance)
{
    // Changes every B to a C, as a remapping capability would.
    LambdaTap remapping(taps, [](Event& event) {
        if (event.keycode == 11)
            event.keycode = 8;
        return true;
    });
    const auto monitor = takeC();
    ASSERT_TRUE(openByClick());
    hardware.tap("b");
    ASSERT_TRUE(eventually(deadline, [this] { return seen.size() == 2; }));
    EXPECT_EQ(seen[0].keycode, 8);
    hardware.tap("Down");
    hardware.tap("Return");
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_TRUE(eventually(deadline, [this] { return chosen == QStringList{QStringLiteral("One")}; }));
    EXPECT_EQ(remapping.timeouts(), 0);
}

TEST_F(PanelMenuTest, AMainThreadThatHangsDoesNotCostTheKeyboard)
{
    const auto monitor = takeC();
    ASSERT_TRUE(openByClick());
    ASSERT_TRUE(hasTheKeyboard());
    hardware.tap("Escape");
    // The event loop doesn't run: the tap gets no answer, and after a second the key goes through.
    const QDeadlineTimer limit(deadline);
    while (!screen.openMenus().isEmpty() && !limit.hasExpired())
        ;
    EXPECT_TRUE(screen.openMenus().isEmpty());
    EXPECT_TRUE(hasPosted({began, ended}));
    EXPECT_FALSE(monitors.isTapping());
}

TEST_F(PanelMenuTest, AnItemThatGoesWhileItsMenuIsOpenEndsTheTracking)
{
    ASSERT_TRUE(openByClick());
    item.reset();
    EXPECT_TRUE(hasPosted({began, ended}));
    hardware.tap("Escape");
}

} // namespace
} // namespace orvane::tests

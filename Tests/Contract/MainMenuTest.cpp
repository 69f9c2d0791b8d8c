// The main menu in windows of this process, used with the keys of the hardware.
#include "Contract/EventMonitorsFixture.h"
#include "PlatformLinux/Menus/MainMenuView.h"
#include "PlatformLinux/Menus/MenuCommands.h"

#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

namespace orvane::tests {
namespace {

constexpr auto deadline = std::chrono::seconds(10);

MenuItem command(const char* title, const char* selector, const char* key)
{
    MenuItem item;
    item.title = QString::fromLatin1(title);
    item.selector = QString::fromLatin1(selector);
    item.keyEquivalent = QString::fromLatin1(key);
    return item;
}

MenuItem submenu(const char* title, QList<MenuItem> items)
{
    MenuItem item;
    item.title = QString::fromLatin1(title);
    item.submenu = std::make_shared<Menu>(Menu{item.title, std::move(items)});
    return item;
}

class MainMenuTest : public ::testing::Test {
protected:
    MainMenuTest()
    {
        MenuItem check;
        check.title = QStringLiteral("Check");
        check.keyEquivalent = QStringLiteral("K");
        check.action = [this](const MenuItem& sender) { acted.append(sender.title); };
        auto menu = std::make_shared<Menu>();
        menu->items = {submenu("Program", {check, command("Nobody's", "nobody:", "j")}),
                       submenu("Edit", {command("Undo", "undo:", "z"), command("Redo", "redo:", "Z"),
                                        command("Cut", "cut:", "x"), command("Copy", "copy:", "c"),
                                        command("Paste", "paste:", "v"), command("All", "selectAll:", "a")}),
                       submenu("Window", {command("Minimize", "performMiniaturize:", "m"),
                                          command("Close", "performClose:", "w")})};
        view.setWindowsMenu(menu->items.last().submenu);
        view.setMenu(menu);
    }

    ~MainMenuTest() override
    {
        EXPECT_TRUE(eventually(deadline, [this] { return other.keysDown().isEmpty(); }));
    }

    void chord(const char* modifier, const char* key)
    {
        hardware.press(modifier);
        hardware.tap(key);
        hardware.release(modifier);
    }

    QStringList sent;
    QStringList acted;
    MainMenuView view{
        MainMenuView::Commands{[](QStringView selector) { return menuCommands::isTaken(selector); },
                               [this](QStringView selector) {
                                   sent.append(selector.toString());
                                   return menuCommands::send(selector);
                               }}};
    OtherClient other;
    Hardware hardware;
};

TEST_F(MainMenuTest, AKeyEquivalentChoosesItsItemInAnyWindow)
{
    NotingWindow window;
    hardware.press("Shift_L");
    chord("Control_L", "k");
    hardware.release("Shift_L");
    EXPECT_TRUE(eventually(deadline, [this] { return acted == QStringList{QStringLiteral("Check")}; }));
    chord("Control_L", "w");
    EXPECT_TRUE(eventually(deadline, [&] { return !window.isVisible(); }));
    EXPECT_EQ(sent, QStringList{QStringLiteral("performClose:")});
}

TEST_F(MainMenuTest, WithoutShiftAnUpperCaseEquivalentIsNotMeant)
{
    NotingWindow window;
    chord("Control_L", "k");
    hardware.tap("x");
    EXPECT_TRUE(eventually(deadline, [&] { return window.edit.text() == QStringLiteral("x"); }))
        << qPrintable(window.edit.text() + u'|' + window.edit.noted.join(u','));
    EXPECT_TRUE(acted.isEmpty());
}

TEST_F(MainMenuTest, ALineEditKeepsItsOwnKeys)
{
    NotingWindow window;
    window.edit.setText(QStringLiteral("abc"));
    chord("Control_L", "a");
    chord("Control_L", "c");
    EXPECT_TRUE(
        eventually(deadline, [] { return QGuiApplication::clipboard()->text() == QStringLiteral("abc"); }));
    chord("Control_L", "x");
    EXPECT_TRUE(eventually(deadline, [&] { return window.edit.text().isEmpty(); }));
    chord("Control_L", "v");
    EXPECT_TRUE(eventually(deadline, [&] { return window.edit.text() == QStringLiteral("abc"); }));
    chord("Control_L", "z");
    EXPECT_TRUE(eventually(deadline, [&] { return window.edit.text().isEmpty(); }));
    EXPECT_TRUE(sent.isEmpty()) << "it has taken them itself";
}

TEST_F(MainMenuTest, ACommandGoesToTheTextThatHasTheFocus)
{
    NotingWindow window;
    auto* label = new QLabel(QStringLiteral("to be copied"));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    window.layout()->addWidget(label);
    label->show();
    label->setFocus();
    EXPECT_FALSE(menuCommands::isTaken(u"copy:"));
    EXPECT_FALSE(menuCommands::isTaken(u"paste:"));
    EXPECT_TRUE(menuCommands::send(u"selectAll:"));
    EXPECT_TRUE(menuCommands::send(u"copy:"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("to be copied"));

    window.edit.setFocus();
    EXPECT_FALSE(menuCommands::isTaken(u"undo:"));
    EXPECT_TRUE(menuCommands::send(u"paste:"));
    EXPECT_EQ(window.edit.text(), QStringLiteral("to be copied"));
    EXPECT_TRUE(menuCommands::send(u"undo:"));
    EXPECT_TRUE(window.edit.text().isEmpty());
    EXPECT_TRUE(menuCommands::send(u"redo:"));
    EXPECT_EQ(window.edit.text(), QStringLiteral("to be copied"));
    window.edit.setReadOnly(true);
    EXPECT_FALSE(menuCommands::send(u"paste:"));
    window.edit.setEchoMode(QLineEdit::Password);
    window.edit.selectAll();
    EXPECT_FALSE(menuCommands::isTaken(u"copy:")) << "a password isn't copied";
}

TEST_F(MainMenuTest, ASelectorOfNobodysIsRefusedAndItsKeyGoesOn)
{
    NotingWindow window;
    EXPECT_FALSE(menuCommands::send(u"nobody:"));
    EXPECT_FALSE(menuCommands::send(u"close:")) << "slots that aren't commands can't be called";
    QPushButton button(&window);
    button.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_J));
    button.show();
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] { ++clicks; });
    chord("Control_L", "j");
    EXPECT_TRUE(eventually(deadline, [&] { return clicks == 1; }));
}

TEST_F(MainMenuTest, ItemsThatNothingTakesAreDisabledAndWindowsAreListed)
{
    NotingWindow window;
    window.setWindowTitle(QStringLiteral("The window"));
    const Menu shown = view.rendered();
    ASSERT_EQ(shown.items.size(), 3);
    const auto enabled = [&](int menu, int item) { return shown.items[menu].submenu->items[item].enabled; };
    EXPECT_TRUE(enabled(0, 0));
    EXPECT_FALSE(enabled(0, 1)) << "nobody's";
    EXPECT_FALSE(enabled(1, 3)) << "copy, with nothing marked";
    EXPECT_TRUE(enabled(1, 4)) << "paste";
    EXPECT_TRUE(enabled(2, 1)) << "close";
    const auto& windows = shown.items[2].submenu->items;
    ASSERT_EQ(windows.size(), 4) << "two items, a separator, the window";
    EXPECT_EQ(windows[3].title, QStringLiteral("The window"));
    EXPECT_EQ(windows[3].state, MenuItem::State::on);
    EXPECT_EQ(view.menu()->items[2].submenu->items.size(), 2) << "the model stays as it was";
}

TEST_F(MainMenuTest, F10OpensItAndItWorksByKeys)
{
    NotingWindow window;
    window.edit.setText(QStringLiteral("abc"));
    hardware.tap("F10");
    ASSERT_TRUE(eventually(deadline, [] { return QApplication::activePopupWidget() != nullptr; }));
    const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    ASSERT_TRUE(eventually(deadline, [&] { return menu->windowHandle()->isExposed(); }));
    QStringList titles;
    for (const QAction* action : menu->actions())
        titles.append(action->text());
    EXPECT_EQ(titles,
              (QStringList{QStringLiteral("Program"), QStringLiteral("Edit"), QStringLiteral("Window")}));
    hardware.tap("Down");
    hardware.tap("Down");
    hardware.tap("Right");
    hardware.tap("Up");
    hardware.tap("Return");
    EXPECT_TRUE(eventually(deadline, [&] { return window.edit.selectedText() == QStringLiteral("abc"); }));
    EXPECT_EQ(sent, QStringList{QStringLiteral("selectAll:")});
}

TEST_F(MainMenuTest, AModalPanelHoldsActionsBackButNotCommands)
{
    NotingWindow window;
    QDialog panel(&window);
    QVBoxLayout layout(&panel);
    NotingEdit edit;
    layout.addWidget(&edit);
    panel.open();
    edit.setFocus();
    ASSERT_TRUE(eventually(deadline, [&] { return panel.isActiveWindow(); }));
    hardware.press("Shift_L");
    chord("Control_L", "k");
    hardware.release("Shift_L");
    chord("Control_L", "w");
    EXPECT_TRUE(eventually(deadline, [&] { return !panel.isVisible(); }));
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(acted.isEmpty());
}

TEST_F(MainMenuTest, AMenuTakenAwayAnswersToNoKey)
{
    NotingWindow window;
    view.setMenu(nullptr);
    EXPECT_EQ(view.menu(), nullptr);
    chord("Control_L", "w");
    hardware.tap("F10");
    hardware.tap("x");
    EXPECT_TRUE(eventually(deadline, [&] { return window.edit.text() == QStringLiteral("x"); }));
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(sent.isEmpty());
}

} // namespace
} // namespace orvane::tests

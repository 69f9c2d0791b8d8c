// Choices, texts and small buttons of rows.
#include "OrvaneKit/Controls/OrvaIconButtonView.h"
#include "OrvaneKit/Controls/OrvaRadioView.h"
#include "OrvaneKit/Controls/OrvaSelectableTextView.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QAccessible>
#include <QClipboard>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

// Radio group

class OrvaRadioGroupTest : public testing::Test {
protected:
    using Options = QList<OrvaPickerOption>;

    std::shared_ptr<Observable<QString>> value =
        std::make_shared<Observable<QString>>(QStringLiteral("warm"));
    std::shared_ptr<Observable<Options>> options =
        std::make_shared<Observable<Options>>(Options{{QStringLiteral("Warm"), QStringLiteral("warm")},
                                                      {QStringLiteral("Cold & blue"), QStringLiteral("cold")},
                                                      {QStringLiteral("Red"), QStringLiteral("red")}});
    int sets = 0;
    bool refuses = false;

    std::unique_ptr<QWidget> group()
    {
        const Binding<QString> binding([kept = value] { return kept->get(); },
                                       [this](const QString& next) {
                                           ++sets;
                                           if (!refuses)
                                               value->set(next);
                                       },
                                       {value});
        return rendered(
            OrvaRadioGroup{.label = QStringLiteral("Colour"),
                           .selection = binding,
                           .content = Live<Options>([kept = options] { return kept->get(); }, {options})});
    }

    static QList<OrvaRadioView*> buttons(QWidget& root)
    {
        QList<OrvaRadioView*> shown;
        for (OrvaRadioView* button : all<OrvaRadioView>(root)) {
            if (isPartOf(root, *button))
                shown.append(button);
        }
        return shown;
    }
    static QStringList checked(QWidget& root)
    {
        QStringList names;
        for (const OrvaRadioView* button : buttons(root)) {
            if (button->isChecked())
                names.append(button->accessibleName());
        }
        return names;
    }
};

TEST_F(OrvaRadioGroupTest, ShowsTheSelectedTagAndFollowsItWithoutSettingIt)
{
    const auto view = group();
    EXPECT_EQ(checked(*view), QStringList{QStringLiteral("Warm")});
    value->set(QStringLiteral("red"));
    EXPECT_EQ(checked(*view), QStringList{QStringLiteral("Red")});
    EXPECT_EQ(sets, 0);
}

TEST_F(OrvaRadioGroupTest, ASelectionWithoutOptionShowsNoneChosenAndStays)
{
    const auto view = group();
    value->set(QStringLiteral("violet"));
    EXPECT_EQ(checked(*view), QStringList());
    EXPECT_EQ(value->get(), QStringLiteral("violet"));
    value->set(QStringLiteral("cold"));
    EXPECT_EQ(checked(*view), QStringList{QStringLiteral("Cold & blue")});
}

TEST_F(OrvaRadioGroupTest, AClickAnywhereInTheLineChooses)
{
    const auto view = group();
    view->resize(400, view->sizeHint().height());
    view->show();
    OrvaRadioView* red = buttons(*view).at(2);
    clickAt(*red, QPointF(red->width() - 2, red->height() / 2.0));
    EXPECT_EQ(value->get(), QStringLiteral("red"));
    EXPECT_EQ(sets, 1);
    EXPECT_EQ(checked(*view), QStringList{QStringLiteral("Red")});
}

TEST_F(OrvaRadioGroupTest, AClickOnTheChosenOneDoesNotUncheckIt)
{
    const auto view = group();
    click(*buttons(*view).first());
    EXPECT_EQ(checked(*view), QStringList{QStringLiteral("Warm")});
    EXPECT_EQ(value->get(), QStringLiteral("warm"));
}

TEST_F(OrvaRadioGroupTest, ArrowKeysChooseAndGoRound)
{
    const auto view = group();
    showActive(*view);
    buttons(*view).first()->setFocus(Qt::TabFocusReason);
    const auto pressed = [&](Qt::Key key) {
        press(*QApplication::focusWidget(), key);
        return value->get();
    };
    EXPECT_EQ(pressed(Qt::Key_Down), QStringLiteral("cold"));
    EXPECT_EQ(pressed(Qt::Key_Right), QStringLiteral("red"));
    EXPECT_EQ(pressed(Qt::Key_Down), QStringLiteral("warm"));
    EXPECT_EQ(pressed(Qt::Key_Up), QStringLiteral("red"));
    EXPECT_EQ(pressed(Qt::Key_Left), QStringLiteral("cold"));
    EXPECT_EQ(QApplication::focusWidget(), buttons(*view).at(1));
    EXPECT_EQ(sets, 5);
}

TEST_F(OrvaRadioGroupTest, SidewaysKeysFollowTheWritingDirection)
{
    const auto view = group();
    view->setLayoutDirection(Qt::RightToLeft);
    press(*buttons(*view).at(0), Qt::Key_Left);
    EXPECT_EQ(value->get(), QStringLiteral("cold"));
    press(*buttons(*view).at(1), Qt::Key_Right);
    EXPECT_EQ(value->get(), QStringLiteral("warm"));
}

TEST_F(OrvaRadioGroupTest, TabEntersOnceAtTheChosenOne)
{
    value->set(QStringLiteral("cold"));
    QWidget window;
    QLineEdit before(&window);
    const auto view = group();
    view->setParent(&window);
    QLineEdit after(&window);
    showActive(window);
    before.setFocus();
    press(before, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), buttons(*view).at(1));
    press(*QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &after);
    value->set(QStringLiteral("violet"));
    press(after, Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), buttons(*view).at(0)) << "with none chosen, at the first";
}

TEST_F(OrvaRadioGroupTest, SpringsBackFromARefusedChoice)
{
    refuses = true;
    const auto view = group();
    showActive(*view);
    buttons(*view).first()->setFocus(Qt::TabFocusReason);
    click(*buttons(*view).at(2));
    EXPECT_EQ(checked(*view), QStringList{QStringLiteral("Warm")});
    press(*buttons(*view).first(), Qt::Key_Down);
    EXPECT_EQ(checked(*view), QStringList{QStringLiteral("Warm")});
    EXPECT_EQ(QApplication::focusWidget(), buttons(*view).first()) << "the focus stays with the choice";
    EXPECT_EQ(sets, 2);
}

TEST_F(OrvaRadioGroupTest, PressedByAssistiveTechnologyChooses)
{
    const auto view = group();
    auto* second = QAccessible::queryAccessibleInterface(view.get())->child(1)->actionInterface();
    ASSERT_TRUE(second->actionNames().contains(QAccessibleActionInterface::pressAction()));
    second->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(value->get(), QStringLiteral("cold"));
    EXPECT_EQ(sets, 1);
    second->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(checked(*view), QStringList{QStringLiteral("Cold & blue")}) << "one is always chosen";
    view->setEnabled(false);
    QAccessible::queryAccessibleInterface(view.get())
        ->child(0)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(value->get(), QStringLiteral("cold"));
}

TEST_F(OrvaRadioGroupTest, TellsItsNameAndItsOptionsRoles)
{
    const auto view = group();
    const QAccessibleInterface* whole = QAccessible::queryAccessibleInterface(view.get());
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->role(), QAccessible::Grouping);
    EXPECT_EQ(whole->text(QAccessible::Name), QStringLiteral("Colour"));
    ASSERT_EQ(whole->childCount(), 3);
    const QAccessibleInterface* second = whole->child(1);
    EXPECT_EQ(second->role(), QAccessible::RadioButton);
    EXPECT_EQ(second->text(QAccessible::Name), QStringLiteral("Cold & blue"));
    EXPECT_FALSE(second->state().checked);
    value->set(QStringLiteral("cold"));
    EXPECT_TRUE(second->state().checked);
}

TEST_F(OrvaRadioGroupTest, FollowsChangingOptions)
{
    const auto view = group();
    options->set({{QStringLiteral("Crimson"), QStringLiteral("red")},
                  {QStringLiteral("Warm"), QStringLiteral("warm")}});
    ASSERT_EQ(buttons(*view).size(), 2);
    EXPECT_EQ(checked(*view), QStringList{QStringLiteral("Warm")});
    click(*buttons(*view).first());
    EXPECT_EQ(value->get(), QStringLiteral("red"));
    options->set({});
    EXPECT_TRUE(isLeftOut(*view));
}

TEST_F(OrvaRadioGroupTest, ALongOptionWrapsAndNothingIsCutOff)
{
    const QString longTitle = QStringLiteral("Common shortcuts, which are so many that they need two lines");
    options->set({{longTitle, QStringLiteral("warm")}});
    const auto view = group();
    const OrvaRadioView* button = buttons(*view).first();
    const int line = button->heightForWidth(1000);
    EXPECT_GT(button->heightForWidth(200), line);
    view->resize(232, view->heightForWidth(232));
    view->show();
    EXPECT_EQ(button->height(), button->heightForWidth(button->width()));
    EXPECT_GT(button->height(), line);
}

TEST_F(OrvaRadioGroupTest, MayBeEndedByTheValueThatItSets)
{
    std::unique_ptr<QWidget> view;
    const Binding<QString> binding([kept = value] { return kept->get(); },
                                   [&view](const QString&) { view.reset(); }, {value});
    view = rendered(
        OrvaRadioGroup{.label = QStringLiteral("Colour"), .selection = binding, .content = options->get()});
    buttons(*view).at(1)->click();
    EXPECT_FALSE(view);
    EXPECT_EQ(value->observerCount(), 0u);
}

TEST_F(OrvaRadioGroupTest, DrawsTheChosenOneDifferentlyAndARingForTheKeyboard)
{
    const auto view = group();
    view->resize(300, 120);
    showActive(*view);
    OrvaRadioView* warm = buttons(*view).first();
    buttons(*view).at(1)->setFocus(Qt::MouseFocusReason);
    const QImage chosen = warm->grab().toImage();
    value->set(QStringLiteral("red"));
    EXPECT_NE(warm->grab().toImage(), chosen);
    value->set(QStringLiteral("warm"));
    EXPECT_EQ(warm->grab().toImage(), chosen);
    warm->setFocus(Qt::TabFocusReason);
    EXPECT_NE(warm->grab().toImage(), chosen);
}

// Caption row

TEST(OrvaCaptionRow, ShowsItsTextAndIsLeftOutWhileThatIsEmpty)
{
    const auto text = std::make_shared<Observable<QString>>(QStringLiteral("Use with care."));
    const auto section = rendered(
        OrvaSection{.content = {OrvaValueRow{QStringLiteral("Mode"), QStringLiteral("full")},
                                OrvaCaptionRow{.text = Live<QString>([text] { return text->get(); }, {text}),
                                               .systemImage = QStringLiteral("exclamationmark.triangle.fill"),
                                               .color = OrvaColor::orange}}});
    EXPECT_EQ(shownTexts(*section).last(), QStringLiteral("Use with care."));
    EXPECT_EQ(shownDividers(*section), 1);
    text->set(QString());
    EXPECT_EQ(shownDividers(*section), 0);
    text->set(QStringLiteral("Again."));
    EXPECT_EQ(shownTexts(*section).last(), QStringLiteral("Again."));
    EXPECT_EQ(shownDividers(*section), 1);
}

TEST(OrvaCaptionRow, HasTheInsetsOfARowAndItsColour)
{
    const auto row = rendered(OrvaCaptionRow{.text = QStringLiteral("m"), .color = OrvaColor::orange});
    EXPECT_EQ(row->layout()->contentsMargins(), QMargins(16, 12, 16, 12));
    row->resize(row->sizeHint());
    const QImage picture = row->grab().toImage();
    bool orange = false;
    for (int x = 0; x < picture.width(); ++x)
        for (int y = 0; y < picture.height(); ++y)
            orange = orange || picture.pixelColor(x, y) == orvaColor(OrvaColor::orange);
    EXPECT_TRUE(orange);
}

// Selectable text

class OrvaSelectableTextTest : public testing::Test {
protected:
    std::shared_ptr<Observable<QString>> text =
        std::make_shared<Observable<QString>>(QStringLiteral("net.example.program.of.some.length"));
    std::unique_ptr<QWidget> widget =
        rendered(OrvaSelectableText{Live<QString>([kept = text] { return kept->get(); }, {text})});
    OrvaSelectableTextView& view = dynamic_cast<OrvaSelectableTextView&>(*widget);

    void SetUp() override { QApplication::clipboard()->clear(); }
};

TEST_F(OrvaSelectableTextTest, CopiesWhatTheMouseHasMarked)
{
    view.resize(view.sizeHint());
    showActive(view);
    mouse(view, QEvent::MouseButtonPress, QPointF(3, 10));
    mouse(view, QEvent::MouseMove,
          QPointF(3 + view.fontMetrics().horizontalAdvance(text->get().left(11)), 10));
    mouse(view, QEvent::MouseButtonRelease, QPointF(3, 10));
    EXPECT_EQ(view.selectedText(), QStringLiteral("net.example"));
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
    QApplication::sendEvent(&view, &copy);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("net.example"));
}

TEST_F(OrvaSelectableTextTest, TheKeyboardMarksAllOfItAndCopiesTheWholeThoughItIsElided)
{
    QWidget window;
    QLineEdit before(&window);
    view.setParent(&window);
    view.setGeometry(0, 40, 100, 25);
    window.resize(200, 100);
    showActive(window);
    before.setFocus();
    EXPECT_TRUE(view.isElided());
    press(before, Qt::Key_Tab);
    EXPECT_TRUE(view.hasFocus());
    EXPECT_EQ(view.selectedText(), text->get());
    EXPECT_EQ(view.cursorPosition(), 0) << "its beginning is in sight";
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
    QApplication::sendEvent(&view, &copy);
    EXPECT_EQ(QApplication::clipboard()->text(), text->get());
    press(view, Qt::Key_Tab);
    EXPECT_FALSE(view.hasSelectedText());
    view.setParent(nullptr);
}

TEST_F(OrvaSelectableTextTest, CanNotBeChanged)
{
    view.selectAll();
    press(view, Qt::Key_X, QStringLiteral("x"));
    press(view, Qt::Key_Delete);
    EXPECT_EQ(view.text(), text->get());
}

TEST_F(OrvaSelectableTextTest, GivesWayInTheMiddleAndTellsTheRestInATip)
{
    view.resize(view.sizeHint());
    view.show();
    EXPECT_FALSE(view.isElided());
    EXPECT_EQ(view.toolTip(), QString());
    view.resize(view.sizeHint().width() - 20, view.height());
    EXPECT_TRUE(view.isElided());
    EXPECT_EQ(view.toolTip(), text->get());

    const auto twin = rendered(OrvaSelectableText{QStringLiteral("net.example.___gram.of.some.length")});
    twin->resize(view.size().boundedTo(QSize(150, 25)));
    view.resize(twin->size());
    EXPECT_EQ(twin->grab().toImage(), view.grab().toImage()) << "they differ in the middle only";
}

TEST_F(OrvaSelectableTextTest, FollowsItsTextAndIsLeftOutWhileEmpty)
{
    const int width = view.sizeHint().width();
    text->set(QStringLiteral("short"));
    EXPECT_EQ(view.text(), QStringLiteral("short"));
    EXPECT_EQ(view.accessibleName(), QStringLiteral("short"));
    EXPECT_LT(view.sizeHint().width(), width);
    text->set(QString());
    EXPECT_TRUE(isLeftOut(view));
}

TEST_F(OrvaSelectableTextTest, ItsMenuCopiesTheWholeWhenNothingIsMarked)
{
    view.resize(view.sizeHint());
    showActive(view);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), view.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&view, &event);
    auto* menu = view.findChild<QMenu*>();
    ASSERT_TRUE(menu);
    ASSERT_EQ(menu->actions().size(), 2);
    menu->actions().first()->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), text->get());
    menu->close();
}

TEST_F(OrvaSelectableTextTest, ShrinksInARowSoThatTheRestKeepsItsPlace)
{
    const auto row =
        rendered(OrvaRow{.content = {OrvaSelectableText{text->get()}, OrvaSpacer{},
                                     OrvaIconButton{.systemImage = QStringLiteral("minus.circle"),
                                                    .help = QStringLiteral("Remove"),
                                                    .accessibleName = QStringLiteral("Remove it"),
                                                    .action = [] {}}}});
    row->show();
    const auto* button = all<OrvaIconButtonView>(*row).first();
    const auto* line = all<OrvaSelectableTextView>(*row).first();
    for (const int width : {200, 600}) {
        row->resize(width, row->sizeHint().height());
        EXPECT_EQ(button->geometry().right() + 1, width - (16 - OrvaIconButtonView::margin));
        EXPECT_EQ(line->x() + orvaRingMargin, 16);
        EXPECT_LE(line->geometry().right(), button->x());
    }
    EXPECT_FALSE(line->isElided());
}

// Icon button

class OrvaIconButtonTest : public testing::Test {
protected:
    int runs = 0;
    std::unique_ptr<QWidget> widget =
        rendered(OrvaIconButton{.systemImage = QStringLiteral("minus.circle"),
                                .help = QStringLiteral("Remove"),
                                .accessibleName = QStringLiteral("Remove kitty"),
                                .action = [this] { ++runs; }});
    OrvaIconButtonView& button = dynamic_cast<OrvaIconButtonView&>(*widget);

    void SetUp() override { button.resize(button.sizeHint()); }
};

TEST_F(OrvaIconButtonTest, RunsItsActionByMouseAndKeyboard)
{
    click(button);
    press(button, Qt::Key_Space);
    EXPECT_EQ(runs, 2);
    button.setEnabled(false);
    click(button);
    EXPECT_EQ(runs, 2);
}

TEST_F(OrvaIconButtonTest, IsHitInAnAreaOf24Points)
{
    const QPointF middle = QRectF(button.rect()).center();
    for (const QPointF& corner : {QPointF(-11.5, -11.5), QPointF(11, 11)})
        clickAt(button, middle + corner);
    EXPECT_EQ(runs, 2);
    for (const QPointF& beyond : {QPointF(-13, 0), QPointF(0, 13)})
        clickAt(button, middle + beyond);
    EXPECT_EQ(runs, 2);
}

TEST_F(OrvaIconButtonTest, HasATipAndANameOfItsOwn)
{
    EXPECT_EQ(button.toolTip(), QStringLiteral("Remove"));
    const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&button);
    ASSERT_TRUE(interface);
    EXPECT_EQ(interface->role(), QAccessible::Button);
    EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Remove kitty"));
    const auto nameless =
        rendered(OrvaIconButton{QStringLiteral("plus"), QStringLiteral("Add"), QString(), [] {}});
    EXPECT_EQ(nameless->accessibleName(), QStringLiteral("Add"));
}

TEST_F(OrvaIconButtonTest, ShowsThatThePointerIsOnItAndWhereTheKeyboardIs)
{
    showActive(button);
    button.clearFocus();
    button.setAttribute(Qt::WA_UnderMouse, false);
    const QImage plain = button.grab().toImage();
    button.setAttribute(Qt::WA_UnderMouse);
    const QImage hovered = button.grab().toImage();
    EXPECT_NE(hovered, plain);
    button.setAttribute(Qt::WA_UnderMouse, false);
    button.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(button.grab().toImage(), plain);
    button.clearFocus();
    button.setFocus(Qt::TabFocusReason);
    EXPECT_NE(button.grab().toImage(), plain);
}

TEST_F(OrvaIconButtonTest, MayBeEndedByItsAction)
{
    std::unique_ptr<QWidget> own;
    own = rendered(OrvaIconButton{QStringLiteral("plus"), QString(), QString(), [&own] { own.reset(); }});
    dynamic_cast<OrvaIconButtonView&>(*own).click();
    EXPECT_FALSE(own);
}

} // namespace

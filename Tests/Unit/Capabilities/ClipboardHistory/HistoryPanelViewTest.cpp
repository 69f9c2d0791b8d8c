// The panel as a person uses it: typing, pressing, the menu, the keyboard.
#include "Capabilities/ClipboardHistory/Panel/HistoryPanelView.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryListView.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneKit/Controls/OrvaMenuView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "Unit/Capabilities/ClipboardHistory/ClipItems.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QAccessible>
#include <QAction>
#include <QContextMenuEvent>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

class HistoryPanelViewTest : public testing::Test {
protected:
    FakePlatform fake;
    HistoryViewModel model;
    QStringList selected;
    QStringList deleted;
    QStringList toggled;
    int closes = 0;
    std::unique_ptr<HistoryPanelView> view;

    HistoryPanelViewTest()
    {
        model.onSelect = [this](const ClipItem& item) { selected.append(item.preview()); };
        model.onDelete = [this](const ClipItem& item) { deleted.append(item.preview()); };
        model.onTogglePin = [this](const ClipItem& item) { toggled.append(item.preview()); };
        model.onClose = [this] { ++closes; };
        view = std::make_unique<HistoryPanelView>(model);
        view->resize(360, 420);
    }

    void showWith(const QList<ClipItem>& items)
    {
        model.items.set(items);
        view->prepareForShowing();
        showActive(*view);
    }
    void showFruit()
    {
        showWith({textClip(QStringLiteral("apple")), textClip(QStringLiteral("pear")),
                  pinnedClip(QStringLiteral("Apricot"))});
    }
    HistoryListView& list() { return view->list(); }
    QStringList rows()
    {
        QStringList found;
        for (const ClipItem& item : list().items())
            found.append(item.preview());
        return found;
    }
    void type(const QString& text)
    {
        for (const QChar letter : text)
            press(view->field(), Qt::Key_unknown, letter);
    }
    void clickRow(int row) { clickAt(*list().viewport(), QRectF(list().rowRect(row)).center()); }
    OrvaMenuView* menu()
    {
        for (OrvaMenuView* each : all<OrvaMenuView>(*view)) {
            if (each->isVisible())
                return each;
        }
        return nullptr;
    }
    void pressPaste()
    {
        QKeyEvent down(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier, QChar(0x16));
        QApplication::sendEvent(&view->field(), &down);
    }
    void openFieldMenu()
    {
        const QPoint at = view->field().rect().center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, view->field().mapToGlobal(at));
        QApplication::sendEvent(&view->field(), &event);
    }
    QStringList titlesOfFieldMenu()
    {
        openFieldMenu();
        QStringList titles;
        for (const QAction* action : menu()->actions())
            titles.append(action->text());
        menu()->close();
        return titles;
    }
    void openMenu(int row)
    {
        const QPoint at = list().rowRect(row).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, list().viewport()->mapToGlobal(at));
        QApplication::sendEvent(list().viewport(), &event);
    }
};

TEST_F(HistoryPanelViewTest, TheFieldHasTheFocusAndItsPrompt)
{
    showFruit();
    EXPECT_TRUE(view->field().hasFocus());
    EXPECT_EQ(view->field().placeholderText(), QStringLiteral("Search clipboard…"));
}

TEST_F(HistoryPanelViewTest, TypingNarrowsTheList)
{
    showFruit();
    type(QStringLiteral("ap"));
    EXPECT_EQ(model.query.get(), QStringLiteral("ap"));
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("apple"), QStringLiteral("Apricot")}));
    type(QStringLiteral("r"));
    EXPECT_EQ(rows(), QStringList{QStringLiteral("Apricot")});
    press(view->field(), Qt::Key_Backspace);
    EXPECT_EQ(rows().size(), 2);
}

TEST_F(HistoryPanelViewTest, TheFieldPastesWithoutWaitingForTheProgramThatCopied)
{
    showFruit();
    fake.generalPasteboard.copyString(QStringLiteral("pea"));
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::hangs);
    pressPaste();
    fake.runLoop.drain();
    EXPECT_EQ(model.query.get(), QString());
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    fake.runLoop.drain();
    EXPECT_EQ(rows(), QStringList{QStringLiteral("pear")});
}

TEST_F(HistoryPanelViewTest, APasteThatComesAfterThePanelIsGoneIsDropped)
{
    showFruit();
    fake.generalPasteboard.copyString(QStringLiteral("pea"));
    pressPaste();
    view->hide();
    fake.runLoop.drain();
    EXPECT_EQ(model.query.get(), QString());
}

TEST_F(HistoryPanelViewTest, TheFieldsMenuOffersWhatCanBeDone)
{
    showFruit();
    EXPECT_EQ(titlesOfFieldMenu(), QStringList{QStringLiteral("Paste")});
    type(QStringLiteral("pea"));
    EXPECT_EQ(titlesOfFieldMenu(), (QStringList{QStringLiteral("Paste"), QStringLiteral("Select All")}));
    view->field().selectAll();
    EXPECT_EQ(titlesOfFieldMenu(), (QStringList{QStringLiteral("Cut"), QStringLiteral("Copy"),
                                                QStringLiteral("Paste"), QStringLiteral("Select All")}));
    fake.generalPasteboard.copyString(QStringLiteral("app"));
    openFieldMenu();
    menu()->actions().at(2)->trigger();
    fake.runLoop.drain();
    EXPECT_EQ(rows(), QStringList{QStringLiteral("apple")});
    view->hide();
    EXPECT_EQ(menu(), nullptr);
}

TEST_F(HistoryPanelViewTest, ReturnTakesTheFirstThatIsListed)
{
    showFruit();
    press(view->field(), Qt::Key_Return);
    EXPECT_EQ(selected, QStringList{QStringLiteral("apple")});
    type(QStringLiteral("pe"));
    press(view->field(), Qt::Key_Enter);
    EXPECT_EQ(selected.last(), QStringLiteral("pear"));
}

TEST_F(HistoryPanelViewTest, ReturnWithNothingListedDoesNothing)
{
    showFruit();
    type(QStringLiteral("zzz"));
    EXPECT_TRUE(view->showsEmptyText());
    press(view->field(), Qt::Key_Return);
    EXPECT_TRUE(selected.isEmpty());
    EXPECT_EQ(closes, 0);
}

TEST_F(HistoryPanelViewTest, ArrowKeysInTheFieldChooseNothing)
{
    showFruit();
    press(view->field(), Qt::Key_Down);
    EXPECT_TRUE(view->field().hasFocus());
    press(view->field(), Qt::Key_Return);
    EXPECT_EQ(selected, QStringList{QStringLiteral("apple")});
}

TEST_F(HistoryPanelViewTest, EscapeClosesFromTheFieldAndFromTheList)
{
    showFruit();
    press(view->field(), Qt::Key_Escape);
    EXPECT_EQ(closes, 1);
    list().focusRow(1);
    press(list(), Qt::Key_Escape);
    EXPECT_EQ(closes, 2);
}

TEST_F(HistoryPanelViewTest, TheEmptyTextStandsForNoHistoryAndForNothingFound)
{
    showWith({});
    EXPECT_TRUE(view->showsEmptyText());
    EXPECT_EQ(all<OrvaTextView>(*view).first()->text(), QStringLiteral("No clipboard history yet"));
    EXPECT_TRUE(all<OrvaTextView>(*view).first()->isVisible());
    model.items.set({textClip(QStringLiteral("apple"))});
    EXPECT_FALSE(view->showsEmptyText());
    EXPECT_FALSE(all<OrvaTextView>(*view).first()->isVisible());
    type(QStringLiteral("zzz"));
    EXPECT_TRUE(view->showsEmptyText());
}

TEST_F(HistoryPanelViewTest, AClickChoosesItsRow)
{
    showFruit();
    clickRow(1);
    EXPECT_EQ(selected, QStringList{QStringLiteral("pear")});
    EXPECT_TRUE(view->field().hasFocus());
}

TEST_F(HistoryPanelViewTest, APressThatIsLetGoElsewhereChoosesNothing)
{
    showFruit();
    mouse(*list().viewport(), QEvent::MouseButtonPress, QRectF(list().rowRect(0)).center());
    mouse(*list().viewport(), QEvent::MouseButtonRelease, QRectF(list().rowRect(1)).center());
    EXPECT_TRUE(selected.isEmpty());
}

TEST_F(HistoryPanelViewTest, AClickBelowTheLastRowChoosesNothing)
{
    showFruit();
    clickAt(*list().viewport(), QPointF(100, list().rowRect(2).bottom() + 10));
    EXPECT_TRUE(selected.isEmpty());
}

TEST_F(HistoryPanelViewTest, TheMenuPinsOrUnpinsAndDeletes)
{
    showFruit();
    openMenu(1);
    ASSERT_TRUE(menu());
    QList<QAction*> entries = menu()->actions();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries.at(0)->text(), QStringLiteral("Pin"));
    EXPECT_EQ(entries.at(1)->text(), QStringLiteral("Delete"));
    entries.at(0)->trigger();
    EXPECT_EQ(toggled, QStringList{QStringLiteral("pear")});

    openMenu(2);
    entries = menu()->actions();
    EXPECT_EQ(entries.at(0)->text(), QStringLiteral("Unpin"));
    entries.at(1)->trigger();
    EXPECT_EQ(deleted, QStringList{QStringLiteral("Apricot")});
    EXPECT_TRUE(selected.isEmpty());
}

TEST_F(HistoryPanelViewTest, TheMenuMeansItsEntryEvenWhenTheListHasMovedOn)
{
    showFruit();
    openMenu(0);
    QAction* remove = menu()->actions().at(1);
    model.items.set(QList<ClipItem>{textClip(QStringLiteral("new"))} + model.items.get());
    remove->trigger();
    EXPECT_EQ(deleted, QStringList{QStringLiteral("apple")});
}

TEST_F(HistoryPanelViewTest, TheMenuGoesWithThePanel)
{
    showFruit();
    openMenu(0);
    ASSERT_TRUE(menu());
    view->hide();
    EXPECT_EQ(menu(), nullptr);
}

TEST_F(HistoryPanelViewTest, DeletingTheLastEntryShowsTheEmptyText)
{
    showWith({textClip(QStringLiteral("apple"))});
    model.items.set({});
    EXPECT_TRUE(view->showsEmptyText());
}

TEST_F(HistoryPanelViewTest, TabGoesFromTheFieldThroughTheRowsAndBack)
{
    showFruit();
    press(view->field(), Qt::Key_Tab);
    EXPECT_EQ(list().focusedRow(), 0);
    press(list(), Qt::Key_Tab);
    EXPECT_EQ(list().focusedRow(), 1);
    press(list(), Qt::Key_Tab);
    press(list(), Qt::Key_Tab);
    EXPECT_TRUE(view->field().hasFocus());
    EXPECT_EQ(list().focusedRow(), -1);
    press(view->field(), Qt::Key_Backtab);
    EXPECT_EQ(list().focusedRow(), 2);
    press(list(), Qt::Key_Backtab);
    EXPECT_EQ(list().focusedRow(), 1);
}

TEST_F(HistoryPanelViewTest, ARowWithTheFocusIsPressedWithReturnOrSpace)
{
    showFruit();
    list().focusRow(1);
    press(list(), Qt::Key_Return);
    press(list(), Qt::Key_Space);
    EXPECT_EQ(selected, (QStringList{QStringLiteral("pear"), QStringLiteral("pear")}));
}

TEST_F(HistoryPanelViewTest, TheMenuKeyOpensTheMenuOfTheRowWithTheFocus)
{
    showFruit();
    list().focusRow(2);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(&list(), &event);
    ASSERT_TRUE(menu());
    EXPECT_EQ(menu()->actions().first()->text(), QStringLiteral("Unpin"));
}

TEST_F(HistoryPanelViewTest, TypingOnARowGoesToTheField)
{
    showFruit();
    list().focusRow(2);
    press(list(), Qt::Key_P, QStringLiteral("p"));
    EXPECT_TRUE(view->field().hasFocus());
    EXPECT_EQ(view->field().text(), QStringLiteral("p"));
}

TEST_F(HistoryPanelViewTest, TheFocusStaysWithItsEntryWhenOthersComeAndGo)
{
    showFruit();
    list().focusRow(1);
    model.items.set(QList<ClipItem>{textClip(QStringLiteral("new"))} + model.items.get());
    EXPECT_EQ(list().focusedRow(), 2);
    model.items.set({model.items.get().first()});
    EXPECT_EQ(list().focusedRow(), 0);
    model.items.set({});
    EXPECT_TRUE(view->field().hasFocus());
}

TEST_F(HistoryPanelViewTest, OutOfSightTheListIsLeftAsItIs)
{
    showFruit();
    view->hide();
    model.items.set({textClip(QStringLiteral("new"))});
    EXPECT_EQ(rows().size(), 3);
    view->prepareForShowing();
    EXPECT_EQ(rows(), QStringList{QStringLiteral("new")});
}

TEST_F(HistoryPanelViewTest, EachShowingStartsOnTop)
{
    QList<ClipItem> many;
    for (int each = 0; each < 100; ++each)
        many.append(textClip(QString::number(each)));
    showWith(many);
    list().verticalScrollBar()->setValue(500);
    view->hide();
    view->prepareForShowing();
    EXPECT_EQ(list().verticalScrollBar()->value(), 0);
    EXPECT_TRUE(view->field().hasFocus() || view->focusWidget() == &view->field());
}

TEST_F(HistoryPanelViewTest, TheLastOfThousandsCanBeReachedAndPressed)
{
    QList<ClipItem> many;
    for (int each = 0; each < 10'000; ++each)
        many.append(textClip(QString(each % 200, u'x') + QString::number(each)));
    showWith(many);
    list().verticalScrollBar()->setValue(list().verticalScrollBar()->maximum());
    const QRect last = list().rowRect(9999);
    EXPECT_EQ(last.bottom() + 1, list().viewport()->height());
    clickRow(9999);
    EXPECT_TRUE(selected.last().endsWith(QStringLiteral("9999")));
    list().focusRow(5000);
    EXPECT_TRUE(list().viewport()->rect().contains(list().rowRect(5000)));
}

TEST_F(HistoryPanelViewTest, RowsStandWithoutGapsAndFillTheWidth)
{
    showFruit();
    EXPECT_EQ(list().rowRect(0).topLeft(), QPoint(0, 0));
    EXPECT_EQ(list().rowRect(0).width(), list().viewport()->width());
    EXPECT_EQ(list().rowRect(1).top(), list().rowRect(0).bottom() + 1);
    EXPECT_EQ(list().rowAt(QPoint(5, list().rowRect(1).top())), 1);
    EXPECT_EQ(list().rowAt(QPoint(5, list().rowRect(2).bottom() + 1)), -1);
}

TEST_F(HistoryPanelViewTest, OnlyPicturesInViewAreRead)
{
    QStringList loads;
    model.imageProvider = [&loads](const QString& name) -> std::optional<QImage> {
        loads.append(name);
        return QImage(10, 10, QImage::Format_RGB32);
    };
    QList<ClipItem> many;
    for (int each = 0; each < 1000; ++each)
        many.append(imageClip(QString::number(each)));
    showWith(many);
    for (int turn = 0; turn < 100; ++turn) {
        fake.runLoop.drainDetached();
        fake.runLoop.drain();
    }
    EXPECT_TRUE(loads.contains(QStringLiteral("0")));
    EXPECT_LT(loads.size(), 12);
}

TEST_F(HistoryPanelViewTest, RowsHaveNamesAndCanBePressedByAssistiveTechnology)
{
    ClipItem item = pinnedClip(QStringLiteral("two\nlines"));
    item.sourceApp = QStringLiteral("org.example.App");
    showWith({textClip(QStringLiteral("apple")), item});
    QAccessibleInterface* rowsOf = QAccessible::queryAccessibleInterface(&list());
    ASSERT_TRUE(rowsOf);
    EXPECT_EQ(rowsOf->role(), QAccessible::List);
    EXPECT_EQ(rowsOf->text(QAccessible::Name), QStringLiteral("Clipboard history"));
    ASSERT_EQ(rowsOf->childCount(), 2);
    QAccessibleInterface* row = rowsOf->child(1);
    ASSERT_TRUE(row);
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("two lines"));
    EXPECT_EQ(row->text(QAccessible::Description), QStringLiteral("Pinned org.example.App"));
    EXPECT_EQ(row->parent(), rowsOf);
    EXPECT_EQ(rowsOf->indexOfChild(row), 1);
    EXPECT_EQ(rowsOf->child(1), row);
    EXPECT_EQ(row->rect().topLeft(), list().viewport()->mapToGlobal(list().rowRect(1).topLeft()));
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(selected, QStringList{QStringLiteral("two\nlines")});
    EXPECT_EQ(rowsOf->child(2), nullptr);
}

TEST_F(HistoryPanelViewTest, ASelectThatEmptiesTheListIsSurvived)
{
    showFruit();
    model.onSelect = [this](const ClipItem& item) {
        model.items.set({});
        selected.append(item.preview());
    };
    clickRow(0);
    EXPECT_EQ(selected, QStringList{QStringLiteral("apple")});
}

} // namespace

// Lists of views that follow a value: which rows are kept, where the focus goes, how they are divided.
#include "OrvaneKit/Controls/OrvaIconButtonView.h"
#include "OrvaneKit/Controls/OrvaSelectableTextView.h"
#include "OrvaneKit/Lists/OrvaForEachView.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QPointer>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace orvane;
using namespace orvane::tests;

TEST(OrvaForEachKeys, OfEqualKeysTheNthKeepsTheNth)
{
    const QStringList before = QStringLiteral("a,b,a,c").split(u',');
    EXPECT_EQ(keptIndices(before, before), (QList<qsizetype>{0, 1, 2, 3}));
    EXPECT_EQ(keptIndices(before, QStringLiteral("a,c,a").split(u',')), (QList<qsizetype>{0, 3, 2}));
    EXPECT_EQ(keptIndices(before, QStringLiteral("a,a,a,d").split(u',')), (QList<qsizetype>{0, 2, -1, -1}));
    EXPECT_EQ(keptIndices(before, {}), QList<qsizetype>());
    EXPECT_EQ(keptIndices({}, QStringList{QString()}), QList<qsizetype>{-1});
}

class OrvaForEachTest : public testing::Test {
protected:
    std::shared_ptr<Observable<QStringList>> keys =
        std::make_shared<Observable<QStringList>>(QStringLiteral("a,b,c,d").split(u','));

    /// Returns a list in which each item has a text and a button that removes the first item with its key.
    [[nodiscard]] OrvaForEach list() const
    {
        return {Live<QList<OrvaForEach::Item>>(
            [kept = keys] {
                QList<OrvaForEach::Item> items;
                for (const QString& key : kept->get())
                    items.append({key, row(kept, key)});
                return items;
            },
            {keys})};
    }

    static AnyView row(const std::shared_ptr<Observable<QStringList>>& keys, const QString& key)
    {
        return OrvaRow{.content = {OrvaSelectableText{key}, OrvaSpacer{},
                                   OrvaIconButton{.systemImage = QStringLiteral("minus.circle"),
                                                  .help = QStringLiteral("Remove"),
                                                  .accessibleName = QStringLiteral("Remove ") + key,
                                                  .action = [keys, key] {
                                                      QStringList left = keys->get();
                                                      left.removeOne(key);
                                                      keys->set(left);
                                                  }}}};
    }

    static QList<OrvaSelectableTextView*> texts(QWidget& root)
    {
        QList<OrvaSelectableTextView*> shown;
        for (OrvaSelectableTextView* text : all<OrvaSelectableTextView>(root)) {
            if (isPartOf(root, *text))
                shown.append(text);
        }
        std::sort(shown.begin(), shown.end(), [&root](const QWidget* a, const QWidget* b) {
            return a->mapTo(&root, QPoint()).y() < b->mapTo(&root, QPoint()).y();
        });
        return shown;
    }
    static QString shown(QWidget& root)
    {
        QStringList found;
        for (const OrvaSelectableTextView* text : texts(root))
            found.append(text->text());
        return found.join(u',');
    }
    static OrvaIconButtonView* button(QWidget& root, const QString& name)
    {
        for (OrvaIconButtonView* each : all<OrvaIconButtonView>(root)) {
            if (isPartOf(root, *each) && each->accessibleName() == name)
                return each;
        }
        return nullptr;
    }
    void set(const char* list) { keys->set(QString::fromLatin1(list).split(u',', Qt::SkipEmptyParts)); }
    static QString focused()
    {
        const QWidget* focus = QApplication::focusWidget();
        return focus ? focus->accessibleName() : QString();
    }
};

struct OrvaForEachInWindow : OrvaForEachTest {
    std::unique_ptr<QWidget> section = rendered(
        OrvaSection{.content = {OrvaButton{.title = QStringLiteral("Before"), .action = [] {}}, list(),
                                OrvaButton{.title = QStringLiteral("After"), .action = [] {}}}});

    void SetUp() override
    {
        section->resize(400, 600);
        showActive(*section);
    }
    void relayout() { QApplication::processEvents(); }
    /// Returns the stops of Tab on its way round, from the button before the list.
    QString tabOrder()
    {
        for (QWidget* each : section->findChildren<QWidget*>()) {
            if (each->accessibleName() == QStringLiteral("Before"))
                each->setFocus(Qt::TabFocusReason);
        }
        QStringList names;
        do {
            names.append(focused());
            press(*QApplication::focusWidget(), Qt::Key_Tab);
        } while (focused() != QStringLiteral("Before") && names.size() < 40);
        return names.join(u',');
    }
};

TEST_F(OrvaForEachTest, ItsViewsCanBeReadWithoutADisplay)
{
    const AnyView view = list();
    EXPECT_EQ(view.all<OrvaIconButton>().size(), 4);
    set("x");
    EXPECT_EQ(view.all<OrvaSelectableText>().first()->text.get(), QStringLiteral("x"));
}

TEST_F(OrvaForEachInWindow, FollowsItsListAndItsOrder)
{
    relayout();
    EXPECT_EQ(shown(*section), QStringLiteral("a,b,c,d"));
    for (const char* next : {"d,a,x", "", "p", "b,p,a", "a,a,b,a"}) {
        set(next);
        relayout();
        EXPECT_EQ(shown(*section), QLatin1StringView(next));
    }
}

TEST_F(OrvaForEachInWindow, KeepsTheWidgetsOfKeysThatComeAgain)
{
    const auto before = texts(*section);
    set("d,x,a,b");
    relayout();
    const auto after = texts(*section);
    EXPECT_EQ(after.at(0), before.at(3));
    EXPECT_EQ(after.at(2), before.at(0));
    EXPECT_EQ(after.at(3), before.at(1));
}

TEST_F(OrvaForEachInWindow, OfEqualKeysTheNthStaysTheNth)
{
    set("a,a,b,a");
    relayout();
    const auto before = texts(*section);
    button(*section, QStringLiteral("Remove a"))->click();
    relayout();
    EXPECT_EQ(shown(*section), QStringLiteral("a,b,a"));
    const auto after = texts(*section);
    EXPECT_EQ(after.at(0), before.at(0));
    EXPECT_EQ(after.at(1), before.at(2));
    EXPECT_EQ(after.at(2), before.at(1));
}

TEST_F(OrvaForEachInWindow, ADroppedWidgetIsGoneOnceItsEventsAreOver)
{
    const QPointer<QWidget> dropped = texts(*section).at(1);
    const QPointer<QWidget> pressed = button(*section, QStringLiteral("Remove b"));
    press(*pressed, Qt::Key_Space);
    EXPECT_TRUE(waitUntil([&] { return !dropped && !pressed; }));
}

TEST_F(OrvaForEachInWindow, KeepsTheFocusOnAViewThatStays)
{
    texts(*section).at(2)->setFocus(Qt::TabFocusReason);
    set("c,x,d");
    EXPECT_EQ(focused(), QStringLiteral("c"));
}

TEST_F(OrvaForEachInWindow, ARemovalMovesTheFocusToTheSameControlOfTheNextView)
{
    QWidget* remove = button(*section, QStringLiteral("Remove b"));
    remove->setFocus(Qt::TabFocusReason);
    press(*remove, Qt::Key_Space);
    EXPECT_EQ(focused(), QStringLiteral("Remove c"));
    press(*QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(focused(), QStringLiteral("Remove d"));
    press(*QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(focused(), QStringLiteral("Remove a")) << "after the last, the one before";
    press(*QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(focused(), QStringLiteral("After")) << "after the only one, what follows the list";
}

TEST_F(OrvaForEachInWindow, TheRingGoesAlongWithTheKeyboardAndNotWithTheMouse)
{
    OrvaIconButtonView* c = button(*section, QStringLiteral("Remove c"));
    const QImage plain = c->grab().toImage();
    click(*button(*section, QStringLiteral("Remove a")));
    button(*section, QStringLiteral("Remove b"))->setFocus(Qt::MouseFocusReason);
    click(*button(*section, QStringLiteral("Remove b")));
    EXPECT_EQ(focused(), QStringLiteral("Remove c"));
    EXPECT_EQ(c->grab().toImage(), plain);
    press(*c, Qt::Key_Space);
    OrvaIconButtonView* d = button(*section, QStringLiteral("Remove d"));
    EXPECT_TRUE(d->hasFocus());
    EXPECT_NE(d->grab().toImage(), plain);
}

TEST_F(OrvaForEachInWindow, ARemovalElsewhereLeavesTheFocusAlone)
{
    texts(*section).at(0)->setFocus(Qt::TabFocusReason);
    button(*section, QStringLiteral("Remove b"))->click();
    EXPECT_EQ(focused(), QStringLiteral("a"));
}

TEST_F(OrvaForEachInWindow, TabGoesThroughNewAndMovedViewsAsTheyAreShown)
{
    const auto expected = [](std::initializer_list<const char*> list) {
        QStringList names{QStringLiteral("Before")};
        for (const char* key : list)
            names << QString::fromLatin1(key) << QStringLiteral("Remove ") + QString::fromLatin1(key);
        return (names << QStringLiteral("After")).join(u',');
    };
    EXPECT_EQ(tabOrder(), expected({"a", "b", "c", "d"}));
    set("a,b,c,d,e");
    EXPECT_EQ(tabOrder(), expected({"a", "b", "c", "d", "e"}));
    set("e,x,d,a");
    EXPECT_EQ(tabOrder(), expected({"e", "x", "d", "a"}));
    set("");
    EXPECT_EQ(tabOrder(), QStringLiteral("Before,After"));
    set("k,l");
    EXPECT_EQ(tabOrder(), expected({"k", "l"}));
}

TEST_F(OrvaForEachTest, EachViewCountsByItselfForTheDividers)
{
    const AnyView fixed = OrvaValueRow{QStringLiteral("Fixed"), QStringLiteral("1")};
    const auto between = rendered(OrvaSection{.content = {fixed, list(), fixed}});
    const auto alone = rendered(OrvaSection{.content = {list()}});
    const auto nested = rendered(OrvaSection{.content = {OrvaIf{true, list()}, OrvaIf{true, list()}}});
    EXPECT_EQ(shownDividers(*between), 5);
    EXPECT_EQ(shownDividers(*alone), 3);
    EXPECT_EQ(shownDividers(*nested), 7);
    set("a");
    EXPECT_EQ(shownDividers(*between), 2);
    EXPECT_EQ(shownDividers(*alone), 0);
    EXPECT_EQ(shownDividers(*nested), 1);
    set("");
    EXPECT_EQ(shownDividers(*between), 1);
    EXPECT_EQ(shownDividers(*nested), 0);
    set("a,b");
    EXPECT_EQ(shownDividers(*between), 3);
}

TEST_F(OrvaForEachTest, NoTwoDividersTouchAndNoneIsAtTheEdge)
{
    const AnyView fixed = OrvaValueRow{QStringLiteral("Fixed"), QStringLiteral("1")};
    const auto section = rendered(OrvaSection{.content = {list(), fixed, list()}});
    section->show();
    QApplication::processEvents();
    QList<int> lines;
    for (const OrvaDividerView* divider : all<OrvaDividerView>(*section)) {
        if (divider->isVisible())
            lines.append(divider->mapTo(section.get(), QPoint()).y());
    }
    std::sort(lines.begin(), lines.end());
    ASSERT_EQ(lines.size(), 8);
    EXPECT_GT(lines.first(), 20);
    EXPECT_LT(lines.last(), section->height() - 20);
    for (int index = 1; index < lines.size(); ++index)
        EXPECT_GT(lines.at(index) - lines.at(index - 1), 20);
}

TEST_F(OrvaForEachTest, AViewThatAConditionLeavesOutHasNoDivider)
{
    const auto on = std::make_shared<Observable<bool>>(false);
    const AnyView conditional = OrvaIf{Live<bool>([on] { return on->get(); }, {on}),
                                       OrvaValueRow{QStringLiteral("b"), QStringLiteral("1")}};
    const QList<OrvaForEach::Item> items{
        {QStringLiteral("1"), conditional},
        {QStringLiteral("2"), OrvaValueRow{QStringLiteral("a"), QStringLiteral("1")}},
        {QStringLiteral("3"), AnyView{}}};
    const auto section = rendered(OrvaSection{.content = {OrvaForEach{items}}});
    EXPECT_EQ(shownDividers(*section), 0);
    on->set(true);
    EXPECT_EQ(shownDividers(*section), 1);
}

TEST_F(OrvaForEachTest, OutsideOfACardItTakesTheSpacingOfItsStack)
{
    const QList<OrvaForEach::Item> items{
        {QStringLiteral("1"), OrvaSection{.content = {row(keys, QStringLiteral("a"))}}},
        {QStringLiteral("2"), OrvaSection{.content = {row(keys, QStringLiteral("b"))}}}};
    const auto pane = rendered(OrvaPane{{OrvaIf{true, OrvaForEach{items}}}});
    pane->show();
    QApplication::processEvents();
    const auto cards = all<OrvaCardView>(*pane);
    ASSERT_EQ(cards.size(), 2);
    const int gap = cards.at(1)->mapTo(pane.get(), QPoint()).y() -
                    cards.at(0)->mapTo(pane.get(), QPoint(0, cards.at(0)->height())).y();
    EXPECT_EQ(gap, 24);
    EXPECT_EQ(shownDividers(*pane), 0);
}

TEST_F(OrvaForEachTest, LetsItsSourceGoAtItsEnd)
{
    {
        const auto view = rendered(list());
        EXPECT_EQ(keys->observerCount(), 1u);
    }
    EXPECT_EQ(keys->observerCount(), 0u);
}

} // namespace

// Sidebar, changing pages, ticking and scrolling of the view kit, as widgets.
#include "Orvane/Navigation/OrvaNavigation.h"
#include "Fakes/FakePlatform.h"
#include "Orvane/Navigation/OrvaPagesView.h"
#include "Orvane/Navigation/OrvaSidebarView.h"
#include "Orvane/Navigation/OrvaSplitView.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QAccessible>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;
using namespace std::chrono_literals;

OrvaSidebarRow row(const char* tag)
{
    return {.tag = QString::fromLatin1(tag),
            .title = QString::fromLatin1(tag),
            .systemImage = QStringLiteral("eye")};
}

struct Pages {
    Observable<QString> chosen{QStringLiteral("a")};
    Observable<QList<OrvaSidebarSection>> sections{
        {{{}, {row("a")}}, {QStringLiteral("Group"), {row("b"), row("c")}}}};
};

struct OrvaSidebarTest : testing::Test {
    std::shared_ptr<Pages> pages = std::make_shared<Pages>();
    std::unique_ptr<QWidget> widget =
        rendered(OrvaSidebar{QStringLiteral("Pages"), bind(pages, &Pages::chosen),
                             Live<QList<OrvaSidebarSection>>(bind(pages, &Pages::sections))});
    OrvaSidebarView& list = static_cast<OrvaSidebarView&>(*widget);

    [[nodiscard]] QString current() const { return list.currentIndex().data().toString(); }
    [[nodiscard]] QStringList lines() const
    {
        QStringList texts;
        for (int line = 0; line < list.model()->rowCount(); ++line)
            texts.append(list.model()->index(line, 0).data().toString());
        return texts;
    }
};

TEST_F(OrvaSidebarTest, ListsRowsUnderTheirHeadings)
{
    EXPECT_EQ(lines(), (QStringList{QStringLiteral("a"), QStringLiteral("Group"), QStringLiteral("b"),
                                    QStringLiteral("c")}));
    EXPECT_FALSE(list.model()->flags(list.model()->index(1, 0)) & Qt::ItemIsSelectable);
}

TEST_F(OrvaSidebarTest, FollowsTheSelectionAndSetsIt)
{
    EXPECT_EQ(current(), QStringLiteral("a"));
    pages->chosen.set(QStringLiteral("c"));
    EXPECT_EQ(current(), QStringLiteral("c"));
    EXPECT_EQ(pages->chosen.get(), QStringLiteral("c"));
    list.setCurrentIndex(list.model()->index(2, 0));
    EXPECT_EQ(pages->chosen.get(), QStringLiteral("b"));
}

TEST_F(OrvaSidebarTest, ATagThatNoRowHasMarksNone)
{
    pages->chosen.set(QStringLiteral("z"));
    EXPECT_FALSE(list.currentIndex().isValid());
    EXPECT_EQ(pages->chosen.get(), QStringLiteral("z"));
}

TEST_F(OrvaSidebarTest, AChangeOfADotRenewsNothingElse)
{
    int resets = 0;
    QList<int> changes;
    QObject::connect(list.model(), &QAbstractItemModel::modelReset, &list, [&] { ++resets; });
    QObject::connect(list.model(), &QAbstractItemModel::dataChanged, &list,
                     [&](const QModelIndex& first) { changes.append(first.row()); });
    auto sections = pages->sections.get();
    sections[1].rows[0].status =
        OrvaStatusDot{OrvaStatusDot::Fill::filled, OrvaColor::green, QStringLiteral("On")};
    pages->sections.set(sections);
    EXPECT_EQ(resets, 0);
    EXPECT_EQ(changes, QList<int>{2});
    pages->sections.set(sections);
    EXPECT_EQ(changes.size(), 1) << "an equal value is no change";
}

TEST_F(OrvaSidebarTest, ANewRowKeepsWhatIsChosen)
{
    pages->chosen.set(QStringLiteral("c"));
    auto sections = pages->sections.get();
    sections[0].rows.append(row("new"));
    pages->sections.set(sections);
    EXPECT_EQ(current(), QStringLiteral("c"));
    EXPECT_EQ(pages->chosen.get(), QStringLiteral("c"));
}

TEST_F(OrvaSidebarTest, IsAListWhoseRowsSayTheirState)
{
    auto sections = pages->sections.get();
    sections[1].rows[0].status =
        OrvaStatusDot{OrvaStatusDot::Fill::filled, OrvaColor::red, QStringLiteral("Error")};
    pages->sections.set(sections);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&list);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::List);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Pages"));
    ASSERT_EQ(accessible->childCount(), 4);
    QAccessibleInterface* second = accessible->child(2);
    EXPECT_EQ(second->role(), QAccessible::ListItem);
    EXPECT_EQ(second->text(QAccessible::Name), QStringLiteral("b"));
    EXPECT_EQ(second->text(QAccessible::Description), QStringLiteral("Error"));
}

// Split

TEST(OrvaSplit, GivesTheSidebarItsWidthsAndThePageTheRest)
{
    const auto pages = std::make_shared<Pages>();
    const auto split = rendered(
        OrvaSplit{.minimumWidth = 230,
                  .idealWidth = 250,
                  .header = OrvaText{QStringLiteral("Word")},
                  .sidebar = OrvaSidebar{QStringLiteral("Pages"), bind(pages, &Pages::chosen),
                                         Live<QList<OrvaSidebarSection>>(bind(pages, &Pages::sections))},
                  .detail = OrvaPage{}});
    split->resize(940, 640);
    split->show();
    const auto& splitter = static_cast<OrvaSplitView&>(*split);
    EXPECT_EQ(splitter.sizes().at(0), 250);
    EXPECT_EQ(splitter.widget(0)->minimumWidth(), 230);
    split->resize(1400, 640);
    EXPECT_EQ(splitter.sizes().at(0), 250) << "room that is won goes to the page";
    EXPECT_FALSE(splitter.childrenCollapsible());

    const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(split.get());
    ASSERT_GE(accessible->childCount(), 2);
    EXPECT_EQ(accessible->child(0)->object(), splitter.widget(0)) << "what stands first is read first";
    EXPECT_EQ(accessible->child(1)->object(), splitter.widget(1));
}

// Keyed

struct Choice {
    Observable<QString> key{QStringLiteral("one")};
};

TEST(OrvaKeyed, AnotherKeyMakesAFreshViewAndAnEqualOneKeepsIt)
{
    const auto choice = std::make_shared<Choice>();
    int made = 0;
    const auto keyed = rendered(OrvaKeyed{Live<QString>(bind(choice, &Choice::key)), [&](const QString& key) {
                                              ++made;
                                              return OrvaText{key};
                                          }});
    EXPECT_EQ(made, 1);
    EXPECT_EQ(shownTexts(*keyed), QStringList{QStringLiteral("one")});
    choice->key.set(QStringLiteral("one"));
    EXPECT_EQ(made, 1);
    choice->key.set(QStringLiteral("two"));
    EXPECT_EQ(made, 2);
    EXPECT_EQ(shownTexts(*keyed), QStringList{QStringLiteral("two")});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(all<OrvaTextView>(*keyed).size(), 1);
}

TEST(OrvaKeyed, AButtonMayReplaceThePageThatItIsOnAndFocusGoesToTheNewOne)
{
    const auto choice = std::make_shared<Choice>();
    const auto keyed =
        rendered(OrvaKeyed{Live<QString>(bind(choice, &Choice::key)), [choice](const QString& key) {
                               return OrvaButton{key, [choice] { choice->key.set(QStringLiteral("two")); }};
                           }});
    showActive(*keyed);
    auto* button = keyed->findChild<QPushButton*>();
    button->setFocus(Qt::TabFocusReason);
    press(*button, Qt::Key_Space);
    const auto* focus = qobject_cast<QPushButton*>(QApplication::focusWidget());
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(focus->text(), QStringLiteral("two"));
}

// Ticker

struct OrvaTickerTest : testing::Test {
    FakePlatform fake;
    int appearances = 0;
    int ticks = 0;
    std::unique_ptr<QWidget> widget = rendered(
        OrvaTicker{2000ms, [this] { ++appearances; }, [this] { ++ticks; }, OrvaText{QStringLiteral("t")}});
};

TEST_F(OrvaTickerTest, TicksOnlyWhileItIsInSight)
{
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    EXPECT_EQ(appearances, 0);
    widget->show();
    EXPECT_EQ(appearances, 1);
    fake.runLoop.advance(6s);
    EXPECT_EQ(ticks, 3);
    widget->hide();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
    fake.runLoop.advance(6s);
    EXPECT_EQ(ticks, 3);
    widget->show();
    EXPECT_EQ(appearances, 2);
}

TEST_F(OrvaTickerTest, ItsEndEndsTheTicking)
{
    widget->show();
    widget.reset();
    EXPECT_EQ(fake.runLoop.timerCount(), 0u);
}

// Scrolling

struct Requests {
    Observable<int> count{0};
};

AnyView longPage()
{
    QList<AnyView> parts;
    for (int index = 0; index < 8; ++index) {
        const OrvaSection section{
            .title = QString::number(index),
            .content = {OrvaCalloutText{QString(600, u'x')}, OrvaButton{QString::number(index), nullptr}}};
        if (index == 3)
            parts.append(OrvaAnchor{QStringLiteral("there"), section});
        else
            parts.append(section);
    }
    return OrvaPage{.content = OrvaPane{parts}};
}

TEST(OrvaScrollReader, ScrollsTheAnchorToTheTopAtEachRequest)
{
    const auto requests = std::make_shared<Requests>();
    const auto reader = rendered(
        OrvaScrollReader{Live<int>(bind(requests, &Requests::count)), QStringLiteral("there"), longPage()});
    reader->resize(500, 300);
    reader->show();
    auto* area = reader->findChild<QScrollArea*>();
    const auto top = [&] {
        return reader->findChild<QWidget*>(QStringLiteral("there"))->mapTo(area->viewport(), QPoint()).y();
    };
    EXPECT_EQ(area->verticalScrollBar()->value(), 0) << "the value that it begins with is no request";
    for (int request = 1; request <= 2; ++request) {
        area->verticalScrollBar()->setValue(0);
        requests->count.set(request);
        EXPECT_EQ(top(), static_cast<int>(Orva::pagePadding));
    }
}

TEST(OrvaScrollReader, AnUnknownAnchorIsLeftAlone)
{
    const auto requests = std::make_shared<Requests>();
    const auto reader = rendered(
        OrvaScrollReader{Live<int>(bind(requests, &Requests::count)), QStringLiteral("nowhere"), longPage()});
    reader->resize(500, 300);
    reader->show();
    requests->count.set(1);
    EXPECT_EQ(reader->findChild<QScrollArea*>()->verticalScrollBar()->value(), 0);
}

} // namespace

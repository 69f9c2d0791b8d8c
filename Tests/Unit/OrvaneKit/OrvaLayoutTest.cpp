// Text buttons, balanced text, boxes and composites of the view kit, as widgets.
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Controls/OrvaBalancedTextView.h"
#include "OrvaneKit/Controls/OrvaTextButtonView.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaComposite.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

TEST(OrvaLayoutTest, ATextButtonHasItsHelpAsDescription)
{
    int presses = 0;
    const auto widget = rendered(OrvaTextButton{.title = QStringLiteral("Website"),
                                                .action = [&] { ++presses; },
                                                .help = QStringLiteral("the address")});
    EXPECT_EQ(widget->accessibleName(), QStringLiteral("Website"));
    EXPECT_EQ(widget->accessibleDescription(), QStringLiteral("the address"));
    widget->show();
    press(*widget, Qt::Key_Space);
    EXPECT_EQ(presses, 1);
}

TEST(OrvaLayoutTest, AtTheEdgeOfARowTheTextOfATextButtonStandsInLineWithOthers)
{
    const OrvaTextButton button{.title = QStringLiteral("Website"), .action = nullptr};
    EXPECT_EQ(ringMargin(button), OrvaTextButtonView::margin);
}

// Balanced text

TEST(OrvaBalancedText, MakesItsLinesAboutEquallyLongAndTakesNoMoreOfThem)
{
    const QString words =
        QStringLiteral("Keys of one habit become those of the other everywhere but in editors");
    OrvaBalancedTextView view({words, OrvaFont::body, OrvaColor::primary}, Qt::AlignLeft | Qt::AlignTop);
    const OrvaTextView& text = *all<OrvaTextView>(view).constFirst();
    view.show();
    const int oneLine = QFontMetrics(orvaFont(OrvaFont::body)).horizontalAdvance(words);
    const int width = oneLine - 5; // the last word alone has no room on the first line
    view.resize(width, view.heightForWidth(width));
    EXPECT_EQ(text.heightForWidth(text.width()), text.heightForWidth(width));
    EXPECT_GT(text.heightForWidth(text.width()), text.heightForWidth(2 * oneLine)) << "it has two lines";
    EXPECT_LT(text.width(), 0.7 * width);
    EXPECT_EQ(text.x(), 0);

    view.resize(2 * oneLine, 40);
    EXPECT_EQ(text.heightForWidth(text.width()), text.heightForWidth(2 * oneLine)) << "one line stays one";
}

// Boxes

struct Room {
    int width;
    int height;
};

QWidget* makeOrvaWidget(const Room& room)
{
    auto* widget = new QWidget;
    widget->setFixedSize(room.width, room.height);
    return widget;
}

std::unique_ptr<QWidget> laidOut(const OrvaBox& box, QSize size)
{
    auto widget = rendered(box);
    widget->resize(size);
    widget->show();
    return widget;
}

QList<QRect> places(const QWidget& box)
{
    QList<QRect> found;
    for (const QWidget* child : box.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        found.append(child->geometry());
    return found;
}

TEST(OrvaBoxTest, ALinesPartsStandBehindEachOtherWithGapsAndTheRestAtTheEnd)
{
    const auto box = laidOut({.spacing = 4,
                              .margins = QMargins(1, 2, 3, 2),
                              .content = {Room{10, 10}, OrvaBoxPart::gap(6), {Room{20, 6}, Qt::AlignVCenter}},
                              .endsFree = true},
                             QSize(200, 14));
    EXPECT_EQ(places(*box), (QList{QRect(1, 2, 10, 10), QRect(21, 4, 20, 6)}));
}

TEST(OrvaBoxTest, WhatFillsTakesTheRestOfTheLine)
{
    const auto box = laidOut(
        {.content = {OrvaBoxPart::filling(OrvaText{QStringLiteral("Text")}), Room{20, 10}}}, QSize(200, 40));
    EXPECT_EQ(places(*box).at(0).width(), 180);
    EXPECT_EQ(places(*box).at(1).left(), 180);
}

TEST(OrvaBoxTest, AColumnSharesItsRestByWeight)
{
    const auto box = laidOut({.axis = OrvaBox::Axis::column,
                              .content = {OrvaBoxPart::rest(2), Room{10, 10}, OrvaBoxPart::rest(3)}},
                             QSize(10, 60));
    EXPECT_EQ(places(*box).at(0).top(), 20);
}

TEST(OrvaBoxTest, KeepsTheHeightOfPartsThatAreLeftOut)
{
    const auto isShown = std::make_shared<Observable<bool>>(true);
    const Live<bool> condition([isShown] { return isShown->get(); }, {isShown});
    const auto box = rendered(OrvaBox{.content = {OrvaIf{condition, Room{10, 30}}}, .keepsHeight = true});
    isShown->set(false);
    EXPECT_EQ(box->minimumHeight(), 30);
}

TEST(OrvaBoxTest, ItsTreeIsOfItsViewsAlone)
{
    const AnyView box = OrvaBox{.content = {OrvaText{QStringLiteral("one")}, OrvaBoxPart::gap(4), AnyView(),
                                            OrvaText{QStringLiteral("two")}}};
    EXPECT_EQ(box.children().size(), 2);
    EXPECT_EQ(box.all<OrvaText>().at(1)->text.get(), QStringLiteral("two"));
}

// Composites

} // namespace

namespace orvane {

struct Greeting {
    QString name;

    [[nodiscard]] AnyView body() const { return OrvaText{QStringLiteral("Hello ") + name}; }
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

} // namespace orvane

namespace {

TEST(OrvaCompositeTest, IsRenderedAsItIsDescribed)
{
    const AnyView greeting = Greeting{QStringLiteral("you")};
    ASSERT_EQ(greeting.all<OrvaText>().size(), 1);
    EXPECT_EQ(shownTexts(*rendered(greeting)), QStringList{greeting.all<OrvaText>().first()->text.get()});
}

TEST(OrvaEnabledTest, ItsContentCannotBeUsedWhileTheConditionDoesNotHold)
{
    const auto holds = std::make_shared<Observable<bool>>(false);
    const auto widget = rendered(
        OrvaEnabled{Live<bool>([holds] { return holds->get(); }, {holds}), OrvaText{QStringLiteral("text")}});
    const OrvaTextView& text = *all<OrvaTextView>(*widget).constFirst();
    EXPECT_FALSE(text.isEnabled());
    holds->set(true);
    EXPECT_TRUE(text.isEnabled());
}

} // namespace

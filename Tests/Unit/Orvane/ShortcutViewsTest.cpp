// Chips that are buttons, wrapping lines and popovers, as widgets.
#include "Orvane/Shortcuts/ShortcutViews.h"
#include "Orvane/Shortcuts/OrvaChipButtonView.h"
#include "Orvane/Shortcuts/OrvaPopoverView.h"
#include "Orvane/Shortcuts/OrvaWrapView.h"
#include "OrvaneKit/Controls/OrvaSwitchView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QAccessible>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

struct Key {
    Observable<QString> text{QStringLiteral("Set")};
    Observable<bool> isSet{false};
    Observable<bool> shown{false};
    int presses = 0;
};

struct ShortcutViewsTest : testing::Test {
    std::shared_ptr<Key> key = std::make_shared<Key>();

    [[nodiscard]] OrvaChipButton chip() const
    {
        return {OrvaChip{Live<QString>(bind(key, &Key::text)), QStringLiteral("keyboard"),
                         Live<bool>(bind(key, &Key::isSet))},
                QStringLiteral("Do It"), [key = key] { ++key->presses; }};
    }
};

TEST_F(ShortcutViewsTest, AChipButtonIsPressedByMouseAndKeyboard)
{
    const auto widget = rendered(chip());
    widget->show();
    click(*widget);
    EXPECT_EQ(key->presses, 1);
    press(*widget, Qt::Key_Space);
    EXPECT_EQ(key->presses, 2);
    EXPECT_EQ(widget->focusPolicy(), Qt::StrongFocus);
}

TEST_F(ShortcutViewsTest, AChipButtonSaysItsActionAndItsText)
{
    const auto widget = rendered(chip());
    EXPECT_EQ(widget->toolTip(), QStringLiteral("Do It"));
    EXPECT_EQ(widget->accessibleName(), QStringLiteral("Do It: Set"));
    const int narrow = widget->sizeHint().width();
    key->text.set(QStringLiteral("Control Option Space"));
    EXPECT_EQ(widget->accessibleName(), QStringLiteral("Do It: Control Option Space"));
    EXPECT_GT(widget->sizeHint().width(), narrow);
}

TEST_F(ShortcutViewsTest, AWrapTakesAsManyLinesAsItNeeds)
{
    QList<AnyView> chips;
    for (int index = 0; index < 11; ++index)
        chips.append(chip());
    const auto wrap = rendered(OrvaWrap{4, chips});
    const int one = wrap->layout()->itemAt(0)->sizeHint().height();
    EXPECT_EQ(wrap->heightForWidth(10000), one);
    EXPECT_EQ(wrap->sizeHint().height(), one);
    const int width = wrap->layout()->itemAt(0)->sizeHint().width();
    EXPECT_EQ(wrap->heightForWidth(4 * width + 3 * 4), 3 * one + 2 * 4);
    wrap->resize(4 * width + 3 * 4, 200);
    wrap->show();
    const auto views = all<OrvaChipButtonView>(*wrap);
    EXPECT_EQ(views.at(4)->y(), one + 4);
    EXPECT_EQ(views.at(4)->x(), views.at(0)->x());
    EXPECT_EQ(views.at(3)->y(), views.at(0)->y());
}

TEST_F(ShortcutViewsTest, AWrapInColumnsBeginsEachItemBelowOneOfTheFirstLine)
{
    const OrvaText shorter{QStringLiteral("One")};
    const OrvaText longer{QStringLiteral("A longer one")};
    const auto wrap = rendered(OrvaWrap{4, {shorter, longer, shorter, shorter}, OrvaWrapColumns::equal});
    const int column = wrap->layout()->itemAt(1)->sizeHint().width();
    ASSERT_LT(wrap->layout()->itemAt(0)->sizeHint().width(), column);
    EXPECT_EQ(wrap->sizeHint().width(), 4 * column + 3 * 4);
    wrap->resize(2 * column + 4, 200);
    wrap->show();
    const auto texts = all<OrvaTextView>(*wrap);
    EXPECT_EQ(texts.at(1)->x(), texts.at(0)->x() + column + 4);
    EXPECT_EQ(texts.at(2)->x(), texts.at(0)->x());
    EXPECT_GT(texts.at(2)->y(), texts.at(0)->y());
    EXPECT_EQ(texts.at(3)->x(), texts.at(1)->x());
    wrap->resize(2 * column + 3, 200);
    wrap->layout()->activate();
    EXPECT_EQ(texts.at(1)->x(), texts.at(0)->x()) << "there is no room for two columns";
}

TEST_F(ShortcutViewsTest, AHeadersAccessoryStandsBesideTheStartSwitchOrBelowIt)
{
    bool on = false;
    OrvaPageHeader header{.symbol = QStringLiteral("eye.fill"),
                          .title = QStringLiteral("Lamp"),
                          .autoStart =
                              Binding<bool>([&on] { return on; }, [&on](bool value) { on = value; }, {}),
                          .accessory = chip()};
    const auto places = [&header] {
        const auto view = rendered(header);
        view->resize(600, view->sizeHint().height());
        view->show();
        const auto topOf = [&view](QWidget* child) { return child->mapTo(view.get(), QPoint(0, 0)).y(); };
        QWidget* const start = all<OrvaSwitchView>(*view).constFirst();
        return std::pair(topOf(start) + start->height(), topOf(all<OrvaChipButtonView>(*view).constFirst()));
    };
    const auto [switchEnd, besideIt] = places();
    EXPECT_LT(besideIt, switchEnd);
    header.accessoryPlace = OrvaPageHeader::AccessoryPlace::below;
    const auto [sameSwitchEnd, belowIt] = places();
    EXPECT_GE(belowIt, sameSwitchEnd);
}

// Popover

struct Field {
    QString name;
};

QWidget* makeOrvaWidget(const Field& field)
{
    auto* edit = new QLineEdit;
    edit->setAccessibleName(field.name);
    return edit;
}

struct OrvaPopoverTest : ShortcutViewsTest {
    OrvaPopoverTest()
    {
        OrvaChipButton anchor = chip();
        anchor.action = [key = key] { key->shown.set(!key->shown.get()); };
        const AnyView popover = OrvaPopover{.isPresented = bind(key, &Key::shown),
                                            .accessibleName = QStringLiteral("Do It"),
                                            .anchor = anchor,
                                            .content = [] { return Field{QStringLiteral("field")}; }};
        auto* lines = new QVBoxLayout(&window);
        lines->addWidget(popover.makeWidget(), 0, Qt::AlignTop | Qt::AlignHCenter);
        outside = new QLineEdit;
        lines->addWidget(outside, 1, Qt::AlignBottom);
        window.resize(500, 400);
        showActive(window);
    }
    OrvaPopoverPanelView* panel()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const auto panels = all<OrvaPopoverPanelView>(window);
        return panels.isEmpty() ? nullptr : panels.constFirst();
    }
    QLineEdit* field() { return panel()->findChild<QLineEdit*>(); }
    OrvaChipButtonView& chipView() { return *all<OrvaChipButtonView>(window).constFirst(); }

    QWidget window;
    QLineEdit* outside = nullptr;
};

TEST_F(OrvaPopoverTest, OpensInsideTheWindowWithItsWidthAndPadding)
{
    EXPECT_EQ(panel(), nullptr);
    click(chipView());
    ASSERT_NE(panel(), nullptr);
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_EQ(panel()->window(), &window);
    EXPECT_EQ(field()->width(), 260 - 2 * (14 - orvaRingMargin)) << "the padding goes to a control's outline";
    EXPECT_GE(panel()->y() + panel()->height(),
              chipView().mapTo(&window, QPoint(0, chipView().height())).y());
    EXPECT_EQ(QApplication::focusWidget(), panel()) << "nothing in it is entered by its opening";
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(panel());
    EXPECT_EQ(accessible->role(), QAccessible::Dialog);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Do It"));
}

TEST_F(OrvaPopoverTest, ASecondClickOnTheAnchorCloses)
{
    click(chipView());
    click(chipView());
    EXPECT_FALSE(key->shown.get());
    EXPECT_EQ(panel(), nullptr);
}

TEST_F(OrvaPopoverTest, EscapeClosesAndTheAnchorHasTheFocusAgain)
{
    chipView().setFocus(Qt::TabFocusReason);
    press(chipView(), Qt::Key_Space);
    ASSERT_NE(panel(), nullptr);
    field()->setFocus();
    press(*field(), Qt::Key_Escape);
    EXPECT_EQ(panel(), nullptr);
    EXPECT_FALSE(key->shown.get());
    EXPECT_EQ(QApplication::focusWidget(), &chipView());
}

TEST_F(OrvaPopoverTest, AClickBesideItClosesAndAClickInItDoesNot)
{
    click(chipView());
    click(*panel());
    ASSERT_NE(panel(), nullptr);
    click(*field());
    ASSERT_NE(panel(), nullptr);
    click(*outside);
    EXPECT_EQ(panel(), nullptr);
}

TEST_F(OrvaPopoverTest, FocusThatGoesElsewhereCloses)
{
    click(chipView());
    outside->setFocus();
    EXPECT_EQ(panel(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), outside);
}

TEST_F(OrvaPopoverTest, TabGoesRoundInIt)
{
    click(chipView());
    press(*panel(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), field());
    press(*field(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), panel());
    press(*panel(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), field());
    EXPECT_TRUE(key->shown.get());
}

TEST_F(OrvaPopoverTest, AFieldThatGivesItsFocusUpLeavesItToThePanel)
{
    click(chipView());
    field()->setFocus();
    field()->clearFocus();
    EXPECT_TRUE(waitUntil([&] { return QApplication::focusWidget() == panel(); }));
    EXPECT_TRUE(key->shown.get());
}

TEST_F(OrvaPopoverTest, TabInAFieldThatHasJustGivenItsFocusUpGoesOnFromThere)
{
    click(chipView());
    QLineEdit* const edit = field();
    edit->setFocus();
    edit->clearFocus();
    press(*edit, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), panel());
}

TEST_F(OrvaPopoverTest, AnAnchorThatIsHiddenTakesThePanelAlong)
{
    click(chipView());
    window.hide();
    EXPECT_FALSE(key->shown.get());
    EXPECT_EQ(panel(), nullptr);
}

TEST_F(OrvaPopoverTest, StaysInsideTheWindowAtItsEdge)
{
    window.resize(300, 200);
    click(chipView());
    const QRect body = panel()->geometry().adjusted(18, 18, -18, -18);
    EXPECT_TRUE(window.rect().contains(body));
}

} // namespace

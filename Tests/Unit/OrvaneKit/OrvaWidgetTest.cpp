// The view kit as widgets: layout, dimming, conditions, keyboard, names for assistive technology.
#include "OrvaneKit/Controls/OrvaSwitchView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

struct Lamp {
    Observable<bool> lit{false};
    Observable<bool> spare{false};
    Observable<double> glow{0.5};
    Observable<int> bulbs{2};
    Observable<QString> colour{QStringLiteral("warm")};
    Observable<QString> note{QStringLiteral("A note.")};
};

class OrvaWidget : public testing::Test {
protected:
    std::shared_ptr<Lamp> lamp = std::make_shared<Lamp>();

    [[nodiscard]] OrvaToggleRow litRow() const
    {
        return OrvaToggleRow(QStringLiteral("Lit"), bind(lamp, &Lamp::lit),
                             Live<QString>(QStringLiteral("Gives light.")));
    }
    [[nodiscard]] Live<QString> note() const { return bind(lamp, &Lamp::note); }
    [[nodiscard]] OrvaPickerRow colourRow() const
    {
        return {QStringLiteral("Colour"), bind(lamp, &Lamp::colour),
                QList<OrvaPickerOption>{{QStringLiteral("Warm"), QStringLiteral("warm")},
                                        {QStringLiteral("Cold"), QStringLiteral("cold")}}};
    }
    [[nodiscard]] OrvaSliderRow glowRow() const
    {
        return {QStringLiteral("Glow"), bind(lamp, &Lamp::glow), {0, 1}, 0.1, QStringLiteral("50 %")};
    }
    [[nodiscard]] OrvaStepperRow bulbsRow() const
    {
        return {QStringLiteral("Bulbs"), bind(lamp, &Lamp::bulbs), {1, 9}};
    }
    [[nodiscard]] OrvaIf spareRow() const
    {
        return {Live<bool>(bind(lamp, &Lamp::spare)),
                OrvaValueRow{QStringLiteral("Spares"), QStringLiteral("3")}};
    }
};

/// Returns the texts that a person reads or hears of a widget: shown ones, those of its buttons, and names.
QStringList textsAndNames(QWidget& widget)
{
    QStringList texts = shownTexts(widget);
    for (const QWidget* each : all<QWidget>(widget)) {
        texts.append(each->accessibleName());
        if (const auto* button = qobject_cast<const QAbstractButton*>(each))
            texts.append(button->text());
        if (const auto* number = qobject_cast<const QSpinBox*>(each))
            texts.append(number->text());
    }
    return texts;
}

bool isBlank(const QImage& picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != picture.pixel(0, 0))
                return false;
        }
    }
    return true;
}

TEST_F(OrvaWidget, EveryComponentShowsWhatItIsGiven)
{
    struct Component {
        const char* name;
        AnyView view;
        QStringList texts;
    };
    const QString title = QStringLiteral("Title");
    const QString value = QStringLiteral("Value");
    const AnyView content = OrvaValueRow{title, value};
    const QList<Component> components{
        {"page", OrvaPage{.content = OrvaPane{{content}}}, {title, value}},
        {"page header", OrvaPageHeader{.symbol = QStringLiteral("eye"), .title = title}, {title}},
        {"banner", OrvaStatusBanner{OrvaStatusBanner::Kind::ok, title}, {title}},
        {"chip", OrvaChip{title}, {title}},
        {"badge", OrvaBadge{title}, {title}},
        {"icon tile", OrvaIconTile{QStringLiteral("eye")}, {}},
        {"switch", OrvaSwitch{bind(lamp, &Lamp::lit), title}, {title}},
        {"row", OrvaRow{.content = {content}}, {title, value}},
        {"row label", OrvaRowLabel{title}, {title}},
        {"toggle row", litRow(), {QStringLiteral("Lit"), QStringLiteral("Gives light.")}},
        {"slider row", glowRow(), {QStringLiteral("Glow"), QStringLiteral("50 %")}},
        {"stepper row", bulbsRow(), {QStringLiteral("Bulbs"), QStringLiteral("2")}},
        {"picker row", colourRow(), {QStringLiteral("Colour")}},
        {"value row", content, {title, value}},
        {"button", OrvaButton{title, nullptr}, {title}},
        {"section", OrvaSection{.title = title, .content = {OrvaRowLabel{value}}}, {title, value}},
        {"card", OrvaCard{.content = {content}}, {title, value}},
        {"callout text", OrvaCalloutText{title}, {title}},
        {"pane", OrvaPane{{content}}, {title, value}},
        {"stack", DividedVStack{{content}}, {title, value}},
    };
    for (const Component& component : components) {
        const auto widget = rendered(component.view);
        ASSERT_TRUE(widget) << component.name;
        for (const QString& text : component.texts)
            EXPECT_TRUE(textsAndNames(*widget).contains(text))
                << component.name << ": " << text.toStdString();
        widget->resize(500, 300);
        EXPECT_FALSE(isBlank(widget->grab().toImage())) << component.name;
    }
}

TEST_F(OrvaWidget, EmptyViewsInsideOthersAreSkipped)
{
    const auto page =
        rendered(OrvaPage{.content = OrvaPane{{AnyView{}, OrvaSection{.content = {AnyView{}, litRow()}},
                                               OrvaIf{true, AnyView{}}}}});
    EXPECT_EQ(all<OrvaSwitchView>(*page).size(), 1);
    EXPECT_EQ(shownDividers(*page), 0);
}

// Dividers

TEST_F(OrvaWidget, ACardWithOneRowHasNoDividerAndWithTwoHasOne)
{
    EXPECT_EQ(shownDividers(*rendered(OrvaSection{.content = {litRow()}})), 0);
    EXPECT_EQ(shownDividers(*rendered(OrvaSection{.content = {litRow(), colourRow()}})), 1);
    EXPECT_EQ(shownDividers(*rendered(OrvaSection{.content = {litRow(), colourRow(), bulbsRow()}})), 2);
}

TEST_F(OrvaWidget, ARowThatAConditionLeavesOutLeavesNoDoubleLine)
{
    const auto section = rendered(OrvaSection{.content = {litRow(), spareRow(), colourRow()}});
    EXPECT_EQ(shownDividers(*section), 1);
    lamp->spare.set(true);
    EXPECT_EQ(shownDividers(*section), 2);
    lamp->spare.set(false);
    EXPECT_EQ(shownDividers(*section), 1);
}

TEST_F(OrvaWidget, ALeftOutFirstOrLastRowLeavesNoLineAtTheEdge)
{
    const auto first = rendered(OrvaSection{.content = {spareRow(), litRow()}});
    const auto last = rendered(OrvaSection{.content = {litRow(), spareRow()}});
    EXPECT_EQ(shownDividers(*first), 0);
    EXPECT_EQ(shownDividers(*last), 0);
    lamp->spare.set(true);
    EXPECT_EQ(shownDividers(*first), 1);
    EXPECT_EQ(shownDividers(*last), 1);
}

TEST_F(OrvaWidget, NestedConditionsShowARowOnlyWhenAllHold)
{
    const AnyView inner = OrvaIf{Live<bool>(bind(lamp, &Lamp::lit)), litRow()};
    const auto section = rendered(OrvaSection{
        .content = {colourRow(), OrvaIf{Live<bool>(bind(lamp, &Lamp::spare)), inner}, bulbsRow()}});
    EXPECT_EQ(shownDividers(*section), 1);
    lamp->spare.set(true);
    EXPECT_EQ(shownDividers(*section), 1) << "the inner condition doesn't hold";
    lamp->lit.set(true);
    EXPECT_EQ(shownDividers(*section), 2);
    lamp->spare.set(false);
    EXPECT_EQ(shownDividers(*section), 1);
}

TEST_F(OrvaWidget, AConditionShowsAndHidesARowOnTheScreen)
{
    const auto section = rendered(OrvaSection{.content = {litRow(), spareRow()}});
    section->resize(500, 300);
    section->show();
    OrvaIfView* row = all<OrvaIfView>(*section).first();
    EXPECT_FALSE(row->isVisible());
    lamp->spare.set(true);
    EXPECT_TRUE(row->isVisible());
    lamp->spare.set(false);
    EXPECT_FALSE(row->isVisible());
}

TEST_F(OrvaWidget, AConditionalViewWithoutParentNeverOpensAWindow)
{
    const auto conditional = rendered(spareRow());
    lamp->spare.set(true);
    EXPECT_FALSE(conditional->isVisible());
}

// Headings, footnotes, pages

TEST_F(OrvaWidget, ASectionWithoutTitleShowsNoHeading)
{
    const auto plain = rendered(OrvaSection{.systemImage = QStringLiteral("eye"), .content = {litRow()}});
    const auto titled = rendered(OrvaSection{
        .title = QStringLiteral("Light"), .systemImage = QStringLiteral("eye"), .content = {litRow()}});
    EXPECT_EQ(shownTexts(*plain), (QStringList{QStringLiteral("Lit"), QStringLiteral("Gives light.")}));
    EXPECT_EQ(shownTexts(*titled).first(), QStringLiteral("Light"));
    EXPECT_LT(plain->sizeHint().height(), titled->sizeHint().height());
}

TEST_F(OrvaWidget, AFootnoteFollowsItsSourceAndTakesNoRoomWhileEmpty)
{
    const auto section = rendered(OrvaSection{.footnote = note(), .content = {litRow()}});
    section->resize(500, 300);
    section->show();
    EXPECT_EQ(shownTexts(*section).last(), QStringLiteral("A note."));
    const int height = section->sizeHint().height();
    lamp->note.set(QString());
    EXPECT_EQ(shownTexts(*section).size(), 2);
    EXPECT_LT(section->sizeHint().height(), height);
    lamp->note.set(QStringLiteral("Another."));
    EXPECT_EQ(shownTexts(*section).last(), QStringLiteral("Another."));
}

TEST_F(OrvaWidget, PageContentIsLimitedInWidthAndCentred)
{
    const auto page = rendered(OrvaPage{.content = OrvaPane{{OrvaSection{.content = {litRow()}}}}});
    page->resize(1200, 500);
    page->show();
    const OrvaCardView* card = all<OrvaCardView>(*page).first();
    EXPECT_EQ(card->width(), 640);
    EXPECT_NEAR(card->mapTo(page.get(), QPoint(0, 0)).x(), (1200 - 640) / 2, 1);

    page->resize(500, 500);
    EXPECT_TRUE(waitUntil([&] { return card->width() < 500; }));
    EXPECT_NEAR(card->width(), 500 - 2 * 26, 1);
    EXPECT_NEAR(card->mapTo(page.get(), QPoint(0, 0)).x(), 26, 1);
}

TEST_F(OrvaWidget, NoTextIsClippedFromAWidthOf480)
{
    const QString longText =
        QStringLiteral("A long text that has to wrap over several lines, because nobody "
                       "wants to see it cut off in the middle of a Donaudampfschifffahrt");
    const auto page = rendered(OrvaPage{
        .header = OrvaPageHeader{.symbol = QStringLiteral("eye"),
                                 .title = longText,
                                 .subtitle = longText,
                                 .trailing = OrvaSwitch{bind(lamp, &Lamp::lit), QStringLiteral("Lamp")}},
        .banner = OrvaStatusBanner{OrvaStatusBanner::Kind::error, longText,
                                   OrvaButton{QStringLiteral("Repair"), nullptr}},
        .content = OrvaPane{
            {OrvaSection{.title = longText,
                         .footnote = Live<QString>(longText),
                         .content = {OrvaToggleRow(longText, bind(lamp, &Lamp::lit), Live<QString>(longText)),
                                     OrvaValueRow{longText, longText, Live<QString>(longText)}, colourRow(),
                                     glowRow()}},
             OrvaCalloutText{longText}}}});
    page->show();
    for (const int width : {480, 560, 800}) {
        page->resize(width, 500);
        ASSERT_TRUE(waitUntil([&] {
            for (const OrvaTextView* text : all<OrvaTextView>(*page)) {
                const QRect inPage(text->mapTo(page.get(), QPoint(0, 0)), text->size());
                if (text->height() < text->heightForWidth(text->width()) || inPage.right() >= width)
                    return false;
            }
            return true;
        })) << width;
    }
}

// Dimming

TEST_F(OrvaWidget, DisabledContentIsDrawnAtTheDimmedOpacity)
{
    const auto enabled = std::make_shared<Observable<bool>>(true);
    const auto page = rendered(OrvaPage{
        .contentEnabled = Live<bool>([enabled] { return enabled->get(); }, {enabled}),
        .content = OrvaPane{{OrvaSection{.title = QStringLiteral("Light"),
                                         .content = {litRow(), colourRow(), glowRow(), bulbsRow()}}}}});
    page->resize(600, 500);
    page->show();
    const QImage bright = page->grab().toImage().convertToFormat(QImage::Format_RGB32);
    enabled->set(false);
    const QImage dim = page->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QColor ground = orvaColor(OrvaColor::window);

    const auto expected = [](int channel, int behind) { return 0.38 * channel + 0.62 * behind; };
    double worst = 0;
    for (int y = 0; y < bright.height(); ++y) {
        for (int x = 0; x < bright.width(); ++x) {
            const QColor before = bright.pixelColor(x, y);
            const QColor after = dim.pixelColor(x, y);
            worst = std::max(worst, std::abs(after.red() - expected(before.red(), ground.red())));
            worst = std::max(worst, std::abs(after.green() - expected(before.green(), ground.green())));
            worst = std::max(worst, std::abs(after.blue() - expected(before.blue(), ground.blue())));
        }
    }
    EXPECT_LE(worst, 2.5) << "of 255; a part of the page is dimmed twice, or not at all";
    EXPECT_NE(bright, dim);
}

TEST_F(OrvaWidget, DisabledContentDoesNotReactWhileTheHeaderDoes)
{
    const auto on = std::make_shared<Observable<bool>>(true);
    const Binding<bool> isOn([on] { return on->get(); }, [on](bool value) { on->set(value); }, {on});
    const auto page =
        rendered(OrvaPage{.contentEnabled = isOn,
                          .header = OrvaPageHeader{.symbol = QStringLiteral("eye"),
                                                   .title = QStringLiteral("Lamp"),
                                                   .trailing = OrvaSwitch{isOn, QStringLiteral("Lamp")}},
                          .content = OrvaSection{.content = {litRow(), glowRow(), bulbsRow()}}});
    page->resize(600, 500);
    page->show();
    const auto switches = all<OrvaSwitchView>(*page);
    ASSERT_EQ(switches.size(), 2);
    QWidget* header = switches.at(0);
    QWidget* row = switches.at(1);

    click(*row);
    EXPECT_TRUE(lamp->lit.get());
    click(*header);
    EXPECT_FALSE(on->get());
    click(*row);
    press(*row, Qt::Key_Space);
    press(*page->findChild<QSlider*>(), Qt::Key_Right);
    press(*page->findChild<QSpinBox*>(), Qt::Key_Up);
    EXPECT_TRUE(lamp->lit.get());
    EXPECT_EQ(lamp->glow.get(), 0.5);
    EXPECT_EQ(lamp->bulbs.get(), 2);
    click(*header);
    EXPECT_TRUE(on->get()) << "the header stays live";
    click(*row);
    EXPECT_FALSE(lamp->lit.get());
}

// Keyboard and assistive technology

TEST_F(OrvaWidget, TabReachesEveryControlInTheOrderThatTheyAreShown)
{
    const auto page = rendered(OrvaPage{
        .header = OrvaPageHeader{.symbol = QStringLiteral("eye"),
                                 .title = QStringLiteral("Lamp"),
                                 .trailing = OrvaSwitch{bind(lamp, &Lamp::spare), QStringLiteral("Lamp")}},
        .banner = OrvaStatusBanner{OrvaStatusBanner::Kind::ok, QStringLiteral("Fine."),
                                   OrvaButton{QStringLiteral("Repair"), nullptr}},
        .content = OrvaSection{.content = {litRow(), glowRow(), bulbsRow(), colourRow()}}});
    page->resize(600, 700);
    showActive(*page);
    all<OrvaSwitchView>(*page).first()->setFocus(Qt::TabFocusReason);
    QStringList names;
    for (int step = 0; step < 6; ++step) {
        ASSERT_TRUE(QApplication::focusWidget());
        names.append(QApplication::focusWidget()->accessibleName());
        press(*QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(names, QStringLiteral("Lamp,Repair,Lit,Glow,Bulbs,Colour").split(u','));
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Lamp")) << "and round again";
}

TEST_F(OrvaWidget, ControlsHaveRoleNameAndDescription)
{
    const auto section = rendered(OrvaSection{.content = {litRow(), glowRow(), bulbsRow(), colourRow()}});
    const auto expectControl = [](QWidget* widget, QAccessible::Role role, const char16_t* name) {
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
        ASSERT_TRUE(interface);
        EXPECT_EQ(interface->role(), role);
        EXPECT_EQ(interface->text(QAccessible::Name), QString::fromUtf16(name));
    };
    QWidget* lit = all<OrvaSwitchView>(*section).first();
    expectControl(lit, QAccessible::CheckBox, u"Lit");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(lit)->text(QAccessible::Description),
              QStringLiteral("Gives light."));
    expectControl(section->findChild<QSlider*>(), QAccessible::Slider, u"Glow");
    expectControl(section->findChild<QSpinBox*>(), QAccessible::SpinBox, u"Bulbs");
    expectControl(section->findChild<QComboBox*>(), QAccessible::ComboBox, u"Colour");
    const auto* picker = QAccessible::queryAccessibleInterface(section->findChild<QComboBox*>());
    EXPECT_EQ(picker->text(QAccessible::Description), QStringLiteral("Warm")) << "its present choice";
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(lit)->state().checked);
    lamp->lit.set(true);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(lit)->state().checked);
}

TEST_F(OrvaWidget, ASwitchNameFollowsItsTitle)
{
    const auto row = rendered(OrvaToggleRow(note(), bind(lamp, &Lamp::lit)));
    lamp->note.set(QStringLiteral("Renamed"));
    EXPECT_EQ(all<OrvaSwitchView>(*row).first()->accessibleName(), QStringLiteral("Renamed"));
    EXPECT_EQ(shownTexts(*row), QStringList{QStringLiteral("Renamed")});
}

// Head of a page

TEST_F(OrvaWidget, TheStartSwitchOfAHeaderFollowsItsPermission)
{
    const auto header = rendered(OrvaPageHeader{.symbol = QStringLiteral("eye"),
                                                .title = QStringLiteral("Lamp"),
                                                .autoStart = bind(lamp, &Lamp::lit),
                                                .autoStartTitle = QStringLiteral("Start at login"),
                                                .autoStartEnabled = Live<bool>(bind(lamp, &Lamp::spare))});
    QWidget* control = all<OrvaSwitchView>(*header).first();
    EXPECT_TRUE(shownTexts(*header).contains(QStringLiteral("Start at login")));
    EXPECT_FALSE(control->isEnabled());
    click(*control);
    EXPECT_FALSE(lamp->lit.get());
    lamp->spare.set(true);
    EXPECT_TRUE(control->isEnabled());
    click(*control);
    EXPECT_TRUE(lamp->lit.get());
}

TEST_F(OrvaWidget, ABadgeIsACapsuleWithItsInsets)
{
    const auto badge = rendered(OrvaBadge{QStringLiteral("Off"), QStringLiteral("pause.circle")});
    const QMargins insets = badge->layout()->contentsMargins();
    EXPECT_EQ(insets, QMargins(8, 3, 8, 3));
    EXPECT_EQ(badge->layout()->spacing(), 4);
    badge->resize(badge->sizeHint());
    const QImage picture = badge->grab().toImage();
    const int left = 0;
    const int middle = picture.height() / 2;
    EXPECT_NE(picture.pixel(left, middle), picture.pixel(left, 0)) << "the corner is rounded away";
}

TEST_F(OrvaWidget, AChipFollowsItsText)
{
    const auto chip = rendered(OrvaChip{.text = note(), .prominent = true});
    const int width = chip->sizeHint().width();
    lamp->note.set(QStringLiteral("A note that is a good deal longer."));
    EXPECT_EQ(shownTexts(*chip), QStringList{QStringLiteral("A note that is a good deal longer.")});
    EXPECT_GT(chip->sizeHint().width(), width);
}

TEST_F(OrvaWidget, AnIconTileHasTheSizeAskedFor)
{
    const auto tile = rendered(OrvaIconTile{QStringLiteral("eye.fill"), 40, OrvaColor::green});
    EXPECT_EQ(tile->sizeHint().boundedTo(tile->maximumSize()).expandedTo(tile->minimumSize()), QSize(40, 40));
    const QImage picture = tile->grab().toImage();
    const QColor middle = picture.pixelColor(20, 6);
    EXPECT_GT(middle.green(), middle.red());
}

TEST_F(OrvaWidget, APageTakesTheNewPaletteWhileItIsShown)
{
    const QPalette before = QApplication::palette();
    const auto page = rendered(OrvaPage{.content = OrvaSection{.content = {litRow(), bulbsRow()}}});
    page->resize(600, 300);
    page->show();
    const QColor light = page->grab().toImage().pixelColor(2, 2);
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(20, 20, 20));
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    EXPECT_TRUE(waitUntil([&] {
        return page->grab().toImage().pixelColor(2, 2) == orvaColor(OrvaColor::window, OrvaScheme::dark);
    }));
    EXPECT_TRUE(waitUntil([&] {
        const QWidget* editor = page->findChild<QSpinBox*>()->findChild<QLineEdit*>();
        return editor->palette().color(QPalette::Text) == orvaColor(OrvaColor::primary, OrvaScheme::dark);
    })) << "what a control keeps of the colours is renewed";
    QApplication::setPalette(before);
    EXPECT_TRUE(waitUntil([&] { return page->grab().toImage().pixelColor(2, 2) == light; }));
}

} // namespace

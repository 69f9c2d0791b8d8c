// The view kit as values: the content of a tree can be read without a display.
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "OrvaneKit/Theme/SystemSymbol.h"

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using Kind = OrvaStatusBanner::Kind;
using State = CapabilityState::Kind;

struct Lamp {
    Observable<bool> lit{false};
    Observable<double> glow{0.5};
    Observable<int> bulbs{2};
    Observable<QString> colour{QStringLiteral("warm")};
};

AnyView lampPane(const std::shared_ptr<Lamp>& lamp)
{
    const QList<OrvaPickerOption> colours{{QStringLiteral("Warm"), QStringLiteral("warm")},
                                          {QStringLiteral("Cold"), QStringLiteral("cold")}};
    return OrvaPane{{
        OrvaSection{
            QStringLiteral("Light"),
            QStringLiteral("power"),
            std::nullopt,
            {OrvaToggleRow(QStringLiteral("Lit"), bind(lamp, &Lamp::lit)),
             OrvaIf{
                 Live<bool>([lamp] { return lamp->lit.get(); }, {}),
                 OrvaSliderRow{
                     QStringLiteral("Glow"), bind(lamp, &Lamp::glow), {0, 1}, 0.1, QStringLiteral("50 %")}},
             OrvaPickerRow{QStringLiteral("Colour"), bind(lamp, &Lamp::colour), colours}}},
        OrvaSection{.content = {OrvaStepperRow{QStringLiteral("Bulbs"), bind(lamp, &Lamp::bulbs), {1, 9}},
                                OrvaRow{VerticalAlignment::center,
                                        {OrvaRowLabel{QStringLiteral("Spares")},
                                         OrvaButton{QStringLiteral("Order"), [] {}}}}}},
        OrvaCalloutText{QStringLiteral("A lamp gives light.")},
    }};
}

TEST(OrvaKit, ATreeIsReadInTheOrderThatItIsShown)
{
    const auto lamp = std::make_shared<Lamp>();
    const AnyView pane = lampPane(lamp);
    EXPECT_EQ(pane.all<OrvaSection>().size(), 2);
    ASSERT_EQ(pane.all<OrvaToggleRow>().size(), 1);
    EXPECT_EQ(pane.all<OrvaToggleRow>().first()->title.get(), QStringLiteral("Lit"));
    EXPECT_EQ(pane.all<OrvaSliderRow>().size(), 1) << "a conditional row is part of the tree";
    EXPECT_EQ(pane.all<OrvaPickerRow>().first()->content.get().size(), 2);
    EXPECT_EQ(pane.all<OrvaStepperRow>().first()->step, 1);
    EXPECT_EQ(pane.all<OrvaRowLabel>().size(), 1);
    EXPECT_EQ(pane.all<OrvaButton>().size(), 1);
    EXPECT_EQ(pane.all<OrvaCalloutText>().size(), 1);
    EXPECT_EQ(pane.all<OrvaCard>().size(), 2);
    EXPECT_EQ(pane.all<DividedVStack>().size(), 2);
}

TEST(OrvaKit, ABindingInATreeReadsAndSetsItsProperty)
{
    const auto lamp = std::make_shared<Lamp>();
    const AnyView pane = lampPane(lamp);
    pane.all<OrvaToggleRow>().first()->isOn.set(true);
    EXPECT_TRUE(lamp->lit.get());
    lamp->colour.set(QStringLiteral("cold"));
    EXPECT_EQ(pane.all<OrvaPickerRow>().first()->selection.get(), QStringLiteral("cold"));
}

TEST(OrvaKit, AnEmptyViewHoldsNothing)
{
    const AnyView nothing;
    EXPECT_FALSE(static_cast<bool>(nothing));
    EXPECT_TRUE(nothing.children().isEmpty());
    EXPECT_TRUE(nothing.all<OrvaRow>().isEmpty());
    EXPECT_EQ(nothing.makeWidget(), nullptr);
    const OrvaIf conditional{true, {}};
    EXPECT_TRUE(conditional.children().isEmpty());
}

TEST(OrvaKit, APageShowsHeaderBannerAndContentAndLeavesOutWhatItHasNot)
{
    const OrvaPage empty;
    EXPECT_TRUE(empty.children().isEmpty());
    const OrvaPage page{.header = OrvaCalloutText{QStringLiteral("1")},
                        .banner = OrvaCalloutText{QStringLiteral("2")},
                        .content = OrvaCalloutText{QStringLiteral("3")}};
    QStringList texts;
    for (const auto& text : AnyView(page).all<OrvaCalloutText>())
        texts.append(text->text.get());
    EXPECT_EQ(texts, (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
}

TEST(OrvaKit, AHeaderHoldsItsTileItsTrailingViewAndTheStartSwitch)
{
    const auto lamp = std::make_shared<Lamp>();
    OrvaPageHeader header{.symbol = QStringLiteral("eye.fill"),
                          .accent = OrvaColor::green,
                          .title = QStringLiteral("Lamp"),
                          .subtitle = QStringLiteral("Gives light."),
                          .accessory = OrvaChip{QStringLiteral("beta")},
                          .trailing = OrvaBadge{QStringLiteral("On")}};
    ASSERT_EQ(AnyView(header).all<OrvaIconTile>().size(), 1);
    EXPECT_EQ(AnyView(header).all<OrvaIconTile>().first()->systemImage, QStringLiteral("eye.fill"));
    EXPECT_EQ(AnyView(header).all<OrvaIconTile>().first()->color, OrvaColor::green);
    EXPECT_EQ(AnyView(header).all<OrvaBadge>().size(), 1);
    EXPECT_EQ(AnyView(header).all<OrvaChip>().size(), 1);
    EXPECT_TRUE(AnyView(header).all<OrvaSwitch>().isEmpty());

    header.autoStart = bind(lamp, &Lamp::lit);
    header.autoStartTitle = QStringLiteral("Start at login");
    header.autoStartEnabled = false;
    const AnyView view = header;
    ASSERT_EQ(view.all<OrvaSwitch>().size(), 1);
    EXPECT_EQ(view.all<OrvaSwitch>().first()->accessibleName, QStringLiteral("Start at login"));
    EXPECT_FALSE(view.all<OrvaSwitch>().first()->enabled.get());
}

TEST(OrvaBadge, TellsEveryStateByTextSymbolAndColour)
{
    const OrvaBadge off{QStringLiteral("Off"), QStringLiteral("pause.circle"), OrvaColor::secondary};
    EXPECT_EQ(OrvaBadge::state({State::disabled}), off);
    EXPECT_EQ(OrvaBadge::state({State::installed}), off);
    EXPECT_EQ(OrvaBadge::state({State::active}),
              (OrvaBadge{QStringLiteral("On"), QStringLiteral("checkmark.circle.fill"), OrvaColor::green}));
    EXPECT_EQ(
        OrvaBadge::state({State::needsPermission}),
        (OrvaBadge{QStringLiteral("Needs permission"), QStringLiteral("lock.fill"), OrvaColor::orange}));
}

TEST(OrvaBadge, OfAFailureDoesNotShowItsMessage)
{
    EXPECT_EQ(OrvaBadge::state(CapabilityState::failed(QStringLiteral("the bulb is broken"))),
              (OrvaBadge{QStringLiteral("Error"), QStringLiteral("exclamationmark.triangle.fill"),
                         OrvaColor::red}));
}

TEST(OrvaStatusBanner, EveryKindHasItsColourAndSymbol)
{
    EXPECT_EQ(color(Kind::ok), OrvaColor::green);
    EXPECT_EQ(symbol(Kind::ok), QStringLiteral("checkmark.circle.fill"));
    EXPECT_EQ(color(Kind::warning), OrvaColor::orange);
    EXPECT_EQ(symbol(Kind::warning), QStringLiteral("exclamationmark.triangle.fill"));
    EXPECT_EQ(color(Kind::error), OrvaColor::red);
    EXPECT_EQ(symbol(Kind::error), QStringLiteral("exclamationmark.octagon.fill"));
    for (const Kind kind : {Kind::ok, Kind::warning, Kind::error})
        EXPECT_TRUE(SystemSymbol::exists(symbol(kind))) << qPrintable(symbol(kind));
}

TEST(OrvaTokens, KeepTheirNumbers)
{
    EXPECT_EQ(Orva::pagePadding, 26);
    EXPECT_EQ(Orva::pageWidth, 640);
    EXPECT_EQ(Orva::sectionGap, 24);
    EXPECT_EQ(Orva::cardCorner, 12);
    EXPECT_EQ(Orva::rowH, 16);
    EXPECT_EQ(Orva::rowV, 12);
    EXPECT_EQ(Orva::disabledDim, 0.38);
    EXPECT_EQ(Orva::bannerCorner, 10);
}

} // namespace

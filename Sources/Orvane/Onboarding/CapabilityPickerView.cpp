#include "Orvane/Onboarding/CapabilityPickerView.h"

#include "Orvane/Home/CapabilityToggle.h"
#include "Orvane/Onboarding/OnboardingPageView.h"
#include "OrvaneKit/Controls/OrvaBalancedTextView.h"
#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Model/OrvaLayout.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr double pageWidth = 720;
constexpr int columns = 2;
constexpr int cardGap = 12;
constexpr double tileSize = 36;
constexpr int tileGap = 12;
constexpr int switchGap = 12 - orvaRingMargin;
constexpr int textGap = 3;
constexpr int edge = 14;

/// The cards, in as many rows as it takes; those of one row are equally high.
struct CapabilityGrid {
    QList<AnyView> cards;

    [[nodiscard]] QList<AnyView> children() const { return cards; }
};

QWidget* makeOrvaWidget(const CapabilityGrid& grid)
{
    auto* widget = new QWidget;
    auto* cells = new QGridLayout(widget);
    cells->setContentsMargins(0, 0, 0, 0);
    cells->setSpacing(cardGap);
    for (int column = 0; column < columns; ++column)
        cells->setColumnStretch(column, 1);
    for (int index = 0; index < grid.cards.size(); ++index)
        cells->addWidget(grid.cards.at(index).makeWidget(), index / columns, index % columns);
    return widget;
}

AnyView tileOf(const CapabilityCard& card)
{
    return OrvaIconTile{.systemImage = card.entry.metadata().symbolName, .size = tileSize};
}

AnyView nameOf(const CapabilityCard& card)
{
    return OrvaText{card.entry.metadata().displayName, OrvaFont::headline, OrvaColor::primary};
}

OrvaText summaryOf(const CapabilityCard& card)
{
    return {card.entry.metadata().summary, OrvaFont::caption, OrvaColor::secondary};
}

AnyView toggleOf(const CapabilityCard& card)
{
    return CapabilityToggle::make(card.entry.id(), card.registry);
}

/// What stands on a card's ground.
struct CardBody {
    CapabilityCard card;
};

QWidget* makeOrvaWidget(const CardBody& body)
{
    auto* widget = new QWidget;
    auto* line = new QHBoxLayout(widget);
    line->setContentsMargins(edge, edge, edge - orvaRingMargin, edge);
    line->setSpacing(0);
    line->addWidget(tileOf(body.card).makeWidget(), 0, Qt::AlignTop);
    line->addSpacing(tileGap);
    auto* text = new QVBoxLayout;
    text->setSpacing(textGap);
    text->addWidget(nameOf(body.card).makeWidget());
    text->addWidget(new OrvaBalancedTextView(summaryOf(body.card), Qt::AlignLeft | Qt::AlignTop));
    text->addStretch(1);
    line->addLayout(text, 1);
    line->addSpacing(switchGap);
    line->addWidget(toggleOf(body.card).makeWidget(), 0, Qt::AlignTop);
    return widget;
}

} // namespace

QList<AnyView> CapabilityCard::children() const
{
    return {tileOf(*this), nameOf(*this), summaryOf(*this), toggleOf(*this)};
}

QList<AnyView> CapabilityPickerView::children() const
{
    QList<AnyView> cards;
    for (const CapabilityRegistry::Entry& entry : registry->entries())
        cards.append(CapabilityCard{entry, registry});
    return {OnboardingPage{
        .title = QStringLiteral("Choose your features"),
        .text = QStringLiteral("Turn on what you want now — you can change any of this later from the Orvane "
                               "window."),
        .width = pageWidth,
        .content = CapabilityGrid{cards}}};
}

QWidget* makeOrvaWidget(const CapabilityCard& card)
{
    return new OrvaCardView(CardBody{card});
}

QWidget* makeOrvaWidget(const CapabilityPickerView& view)
{
    return view.children().first().makeWidget();
}

} // namespace orvane

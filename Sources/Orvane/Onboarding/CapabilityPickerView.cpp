#include "Orvane/Onboarding/CapabilityPickerView.h"

#include "Orvane/Brand/ShellText.h"
#include "Orvane/Home/CapabilityNotice.h"
#include "Orvane/Home/CapabilityToggle.h"
#include "Orvane/Onboarding/OnboardingPageView.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QGridLayout>

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

/// The cards, in as many rows as needed; those of one row are equally high.
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

} // namespace

AnyView CapabilityCard::body() const
{
    const CapabilityMetadata& metadata = entry.metadata();
    const OrvaBox text{.axis = OrvaBox::Axis::column,
                       .spacing = textGap,
                       .content = {OrvaText{metadata.displayName, OrvaFont::headline},
                                   OrvaText{metadata.summary, OrvaFont::caption, OrvaColor::secondary,
                                            OrvaTextLines::balanced, Qt::AlignLeft | Qt::AlignTop},
                                   CapabilityNotice::line(entry.id(), registry), OrvaBoxPart::rest(1)}};
    return OrvaCard{{OrvaBox{
        .margins = QMargins(edge, edge, edge - orvaRingMargin, edge),
        .content = {{OrvaIconTile{.systemImage = metadata.symbolName, .size = tileSize}, Qt::AlignTop},
                    OrvaBoxPart::gap(tileGap),
                    OrvaBoxPart::filling(text),
                    OrvaBoxPart::gap(switchGap),
                    {CapabilityToggle::make(entry.id(), registry), Qt::AlignTop}}}}};
}

AnyView CapabilityPickerView::body() const
{
    QList<AnyView> cards;
    for (const CapabilityRegistry::Entry& entry : registry->entries())
        cards.append(CapabilityCard{entry, registry});
    return OnboardingPage{
        .title = ShellText::tr("Choose your features"),
        .text = ShellText::tr("Turn on what you want now — you can change any of this later from the Orvane "
                              "window."),
        .width = pageWidth,
        .content = CapabilityGrid{cards}};
}

} // namespace orvane

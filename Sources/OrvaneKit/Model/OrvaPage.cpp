#include "OrvaneKit/Model/OrvaPage.h"

#include "OrvaneCore/Base/CapabilityState.h"
#include "OrvaneKit/Controls/OrvaPillView.h"
#include "OrvaneKit/Controls/OrvaSwitchView.h"
#include "OrvaneKit/Lists/OrvaPageView.h"
#include "OrvaneKit/Model/KitText.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPageMetrics.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr double headerTile = 52;
constexpr int headerGap = 16;
constexpr int textGap = 3;
constexpr int accessoryGap = 8;

QList<AnyView> present(std::initializer_list<AnyView> views)
{
    QList<AnyView> found;
    for (const AnyView& view : views) {
        if (view)
            found.append(view);
    }
    return found;
}

constexpr int textEdge = static_cast<int>(headerTile) + headerGap;
// Controls have their own room for their focus rings.
constexpr QMargins belowText(textEdge - orvaRingMargin, 0, 0, 0);

AnyView titleAndSubtitle(const OrvaPageHeader& header)
{
    return OrvaBox{
        .axis = OrvaBox::Axis::column,
        .spacing = textGap,
        .content = {OrvaBoxPart::rest(1), OrvaText{header.title, OrvaFont::title},
                    OrvaText{header.subtitle, OrvaFont::body, OrvaColor::secondary, OrvaTextLines::balanced},
                    OrvaBoxPart::rest(1)}};
}

/// Stands below the header's text, so that a narrow page keeps the width for it.
AnyView autoStartLine(const OrvaPageHeader& header)
{
    OrvaBox line{.spacing = headerGap / 2.0, .margins = belowText, .content = {}, .endsFree = true};
    if (header.autoStart) {
        line.content.append(
            AnyView(OrvaSwitch{*header.autoStart, header.autoStartTitle, header.autoStartEnabled}));
        line.content.append(AnyView(
            OrvaEnabled{header.autoStartEnabled, OrvaText{header.autoStartTitle, OrvaFont::callout}}));
    }
    if (header.accessory && header.accessoryPlace == OrvaPageHeader::AccessoryPlace::besideAutoStart) {
        line.content.append(OrvaBoxPart::gap(accessoryGap));
        line.content.append(OrvaBoxPart{header.accessory, {}, OrvaBoxPart::Fill::asItWants});
    }
    return line;
}

/// The tinted ground of a banner.
struct BannerGround {
    OrvaColor color;
    AnyView content;

    [[nodiscard]] QList<AnyView> children() const { return {content}; }
};

QWidget* makeOrvaWidget(const BannerGround& ground)
{
    auto* widget = new OrvaBannerView(ground.color);
    auto* layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(ground.content.makeWidget());
    return widget;
}

OrvaBadge badge(const QString& text, const char16_t* symbol, OrvaColor color)
{
    return {text, QString::fromUtf16(symbol), color};
}

} // namespace

QList<AnyView> OrvaPage::children() const
{
    return present({header, banner, content});
}

AnyView OrvaPageHeader::body() const
{
    constexpr int overhang = OrvaPageMetrics::overhang;
    OrvaBox head{.content = {{OrvaIconTile{symbol, headerTile, accent}, Qt::AlignTop},
                             OrvaBoxPart::gap(headerGap),
                             OrvaBoxPart::filling(titleAndSubtitle(*this))}};
    if (trailing) {
        head.content.append(OrvaBoxPart::gap(headerGap));
        head.content.append(OrvaBoxPart{trailing, Qt::AlignVCenter});
    }
    head.content.append(OrvaBoxPart::gap(overhang - ringMargin(trailing)));
    QList<OrvaBoxPart> lines{head};
    if (autoStart || accessory)
        lines.append(autoStartLine(*this));
    if (accessory && accessoryPlace == AccessoryPlace::below)
        lines.append(OrvaBox{.margins = belowText,
                             .content = {OrvaBoxPart::filling(accessory), OrvaBoxPart::gap(overhang)}});
    return OrvaBox{.axis = OrvaBox::Axis::column, .spacing = headerGap / 2.0, .content = lines};
}

AnyView OrvaStatusBanner::body() const
{
    const int ring = ringMargin(trailing);
    return BannerGround{color(kind),
                        OrvaBox{.spacing = 10,
                                .margins = QMargins(14, 11 - ring, 14 - ring, 11 - ring),
                                .content = {{OrvaSymbolMark{symbol(kind), 18, color(kind)}, Qt::AlignVCenter},
                                            OrvaBoxPart::filling(OrvaText{message, OrvaFont::callout}),
                                            {trailing, Qt::AlignVCenter}}}};
}

OrvaColor color(OrvaStatusBanner::Kind kind)
{
    switch (kind) {
    case OrvaStatusBanner::Kind::ok:
        return OrvaColor::green;
    case OrvaStatusBanner::Kind::warning:
        return OrvaColor::orange;
    case OrvaStatusBanner::Kind::error:
        return OrvaColor::red;
    }
    Q_UNREACHABLE();
}

QString symbol(OrvaStatusBanner::Kind kind)
{
    switch (kind) {
    case OrvaStatusBanner::Kind::ok:
        return QStringLiteral("checkmark.circle.fill");
    case OrvaStatusBanner::Kind::warning:
        return QStringLiteral("exclamationmark.triangle.fill");
    case OrvaStatusBanner::Kind::error:
        return QStringLiteral("exclamationmark.octagon.fill");
    }
    Q_UNREACHABLE();
}

OrvaBadge OrvaBadge::state(const CapabilityState& state)
{
    switch (state.kind) {
    case CapabilityState::Kind::disabled:
    case CapabilityState::Kind::installed:
        return badge(KitText::tr("Off"), u"pause.circle", OrvaColor::secondary);
    case CapabilityState::Kind::active:
        return badge(KitText::tr("On"), u"checkmark.circle.fill", OrvaColor::green);
    case CapabilityState::Kind::needsPermission:
        return badge(KitText::tr("Needs permission"), u"lock.fill", OrvaColor::orange);
    case CapabilityState::Kind::failed:
        return badge(KitText::tr("Error"), u"exclamationmark.triangle.fill", OrvaColor::red);
    }
    Q_UNREACHABLE();
}

QWidget* makeOrvaWidget(const OrvaPage& page)
{
    return new OrvaPageView(page.contentEnabled, page.header, page.banner, page.content);
}

QWidget* makeOrvaWidget(const OrvaChip& chip)
{
    return new OrvaChipView(chip);
}
QWidget* makeOrvaWidget(const OrvaBadge& badge)
{
    return new OrvaBadgeView(badge);
}
QWidget* makeOrvaWidget(const OrvaIconTile& tile)
{
    return new OrvaIconTileView(tile);
}

QWidget* makeOrvaWidget(const OrvaSwitch& control)
{
    return new OrvaSwitchView(control.isOn, control.accessibleName, {}, control.enabled);
}

} // namespace orvane

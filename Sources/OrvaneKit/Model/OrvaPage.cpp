#include "OrvaneKit/Model/OrvaPage.h"

#include "OrvaneCore/Base/CapabilityState.h"
#include "OrvaneKit/Controls/OrvaBalancedTextView.h"
#include "OrvaneKit/Controls/OrvaPillView.h"
#include "OrvaneKit/Controls/OrvaSwitchView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Lists/OrvaPageView.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QHBoxLayout>
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

AnyView autoStartSwitch(const OrvaPageHeader& header)
{
    if (!header.autoStart)
        return {};
    return OrvaSwitch{*header.autoStart, header.autoStartTitle, header.autoStartEnabled};
}

/// The title of the start-up switch, which fades with it.
class StartTitleView final : public OrvaTextView {
public:
    StartTitleView(const QString& title, const Live<bool>& enabled)
        : OrvaTextView(title, OrvaFont::callout, OrvaColor::primary)
    {
        follow(m_cancellables, enabled, [this](bool on) { setEnabled(on); });
    }

private:
    Cancellables m_cancellables;
};

constexpr int textEdge = static_cast<int>(headerTile) + headerGap;

/// Below the header's text, so that a narrow page keeps the width for it: switch, title, accessory.
QLayout* makeAutoStartLine(const OrvaPageHeader& header)
{
    auto* line = new QHBoxLayout;
    line->setSpacing(headerGap / 2);
    line->setContentsMargins(textEdge - orvaRingMargin, 0, 0, 0);
    if (QWidget* control = autoStartSwitch(header).makeWidget()) {
        line->addWidget(control);
        line->addWidget(new StartTitleView(header.autoStartTitle, header.autoStartEnabled));
    }
    const bool isBeside = header.accessoryPlace == OrvaPageHeader::AccessoryPlace::besideAutoStart;
    QWidget* const accessory = isBeside ? header.accessory.makeWidget() : nullptr;
    const bool fills = accessory && (accessory->sizePolicy().expandingDirections() & Qt::Horizontal);
    if (accessory) {
        line->addSpacing(accessoryGap);
        line->addWidget(accessory, fills ? 1 : 0);
    }
    if (!fills)
        line->addStretch(1);
    return line;
}

OrvaBadge badge(const char16_t* text, const char16_t* symbol, OrvaColor color)
{
    return {QString::fromUtf16(text), QString::fromUtf16(symbol), color};
}

} // namespace

QList<AnyView> OrvaPage::children() const
{
    return present({header, banner, content});
}

QList<AnyView> OrvaPageHeader::children() const
{
    return present({OrvaIconTile{symbol, headerTile, accent}, trailing, autoStartSwitch(*this), accessory});
}

QList<AnyView> OrvaStatusBanner::children() const
{
    return present({trailing});
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
        return badge(u"Off", u"pause.circle", OrvaColor::secondary);
    case CapabilityState::Kind::active:
        return badge(u"On", u"checkmark.circle.fill", OrvaColor::green);
    case CapabilityState::Kind::needsPermission:
        return badge(u"Needs permission", u"lock.fill", OrvaColor::orange);
    case CapabilityState::Kind::failed:
        return badge(u"Error", u"exclamationmark.triangle.fill", OrvaColor::red);
    }
    Q_UNREACHABLE();
}

QWidget* makeOrvaWidget(const OrvaPage& page)
{
    return new OrvaPageView(page.contentEnabled, page.header, page.banner, page.content);
}

QWidget* makeOrvaWidget(const OrvaPageHeader& header)
{
    auto* widget = new QWidget;
    auto* lines = new QVBoxLayout(widget);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(headerGap / 2);

    auto* head = new QHBoxLayout;
    head->setSpacing(headerGap);
    head->addWidget(makeOrvaWidget(OrvaIconTile{header.symbol, headerTile, header.accent}), 0, Qt::AlignTop);
    auto* text = new QVBoxLayout;
    text->setSpacing(textGap);
    text->addStretch(1);
    text->addWidget(new OrvaTextView(header.title, OrvaFont::title, OrvaColor::primary));
    text->addWidget(new OrvaBalancedTextView({header.subtitle, OrvaFont::body, OrvaColor::secondary},
                                             Qt::AlignLeft | Qt::AlignVCenter));
    text->addStretch(1);
    head->addLayout(text, 1);
    if (QWidget* trailing = header.trailing.makeWidget())
        head->addWidget(trailing, 0, Qt::AlignVCenter);
    lines->addLayout(head);
    if (header.autoStart || header.accessory)
        lines->addLayout(makeAutoStartLine(header));
    if (header.accessory && header.accessoryPlace == OrvaPageHeader::AccessoryPlace::below) {
        auto* below = new QHBoxLayout;
        below->setContentsMargins(textEdge - orvaRingMargin, 0, 0, 0);
        below->addWidget(header.accessory.makeWidget());
        lines->addLayout(below);
    }
    return widget;
}

QWidget* makeOrvaWidget(const OrvaStatusBanner& banner)
{
    auto* widget = new OrvaBannerView(color(banner.kind));
    auto* line = new QHBoxLayout(widget);
    const int ring = ringMargin(banner.trailing);
    line->setContentsMargins(14, 11 - ring, 14 - ring, 11 - ring);
    line->setSpacing(10);
    line->addWidget(new OrvaSymbolView(symbol(banner.kind), 18, color(banner.kind)), 0, Qt::AlignVCenter);
    line->addWidget(new OrvaTextView(banner.message, OrvaFont::callout, OrvaColor::primary), 1);
    if (QWidget* trailing = banner.trailing.makeWidget())
        line->addWidget(trailing, 0, Qt::AlignVCenter);
    return widget;
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

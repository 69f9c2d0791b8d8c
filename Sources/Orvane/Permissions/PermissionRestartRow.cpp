#include "Orvane/Permissions/PermissionRestartRow.h"

#include "Orvane/Home/OrvaRowSymbol.h"
#include "Orvane/Launch/AppRelaunch.h"
#include "OrvaneKit/Controls/OrvaBalancedTextView.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QHBoxLayout>
#include <QWidget>

namespace orvane {

namespace {

constexpr int rowH = static_cast<int>(Orva::rowH);
constexpr int rowV = static_cast<int>(Orva::rowV) - orvaRingMargin;
constexpr int symbolGap = 12;
constexpr int buttonGap = 16 - orvaRingMargin;

} // namespace

QList<AnyView> PermissionRestartRow::children() const
{
    return {OrvaRowSymbol{.systemImage = QStringLiteral("arrow.clockwise.circle")},
            OrvaText{QStringLiteral("Granted it but still shows off? macOS applies new permissions only "
                                    "after Orvane restarts."),
                     OrvaFont::caption, OrvaColor::secondary},
            OrvaButton{.title = QStringLiteral("Quit & Reopen"), .action = &AppRelaunch::relaunch}};
}

QWidget* makeOrvaWidget(const PermissionRestartRow& row)
{
    const QList<AnyView> parts = row.children();
    auto* text = new OrvaBalancedTextView(*parts.at(1).as<OrvaText>(), Qt::AlignLeft | Qt::AlignVCenter);
    auto* widget = new QWidget;
    auto* line = new QHBoxLayout(widget);
    line->setContentsMargins(rowH, rowV, rowH - orvaRingMargin, rowV);
    line->setSpacing(0);
    line->addWidget(parts.at(0).makeWidget(), 0, Qt::AlignVCenter);
    line->addSpacing(symbolGap);
    line->addWidget(text, 1, Qt::AlignVCenter);
    line->addSpacing(buttonGap);
    line->addWidget(parts.at(2).makeWidget(), 0, Qt::AlignVCenter);
    return widget;
}

} // namespace orvane

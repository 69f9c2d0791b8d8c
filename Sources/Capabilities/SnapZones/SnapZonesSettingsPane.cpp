#include "Capabilities/SnapZones/SnapZonesSettingsPane.h"

#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"

#include <cmath>

namespace orvane {

namespace {

using Length = Setting<double> SnapZonesSettings::*;

AnyView lengthRow(const std::shared_ptr<SnapZonesSettings>& settings, const QString& title, Length length,
                  OrvaSliderRow::Range range)
{
    const std::shared_ptr<Setting<double>> value(settings, &((*settings).*length));
    return OrvaSliderRow{.title = title,
                         .value = bind(settings, length),
                         .range = range,
                         .detail = Live<QString>(
                             [value] {
                                 // The sum makes no "-0" of a small negative length.
                                 const double whole = std::trunc(value->get()) + 0.0;
                                 return QStringLiteral("%1 pt").arg(whole, 0, 'f', 0);
                             },
                             {value})};
}

AnyView dragSection(const std::shared_ptr<SnapZonesSettings>& settings)
{
    return OrvaSection{
        .title = QStringLiteral("Drag to Snap"),
        .systemImage = QStringLiteral("rectangle.split.2x1"),
        .footnote = Live<QString>(QStringLiteral("Drag a window to the left/right edge for halves, a corner "
                                                 "for quarters, or the top to maximize.")),
        .content = {OrvaToggleRow(QStringLiteral("Snap windows when dragged to a screen edge"),
                                  bind(settings, &SnapZonesSettings::dragToSnap))}};
}

AnyView spacingSection(const std::shared_ptr<SnapZonesSettings>& settings)
{
    return OrvaSection{.title = QStringLiteral("Spacing"),
                       .systemImage = QStringLiteral("square.dashed"),
                       .content = {lengthRow(settings, QStringLiteral("Gap from screen edges"),
                                             &SnapZonesSettings::outerGap, {0, 40}),
                                   lengthRow(settings, QStringLiteral("Gap between windows"),
                                             &SnapZonesSettings::innerGap, {0, 40})}};
}

AnyView edgeSection(const std::shared_ptr<SnapZonesSettings>& settings)
{
    return OrvaSection{.title = QStringLiteral("Edge Detection"),
                       .systemImage = QStringLiteral("dot.viewfinder"),
                       .content = {lengthRow(settings, QStringLiteral("Edge sensitivity"),
                                             &SnapZonesSettings::edgeThreshold, {2, 30}),
                                   lengthRow(settings, QStringLiteral("Corner size"),
                                             &SnapZonesSettings::cornerSize, {40, 160})}};
}

} // namespace

AnyView SnapZonesSettingsPane::make(std::shared_ptr<SnapZonesSettings> settings)
{
    return OrvaPane{{
        dragSection(settings),
        spacingSection(settings),
        edgeSection(settings),
        OrvaCalloutText{QStringLiteral("Assign keyboard shortcuts for halves, quarters, maximize, and Snap "
                                       "Layouts in the Keyboard Shortcuts section above.")},
    }};
}

} // namespace orvane

#include "Capabilities/SnapZones/SnapZonesSettingsPane.h"

#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::SnapZonesSettingsPane {

AnyView make(const std::shared_ptr<SnapZonesSettings>& settings)
{
    using Settings = SnapZonesSettings;
    const auto length = [&settings](Setting<double> Settings::*value, const QString& title,
                                    OrvaSliderRow::Range range) {
        return sliderRow(settings, value, title, range, QStringLiteral("pt"));
    };
    return OrvaPane{{
        section(QStringLiteral("Drag to Snap"), QStringLiteral("rectangle.split.2x1"),
                {toggleRow(settings, &Settings::dragToSnap,
                           QStringLiteral("Snap windows when dragged to a screen edge"))},
                QStringLiteral("Drag a window to the left/right edge for halves, a corner for quarters, or "
                               "the top to maximize.")),
        section(QStringLiteral("Spacing"), QStringLiteral("square.dashed"),
                {length(&Settings::outerGap, QStringLiteral("Gap from screen edges"), {0, 40}),
                 length(&Settings::innerGap, QStringLiteral("Gap between windows"), {0, 40})}),
        section(QStringLiteral("Edge Detection"), QStringLiteral("dot.viewfinder"),
                {length(&Settings::edgeThreshold, QStringLiteral("Edge sensitivity"), {2, 30}),
                 length(&Settings::cornerSize, QStringLiteral("Corner size"), {40, 160})}),
        OrvaCalloutText{QStringLiteral("Assign keyboard shortcuts for halves, quarters, maximize, and Snap "
                                       "Layouts in the Keyboard Shortcuts section above.")},
    }};
}

} // namespace orvane::SnapZonesSettingsPane

#include "Capabilities/SnapZones/SnapZonesSettingsPane.h"

#include "Capabilities/SnapZones/SnapZonesText.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::SnapZonesSettingsPane {

AnyView make(const std::shared_ptr<SnapZonesSettings>& settings)
{
    using Settings = SnapZonesSettings;
    const auto length = [&settings](Setting<double> Settings::*value, const QString& title,
                                    OrvaSliderRow::Range range) {
        return sliderRow(settings, value, title, range, SnapZonesText::tr("pt", "points"));
    };
    return OrvaPane{{
        section(
            SnapZonesText::tr("Drag to Snap"), QStringLiteral("rectangle.split.2x1"),
            {toggleRow(settings, &Settings::dragToSnap,
                       SnapZonesText::tr("Snap windows when dragged to a screen edge"))},
            SnapZonesText::tr("Drag a window to the left/right edge for halves, a corner for quarters, or "
                              "the top to maximize.")),
        section(SnapZonesText::tr("Spacing"), QStringLiteral("square.dashed"),
                {length(&Settings::outerGap, SnapZonesText::tr("Gap from screen edges"), {0, 40}),
                 length(&Settings::innerGap, SnapZonesText::tr("Gap between windows"), {0, 40})}),
        section(SnapZonesText::tr("Edge Detection"), QStringLiteral("dot.viewfinder"),
                {length(&Settings::edgeThreshold, SnapZonesText::tr("Edge sensitivity"), {2, 30}),
                 length(&Settings::cornerSize, SnapZonesText::tr("Corner size"), {40, 160})}),
        OrvaCalloutText{
            SnapZonesText::tr("Assign keyboard shortcuts for halves, quarters, maximize, and Snap "
                              "Layouts in the Keyboard Shortcuts section above.")},
    }};
}

} // namespace orvane::SnapZonesSettingsPane

// Settings of Snap Zones. Lengths are in points; the pane sets the sliders' ranges, and nothing is clamped
// here.
#pragma once

#include "Capabilities/SnapZones/Geometry/SnapZoneCalculator.h"
#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class SnapZonesSettings : public SettingsObject {
public:
    explicit SnapZonesSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences))
    {
        load();
    }

    Setting<bool> dragToSnap{*this, u"dragToSnap", true};
    Setting<double> outerGap{*this, u"outerGap", 0};
    Setting<double> innerGap{*this, u"innerGap", 0};
    /// The distance from an edge within which the pointer has to come.
    Setting<double> edgeThreshold{*this, u"edgeThreshold", 8};
    /// The length of a corner along its edges.
    Setting<double> cornerSize{*this, u"cornerSize", 80};

    [[nodiscard]] SnapGaps gaps() const { return {.outer = outerGap.get(), .inner = innerGap.get()}; }
};

} // namespace orvane

// Settings of Snap Zones. Lengths in points; the sliders' ranges are the pane's, nothing is clamped here.
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
    /// How near to an edge the pointer has to come.
    Setting<double> edgeThreshold{*this, u"edgeThreshold", 8};
    /// How far a corner reaches along its edges.
    Setting<double> cornerSize{*this, u"cornerSize", 80};

    [[nodiscard]] SnapGaps gaps() const { return {.outer = outerGap.get(), .inner = innerGap.get()}; }
};

} // namespace orvane

// The settings pane of Snap Zones.
#pragma once

#include "CapabilitySnapZones/SnapZonesSettings.h"
#include "OrvaneCore/OrvaView.h"

namespace orvane {

class SnapZonesSettingsPane {
public:
    static AnyView make(std::shared_ptr<SnapZonesSettings> settings);
};

} // namespace orvane

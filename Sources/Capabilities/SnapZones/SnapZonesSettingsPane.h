// The settings pane of Snap Zones.
#pragma once

#include "Capabilities/SnapZones/SnapZonesSettings.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane {

class SnapZonesSettingsPane {
public:
    static AnyView make(std::shared_ptr<SnapZonesSettings> settings);
};

} // namespace orvane

// The settings pane of Snap Zones.
#pragma once

#include "Capabilities/SnapZones/SnapZonesSettings.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::SnapZonesSettingsPane {

AnyView make(const std::shared_ptr<SnapZonesSettings>& settings);

} // namespace orvane::SnapZonesSettingsPane

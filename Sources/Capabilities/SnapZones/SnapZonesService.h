// Watches drags for as long as the capability is on.
#pragma once

#include "Capabilities/SnapZones/SnapZonesController.h"
#include "OrvaneCore/Capability/ControllerService.h"

namespace orvane {

class SnapZonesService final : public ControllerService<SnapZonesController> {
public:
    using ControllerService::ControllerService;
};

} // namespace orvane

// On the tap for as long as the capability is on.
#pragma once

#include "Capabilities/KeySwap/KeySwapController.h"
#include "OrvaneCore/Capability/ControllerService.h"

namespace orvane {

class KeySwapService final : public ControllerService<KeySwapController> {
public:
    using ControllerService::ControllerService;
};

} // namespace orvane

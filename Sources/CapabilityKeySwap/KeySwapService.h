// On the tap for as long as the capability is on.
#pragma once

#include "CapabilityKeySwap/KeySwapController.h"
#include "OrvaneCore/ControllerService.h"

namespace orvane {

class KeySwapService final : public ControllerService<KeySwapController> {
public:
    using ControllerService::ControllerService;
};

} // namespace orvane

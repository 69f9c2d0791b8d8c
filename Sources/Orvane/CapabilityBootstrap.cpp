#include "Orvane/CapabilityBootstrap.h"

#include "CapabilityAwake/AwakeCapability.h"
#include "CapabilityKeySwap/KeySwapCapability.h"
#include "OrvaneCore/CapabilityRegistry.h"

namespace orvane {

void CapabilityBootstrap::registerInto(CapabilityRegistry& registry)
{
    registry.registerCapability(std::make_shared<KeySwapCapability>());
    registry.registerCapability(std::make_shared<AwakeCapability>());
}

} // namespace orvane

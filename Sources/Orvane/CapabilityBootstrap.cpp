#include "Orvane/CapabilityBootstrap.h"

#include "CapabilityAwake/AwakeCapability.h"
#include "CapabilityClipboardHistory/ClipboardHistoryCapability.h"
#include "CapabilityKeySwap/KeySwapCapability.h"
#include "CapabilityPlainPaste/PlainPasteCapability.h"
#include "CapabilitySnapZones/SnapZonesCapability.h"
#include "OrvaneCore/CapabilityRegistry.h"

namespace orvane {

void CapabilityBootstrap::registerInto(CapabilityRegistry& registry)
{
    registry.registerCapability(std::make_shared<SnapZonesCapability>());
    registry.registerCapability(std::make_shared<KeySwapCapability>());
    registry.registerCapability(std::make_shared<ClipboardHistoryCapability>());
    registry.registerCapability(std::make_shared<AwakeCapability>());
    registry.registerCapability(std::make_shared<PlainPasteCapability>());
}

} // namespace orvane

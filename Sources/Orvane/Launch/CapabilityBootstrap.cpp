#include "Orvane/Launch/CapabilityBootstrap.h"

#include "Capabilities/Awake/AwakeCapability.h"
#include "Capabilities/ClipboardHistory/ClipboardHistoryCapability.h"
#include "Capabilities/ColorPicker/ColorPickerCapability.h"
#include "Capabilities/DailyFrame/DailyFrameCapability.h"
#include "Capabilities/ImageResizer/ImageResizerCapability.h"
#include "Capabilities/KeySwap/KeySwapCapability.h"
#include "Capabilities/MouseTools/MouseToolsCapability.h"
#include "Capabilities/PlainPaste/PlainPasteCapability.h"
#include "Capabilities/SnapZones/SnapZonesCapability.h"
#include "Capabilities/TextExtractor/TextExtractorCapability.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"

namespace orvane {

void CapabilityBootstrap::registerInto(CapabilityRegistry& registry)
{
    registry.registerCapability(std::make_shared<DailyFrameCapability>());
    registry.registerCapability(std::make_shared<SnapZonesCapability>());
    registry.registerCapability(std::make_shared<ImageResizerCapability>());
    registry.registerCapability(std::make_shared<KeySwapCapability>());
    registry.registerCapability(std::make_shared<ClipboardHistoryCapability>());
    registry.registerCapability(std::make_shared<MouseToolsCapability>());
    registry.registerCapability(std::make_shared<ColorPickerCapability>());
    registry.registerCapability(std::make_shared<TextExtractorCapability>());
    registry.registerCapability(std::make_shared<AwakeCapability>());
    registry.registerCapability(std::make_shared<PlainPasteCapability>());
}

} // namespace orvane

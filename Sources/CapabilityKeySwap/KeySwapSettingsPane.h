// The settings pane of Ctrl Shortcuts.
#pragma once

#include "CapabilityKeySwap/KeySwapSettings.h"
#include "OrvaneCore/OrvaView.h"

namespace orvane {

class KeySwapSettingsPane {
public:
    static AnyView make(std::shared_ptr<KeySwapSettings> settings);
};

} // namespace orvane

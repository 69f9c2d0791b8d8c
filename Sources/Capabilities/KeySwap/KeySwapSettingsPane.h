// The settings pane of Ctrl Shortcuts.
#pragma once

#include "Capabilities/KeySwap/KeySwapSettings.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane {

class KeySwapSettingsPane {
public:
    static AnyView make(std::shared_ptr<KeySwapSettings> settings);
};

} // namespace orvane

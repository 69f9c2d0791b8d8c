// The settings pane of Ctrl Shortcuts.
#pragma once

#include "Capabilities/KeySwap/KeySwapSettings.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::KeySwapSettingsPane {

AnyView make(const std::shared_ptr<KeySwapSettings>& settings);

} // namespace orvane::KeySwapSettingsPane

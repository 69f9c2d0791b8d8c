// The settings pane of the mouse tools.
#pragma once

#include "Capabilities/MouseTools/MouseToolsSettings.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::MouseToolsSettingsPane {

[[nodiscard]] AnyView make(const std::shared_ptr<MouseToolsSettings>& settings);

} // namespace orvane::MouseToolsSettingsPane

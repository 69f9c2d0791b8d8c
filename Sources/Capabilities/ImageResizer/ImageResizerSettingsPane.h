// The settings pane of the image resizer.
#pragma once

#include "Capabilities/ImageResizer/ResizerWindowController.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::ImageResizerSettingsPane {

[[nodiscard]] AnyView make(const std::shared_ptr<ResizerWindowController>& controller);

} // namespace orvane::ImageResizerSettingsPane

// The settings pane of the colour picker.
#pragma once

#include "Capabilities/ColorPicker/ColorPickerSettings.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::ColorPickerSettingsPane {

[[nodiscard]] AnyView make(const std::shared_ptr<ColorPickerSettings>& settings);

} // namespace orvane::ColorPickerSettingsPane

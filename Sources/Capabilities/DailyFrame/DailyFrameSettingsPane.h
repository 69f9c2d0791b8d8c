// The pane: the present picture, what can be done by hand, the source and the options.
#pragma once

#include "Capabilities/DailyFrame/DailyFrameController.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::DailyFrameSettingsPane {

[[nodiscard]] AnyView make(const std::shared_ptr<DailyFrameController>& controller);

} // namespace orvane::DailyFrameSettingsPane

// The parts of the pane that are more than a bound setting.
#pragma once

#include "Capabilities/DailyFrame/DailyFrameController.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::DailyFrameRows {

/// The line below the preview: a link where the credit has one. Shown as the settings say.
[[nodiscard]] AnyView credit(const std::shared_ptr<DailyFrameController>& controller);
[[nodiscard]] AnyView buttons(const std::shared_ptr<DailyFrameController>& controller);
/// Why the last job failed.
[[nodiscard]] AnyView banner(const std::shared_ptr<DailyFrameController>& controller);
[[nodiscard]] AnyView sourcePicker(const std::shared_ptr<DailyFrameController>& controller);
/// Shown while the source has regions.
[[nodiscard]] AnyView regionPicker(const std::shared_ptr<DailyFrameController>& controller);
[[nodiscard]] AnyView allDisplaysToggle(const std::shared_ptr<DailyFrameController>& controller);

} // namespace orvane::DailyFrameRows

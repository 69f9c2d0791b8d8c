// The settings pane of Awake.
#pragma once

#include "Capabilities/Awake/AwakeController.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::AwakeSettingsPane {

AnyView make(const std::shared_ptr<AwakeController>& controller);

} // namespace orvane::AwakeSettingsPane

// The rows that edit the list of applications.
#pragma once

#include "Capabilities/KeySwap/KeySwapSettings.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::ExcludedAppsRows {

/// One row for each application, with a button that removes it.
AnyView list(const std::shared_ptr<KeySwapSettings>& settings);
/// A row with the button that opens the chooser.
AnyView add(const std::shared_ptr<KeySwapSettings>& settings);

} // namespace orvane::ExcludedAppsRows

// The settings pane of the clipboard history.
#pragma once

#include "Capabilities/ClipboardHistory/ClipboardHistorySettings.h"
#include "OrvaneCore/Base/OrvaView.h"

#include <functional>

namespace orvane::ClipboardHistorySettingsPane {

/// `onClear` is called at once, without asking the user.
AnyView make(const std::shared_ptr<ClipboardHistorySettings>& settings, std::function<void()> onClear);

} // namespace orvane::ClipboardHistorySettingsPane

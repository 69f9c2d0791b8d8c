// The settings pane of the clipboard history.
#pragma once

#include "Capabilities/ClipboardHistory/ClipboardHistorySettings.h"
#include "OrvaneCore/Base/OrvaView.h"

#include <functional>

namespace orvane {

class ClipboardHistorySettingsPane {
public:
    /// `onClear` is called at once, without a question.
    static AnyView make(std::shared_ptr<ClipboardHistorySettings> settings, std::function<void()> onClear);
};

} // namespace orvane

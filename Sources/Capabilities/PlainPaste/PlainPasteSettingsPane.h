// The settings pane of plain paste.
#pragma once

#include "Capabilities/PlainPaste/PlainPasteSettings.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane::PlainPasteSettingsPane {

AnyView make(const std::shared_ptr<PlainPasteSettings>& settings);

} // namespace orvane::PlainPasteSettingsPane

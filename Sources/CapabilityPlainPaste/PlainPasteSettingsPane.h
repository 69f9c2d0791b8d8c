// The settings pane of plain paste.
#pragma once

#include "CapabilityPlainPaste/PlainPasteSettings.h"
#include "OrvaneCore/OrvaView.h"

namespace orvane {

class PlainPasteSettingsPane {
public:
    static AnyView make(std::shared_ptr<PlainPasteSettings> settings);
};

} // namespace orvane

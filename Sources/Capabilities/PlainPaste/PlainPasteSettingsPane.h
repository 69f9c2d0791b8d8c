// The settings pane of plain paste.
#pragma once

#include "Capabilities/PlainPaste/PlainPasteSettings.h"
#include "OrvaneCore/Base/OrvaView.h"

namespace orvane {

class PlainPasteSettingsPane {
public:
    static AnyView make(std::shared_ptr<PlainPasteSettings> settings);
};

} // namespace orvane

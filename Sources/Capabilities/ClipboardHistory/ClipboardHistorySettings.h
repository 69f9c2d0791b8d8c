// Settings of the clipboard history.
#pragma once

#include "OrvaneCore/Preferences/SettingsObject.h"

#include <algorithm>

namespace orvane {

class ClipboardHistorySettings : public SettingsObject {
public:
    explicit ClipboardHistorySettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences))
    {
        load();
    }

    Setting<int> maxItems{*this, u"maxItems", 200};
    Setting<bool> persist{*this, u"persist", true};
    /// Links as well as text.
    Setting<bool> captureText{*this, u"captureText", true};
    Setting<bool> captureImages{*this, u"captureImages", true};
    Setting<bool> captureFiles{*this, u"captureFiles", true};
    /// In seconds. Read when the capability is turned on.
    Setting<double> pollInterval{*this, u"pollInterval", 0.4};
    Setting<bool> autoPaste{*this, u"autoPaste", false};
    Setting<bool> ignoreConcealed{*this, u"ignoreConcealed", true};

    /// Limits the cost of the looks at the pasteboard, whatever was stored.
    [[nodiscard]] double flooredPollInterval() const { return std::max(pollInterval.get(), 0.15); }
};

} // namespace orvane

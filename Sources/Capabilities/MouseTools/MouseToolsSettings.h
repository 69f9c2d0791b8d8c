// Settings of the mouse tools. Lengths are in points, opacities from 0 to 1; the pane sets the sliders'
// ranges, and nothing is clamped here.
#pragma once

#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class MouseToolsSettings : public SettingsObject {
public:
    explicit MouseToolsSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences))
    {
        load();
    }

    Setting<bool> doubleCtrlSpotlight{*this, u"doubleCtrlSpotlight", true};
    Setting<double> spotlightRadius{*this, u"spotlightRadius", 110};
    Setting<double> dimOpacity{*this, u"dimOpacity", 0.45};
    Setting<double> crosshairThickness{*this, u"crosshairThickness", 2};
    Setting<double> crosshairOpacity{*this, u"crosshairOpacity", 0.8};
};

} // namespace orvane

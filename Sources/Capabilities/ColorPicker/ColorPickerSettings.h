// Settings of the colour picker.
#pragma once

#include "Capabilities/ColorPicker/PickedColor.h"
#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class ColorPickerSettings : public SettingsObject {
public:
    explicit ColorPickerSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences))
    {
        load();
    }

    Setting<ColorFormat> format{*this, u"format", ColorFormat::hex};
};

} // namespace orvane

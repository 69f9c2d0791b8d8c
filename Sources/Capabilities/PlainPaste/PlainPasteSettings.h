// Settings of plain paste.
#pragma once

#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class PlainPasteSettings : public SettingsObject {
public:
    explicit PlainPasteSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences))
    {
        load();
    }

    Setting<bool> autoPaste{*this, u"autoPaste", true};
};

} // namespace orvane

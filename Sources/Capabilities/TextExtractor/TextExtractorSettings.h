// Settings of the text extractor.
#pragma once

#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class TextExtractorSettings : public SettingsObject {
public:
    explicit TextExtractorSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences))
    {
        load();
    }

    Setting<bool> joinLines{*this, u"joinLines", false};
};

} // namespace orvane

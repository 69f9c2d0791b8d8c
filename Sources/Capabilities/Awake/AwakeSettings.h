// Settings of Awake.
#pragma once

#include "Capabilities/Awake/AwakeDuration.h"
#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class AwakeSettings : public SettingsObject {
public:
    explicit AwakeSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences)) { load(); }

    Setting<AwakeDuration> defaultDuration{*this, u"defaultDuration", AwakeDuration::indefinite};
    Setting<bool> awakeOnLaunch{*this, u"awakeOnLaunch", false};
    Setting<bool> keepDisplayAwake{*this, u"keepDisplayAwake", true};
    Setting<bool> showMenuBarIcon{*this, u"showMenuBarIcon", true};
};

} // namespace orvane

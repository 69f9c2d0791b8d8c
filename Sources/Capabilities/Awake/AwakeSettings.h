// Settings of Awake.
#pragma once

#include "Capabilities/Awake/AwakeDuration.h"
#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class AwakeSettings : public SettingsObject {
public:
    explicit AwakeSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences)) { load(); }

    Setting<QString> defaultDurationRaw{*this, u"defaultDuration", QStringLiteral("indefinite")};
    Setting<bool> awakeOnLaunch{*this, u"awakeOnLaunch", false};
    Setting<bool> keepDisplayAwake{*this, u"keepDisplayAwake", true};
    Setting<bool> showMenuBarIcon{*this, u"showMenuBarIcon", true};

    /// `indefinite` for an unknown stored string.
    AwakeDuration defaultDuration() const
    {
        return awakeDuration(defaultDurationRaw.get()).value_or(AwakeDuration::indefinite);
    }
};

} // namespace orvane

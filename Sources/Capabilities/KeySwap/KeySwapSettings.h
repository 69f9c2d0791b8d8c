// Settings of Ctrl Shortcuts.
#pragma once

#include "Capabilities/KeySwap/AppExclusion.h"
#include "Capabilities/KeySwap/RemapEngine.h"
#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class KeySwapSettings : public SettingsObject {
public:
    explicit KeySwapSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences))
    {
        load();
    }

    Setting<RemapMode> mode{*this, u"mode", RemapMode::commonShortcuts};
    Setting<AppExclusionMode> exclusionMode{*this, u"exclusionMode", AppExclusionMode::denylist};
    Setting<QStringList> excludedApps{*this, u"excludedApps", AppExclusion::defaultDenylist()};

    /// Appends at the end; an empty identifier, or one that is there already, changes nothing.
    void addExcludedApp(const QString& bundleID);
    /// Removes the first equal entry.
    void removeExcludedApp(const QString& bundleID);
};

} // namespace orvane

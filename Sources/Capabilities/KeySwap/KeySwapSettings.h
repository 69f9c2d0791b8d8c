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

    Setting<QString> modeRaw{*this, u"mode", QStringLiteral("commonShortcuts")};
    Setting<QString> exclusionModeRaw{*this, u"exclusionMode", QStringLiteral("denylist")};
    Setting<QStringList> excludedApps{*this, u"excludedApps", AppExclusion::defaultDenylist()};

    /// `commonShortcuts` for an unknown stored string, which isn't repaired.
    RemapMode mode() const { return remapMode(modeRaw.get()).value_or(RemapMode::commonShortcuts); }
    /// `denylist` for an unknown stored string.
    AppExclusionMode exclusionMode() const
    {
        return appExclusionMode(exclusionModeRaw.get()).value_or(AppExclusionMode::denylist);
    }

    /// Appends at the end; one that is there already, and an empty one, change nothing.
    void addExcludedApp(const QString& bundleID);
    /// Removes the first equal entry.
    void removeExcludedApp(const QString& bundleID);
};

} // namespace orvane

// Settings of the daily wallpaper.
#pragma once

#include "Capabilities/DailyFrame/Sources/WallpaperSource.h"
#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class DailyFrameSettings : public SettingsObject {
public:
    explicit DailyFrameSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences))
    {
        load();
    }

    Setting<SourceKind> source{*this, u"source", SourceKind::bing};
    Setting<bool> applyToAllDisplays{*this, u"applyToAllDisplays", true};
    Setting<bool> showCredit{*this, u"showCredit", true};
    Setting<bool> saveToFolder{*this, u"saveToFolder", false};
    /// The code of a market; a stored one goes to the service as it stands.
    Setting<QString> bingMarket{*this, u"bingMarket", QStringLiteral("en-US")};
};

} // namespace orvane

// Settings of the image resizer.
#pragma once

#include "Capabilities/ImageResizer/ImageResizeEngine.h"
#include "Capabilities/ImageResizer/ResizePreset.h"
#include "OrvaneCore/Preferences/SettingsObject.h"

namespace orvane {

class ImageResizerSettings : public SettingsObject {
public:
    explicit ImageResizerSettings(ScopedPreferences preferences) : SettingsObject(std::move(preferences))
    {
        load();
    }

    Setting<ResizePreset> preset{*this, u"preset", ResizePreset::medium};
    Setting<int> customWidth{*this, u"customW", 1280};
    Setting<int> customHeight{*this, u"customH", 1280};
    Setting<ResizeFormat> format{*this, u"format", ResizeFormat::keepOriginal};
    Setting<double> quality{*this, u"quality", 0.85};
    Setting<bool> allowUpscale{*this, u"allowUpscale", false};

    /// In pixels, at least 1 by 1.
    [[nodiscard]] QSize boundingBox() const;
    /// The name of the box in the names of files: "Medium", "1280×720".
    [[nodiscard]] QString label() const;
    [[nodiscard]] ImageResizeEngine::Options options() const;
};

} // namespace orvane

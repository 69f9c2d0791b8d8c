// The rows of settings that the pane and the window share.
#pragma once

#include "Capabilities/ImageResizer/ImageResizerSettings.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane {

/// A small field for a whole number. `prompt` is shown while it's empty; `name` is for assistive technology.
struct ResizerNumberField {
    QString prompt;
    QString name;
    Binding<int> value;
};
QWidget* makeOrvaWidget(const ResizerNumberField& field);

namespace ResizerRows {

/// The preset, the custom size where it counts, and whether small pictures are enlarged.
[[nodiscard]] QList<AnyView> size(const std::shared_ptr<ImageResizerSettings>& settings);
[[nodiscard]] AnyView format(const std::shared_ptr<ImageResizerSettings>& settings);
/// Shown only while pictures are saved as JPEG.
[[nodiscard]] AnyView quality(const std::shared_ptr<ImageResizerSettings>& settings);

} // namespace ResizerRows

} // namespace orvane

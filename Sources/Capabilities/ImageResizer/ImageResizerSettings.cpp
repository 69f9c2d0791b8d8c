#include "Capabilities/ImageResizer/ImageResizerSettings.h"

#include <algorithm>

namespace orvane {

QSize ImageResizerSettings::boundingBox() const
{
    const QSize custom(std::max(customWidth.get(), 1), std::max(customHeight.get(), 1));
    return box(preset.get()).value_or(custom);
}

QString ImageResizerSettings::label() const
{
    if (preset.get() != ResizePreset::custom)
        return shortLabel(preset.get());
    const QSize box = boundingBox();
    return QStringLiteral("%1×%2").arg(box.width()).arg(box.height());
}

ImageResizeEngine::Options ImageResizerSettings::options() const
{
    using enum ImageResizeMath::Enlarging;
    return {boundingBox(), allowUpscale.get() ? yes : no, format.get(), quality.get(), label()};
}

} // namespace orvane

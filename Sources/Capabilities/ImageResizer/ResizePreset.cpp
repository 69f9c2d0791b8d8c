#include "Capabilities/ImageResizer/ResizePreset.h"

#include "Capabilities/ImageResizer/ImageResizerText.h"

namespace orvane {

QString shortLabel(ResizePreset preset)
{
    switch (preset) {
    case ResizePreset::small:
        return ImageResizerText::tr("Small");
    case ResizePreset::medium:
        return ImageResizerText::tr("Medium");
    case ResizePreset::large:
        return ImageResizerText::tr("Large");
    case ResizePreset::phone:
        return ImageResizerText::tr("Phone");
    case ResizePreset::custom:
        return ImageResizerText::tr("Custom");
    }
    return {};
}

std::optional<QSize> box(ResizePreset preset)
{
    switch (preset) {
    case ResizePreset::small:
        return QSize(854, 480);
    case ResizePreset::medium:
        return QSize(1366, 768);
    case ResizePreset::large:
        return QSize(1920, 1080);
    case ResizePreset::phone:
        return QSize(750, 1334);
    case ResizePreset::custom:
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace orvane

// The boxes into which pictures are fitted.
#pragma once

#include "OrvaneCore/Base/EnumNames.h"

#include <QSize>

namespace orvane {

enum class ResizePreset { small, medium, large, phone, custom };

inline constexpr std::array resizePresetNames{
    EnumName{ResizePreset::small, "small", TextSource("ImageResizerText", "Small — 854 × 480")},
    EnumName{ResizePreset::medium, "medium", TextSource("ImageResizerText", "Medium — 1366 × 768")},
    EnumName{ResizePreset::large, "large", TextSource("ImageResizerText", "Large — 1920 × 1080")},
    EnumName{ResizePreset::phone, "phone", TextSource("ImageResizerText", "Phone — 750 × 1334")},
    EnumName{ResizePreset::custom, "custom", TextSource("ImageResizerText", "Custom")},
};
constexpr const auto& enumNames(ResizePreset)
{
    return resizePresetNames;
}
static_assert(isInOrder<ResizePreset>());

/// The name that goes into the names of files.
[[nodiscard]] QString shortLabel(ResizePreset preset);
/// In pixels; nothing for a custom one.
[[nodiscard]] std::optional<QSize> box(ResizePreset preset);

} // namespace orvane

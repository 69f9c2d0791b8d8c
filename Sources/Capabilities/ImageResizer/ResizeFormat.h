// The formats in which resized pictures are saved.
#pragma once

#include "OrvaneCore/Base/EnumNames.h"

namespace orvane {

enum class ResizeFormat { keepOriginal, png, jpeg };

inline constexpr std::array resizeFormatNames{
    EnumName{ResizeFormat::keepOriginal, "keepOriginal", TextSource("ImageResizerText", "Same as original")},
    EnumName{ResizeFormat::png, "png", TextSource("ImageResizerText", "PNG")},
    EnumName{ResizeFormat::jpeg, "jpeg", TextSource("ImageResizerText", "JPEG")},
};
constexpr const auto& enumNames(ResizeFormat)
{
    return resizeFormatNames;
}
static_assert(isInOrder<ResizeFormat>());

} // namespace orvane

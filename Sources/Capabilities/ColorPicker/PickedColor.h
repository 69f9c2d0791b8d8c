// A colour, and the notations in which it is copied. Pure.
#pragma once

#include "OrvaneCore/Base/EnumNames.h"

#include <QString>

#include <cstdint>

namespace orvane {

enum class ColorFormat { hex, rgb, hsl };

inline constexpr std::array colorFormatNames{
    EnumName{ColorFormat::hex, "hex", TextSource("ColorPickerText", "HEX  (#1A2B3C)")},
    EnumName{ColorFormat::rgb, "rgb", TextSource("ColorPickerText", "RGB  (rgb(26, 43, 60))")},
    EnumName{ColorFormat::hsl, "hsl", TextSource("ColorPickerText", "HSL  (hsl(210, 40%, 17%))")},
};
constexpr const auto& enumNames(ColorFormat)
{
    return colorFormatNames;
}
static_assert(isInOrder<ColorFormat>());

/// Each channel is from 0 to 1, in the sRGB colour space.
struct PickedColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    /// From a number 0xRRGGBB; what is above is ignored.
    [[nodiscard]] static PickedColor fromPixel(std::uint32_t pixel);

    struct Hsl {
        /// In degrees, from 0 to below 360.
        double hue = 0;
        double saturation = 0;
        double lightness = 0;
    };
    [[nodiscard]] Hsl hsl() const;

    /// Returns the text that is copied. A hue just below 360 may read 360.
    [[nodiscard]] QString string(ColorFormat format) const;

    friend bool operator==(const PickedColor&, const PickedColor&) = default;
};

} // namespace orvane

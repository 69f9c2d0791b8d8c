#include "Capabilities/ColorPicker/PickedColor.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr double mostOfByte = 255;

long byteOf(double channel)
{
    return std::lround(channel * mostOfByte);
}

} // namespace

PickedColor PickedColor::fromPixel(std::uint32_t pixel)
{
    const auto channel = [pixel](int shift) { return (pixel >> shift & 0xFF) / mostOfByte; };
    return {channel(16), channel(8), channel(0)};
}

PickedColor::Hsl PickedColor::hsl() const
{
    const double max = std::max({red, green, blue});
    const double min = std::min({red, green, blue});
    const double delta = max - min;
    const double lightness = (max + min) * 0.5;
    if (delta <= 0)
        return {0, 0, lightness};
    const double saturation = delta / (lightness > 0.5 ? 2 - max - min : max + min);
    double sixths = 0;
    if (max == red)
        sixths = (green - blue) / delta + (green < blue ? 6 : 0);
    else if (max == green)
        sixths = (blue - red) / delta + 2;
    else
        sixths = (red - green) / delta + 4;
    return {60 * sixths, saturation, lightness};
}

QString PickedColor::string(ColorFormat format) const
{
    switch (format) {
    case ColorFormat::hex: {
        const auto number = static_cast<unsigned long>(byteOf(red) << 16 | byteOf(green) << 8 | byteOf(blue));
        return u'#' + QStringLiteral("%1").arg(number, 6, 16, QLatin1Char('0')).toUpper();
    }
    case ColorFormat::rgb:
        return QStringLiteral("rgb(%1, %2, %3)").arg(byteOf(red)).arg(byteOf(green)).arg(byteOf(blue));
    case ColorFormat::hsl: {
        const Hsl value = hsl();
        return QStringLiteral("hsl(%1, %2%, %3%)")
            .arg(std::lround(value.hue))
            .arg(std::lround(value.saturation * 100))
            .arg(std::lround(value.lightness * 100));
    }
    }
    return {};
}

} // namespace orvane

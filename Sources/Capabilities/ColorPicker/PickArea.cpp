#include "Capabilities/ColorPicker/PickArea.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// Cuts to a whole number. Points were made from pixels, and with a scale such as 1.5 the way back ends a
/// trifle short of the pixel.
int wholePixel(double pixels)
{
    constexpr double trifle = 1e-6;
    return static_cast<int>(std::floor(pixels + trifle));
}

} // namespace

QPointF PickArea::placeOf(Point point) const
{
    return {point.x - frame.minX(), frame.maxY() - point.y};
}

std::optional<QPoint> PickArea::pixelAt(Point point) const
{
    const QPointF pixels = placeOf(point) * scale;
    const QPoint pixel(wholePixel(pixels.x()), wholePixel(pixels.y()));
    if (!QRect(QPoint(0, 0), size).contains(pixel))
        return std::nullopt;
    return pixel;
}

QRect PickArea::cropAround(QPoint pixel) const
{
    const auto origin = [half = cropSide / 2](int at, int length) {
        return std::min(length - cropSide, std::max(at, half) - half);
    };
    return {origin(pixel.x(), size.width()), origin(pixel.y(), size.height()), cropSide, cropSide};
}

} // namespace orvane

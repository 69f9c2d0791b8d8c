// The part of a display that the user drags a box over. Pure.
#pragma once

#include "Platform/Geometry.h"

#include <QRect>

#include <optional>

namespace orvane {

struct SelectedRegion {
    /// The display's frame, in the space of the screens, and its pixels for each point.
    Rect frame;
    double scale = 1;
    /// The size of the display's picture in pixels.
    QSize size;

    /// A box that isn't wider and higher than this is a click or a slip of the hand, in points.
    static constexpr double leastSide = 8;

    /// Returns the box between two points, in points from the display's upper left corner down.
    [[nodiscard]] QRectF between(Point first, Point second) const;
    [[nodiscard]] static bool isLargeEnough(const QRectF& box);
    /// Returns the pixels that the box touches and that are inside of the picture; absent without any.
    [[nodiscard]] std::optional<QRect> pixelsOf(const QRectF& box) const;
};

} // namespace orvane

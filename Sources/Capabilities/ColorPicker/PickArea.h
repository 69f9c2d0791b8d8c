// Where the pointer is in the picture of a display, and which part of it the loupe shows. Pure.
#pragma once

#include "Platform/Geometry.h"

#include <QRect>

#include <optional>

namespace orvane {

struct PickArea {
    /// The display's frame, in the space of the screens, and its pixels for each point.
    Rect frame;
    double scale = 1;
    /// The picture's size in pixels.
    QSize size;

    /// The side of the part that the loupe shows, in pixels.
    static constexpr int cropSide = 15;

    /// Absent for a point outside of the picture.
    [[nodiscard]] std::optional<QPoint> pixelAt(Point point) const;
    /// Returns the point's place from the display's upper left corner down, in points.
    [[nodiscard]] QPointF placeOf(Point point) const;
    /// Returns the part around a pixel, pushed inward at the edges of the picture.
    [[nodiscard]] QRect cropAround(QPoint pixel) const;
};

} // namespace orvane

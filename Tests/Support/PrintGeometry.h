// Prints points and rectangles in the messages of failed tests.
#pragma once

#include "Platform/Geometry.h"

#include <ostream>

namespace orvane {

inline void PrintTo(const Point& point, std::ostream* out)
{
    *out << point.x << ',' << point.y;
}

inline void PrintTo(const Rect& rect, std::ostream* out)
{
    *out << rect.minX() << ',' << rect.minY() << ' ' << rect.width() << 'x' << rect.height();
}

} // namespace orvane

// Converts between the two spaces that the desktop uses at once, in points. Accessibility: origin at the
// upper left corner of the primary display, y downwards. Windows and screens ("Cocoa"): origin at its lower
// left corner, y upwards. The conversion is its own inverse.
#pragma once

#include "Platform/Screens.h"

namespace orvane::ScreenGeometry {

/// Returns the height of the display that both spaces are bound to, which needn't be the main one. Asked anew
/// at each use, since displays come and go; 0 without any.
double primaryHeight();

Point cocoaPointFromAX(Point point);
Point axPointFromCocoa(Point point);
Rect cocoaRectFromAX(const Rect& rect);
Rect axRectFromCocoa(const Rect& rect);

/// Absent for a point between displays.
std::optional<Screen> screenForAXPoint(Point point);

/// Returns 0 when the screen has no number.
std::uint32_t displayID(const Screen& screen);

} // namespace orvane::ScreenGeometry

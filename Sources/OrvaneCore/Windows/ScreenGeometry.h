// Between the two spaces that the desktop uses at once, in points. Accessibility: origin at the upper left
// corner of the primary display, y downwards. Windows and screens ("Cocoa"): origin at its lower left corner,
// y upwards. A flip is its own inverse.
#pragma once

#include "Platform/Screens.h"

namespace orvane::ScreenGeometry {

/// Of the display that both spaces hang on, which needn't be the main one. Asked anew at each use, since
/// displays come and go; 0 without any.
double primaryHeight();

Point cocoaPointFromAX(Point point);
Point axPointFromCocoa(Point point);
Rect cocoaRectFromAX(const Rect& rect);
Rect axRectFromCocoa(const Rect& rect);

/// Absent for a point between displays.
std::optional<Screen> screenForAXPoint(Point point);

/// 0 when the screen tells none.
std::uint32_t displayID(const Screen& screen);

} // namespace orvane::ScreenGeometry

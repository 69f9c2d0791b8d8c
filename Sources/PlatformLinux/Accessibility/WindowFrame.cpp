#include "PlatformLinux/Accessibility/WindowFrame.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

/// Two ways of computing the same edge may differ by less than this.
constexpr double slack = 1e-6;

int roundedHalfUp(double value)
{
    return static_cast<int>(std::floor(value + 0.5 + slack));
}

PixelMargins between(const PixelEdges& inner, const PixelEdges& outer)
{
    return {inner.left - outer.left, inner.top - outer.top, outer.right - inner.right,
            outer.bottom - inner.bottom};
}

} // namespace

Rect PixelEdges::rect() const
{
    return {{double(left), double(top)}, {double(width()), double(height())}};
}

PixelEdges grown(const PixelEdges& edges, const PixelMargins& margins)
{
    return {edges.left - margins.left, edges.top - margins.top, edges.right + margins.right,
            edges.bottom + margins.bottom};
}

PixelEdges shrunk(const PixelEdges& edges, const PixelMargins& margins)
{
    return grown(edges, {-margins.left, -margins.top, -margins.right, -margins.bottom});
}

PixelMargins visibleMargins(const WindowPlace& place)
{
    const PixelMargins frame = between(place.client, place.outer);
    // A frame window may have an invisible border for dragging, and while the window manager moves it the two
    // places are of different moments, so the announced decoration is used.
    PixelMargins margins = place.decoration.value_or(frame);
    if (place.isRolledUp)
        margins.bottom = std::min(margins.bottom, frame.bottom); // nothing is visible outside of the frame
    return {margins.left - place.invisible.left, margins.top - place.invisible.top,
            margins.right - place.invisible.right, margins.bottom - place.invisible.bottom};
}

PixelEdges visibleFrame(const WindowPlace& place)
{
    return grown(place.client, visibleMargins(place));
}

PixelEdges rounded(const Rect& rect)
{
    return {roundedHalfUp(rect.minX()), roundedHalfUp(rect.minY()), roundedHalfUp(rect.maxX()),
            roundedHalfUp(rect.maxY())};
}

} // namespace orvane

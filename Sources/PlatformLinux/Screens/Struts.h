// What panels and docks keep of the displays, by the properties on their windows. Pixels of the root window.
// Pure; any thread.
#pragma once

#include "Platform/Geometry.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orvane {

/// Strips along the edges of the root window, however far inside of it the display is that they are meant
/// for.
struct Strut {
    struct Strip {
        /// From the root window's edge.
        double depth = 0;
        /// Where along the edge, both pixels included.
        double first = 0;
        double last = 0;
        friend bool operator==(const Strip&, const Strip&) = default;
    };
    Strip left;
    Strip right;
    Strip top;
    Strip bottom;

    friend bool operator==(const Strut&, const Strut&) = default;
};

/// From the values of _NET_WM_STRUT_PARTIAL, or else of the older _NET_WM_STRUT, which keeps whole edges.
/// Absent when they keep nothing or are no such values.
std::optional<Strut> strutOf(std::span<const std::uint32_t> partial, std::span<const std::uint32_t> whole);

/// The part of a display that the struts leave. One belongs to the displays in which its inner border lies: a
/// strip that would cover a display from edge to edge is meant for one that lies behind.
Rect visiblePart(const Rect& display, Size root, std::span<const Strut> struts);

} // namespace orvane

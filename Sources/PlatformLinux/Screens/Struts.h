// The space of the displays that panels and docks reserve, by the properties of their windows. Pixels of the
// root window. Pure; any thread.
#pragma once

#include "Platform/Geometry.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orvane {

/// A strip along an edge of the root window, however far inside of it the display lies for which it is meant.
struct Strut {
    struct Strip {
        /// The depth from the root window's edge.
        double depth = 0;
        /// The range along the edge, both pixels included.
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

/// Reads the values of _NET_WM_STRUT_PARTIAL, or else of the older _NET_WM_STRUT, which reserves whole edges.
/// Absent when they reserve nothing or aren't valid.
std::optional<Strut> strutOf(std::span<const std::uint32_t> partial, std::span<const std::uint32_t> whole);

/// Returns the part of a display that the struts leave. A strut belongs to the displays in which its inner
/// border lies: a strip that would cover a display from edge to edge is meant for one behind it.
Rect visiblePart(const Rect& display, Size root, std::span<const Strut> struts);

} // namespace orvane

// Which zone a place at the edge of a screen stands for. Pure; y grows upwards, values in points.
#pragma once

#include "Capabilities/SnapZones/Geometry/SnapZone.h"
#include "Platform/Geometry.h"

#include <optional>

namespace orvane::EdgeDetector {

/// Within `threshold` of an edge, or beyond it; and for a corner, within `cornerSize` of both its edges too.
/// Never the upper half nor the centre: the upper edge stands for the whole.
std::optional<SnapZone> zone(Point cursor, const Rect& screen, double threshold, double cornerSize);

} // namespace orvane::EdgeDetector

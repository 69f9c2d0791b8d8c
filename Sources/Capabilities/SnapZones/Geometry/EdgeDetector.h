// The zone for a place at the edge of a screen. Pure; y grows upwards, values in points.
#pragma once

#include "Capabilities/SnapZones/Geometry/SnapZone.h"
#include "Platform/Geometry.h"

#include <optional>

namespace orvane::EdgeDetector {

/// A place belongs to an edge if it is within `threshold` of it, or beyond it; to a corner, if it is within
/// `cornerSize` of both its edges too. Never returns the upper half nor the centre: the upper edge stands for
/// the whole.
std::optional<SnapZone> zone(Point cursor, const Rect& screen, double threshold, double cornerSize);

} // namespace orvane::EdgeDetector

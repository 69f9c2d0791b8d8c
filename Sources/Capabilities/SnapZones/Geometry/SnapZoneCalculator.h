// The part of an area that belongs to a zone. Pure; y grows upwards, values in points, unrounded.
#pragma once

#include "Capabilities/SnapZones/Geometry/SnapZone.h"
#include "Platform/Geometry.h"

namespace orvane {

struct SnapGaps {
    /// The distance from the area's edges.
    double outer = 0;
    /// The distance between two zones side by side.
    double inner = 0;

    static const SnapGaps zero;
    friend bool operator==(const SnapGaps&, const SnapGaps&) = default;
};

inline constexpr SnapGaps SnapGaps::zero{};

namespace SnapZoneCalculator {

/// Gaps that leave no room give a frame without size, never one of negative size.
Rect frame(SnapZone zone, const Rect& area, SnapGaps gaps);

} // namespace SnapZoneCalculator

} // namespace orvane

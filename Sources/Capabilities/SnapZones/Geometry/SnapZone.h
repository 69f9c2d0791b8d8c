// The places to which a window can be snapped.
#pragma once

#include <QString>

#include <array>

namespace orvane {

enum class SnapZone {
    leftHalf,
    rightHalf,
    topHalf,
    bottomHalf,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    maximize,
    center,
};

inline constexpr std::array allSnapZones{
    SnapZone::leftHalf, SnapZone::rightHalf,  SnapZone::topHalf,     SnapZone::bottomHalf, SnapZone::topLeft,
    SnapZone::topRight, SnapZone::bottomLeft, SnapZone::bottomRight, SnapZone::maximize,   SnapZone::center,
};

/// Returns the case's name.
QString rawValue(SnapZone zone);
QString title(SnapZone zone);
/// Returns the name of a system symbol.
QString symbol(SnapZone zone);

} // namespace orvane

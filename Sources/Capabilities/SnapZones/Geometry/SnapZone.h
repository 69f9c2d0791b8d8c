// The places to which a window can be snapped.
#pragma once

#include "OrvaneCore/Base/EnumNames.h"

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

inline constexpr std::array snapZoneNames{
    EnumName{SnapZone::leftHalf, "leftHalf", TextSource("SnapZonesText", "Left Half")},
    EnumName{SnapZone::rightHalf, "rightHalf", TextSource("SnapZonesText", "Right Half")},
    EnumName{SnapZone::topHalf, "topHalf", TextSource("SnapZonesText", "Top Half")},
    EnumName{SnapZone::bottomHalf, "bottomHalf", TextSource("SnapZonesText", "Bottom Half")},
    EnumName{SnapZone::topLeft, "topLeft", TextSource("SnapZonesText", "Top Left")},
    EnumName{SnapZone::topRight, "topRight", TextSource("SnapZonesText", "Top Right")},
    EnumName{SnapZone::bottomLeft, "bottomLeft", TextSource("SnapZonesText", "Bottom Left")},
    EnumName{SnapZone::bottomRight, "bottomRight", TextSource("SnapZonesText", "Bottom Right")},
    EnumName{SnapZone::maximize, "maximize", TextSource("SnapZonesText", "Maximize")},
    EnumName{SnapZone::center, "center", TextSource("SnapZonesText", "Center")},
};
constexpr const auto& enumNames(SnapZone)
{
    return snapZoneNames;
}
static_assert(isInOrder<SnapZone>());

/// Returns the name of a system symbol.
QString symbol(SnapZone zone);

} // namespace orvane

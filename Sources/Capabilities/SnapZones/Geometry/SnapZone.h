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
    EnumName{SnapZone::leftHalf, "leftHalf", u"Left Half"},
    EnumName{SnapZone::rightHalf, "rightHalf", u"Right Half"},
    EnumName{SnapZone::topHalf, "topHalf", u"Top Half"},
    EnumName{SnapZone::bottomHalf, "bottomHalf", u"Bottom Half"},
    EnumName{SnapZone::topLeft, "topLeft", u"Top Left"},
    EnumName{SnapZone::topRight, "topRight", u"Top Right"},
    EnumName{SnapZone::bottomLeft, "bottomLeft", u"Bottom Left"},
    EnumName{SnapZone::bottomRight, "bottomRight", u"Bottom Right"},
    EnumName{SnapZone::maximize, "maximize", u"Maximize"},
    EnumName{SnapZone::center, "center", u"Center"},
};
constexpr const auto& enumNames(SnapZone)
{
    return snapZoneNames;
}
static_assert(isInOrder<SnapZone>());

/// Returns the name of a system symbol.
QString symbol(SnapZone zone);

} // namespace orvane

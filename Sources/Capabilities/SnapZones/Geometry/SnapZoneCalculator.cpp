#include "Capabilities/SnapZones/Geometry/SnapZoneCalculator.h"

#include <algorithm>

namespace orvane::SnapZoneCalculator {

namespace {

Rect centred(const Rect& area, double usableWidth, double usableHeight)
{
    const double width = usableWidth * 0.6;
    const double height = usableHeight * 0.7;
    return {{area.midX() - width * 0.5, area.midY() - height * 0.5}, {width, height}};
}

} // namespace

Rect frame(SnapZone zone, const Rect& area, SnapGaps gaps)
{
    const double left = area.minX() + gaps.outer;
    const double lower = area.minY() + gaps.outer;
    const double width = std::max(area.width() - 2 * gaps.outer, 0.0);
    const double height = std::max(area.height() - 2 * gaps.outer, 0.0);
    const double halfWidth = std::max((width - gaps.inner) * 0.5, 0.0);
    const double halfHeight = std::max((height - gaps.inner) * 0.5, 0.0);
    const double right = left + halfWidth + gaps.inner;
    const double upper = lower + halfHeight + gaps.inner;

    switch (zone) {
    case SnapZone::leftHalf:
        return {{left, lower}, {halfWidth, height}};
    case SnapZone::rightHalf:
        return {{right, lower}, {halfWidth, height}};
    case SnapZone::topHalf:
        return {{left, upper}, {width, halfHeight}};
    case SnapZone::bottomHalf:
        return {{left, lower}, {width, halfHeight}};
    case SnapZone::topLeft:
        return {{left, upper}, {halfWidth, halfHeight}};
    case SnapZone::topRight:
        return {{right, upper}, {halfWidth, halfHeight}};
    case SnapZone::bottomLeft:
        return {{left, lower}, {halfWidth, halfHeight}};
    case SnapZone::bottomRight:
        return {{right, lower}, {halfWidth, halfHeight}};
    case SnapZone::maximize:
        return {{left, lower}, {width, height}};
    case SnapZone::center:
        return centred(area, width, height);
    }
    return {};
}

} // namespace orvane::SnapZoneCalculator

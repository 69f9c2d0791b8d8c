#include "Capabilities/SnapZones/Geometry/EdgeDetector.h"

namespace orvane::EdgeDetector {

namespace {

/// The edges that are within a distance of a place.
struct Edges {
    bool left;
    bool right;
    bool top;
    bool bottom;

    Edges(Point place, const Rect& screen, double distance)
        : left(place.x <= screen.minX() + distance),
          right(place.x >= screen.maxX() - distance),
          top(place.y >= screen.maxY() - distance),
          bottom(place.y <= screen.minY() + distance)
    {
    }
};

} // namespace

std::optional<SnapZone> zone(Point cursor, const Rect& screen, double threshold, double cornerSize)
{
    const Edges near(cursor, screen, threshold);
    const Edges band(cursor, screen, cornerSize);
    if ((near.top || near.left) && band.top && band.left)
        return SnapZone::topLeft;
    if ((near.top || near.right) && band.top && band.right)
        return SnapZone::topRight;
    if ((near.bottom || near.left) && band.bottom && band.left)
        return SnapZone::bottomLeft;
    if ((near.bottom || near.right) && band.bottom && band.right)
        return SnapZone::bottomRight;
    if (near.top)
        return SnapZone::maximize;
    if (near.left)
        return SnapZone::leftHalf;
    if (near.right)
        return SnapZone::rightHalf;
    if (near.bottom)
        return SnapZone::bottomHalf;
    return std::nullopt;
}

} // namespace orvane::EdgeDetector

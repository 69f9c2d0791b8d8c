#include "Capabilities/SnapZones/Geometry/SnapZone.h"

namespace orvane {

QString symbol(SnapZone zone)
{
    switch (zone) {
    case SnapZone::leftHalf:
        return QStringLiteral("rectangle.lefthalf.filled");
    case SnapZone::rightHalf:
        return QStringLiteral("rectangle.righthalf.filled");
    case SnapZone::topHalf:
        return QStringLiteral("rectangle.tophalf.filled");
    case SnapZone::bottomHalf:
        return QStringLiteral("rectangle.bottomhalf.filled");
    case SnapZone::topLeft:
        return QStringLiteral("rectangle.inset.topleft.filled");
    case SnapZone::topRight:
        return QStringLiteral("rectangle.inset.topright.filled");
    case SnapZone::bottomLeft:
        return QStringLiteral("rectangle.inset.bottomleft.filled");
    case SnapZone::bottomRight:
        return QStringLiteral("rectangle.inset.bottomright.filled");
    case SnapZone::maximize:
        return QStringLiteral("rectangle.fill");
    case SnapZone::center:
        return QStringLiteral("rectangle.center.inset.filled");
    }
    Q_UNREACHABLE();
}

} // namespace orvane

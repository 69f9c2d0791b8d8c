// What an overlay of the mouse tools shows. Only the point changes while it is up.
#pragma once

#include "OrvaneCore/Base/Observable.h"

#include <QPointF>

namespace orvane {

struct MouseOverlayModel {
    /// The pointer, in points of the overlay from its upper left corner down.
    Observable<QPointF> point{QPointF()};
    double spotlightRadius = 110;
    double dimOpacity = 0.45;
    double crosshairThickness = 2;
    double crosshairOpacity = 0.8;
};

} // namespace orvane

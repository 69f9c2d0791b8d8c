// What the overlay of a pick shows: the picture of the display, and the sample under the pointer.
#pragma once

#include "Capabilities/ColorPicker/PickedColor.h"
#include "OrvaneCore/Base/Observable.h"
#include "Platform/ScreenCapture.h"

#include <QPointF>
#include <QRect>

namespace orvane {

struct ColorPickerOverlayModel {
    explicit ColorPickerOverlayModel(ScreenImage picture) : background(std::move(picture)) {}

    /// In the display's own pixels.
    const ScreenImage background;
    /// The value under the pointer as it would be copied. Set before the others.
    QString formatString = QStringLiteral("#000000");
    Observable<PickedColor> color{PickedColor()};
    /// In points of the window, from its upper left corner down.
    Observable<QPointF> cursor{QPointF()};
    /// The part of the picture that the loupe shows, in pixels; absent before the first sample.
    Observable<std::optional<QRect>> crop{std::nullopt};
};

} // namespace orvane

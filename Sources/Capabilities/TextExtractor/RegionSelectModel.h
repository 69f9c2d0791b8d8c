// What the overlay of an extraction shows: the picture of the display, the box, and what goes on.
#pragma once

#include "OrvaneCore/Base/Observable.h"
#include "Platform/ScreenCapture.h"

#include <QRectF>
#include <QString>

#include <optional>

namespace orvane {

struct RegionSelectModel {
    explicit RegionSelectModel(ScreenImage picture) : background(std::move(picture)) {}

    /// In the display's own pixels.
    const ScreenImage background;
    /// In points of the window, from its upper left corner down.
    Observable<std::optional<QRectF>> selection{std::nullopt};
    /// Absent while the user selects.
    Observable<std::optional<QString>> status{std::nullopt};
};

} // namespace orvane

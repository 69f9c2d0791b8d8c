// The suite's own status picture: four rounded squares.
#pragma once

#include "Platform/TemplateImage.h"

#include <QRectF>

#include <array>

namespace orvane::MenuBarIcon {

struct Shape {
    std::array<QRectF, 4> cells;
    double cornerRadius;
};

/// Returns the cells within a square of any size, in its points.
Shape shape(const QRectF& rect);

/// 18 by 18 points.
TemplateImage statusImage();

} // namespace orvane::MenuBarIcon

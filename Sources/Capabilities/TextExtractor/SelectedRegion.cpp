#include "Capabilities/TextExtractor/SelectedRegion.h"

#include <algorithm>
#include <cmath>

namespace orvane {

QRectF SelectedRegion::between(Point first, Point second) const
{
    const auto place = [this](Point point) {
        return QPointF(point.x - frame.minX(), frame.maxY() - point.y);
    };
    const QPointF from = place(first);
    const QPointF to = place(second);
    return {std::min(from.x(), to.x()), std::min(from.y(), to.y()), std::abs(to.x() - from.x()),
            std::abs(to.y() - from.y())};
}

bool SelectedRegion::isLargeEnough(const QRectF& box)
{
    return box.width() > leastSide && box.height() > leastSide;
}

std::optional<QRect> SelectedRegion::pixelsOf(const QRectF& box) const
{
    const QRectF scaled(box.topLeft() * scale, box.size() * scale);
    const QRect pixels = scaled.toAlignedRect() & QRect(QPoint(0, 0), size);
    return pixels.isEmpty() ? std::nullopt : std::optional(pixels);
}

} // namespace orvane

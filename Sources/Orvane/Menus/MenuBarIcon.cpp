#include "Orvane/Menus/MenuBarIcon.h"

#include <QPainter>

namespace orvane {

namespace {
constexpr double side = 18;
}

MenuBarIcon::Shape MenuBarIcon::shape(const QRectF& rect)
{
    // The inset is given for a picture of 18 points, and grows with the picture.
    const double inset = 1.5 * rect.width() / side;
    const QRectF inner = rect.adjusted(inset, inset, -inset, -inset);
    const double gap = 0.18 * inner.width();
    const double cell = (inner.width() - gap) / 2;
    const double step = gap + cell;
    const auto at = [&](double x, double y) { return QRectF(inner.left() + x, inner.top() + y, cell, cell); };
    return {{at(0, 0), at(0, step), at(step, 0), at(step, step)}, 0.3 * cell};
}

TemplateImage MenuBarIcon::statusImage()
{
    return {.symbolName = {},
            .accessibilityDescription = QStringLiteral("Orvane"),
            .size = {side, side},
            .draw = [](QPainter& painter, const QRectF& rect) {
                const Shape drawn = shape(rect);
                painter.save();
                painter.setRenderHint(QPainter::Antialiasing);
                painter.setPen(Qt::NoPen);
                painter.setBrush(Qt::black);
                for (const QRectF& cell : drawn.cells)
                    painter.drawRoundedRect(cell, drawn.cornerRadius, drawn.cornerRadius);
                painter.restore();
            }};
}

} // namespace orvane

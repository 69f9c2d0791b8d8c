#include "OrvaneKit/Theme/OrvaThemed.h"

namespace orvane {

void paintOrvaFocusRing(QPainter& painter, const QRectF& shape, double corner)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(orvaColor(OrvaColor::accent), 2));
    constexpr double distance = 2;
    painter.drawRoundedRect(shape.adjusted(-distance, -distance, distance, distance), corner + distance,
                            corner + distance);
    painter.restore();
}

void paintOrvaControlBox(QPainter& painter, const QRectF& shape, double corner, bool pressed)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(orvaColor(OrvaColor::controlStroke), 1));
    painter.setBrush(orvaColor(OrvaColor::controlFill));
    const QRectF box = shape.adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(box, corner, corner);
    if (pressed) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(faded(orvaColor(OrvaColor::primary), 0.08));
        painter.drawRoundedRect(box, corner, corner);
    }
    painter.restore();
}

void paintOrvaDefaultBox(QPainter& painter, const QRectF& shape, double corner, bool pressed)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(orvaColor(OrvaColor::accent));
    painter.drawRoundedRect(shape, corner, corner);
    if (pressed) {
        painter.setBrush(QColor(0, 0, 0, 28));
        painter.drawRoundedRect(shape, corner, corner);
    }
    painter.restore();
}

} // namespace orvane

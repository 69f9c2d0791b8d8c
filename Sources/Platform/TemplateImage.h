// A picture of one colour: only its coverage counts, and the code that shows it chooses colour and scale.
#pragma once

#include <QSizeF>
#include <QString>

#include <functional>

class QPainter;
class QRectF;

namespace orvane {

struct TemplateImage {
    /// The system symbol's name, or empty for a picture drawn by the program.
    QString symbolName;
    QString accessibilityDescription;
    /// In points.
    QSizeF size;
    /// Draws in black into the given rectangle, which has the shape of `size` at any scale.
    std::function<void(QPainter& painter, const QRectF& rect)> draw;
};

} // namespace orvane

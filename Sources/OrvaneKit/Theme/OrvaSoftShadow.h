// The soft shadow of something with round corners. Main thread.
#pragma once

#include <QPixmap>
#include <QRectF>

class QPainter;

namespace orvane {

/// Painted by nine parts of one small picture, which is kept: whatever the size, a shadow costs the same.
class OrvaSoftShadow {
public:
    struct Shape {
        double corner; // radius of what casts it, points
        double room;   // around what casts it, on each side, points; the shadow ends there at the latest
        double fall;   // downwards, points
        double inset;  // inside of the shape that falls, where it begins to fade, points
        /// The higher, the quicker it fades: opacity follows the rest of the way to this power.
        double power;
        /// Opacity before it begins to fade, 0 to 1.
        double strengthOnLight;
        double strengthOnDark;
    };

    explicit OrvaSoftShadow(const Shape& shape) : m_shape(shape) {}

    /// `box` is what casts it, at least twice as wide and high as its corner's radius.
    void paint(QPainter& painter, const QRectF& box);

private:
    [[nodiscard]] QPixmap picture(double strength, double devicePixelRatio) const;

    Shape m_shape;
    QPixmap m_picture; // made when first painted
    double m_strength = 0;
};

} // namespace orvane

// The soft shadow of a shape with round corners. Main thread.
#pragma once

#include <QPixmap>
#include <QRectF>

class QPainter;

namespace orvane {

/// Painted from nine parts of one small picture, which is kept, so a shadow costs the same for any size.
class OrvaSoftShadow {
public:
    struct Shape {
        double corner; // radius of the shape's corners, in points
        double room;   // around the shape on each side, in points; the shadow ends there at the latest
        double fall;   // the distance by which it falls downwards, in points
        double inset;  // the distance inside the fallen shape at which it begins to fade, in points
        /// The higher the exponent, the quicker it fades: the opacity is the rest of the way to this power.
        double power;
        /// The opacity before it begins to fade, 0 to 1.
        double strengthOnLight;
        double strengthOnDark;
    };

    explicit OrvaSoftShadow(const Shape& shape) : m_shape(shape) {}

    /// `box` is the shape, at least twice as wide and high as its corner's radius.
    void paint(QPainter& painter, const QRectF& box);

private:
    [[nodiscard]] QPixmap picture(double strength, double devicePixelRatio) const;

    Shape m_shape;
    QPixmap m_picture; // made when first painted
    double m_strength = 0;
};

} // namespace orvane

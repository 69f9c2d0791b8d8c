#include "OrvaneKit/Theme/OrvaSoftShadow.h"

#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace orvane {

/// The shadow of a square with round corners, just large enough to be cut into nine: corners, sides and a
/// middle that is stretched.
QPixmap OrvaSoftShadow::picture(double strength, double devicePixelRatio) const
{
    const double half = m_shape.room + m_shape.corner + 1; // points, from the middle to the outer edge
    const double straight = 1;                             // from the middle to where a corner begins
    const double length = m_shape.room - m_shape.fall + m_shape.inset;
    const int side = qRound(2 * half * devicePixelRatio);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        const double down = (y + 0.5) / devicePixelRatio - half - m_shape.fall;
        for (int x = 0; x < side; ++x) {
            const double right = (x + 0.5) / devicePixelRatio - half;
            const double distance = std::hypot(std::max(0.0, std::abs(right) - straight),
                                               std::max(0.0, std::abs(down) - straight)) -
                                    m_shape.corner;
            const double rest = 1 - std::clamp((distance + m_shape.inset) / length, 0.0, 1.0);
            image.setPixel(x, y, qRgba(0, 0, 0, qRound(255 * strength * std::pow(rest, m_shape.power))));
        }
    }
    image.setDevicePixelRatio(devicePixelRatio);
    return QPixmap::fromImage(image);
}

void OrvaSoftShadow::paint(QPainter& painter, const QRectF& box)
{
    const double strength =
        orvaScheme() == OrvaScheme::dark ? m_shape.strengthOnDark : m_shape.strengthOnLight;
    const double ratio = painter.device()->devicePixelRatioF();
    if (m_picture.isNull() || m_picture.devicePixelRatio() != ratio || m_strength != strength) {
        m_picture = picture(strength, ratio);
        m_strength = strength;
    }
    const double edge = m_shape.room + m_shape.corner; // the side of a corner's part, in points
    const double whole = m_picture.width();
    const QRectF to = box.adjusted(-m_shape.room, -m_shape.room, m_shape.room, m_shape.room);
    const std::array<double, 4> source{0, edge * ratio, whole - edge * ratio, whole};
    const std::array<double, 4> x{to.left(), to.left() + edge, to.right() - edge, to.right()};
    const std::array<double, 4> y{to.top(), to.top() + edge, to.bottom() - edge, to.bottom()};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const QRectF part(QPointF(x[column], y[row]), QPointF(x[column + 1], y[row + 1]));
            const QRectF piece(QPointF(source[column], source[row]),
                               QPointF(source[column + 1], source[row + 1]));
            painter.drawPixmap(part, m_picture, piece);
        }
    }
}

} // namespace orvane

#include "OrvaneKit/Theme/OrvaThemed.h"
#include "OrvaneKit/Theme/OrvaTint.h"

#include <QStyle>

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

void paintOrvaDivider(QPainter& painter, const QPointF& from, const QPointF& to)
{
    // A pen of width 0 is one pixel of the screen at any scale.
    painter.setPen(QPen(orvaColor(OrvaColor::divider), 0));
    painter.drawLine(from, to);
}

void paintOrvaElidedText(QPainter& painter, const QRectF& room, Qt::LayoutDirection direction,
                         const QString& text, Qt::TextElideMode mode)
{
    const QString shown = painter.fontMetrics().elidedText(text, mode, static_cast<int>(room.width()));
    painter.drawText(room, QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter), shown);
}

void setOrvaFieldColors(QWidget& field)
{
    QPalette colors = field.palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, orvaColor(OrvaColor::primary));
    colors.setColor(QPalette::PlaceholderText, orvaColor(OrvaColor::secondary));
    colors.setColor(QPalette::Highlight, orvaColor(OrvaColor::accent));
    colors.setColor(QPalette::HighlightedText, orvaColor(OrvaColor::onAccent));
    // To set a palette is a change of the theme itself, even if it is an equal one.
    if (colors != field.palette())
        field.setPalette(colors);
}

void setOrvaGround(QWidget& view, OrvaColor color)
{
    QPalette colors = view.palette();
    colors.setColor(QPalette::Base, orvaColor(color));
    if (colors != view.palette())
        view.setPalette(colors);
}

QString escapedMnemonics(QString text)
{
    return text.replace(u'&', QStringLiteral("&&"));
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
        painter.setBrush(faded(orvaColor(OrvaColor::primary), OrvaTint::pressedButton));
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

#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QPainter>

#include <cmath>
#include <utility>

namespace orvane {

QPixmap orvaSymbolPixmap(const QString& name, double side, const QColor& color, double devicePixelRatio,
                         SystemSymbol::Weight weight)
{
    const int pixels = qMax(1, static_cast<int>(std::lround(side * devicePixelRatio)));
    QPixmap pixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    {
        QPainter painter(&pixmap);
        SystemSymbol::image(name, {}, side, weight).draw(painter, QRectF(0, 0, pixels, pixels));
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), color);
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

void paintOrvaSymbol(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color,
                     SystemSymbol::Weight weight)
{
    const double ratio = painter.device()->devicePixelRatioF();
    const double side = qMin(rect.width(), rect.height());
    const QPixmap pixmap = orvaSymbolPixmap(name, side, color, ratio, weight);
    // A picture between two pixels would be blurred over both.
    const QPointF corner = painter.transform().map(rect.center() - QPointF(side, side) / 2) * ratio;
    const QPointF snapped = QPointF(std::round(corner.x()), std::round(corner.y())) / ratio;
    painter.drawPixmap(painter.transform().inverted().map(snapped), pixmap);
}

OrvaSymbolView::OrvaSymbolView(QString name, double side, OrvaColor color, QWidget* parent)
    : OrvaThemed(parent), m_name(std::move(name)), m_side(qRound(side)), m_color(color)
{
    setFixedSize(sizeHint());
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void OrvaSymbolView::setColor(OrvaColor color)
{
    m_color = color;
    update();
}

void OrvaSymbolView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintOrvaSymbol(painter, m_name, rect(), orvaColor(m_color));
}

} // namespace orvane

#include "Capabilities/MouseTools/Overlay/SpotlightView.h"

#include <QPaintEvent>
#include <QPainter>

namespace orvane {

namespace {

// Lengths are in points.
constexpr double ringWidth = 2;
constexpr float ringOpacity = 0.9F;

QRect squareAround(QPointF center, double radius)
{
    return QRectF(center - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius)).toAlignedRect();
}

} // namespace

SpotlightView::SpotlightView(std::shared_ptr<MouseOverlayModel> model, OrvaOverlayWindow& window)
    : m_model(std::move(model)), m_window(window), m_point(m_model->point.get())
{
    m_cancellables.push_back(m_model->point.onChange([this] { pointMoved(); }));
    m_cancellables.push_back(m_window.translucency().onChange([this] {
        shapeWindow();
        update();
    }));
    shapeWindow();
}

QRect SpotlightView::touched() const
{
    return squareAround(m_point, m_model->spotlightRadius).adjusted(-1, -1, 1, 1);
}

void SpotlightView::pointMoved()
{
    update(touched());
    m_point = m_model->point.get();
    update(touched());
    if (!m_window.translucency().get())
        shapeWindow();
}

/// Where nothing shines through, the window has the form of the ring.
void SpotlightView::shapeWindow()
{
    if (m_window.translucency().get()) {
        m_window.clearMask();
        return;
    }
    const double radius = m_model->spotlightRadius;
    m_window.setMask(QRegion(squareAround(m_point, radius), QRegion::Ellipse) -
                     QRegion(squareAround(m_point, radius - ringWidth), QRegion::Ellipse));
}

void SpotlightView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = m_model->spotlightRadius;
    if (m_window.translucency().get()) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(event->rect(), QColor::fromRgbF(0, 0, 0, static_cast<float>(m_model->dimOpacity)));
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawEllipse(m_point, radius, radius);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    } else {
        painter.fillRect(event->rect(), Qt::yellow);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor::fromRgbF(1, 1, 0, ringOpacity), ringWidth));
    painter.drawEllipse(m_point, radius - ringWidth / 2, radius - ringWidth / 2);
}

} // namespace orvane

#include "Capabilities/MouseTools/Overlay/CrosshairView.h"

#include <QPainter>

namespace orvane {

CrosshairView::CrosshairView(std::shared_ptr<MouseOverlayModel> model, OrvaOverlayWindow& window)
    : m_model(std::move(model)), m_window(window), m_point(m_model->point.get())
{
    m_cancellables.push_back(m_model->point.onChange([this] { pointMoved(); }));
    m_cancellables.push_back(m_window.translucency().onChange([this] {
        shapeWindow();
        update();
    }));
}

QRectF CrosshairView::upright() const
{
    const double thickness = m_model->crosshairThickness;
    return {m_point.x() - thickness / 2, 0, thickness, double(height())};
}

QRectF CrosshairView::level() const
{
    const double thickness = m_model->crosshairThickness;
    return {0, m_point.y() - thickness / 2, double(width()), thickness};
}

void CrosshairView::updateLines()
{
    update(upright().toAlignedRect());
    update(level().toAlignedRect());
}

void CrosshairView::pointMoved()
{
    updateLines();
    m_point = m_model->point.get();
    updateLines();
    if (!m_window.translucency().get())
        shapeWindow();
}

void CrosshairView::resizeEvent(QResizeEvent*)
{
    shapeWindow();
}

/// Where nothing shines through, the window has the form of the lines.
void CrosshairView::shapeWindow()
{
    if (m_window.translucency().get())
        m_window.clearMask();
    else
        m_window.setMask(QRegion(upright().toAlignedRect()) + QRegion(level().toAlignedRect()));
}

void CrosshairView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isTranslucent = m_window.translucency().get();
    const QColor red =
        QColor::fromRgbF(1, 0, 0, isTranslucent ? static_cast<float>(m_model->crosshairOpacity) : 1.0F);
    painter.setCompositionMode(QPainter::CompositionMode_Source); // the crossing isn't darker than the lines
    if (isTranslucent) {
        painter.fillRect(upright(), red);
        painter.fillRect(level(), red);
    } else {
        painter.fillRect(rect(), red);
    }
}

} // namespace orvane

#include "Capabilities/SnapZones/Preview/SnapPreviewView.h"

#include "OrvaneKit/Theme/OrvaSystemAccent.h"

#include <QPainterPath>
#include <QRegion>

namespace orvane {

namespace {

constexpr double fillOpacity = 0.25;
constexpr double borderOpacity = 0.8;

QRegion rounded(const QRectF& rect, double corner)
{
    QPainterPath path;
    path.addRoundedRect(rect, corner, corner);
    return QRegion(path.toFillPolygon().toPolygon());
}

QRectF inset(const QRectF& rect, double distance)
{
    return rect.adjusted(distance, distance, -distance, -distance);
}

} // namespace

SnapPreviewView::SnapPreviewView(OrvaPanelWindow& panel) : m_panel(panel)
{
    m_translucency = panel.translucency().onChange([this] {
        cutPanel();
        update();
    });
}

/// Where windows can't be transparent, all of the panel that isn't cut away hides what is behind it.
void SnapPreviewView::cutPanel()
{
    if (m_panel.translucency().get()) {
        m_panel.clearMask();
        return;
    }
    const QRectF outer(rect());
    m_panel.setMask(rounded(outer, corner) - rounded(inset(outer, borderWidth), corner - borderWidth));
}

void SnapPreviewView::resizeEvent(QResizeEvent* event)
{
    OrvaThemed::resizeEvent(event);
    cutPanel();
}

void SnapPreviewView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor accent = orvaSystemAccent();
    if (!m_panel.translucency().get()) {
        painter.fillRect(rect(), accent);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF outer(rect());
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(accent, fillOpacity));
    painter.drawRoundedRect(outer, corner, corner);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(faded(accent, borderOpacity), borderWidth));
    painter.drawRoundedRect(inset(outer, borderWidth / 2), corner - borderWidth / 2,
                            corner - borderWidth / 2);
}

} // namespace orvane

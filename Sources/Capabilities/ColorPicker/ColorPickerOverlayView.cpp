#include "Capabilities/ColorPicker/ColorPickerOverlayView.h"

#include "Capabilities/ColorPicker/ColorPickerText.h"

#include <QFontDatabase>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>

namespace orvane {

namespace {

// All lengths are in points.
constexpr double distanceFromCursor = 18;
constexpr double shadowRadius = 6;
constexpr double shadowOpacity = 0.33;
constexpr double innerRing = 3;
constexpr double outerRing = 4;
constexpr double outerRingOpacity = 0.25;
constexpr double markOutline = 1;
constexpr double markEdge = 0.5;
constexpr double markEdgeOpacity = 0.6;
constexpr double labelHeight = 20;
constexpr double labelPadding = 9;
constexpr double labelOpacity = 0.75;
constexpr int labelFontSize = 11;
/// The widest label and the shadow are inside of this, on each side of the loupe's middle.
constexpr double reach = 120;

QColor black(double opacity)
{
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(opacity));
}

void strokeCircle(QPainter& painter, QPointF center, double radius, const QColor& color, double width)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, width));
    painter.drawEllipse(center, radius, radius);
}

void paintShadow(QPainter& painter, QPointF center, double radius)
{
    QRadialGradient gradient(center, radius + shadowRadius);
    gradient.setColorAt((radius - shadowRadius) / (radius + shadowRadius), black(shadowOpacity));
    gradient.setColorAt(1, black(0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(center, radius + shadowRadius, radius + shadowRadius);
}

/// The one in the middle is what would be copied, but for the edges of the display.
void paintMark(QPainter& painter, QPointF center, double side)
{
    const QRectF mark(center - QPointF(side / 2, side / 2), QSizeF(side, side));
    const double outside = (markOutline + markEdge) / 2;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(black(markEdgeOpacity), markEdge));
    painter.drawRect(mark.adjusted(-outside, -outside, outside, outside));
    painter.setPen(QPen(Qt::white, markOutline));
    painter.drawRect(mark);
}

} // namespace

ColorPickerOverlayView::ColorPickerOverlayView(std::shared_ptr<ColorPickerOverlayModel> model)
    : m_model(std::move(model)),
      m_background(reinterpret_cast<const uchar*>(m_model->background.pixels.constData()),
                   m_model->background.width, m_model->background.height, QImage::Format_RGB32),
      m_cursor(m_model->cursor.get())
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(ColorPickerText::tr("Pick a Color"));
    m_cancellables.push_back(m_model->crop.onChange([this] { cursorMoved(); }));
}

QPointF ColorPickerOverlayView::loupeCenter(QPointF cursor)
{
    return cursor - QPointF(0, loupe / 2 + distanceFromCursor);
}

QRect ColorPickerOverlayView::loupeBounds(QPointF cursor)
{
    return QRectF(loupeCenter(cursor) - QPointF(reach, reach), QSizeF(2 * reach, 2 * reach)).toAlignedRect();
}

/// The crop is the last that a sample sets.
void ColorPickerOverlayView::cursorMoved()
{
    update(loupeBounds(m_cursor));
    m_cursor = m_model->cursor.get();
    update(loupeBounds(m_cursor));
}

void ColorPickerOverlayView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const double across = double(m_background.width()) / width();
    const double down = double(m_background.height()) / height();
    // A quick hand leaves two small parts far from each other, and the rectangle around both is large.
    for (const QRectF part : event->region()) {
        painter.drawImage(
            part, m_background,
            QRectF(part.x() * across, part.y() * down, part.width() * across, part.height() * down));
    }
    if (m_model->crop.get())
        paintLoupe(painter);
}

void ColorPickerOverlayView::paintLoupe(QPainter& painter) const
{
    const QPointF center = loupeCenter(m_cursor);
    const double radius = loupe / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    paintShadow(painter, center, radius + innerRing / 2 + outerRing);
    painter.save();
    QPainterPath circle;
    circle.addEllipse(center, radius, radius);
    painter.setClipPath(circle);
    painter.drawImage(QRectF(center - QPointF(radius, radius), QSizeF(loupe, loupe)), m_background,
                      QRectF(*m_model->crop.get()));
    painter.restore();
    strokeCircle(painter, center, radius + (innerRing + outerRing) / 2, black(outerRingOpacity), outerRing);
    strokeCircle(painter, center, radius, Qt::white, innerRing);
    const auto& crop = *m_model->crop.get();
    paintMark(painter, center, loupe / crop.width());
    paintLabel(painter, center + QPointF(0, radius));
}

/// The label lies across the lower edge of the loupe.
void ColorPickerOverlayView::paintLabel(QPainter& painter, QPointF center) const
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(labelFontSize);
    font.setWeight(QFont::DemiBold);
    const QString& text = m_model->formatString;
    const double width = QFontMetricsF(font, this).horizontalAdvance(text) + 2 * labelPadding;
    const QRectF capsule(center - QPointF(width / 2, labelHeight / 2), QSizeF(width, labelHeight));
    painter.setPen(Qt::NoPen);
    painter.setBrush(black(labelOpacity));
    painter.drawRoundedRect(capsule, labelHeight / 2, labelHeight / 2);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(capsule, Qt::AlignCenter, text);
}

} // namespace orvane

#include "Capabilities/TextExtractor/RegionSelectView.h"

#include "Capabilities/TextExtractor/TextExtractorText.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QPaintEvent>
#include <QPainter>

namespace orvane {

namespace {

// All lengths are in points.
constexpr double dimming = 0.35;
constexpr double outline = 1.5;
constexpr double distanceFromTop = 28;
constexpr double capsuleHeight = 30;
constexpr double capsulePadding = 14;
constexpr double capsuleOpacity = 0.7;

QColor black(double opacity)
{
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(opacity));
}

/// Returns what a box touches, with its outline.
QRect touchedBy(const std::optional<QRectF>& box)
{
    return box ? box->adjusted(-outline, -outline, outline, outline).toAlignedRect() : QRect();
}

} // namespace

RegionSelectView::RegionSelectView(std::shared_ptr<RegionSelectModel> model)
    : m_model(std::move(model)),
      m_background(reinterpret_cast<const uchar*>(m_model->background.pixels.constData()),
                   m_model->background.width, m_model->background.height, QImage::Format_RGB32)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(TextExtractorText::tr("Extract Text from Screen"));
    m_cancellables.push_back(m_model->selection.onChange([this] { selectionChanged(); }));
    m_cancellables.push_back(m_model->status.onChange([this] { update(); }));
}

void RegionSelectView::selectionChanged()
{
    update(touchedBy(m_selection));
    m_selection = m_model->selection.get();
    update(touchedBy(m_selection));
}

QString RegionSelectView::message() const
{
    return m_model->status.get().value_or(TextExtractorText::tr("Drag to select text · Esc to cancel"));
}

QFont RegionSelectView::messageFont()
{
    QFont font = orvaFont(OrvaFont::callout);
    font.setWeight(QFont::Medium);
    return font;
}

QRectF RegionSelectView::capsule() const
{
    const double width = QFontMetricsF(messageFont(), this).horizontalAdvance(message()) + 2 * capsulePadding;
    return {(this->width() - width) / 2, distanceFromTop, width, capsuleHeight};
}

void RegionSelectView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRectF part = event->rect();
    paintPicture(painter, part);
    painter.fillRect(part, black(dimming));
    paintSelection(painter, part);
    painter.setRenderHint(QPainter::Antialiasing);
    paintMessage(painter);
}

void RegionSelectView::paintPicture(QPainter& painter, const QRectF& part) const
{
    const double across = double(m_background.width()) / width();
    const double down = double(m_background.height()) / height();
    painter.drawImage(
        part, m_background,
        QRectF(part.x() * across, part.y() * down, part.width() * across, part.height() * down));
}

void RegionSelectView::paintSelection(QPainter& painter, const QRectF& part) const
{
    const auto box = m_model->selection.get();
    if (!box)
        return;
    const QRectF clear = *box & part;
    if (!clear.isEmpty())
        paintPicture(painter, clear);
    painter.setPen(QPen(orvaColor(OrvaColor::accent), outline));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(*box);
}

void RegionSelectView::paintMessage(QPainter& painter) const
{
    const QRectF place = capsule();
    painter.setPen(Qt::NoPen);
    painter.setBrush(black(capsuleOpacity));
    painter.drawRoundedRect(place, capsuleHeight / 2, capsuleHeight / 2);
    painter.setFont(messageFont());
    painter.setPen(Qt::white);
    painter.drawText(place, Qt::AlignCenter, message());
}

} // namespace orvane

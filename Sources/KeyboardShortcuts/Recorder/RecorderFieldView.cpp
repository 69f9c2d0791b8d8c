#include "KeyboardShortcuts/Recorder/RecorderFieldView.h"

#include "KeyboardShortcuts/Recorder/RecorderClearButtonView.h"
#include "KeyboardShortcuts/Recorder/RecorderTextView.h"

#include <algorithm>
#include <cmath>

namespace orvane::KeyboardShortcuts {

namespace {

constexpr int boxHeight = 28;
constexpr int inset = 10;
constexpr int cancelInset = 3;
constexpr double corner = 7;
constexpr double hoverTint = 0.04;

} // namespace

RecorderField::RecorderField(const QStringList& placeholders)
    : m_placeholders(placeholders),
      m_placeholder(placeholders.value(0)),
      m_cancelButton(new RecorderClearButton(this))
{
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFont(orvaFont(OrvaFont::body));
}

void RecorderField::setText(const QString& text)
{
    m_stringValue = text;
    m_cancelButton->setVisible(!text.isEmpty());
    updateGeometry();
    update();
}

void RecorderField::setPlaceholder(const QString& placeholder)
{
    m_placeholder = placeholder;
    update();
}

void RecorderField::setHighlight(Highlight highlight)
{
    m_highlight = highlight;
    update();
}

void RecorderField::themeChanged()
{
    setFont(orvaFont(OrvaFont::body));
    updateGeometry();
}

QSize RecorderField::sizeHint() const
{
    double widest =
        RecorderText(m_stringValue, font()).width() + inset + RecorderClearButton::side + cancelInset;
    for (const QString& placeholder : m_placeholders)
        widest = std::max(widest, RecorderText(placeholder, font()).width() + 2 * inset);
    const int width = std::max(leastWidth, static_cast<int>(std::ceil(widest)));
    const int height = std::max(boxHeight, fontMetrics().height() + 10);
    return QSize(width + 2 * orvaRingMargin, height + 2 * orvaRingMargin);
}

bool RecorderField::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutDirectionChange)
        placeCancelButton();
    return OrvaControl::event(event);
}

void RecorderField::resizeEvent(QResizeEvent* event)
{
    OrvaControl::resizeEvent(event);
    placeCancelButton();
}

void RecorderField::placeCancelButton()
{
    const QRect box = shape().toRect();
    const int beside = box.width() - RecorderClearButton::side - cancelInset;
    const int x = layoutDirection() == Qt::RightToLeft ? cancelInset : beside;
    m_cancelButton->move(box.left() + x, box.top() + (box.height() - RecorderClearButton::side) / 2);
}

QRectF RecorderField::textRoom() const
{
    const double atButton = m_stringValue.isEmpty() ? inset : RecorderClearButton::side + cancelInset;
    return layoutDirection() == Qt::RightToLeft ? shape().adjusted(atButton, 0, -inset, 0)
                                                : shape().adjusted(inset, 0, -atButton, 0);
}

void RecorderField::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setOpacity(ownOpacity());
    const QRectF box = shape();
    paintOrvaControlBox(painter, box, corner, false);
    if (isHovered() && m_highlight == Highlight::none) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(faded(orvaColor(OrvaColor::primary), hoverTint));
        painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    }
    const bool empty = m_stringValue.isEmpty();
    painter.setPen(orvaColor(empty ? OrvaColor::secondary : OrvaColor::primary));
    RecorderText(empty ? m_placeholder : m_stringValue, font()).paint(painter, box, textRoom());
    if (m_highlight == Highlight::ring)
        paintOrvaFocusRing(painter, box, corner);
}

} // namespace orvane::KeyboardShortcuts

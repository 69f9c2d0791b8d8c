#include "OrvaneKit/Lists/OrvaScrollBarView.h"

#include <QContextMenuEvent>
#include <QMouseEvent>

#include <algorithm>

namespace orvane {

namespace {

constexpr double thumbWidth = 6;
constexpr double shortest = 28;
constexpr double endGap = 3;

} // namespace

OrvaScrollBarView::OrvaScrollBarView(OrvaColor ground) : OrvaThemed(Qt::Vertical), m_ground(ground)
{
    setAttribute(Qt::WA_Hover);
}

QSize OrvaScrollBarView::sizeHint() const
{
    return QSize(thickness, 60);
}

QRectF OrvaScrollBarView::thumb() const
{
    const double way = height() - 2 * endGap;
    const double content = static_cast<double>(maximum()) - minimum() + pageStep();
    const double length = std::clamp(way * pageStep() / std::max(1.0, content), std::min(shortest, way), way);
    const double range = std::max(1, maximum() - minimum());
    const double y = endGap + (way - length) * (sliderPosition() - minimum()) / range;
    return QRectF((width() - thumbWidth) / 2, y, thumbWidth, length);
}

void OrvaScrollBarView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), orvaColor(m_ground));
    if (maximum() <= minimum())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(orvaColor(OrvaColor::primary), isSliderDown() || underMouse() ? 0.5 : 0.28));
    painter.drawRoundedRect(thumb(), thumbWidth / 2, thumbWidth / 2);
}

void OrvaScrollBarView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    const double y = event->position().y();
    const QRectF held = thumb();
    if (y < held.top() || y > held.bottom()) {
        triggerAction(y < held.top() ? SliderPageStepSub : SliderPageStepAdd);
        return;
    }
    m_grip = y - held.top();
    setSliderDown(true);
    update();
}

void OrvaScrollBarView::mouseMoveEvent(QMouseEvent* event)
{
    if (!isSliderDown())
        return;
    const double way = height() - 2 * endGap - thumb().height();
    const double share = std::clamp((event->position().y() - m_grip - endGap) / std::max(1.0, way), 0.0, 1.0);
    setSliderPosition(minimum() + qRound(share * (maximum() - minimum())));
}

void OrvaScrollBarView::mouseReleaseEvent(QMouseEvent*)
{
    setSliderDown(false);
    update();
}

// The stock menu names arrows that this scroll bar doesn't have.
void OrvaScrollBarView::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
}

} // namespace orvane

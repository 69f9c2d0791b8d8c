#include "OrvaneKit/Controls/OrvaSliderView.h"

#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr double knobSide = 18;
constexpr double grooveHeight = 4;
constexpr int freePositions = 10'000;

int positionCount(double lower, double upper, std::optional<double> step)
{
    if (!(upper > lower))
        return 0;
    if (!step || !(*step > 0))
        return freePositions;
    // A range that isn't a multiple of the step ends at the last whole one.
    return static_cast<int>(std::clamp(std::floor((upper - lower) / *step + 1e-9), 1.0, 1e6));
}

} // namespace

OrvaSliderView::OrvaSliderView(Binding<double> value, double lower, double upper, std::optional<double> step,
                               const QString& name, const Live<QString>& detail)
    : OrvaControl(Qt::Horizontal), m_value(std::move(value)), m_lower(lower), m_upper(upper), m_step(step)
{
    const int count = positionCount(lower, upper, step);
    setRange(0, count);
    setSingleStep(step ? 1 : std::max(1, count / 100));
    setPageStep(std::max(1, count / 10));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(name);
    follow(m_cancellables, detail, [this](const QString& text) { setAccessibleDescription(text); });
    m_value.follow(*this, [this](double shown) { showValue(shown); });
    connect(this, &QSlider::valueChanged, this, &OrvaSliderView::positionChanged);
}

void OrvaSliderView::showValue(double value)
{
    const double share = m_upper > m_lower ? (value - m_lower) / (m_upper - m_lower) : 0;
    const double position = m_step && *m_step > 0 ? (value - m_lower) / *m_step : share * maximum();
    setValue(std::isfinite(position) ? qRound(std::clamp<double>(position, 0, maximum())) : 0);
}

void OrvaSliderView::positionChanged(int position)
{
    if (m_value.isShowing())
        return;
    const double value = m_step && *m_step > 0
                             ? m_lower + position * *m_step
                             : m_lower + (m_upper - m_lower) * position / std::max(1, maximum());
    m_value.set(std::min(value, m_upper));
}

QSize OrvaSliderView::sizeHint() const
{
    return QSize(160, static_cast<int>(knobSide) + 2 * orvaRingMargin);
}

QSize OrvaSliderView::minimumSizeHint() const
{
    return QSize(80, sizeHint().height());
}

/// The groove reaches from one extreme of the knob's centre to the other.
QRectF OrvaSliderView::groove() const
{
    const double inset = orvaRingMargin + knobSide / 2;
    return QRectF(inset, (height() - grooveHeight) / 2, width() - 2 * inset, grooveHeight);
}

void OrvaSliderView::dragTo(double x)
{
    const QRectF way = groove();
    const double share = std::clamp((x - way.left()) / std::max(1.0, way.width()), 0.0, 1.0);
    setSliderPosition(qRound((mirrored() ? 1 - share : share) * maximum()));
}

void OrvaSliderView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    setSliderDown(true);
    dragTo(event->position().x());
}

void OrvaSliderView::mouseMoveEvent(QMouseEvent* event)
{
    if (isSliderDown())
        dragTo(event->position().x());
}

void OrvaSliderView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        setSliderDown(false);
}

// The wheel belongs to the page: scrolling over a control must not change its value.
void OrvaSliderView::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void OrvaSliderView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(ownOpacity());
    painter.setPen(Qt::NoPen);

    const QRectF way = groove();
    const double share = maximum() > 0 ? static_cast<double>(sliderPosition()) / maximum() : 0;
    const double x = way.left() + way.width() * (mirrored() ? 1 - share : share);
    const double end = knobSide / 2;
    const QRectF whole = way.adjusted(-end, 0, end, 0);
    QRectF filled = whole;
    mirrored() ? filled.setLeft(x) : filled.setRight(x);
    painter.setBrush(faded(orvaColor(OrvaColor::controlTrack), 0.45));
    painter.drawRoundedRect(whole, grooveHeight / 2, grooveHeight / 2);
    painter.setBrush(orvaColor(OrvaColor::accent));
    painter.drawRoundedRect(filled, grooveHeight / 2, grooveHeight / 2);

    QRectF knob(0, 0, knobSide, knobSide);
    knob.moveCenter(QPointF(x, height() / 2.0));
    painter.setBrush(QColor(0, 0, 0, 26));
    painter.drawEllipse(knob.adjusted(-0.5, 0, 0.5, 1));
    painter.setBrush(orvaColor(OrvaColor::knob));
    painter.setPen(QPen(QColor(0, 0, 0, 60), 1));
    painter.drawEllipse(knob.adjusted(0.5, 0.5, -0.5, -0.5));

    if (showsFocusRing())
        paintOrvaFocusRing(painter, knob, knobSide / 2);
}

} // namespace orvane

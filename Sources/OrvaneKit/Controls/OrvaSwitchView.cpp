#include "OrvaneKit/Controls/OrvaSwitchView.h"

#include <chrono>

namespace orvane {

namespace {

constexpr QSize track(38, 22);
constexpr double knobGap = 2;
constexpr std::chrono::milliseconds motion{150};

QColor mix(const QColor& a, const QColor& b, double share)
{
    const auto part = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return QColor(part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue()));
}

} // namespace

OrvaSwitchView::OrvaSwitchView(Binding<bool> isOn, const Live<QString>& name,
                               const std::optional<Live<QString>>& description, const Live<bool>& enabled)
    : m_isOn(std::move(isOn))
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    m_motion.setDuration(static_cast<int>(motion.count()));
    m_motion.setEasingCurve(QEasingCurve::InOutCubic);
    connect(&m_motion, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_knob = value.toDouble();
        update();
    });
    connect(this, &QAbstractButton::toggled, this, &OrvaSwitchView::shownChanged);

    follow(m_cancellables, name, [this](const QString& text) { setAccessibleName(text); });
    if (description)
        follow(m_cancellables, *description, [this](const QString& text) { setAccessibleDescription(text); });
    follow(m_cancellables, enabled, [this](bool on) { setEnabled(on); });
    m_isOn.follow(*this, [this](bool on) { setChecked(on); });
}

void OrvaSwitchView::shownChanged(bool on)
{
    moveKnob(on);
    // Assistive technology toggles the button itself.
    if (!m_isOn.isShowing())
        m_isOn.set(on);
}

void OrvaSwitchView::moveKnob(bool on)
{
    m_motion.stop();
    const double goal = on ? 1 : 0;
    if (!isVisible() || !orvaAnimates()) {
        m_knob = goal;
        update();
        return;
    }
    m_motion.setStartValue(m_knob);
    m_motion.setEndValue(goal);
    m_motion.start();
}

QSize OrvaSwitchView::sizeHint() const
{
    return track + QSize(2 * orvaRingMargin, 2 * orvaRingMargin);
}

void OrvaSwitchView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(ownOpacity());

    QRectF box(QPointF(0, 0), QSizeF(track));
    box.moveCenter(QRectF(rect()).center());
    const double corner = box.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(mix(orvaColor(OrvaColor::controlTrack), orvaColor(OrvaColor::accent), m_knob));
    painter.drawRoundedRect(box, corner, corner);
    if (isDown()) {
        painter.setBrush(QColor(0, 0, 0, 28));
        painter.drawRoundedRect(box, corner, corner);
    }

    const double side = box.height() - 2 * knobGap;
    const double way = box.width() - 2 * knobGap - side;
    const double share = layoutDirection() == Qt::RightToLeft ? 1 - m_knob : m_knob;
    const QRectF knob(box.left() + knobGap + way * share, box.top() + knobGap, side, side);
    painter.setBrush(QColor(0, 0, 0, 36));
    painter.drawEllipse(knob.adjusted(-0.5, 0, 0.5, 1));
    painter.setBrush(orvaColor(OrvaColor::knob));
    painter.drawEllipse(knob);

    if (showsFocusRing())
        paintOrvaFocusRing(painter, box, corner);
}

} // namespace orvane

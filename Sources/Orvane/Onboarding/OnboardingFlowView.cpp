#include "Orvane/Onboarding/OnboardingFlowView.h"

#include "OrvaneKit/Theme/OrvaFocus.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <chrono>
#include <utility>

namespace orvane {

namespace {

constexpr std::chrono::milliseconds motionTime{260};
constexpr double travel = 36; // points
constexpr int footerEdge = 20 - orvaRingMargin;
constexpr int footerHeight = 68;

class Footer final : public OrvaThemed<QWidget> {
protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        paintOrvaDivider(painter, QPointF(0, 0.5), QPointF(width(), 0.5));
    }
};

bool isReturn(const QKeyEvent& event)
{
    constexpr Qt::KeyboardModifiers otherModifiers =
        Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) &&
           !(event.modifiers() & otherModifiers);
}

} // namespace

/// Lies above the pages while they move.
class OnboardingStageView::Curtain final : public QWidget {
public:
    explicit Curtain(QWidget* parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

    void begin(QPixmap before, QPixmap after, double direction)
    {
        m_before = std::move(before);
        m_after = std::move(after);
        m_direction = direction;
        setProgress(0);
        raise();
        show();
    }

    void setProgress(double progress)
    {
        m_progress = progress;
        update();
    }

    void end()
    {
        hide();
        m_before = {};
        m_after = {};
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), orvaColor(OrvaColor::window));
        // The old page has faded out when the new one becomes readable.
        painter.setOpacity(qMax(0.0, 1 - 2 * m_progress));
        painter.drawPixmap(QPointF(-m_direction * travel * m_progress, 0), m_before);
        painter.setOpacity(qMax(0.0, 2 * m_progress - 1));
        painter.drawPixmap(QPointF(m_direction * travel * (1 - m_progress), 0), m_after);
    }

private:
    QPixmap m_before;
    QPixmap m_after;
    double m_direction = 1;
    double m_progress = 0;
};

OnboardingStageView::OnboardingStageView() : m_curtain(new Curtain(this))
{
    m_motion.setStartValue(0.0);
    m_motion.setEndValue(1.0);
    m_motion.setDuration(static_cast<int>(motionTime.count()));
    m_motion.setEasingCurve(QEasingCurve::InOutCubic);
    connect(&m_motion, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { m_curtain->setProgress(value.toDouble()); });
    connect(&m_motion, &QVariantAnimation::finished, this, [this] { endTransition(); });
}

void OnboardingStageView::show(QWidget* page, StageMove move)
{
    endTransition();
    const bool moves = move != StageMove::none && isVisible() && orvaAnimates();
    QPixmap before;
    if (m_page) {
        if (moves)
            before = picture(*m_page);
        m_page->hide();
        m_page->deleteLater();
    }
    m_page = page;
    page->setParent(this);
    page->setGeometry(rect());
    page->show();
    if (!moves)
        return;
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const double direction = (move == StageMove::onward) == mirrored ? -1 : 1;
    m_curtain->begin(std::move(before), picture(*page), direction);
    m_motion.start();
}

void OnboardingStageView::resizeEvent(QResizeEvent*)
{
    // The pictures have the old size.
    endTransition();
    if (m_page)
        m_page->setGeometry(rect());
    m_curtain->setGeometry(rect());
}

QPixmap OnboardingStageView::picture(QWidget& page) const
{
    const double ratio = devicePixelRatioF();
    QPixmap pixmap(size() * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    page.render(&pixmap, QPoint(), QRegion(), QWidget::DrawChildren);
    return pixmap;
}

void OnboardingStageView::endTransition()
{
    m_motion.stop();
    m_curtain->end();
}

OnboardingFlowView::OnboardingFlowView(OnboardingFlow flow)
    : m_flow(std::move(flow)), m_stage(new OnboardingStageView)
{
    auto* lines = new QVBoxLayout(this);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(0);
    lines->addWidget(m_stage, 1);
    lines->addWidget(makeFooter());
    m_stage->show(m_flow.content(m_flow.step->get()).makeWidget(), StageMove::none);
    m_shown = m_flow.step->get();
    orderTabs();
    qApp->installEventFilter(this);
    m_cancellables.push_back(
        m_flow.step->subscribeToChanges([this](OnboardingFlow::Step step) { showStep(step); }));
}

QWidget* OnboardingFlowView::makeFooter()
{
    auto* footer = new Footer;
    footer->setMinimumHeight(footerHeight);
    auto* cells = new QGridLayout(footer);
    cells->setContentsMargins(footerEdge, 0, footerEdge, 0);
    // The spacing would come and go with the button beside it, and move the dots.
    cells->setHorizontalSpacing(0);
    cells->setColumnStretch(0, 1);
    cells->setColumnStretch(2, 1);
    QWidget* back = m_flow.backButton().makeWidget();
    QWidget* forward = m_flow.forwardButton().makeWidget();
    cells->addWidget(back, 0, 0, Qt::AlignLeft | Qt::AlignVCenter);
    cells->addWidget(m_flow.dots().makeWidget(), 0, 1, Qt::AlignCenter);
    cells->addWidget(forward, 0, 2, Qt::AlignRight | Qt::AlignVCenter);
    m_back = back->findChild<QPushButton*>();
    m_forward = qobject_cast<QPushButton*>(forward);
    m_forward->setDefault(true);
    return footer;
}

void OnboardingFlowView::showStep(OnboardingFlow::Step step)
{
    const QWidget* focus = QApplication::focusWidget();
    const bool byKeyboard = isUsedByKeyboard(focus);
    const bool focusStays = focus == m_forward || (focus == m_back && step != OnboardingFlow::Step::welcome);
    m_stage->show(m_flow.content(step).makeWidget(),
                  step > m_shown ? StageMove::onward : StageMove::backward);
    m_shown = step;
    orderTabs();
    if (!focusStays)
        m_forward->setFocus(byKeyboard ? Qt::TabFocusReason : Qt::OtherFocusReason);
}

/// The page comes first in the order of Tab, then the footer, though each page is made after the footer.
void OnboardingFlowView::orderTabs()
{
    chainTabs(nullptr, focusPlaces(*m_stage->page()) + QList<QWidget*>{m_back, m_forward});
}

void OnboardingFlowView::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), orvaColor(OrvaColor::window));
}

// Comes before the control with the focus: on some desktops a button would take Return for itself.
bool OnboardingFlowView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && isAncestorOf(widget) && isReturn(*key)) {
            if (!key->isAutoRepeat())
                m_forward->click();
            return true;
        }
    }
    return OrvaThemed::eventFilter(watched, event);
}

void OnboardingFlowView::showEvent(QShowEvent* event)
{
    OrvaThemed::showEvent(event);
    // Keys must reach this view from the start, and Space then does what Return does.
    if (!window()->focusWidget())
        m_forward->setFocus(Qt::OtherFocusReason);
}

} // namespace orvane

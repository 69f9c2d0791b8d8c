#include "Orvane/Shortcuts/OrvaPopoverView.h"

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaAccessible.h"
#include "OrvaneKit/Theme/OrvaFocus.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

namespace orvane {

namespace {

constexpr int shadowRoom = 18;
constexpr int arrowHeight = 7;
constexpr int arrowHalf = 8; // half of its width
constexpr int frameGap = 8;  // from the window's edge
constexpr double corner = 10;
constexpr OrvaSoftShadow::Shape shadow{.corner = corner,
                                       .room = shadowRoom,
                                       .fall = 3,
                                       .inset = 0,
                                       .power = 1.1,
                                       .strengthOnLight = 0.11,
                                       .strengthOnDark = 0.53};

class AccessiblePanel final : public QAccessibleWidget {
public:
    explicit AccessiblePanel(OrvaPopoverPanelView* panel) : QAccessibleWidget(panel, QAccessible::Dialog) {}
};

} // namespace

OrvaPopoverPanelView::OrvaPopoverPanelView(const OrvaPopover& popover, QWidget& anchor)
    : OrvaThemed(anchor.window()), m_isPresented(popover.isPresented), m_anchor(&anchor), m_shadow(shadow)
{
    describeWith<OrvaPopoverPanelView, AccessiblePanel>();
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(popover.accessibleName);
    const int side = static_cast<int>(popover.padding) - orvaRingMargin + shadowRoom;
    const int end = side + arrowHeight;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(side, end, side, end);
    if (QWidget* content = popover.content().makeWidget())
        layout->addWidget(content);
    setFixedWidth(static_cast<int>(popover.width) + 2 * shadowRoom);
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { focusChanged(now); });
    place();
    show();
    raise();
    setFocus(Qt::PopupFocusReason);
}

OrvaPopoverPanelView::~OrvaPopoverPanelView() = default;

/// Puts the panel below the anchor where there is room, else above it; inside the window in any case.
void OrvaPopoverPanelView::place()
{
    if (!m_anchor)
        return;
    const QRect room = window()
                           ->rect()
                           .adjusted(frameGap, frameGap, -frameGap, -frameGap)
                           .adjusted(-shadowRoom, -shadowRoom, shadowRoom, shadowRoom);
    const QRect anchor(m_anchor->mapTo(window(), QPoint()), m_anchor->size());
    ensurePolished();
    layout()->activate();
    const int height =
        layout()->hasHeightForWidth() ? layout()->heightForWidth(width()) : layout()->sizeHint().height();
    const int below = anchor.bottom() + 1 - shadowRoom;
    m_side =
        below + height > room.bottom() + 1 && anchor.top() > room.height() / 2 ? Side::above : Side::below;
    const int y = m_side == Side::below ? below : anchor.top() + shadowRoom - height;
    const int x = std::clamp(anchor.center().x() - width() / 2, room.left(),
                             std::max(room.left(), room.right() + 1 - width()));
    setGeometry(x, y, width(), height);
    const double least = shadowRoom + corner + arrowHalf;
    m_tip = std::clamp(anchor.center().x() + 0.5 - x, least, width() - least);
    update();
}

void OrvaPopoverPanelView::close()
{
    const Binding<bool> presented = m_isPresented;
    presented.set(false);
}

bool OrvaPopoverPanelView::holds(const QWidget& widget) const
{
    return &widget == this || isAncestorOf(&widget);
}

bool OrvaPopoverPanelView::eventFilter(QObject* watched, QEvent* event)
{
    auto* widget = watched->isWidgetType() ? static_cast<QWidget*>(watched) : nullptr;
    if (!widget || widget->window() != window())
        return OrvaThemed::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Resize:
        if (widget == window())
            place();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
        // The anchor itself decides what a click on it does.
        if (!holds(*widget) && !(m_anchor && (widget == m_anchor || m_anchor->isAncestorOf(widget))))
            close();
        break;
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            close();
            return true;
        }
        break;
    default:
        break;
    }
    return OrvaThemed::eventFilter(watched, event);
}

void OrvaPopoverPanelView::focusChanged(QWidget* now)
{
    if (now && holds(*now)) {
        m_lastStop = now;
        return;
    }
    if (now) {
        if (now->window() == window() && !(m_anchor && m_anchor->isAncestorOf(now)))
            close();
        return;
    }
    // The widget that gave the focus up may be about to pass it on.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!QApplication::focusWidget() && window()->isActiveWindow())
                setFocus(Qt::OtherFocusReason);
        },
        Qt::QueuedConnection);
}

bool OrvaPopoverPanelView::focusNextPrevChild(bool next)
{
    const QList<QWidget*> stops = QList<QWidget*>{this} + tabStops(*this);
    QWidget* const focus = QApplication::focusWidget();
    const qsizetype from =
        std::max<qsizetype>(0, stops.indexOf(focus && holds(*focus) ? focus : m_lastStop.data()));
    const qsizetype to = (from + (next ? 1 : stops.size() - 1)) % stops.size();
    stops.at(to)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

// Neither presses nor the wheel go on to what lies behind.
void OrvaPopoverPanelView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

void OrvaPopoverPanelView::wheelEvent(QWheelEvent* event)
{
    event->accept();
}

QRectF OrvaPopoverPanelView::body() const
{
    const double end = shadowRoom + arrowHeight;
    return QRectF(rect()).adjusted(shadowRoom + 0.5, end + 0.5, -shadowRoom - 0.5, -end - 0.5);
}

QPainterPath OrvaPopoverPanelView::outline() const
{
    const QRectF box = body();
    const double edge = m_side == Side::below ? box.top() : box.bottom();
    const double tip = edge + (m_side == Side::below ? -arrowHeight : arrowHeight);
    const double foot = edge + (m_side == Side::below ? 1 : -1);
    QPainterPath arrow;
    arrow.moveTo(m_tip - arrowHalf, foot);
    arrow.lineTo(m_tip - arrowHalf, edge);
    arrow.lineTo(m_tip, tip);
    arrow.lineTo(m_tip + arrowHalf, edge);
    arrow.lineTo(m_tip + arrowHalf, foot);
    arrow.closeSubpath();
    QPainterPath path;
    path.addRoundedRect(box, corner, corner);
    return path.united(arrow);
}

void OrvaPopoverPanelView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    m_shadow.paint(painter, body());
    painter.setPen(QPen(orvaColor(OrvaColor::controlStroke), 1));
    painter.setBrush(orvaColor(OrvaColor::cardFill));
    painter.drawPath(outline());
}

OrvaPopoverAnchorView::OrvaPopoverAnchorView(const OrvaPopover& popover) : m_popover(popover)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (QWidget* anchor = popover.anchor.makeWidget())
        layout->addWidget(anchor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    follow(m_cancellables, static_cast<const Live<bool>&>(m_popover.isPresented),
           [this](bool presented) { show(presented); });
}

OrvaPopoverAnchorView::~OrvaPopoverAnchorView()
{
    delete m_panel;
}

void OrvaPopoverAnchorView::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous() && m_popover.isPresented.get())
        m_popover.isPresented.set(false);
}

void OrvaPopoverAnchorView::show(bool presented)
{
    if (presented == (m_panel != nullptr))
        return;
    if (presented)
        open();
    else
        closePanel();
}

void OrvaPopoverAnchorView::open()
{
    if (isVisible())
        m_panel = new OrvaPopoverPanelView(m_popover, *this);
}

void OrvaPopoverAnchorView::closePanel()
{
    // It may be handling an event.
    OrvaPopoverPanelView* const panel = m_panel;
    m_panel = nullptr;
    QWidget* const focus = QApplication::focusWidget();
    if (!focus || focus == panel || panel->isAncestorOf(focus))
        takeFocusBack();
    qApp->removeEventFilter(panel);
    panel->hide();
    panel->deleteLater();
}

void OrvaPopoverAnchorView::takeFocusBack()
{
    if (QWidget* const stop = firstTabStop(*this))
        handFocusOn(stop, *stop);
}

} // namespace orvane

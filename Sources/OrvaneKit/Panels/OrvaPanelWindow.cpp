#include "OrvaneKit/Panels/OrvaPanelWindow.h"

#include "Platform/Panels.h"
#include "Platform/Platform.h"
#include "Platform/Screens.h"

#include <QCloseEvent>
#include <QPainterPath>
#include <QWindow>

namespace orvane {

namespace {

constexpr int shadowRoom = 22; // on each side of the frame

Qt::WindowFlags flagsOf(const OrvaPanelWindow::Style& style)
{
    Qt::WindowFlags flags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    if (style.keyboard == OrvaPanelWindow::Keyboard::never)
        flags |= Qt::WindowDoesNotAcceptFocus;
    if (style.mouse == OrvaPanelWindow::Mouse::passesThrough)
        flags |= Qt::WindowTransparentForInput;
    return flags;
}

OrvaSoftShadow::Shape shadowOf(const OrvaPanelWindow::Style& style)
{
    return {.corner = style.corner,
            .room = shadowRoom,
            .fall = 5,
            .inset = 5,
            .power = 3,
            .strengthOnLight = 0.32,
            .strengthOnDark = 0.55};
}

} // namespace

OrvaPanelWindow::OrvaPanelWindow(Style style)
    : OrvaThemed(nullptr, flagsOf(style)),
      m_style(style),
      m_shadow(shadowOf(style)),
      m_translucency(platform().panels.isCompositing())
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating, style.keyboard == Keyboard::never);
    m_compositing = platform().defaultNotificationCenter.addObserver(
        Panels::didChangeCompositingNotification(), [this](const Notification&) {
            m_translucency.set(platform().panels.isCompositing());
            place();
            update();
        });
}

OrvaPanelWindow::~OrvaPanelWindow() = default;

void OrvaPanelWindow::setContentView(QWidget* content)
{
    delete m_content;
    m_content = content;
    content->setParent(this);
    placeContent();
    content->show();
}

QMargins OrvaPanelWindow::shadowMargins() const
{
    if (m_style.shadow == Shadow::none || !m_translucency.get())
        return {};
    return QMargins(shadowRoom, shadowRoom, shadowRoom, shadowRoom);
}

QRectF OrvaPanelWindow::body() const
{
    return QRectF(rect().marginsRemoved(shadowMargins()));
}

void OrvaPanelWindow::setFrame(const Rect& frame)
{
    m_frame = frame;
    place();
}

void OrvaPanelWindow::place()
{
    const QRectF place = platform().screens.windowGeometry(m_frame);
    // The edges are rounded, as those of the windows are that it has to lie on.
    const QPoint corner(qRound(place.left()), qRound(place.top()));
    const QRect rounded(corner,
                        QSize(qRound(place.right()) - corner.x(), qRound(place.bottom()) - corner.y()));
    setGeometry(rounded.marginsAdded(shadowMargins()));
    placeContent();
    applyMargins();
}

/// Keeps the content off the border and inside the round corners.
void OrvaPanelWindow::placeContent()
{
    if (!m_content)
        return;
    m_content->setGeometry(body().toRect());
    if (m_style.ground == Ground::clear)
        return;
    const QRectF inside = QRectF(m_content->rect()).adjusted(1, 1, -1, -1);
    // The corner is rounder than the border: a mask has whole points, which would show as steps on it.
    const double corner = m_translucency.get() ? m_style.corner + 3 : 0;
    QPainterPath shape;
    shape.addRoundedRect(inside, corner, corner);
    m_content->setMask(QRegion(shape.toFillPolygon().toPolygon()));
}

void OrvaPanelWindow::applyMargins()
{
    if (m_style.shadow == Shadow::cast && m_style.mouse == Mouse::taken && windowHandle())
        platform().panels.setShadowMargins(*windowHandle(), shadowMargins());
}

void OrvaPanelWindow::resizeEvent(QResizeEvent* event)
{
    OrvaThemed::resizeEvent(event);
    placeContent();
    applyMargins();
}

void OrvaPanelWindow::orderFront()
{
    m_isOrderedIn = true;
    if (!QWidget::isVisible()) {
        create(); // the desktop is told the window's states before it is shown
        windowHandle()->installEventFilter(this);
        applyMargins();
        platform().panels.joinAllSpaces(*windowHandle());
        show();
    }
    raise();
}

void OrvaPanelWindow::orderOut()
{
    m_isOrderedIn = false;
    hideOrderedOut();
}

/// A window that is hidden before the window manager has shown it is shown nevertheless, and stays, so this
/// waits until it is shown.
void OrvaPanelWindow::hideOrderedOut()
{
    if (!m_isOrderedIn && QWidget::isVisible() && windowHandle()->isExposed())
        hide();
}

bool OrvaPanelWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == windowHandle() && event->type() == QEvent::Expose && !m_isOrderedIn)
        QMetaObject::invokeMethod(this, &OrvaPanelWindow::hideOrderedOut, Qt::QueuedConnection);
    return OrvaThemed::eventFilter(watched, event);
}

void OrvaPanelWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (const auto request = onCloseRequest)
        request();
}

void OrvaPanelWindow::paintEvent(QPaintEvent*)
{
    if (m_style.ground == Ground::clear && m_style.shadow == Shadow::none)
        return;
    QPainter painter(this);
    const QRectF edge = body().adjusted(0.5, 0.5, -0.5, -0.5);
    if (!m_translucency.get()) {
        painter.fillRect(rect(), orvaColor(OrvaColor::window));
        painter.setPen(QPen(orvaColor(OrvaColor::controlStroke), 1));
        painter.drawRect(edge);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_style.shadow == Shadow::cast)
        m_shadow.paint(painter, body());
    if (m_style.ground == Ground::clear)
        return;
    // The ground is painted over the shadow, which would otherwise darken it from below.
    painter.setPen(QPen(orvaColor(OrvaColor::controlStroke), 1));
    painter.setBrush(orvaColor(OrvaColor::window));
    painter.drawRoundedRect(edge, m_style.corner - 0.5, m_style.corner - 0.5);
}

KeyablePanel::KeyablePanel(Style style)
    : OrvaPanelWindow([](Style own) {
          own.keyboard = Keyboard::onRequest;
          return own;
      }(style))
{
}

void KeyablePanel::makeKeyAndOrderFront()
{
    orderFront();
    platform().panels.makeKey(*windowHandle());
}

} // namespace orvane

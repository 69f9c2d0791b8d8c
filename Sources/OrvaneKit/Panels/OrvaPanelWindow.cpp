#include "OrvaneKit/Panels/OrvaPanelWindow.h"

#include "Platform/Panels.h"
#include "Platform/Platform.h"
#include "Platform/Screens.h"

#include <QCloseEvent>
#include <QPainterPath>
#include <QWindow>

#include <algorithm>
#include <array>
#include <cmath>

namespace orvane {

namespace {

constexpr int shadowRoom = 22; // on each side of the frame
constexpr double shadowFall = 5;

Qt::WindowFlags flagsOf(const OrvaPanelWindow::Style& style)
{
    Qt::WindowFlags flags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    if (style.keyboard == OrvaPanelWindow::Keyboard::never)
        flags |= Qt::WindowDoesNotAcceptFocus;
    if (style.mouse == OrvaPanelWindow::Mouse::passesThrough)
        flags |= Qt::WindowTransparentForInput;
    return flags;
}

/// The shadow of a square with round corners, just large enough to be cut into nine: corners, sides and a
/// middle that is stretched. It begins to fade inside of the shape that falls, and reaches the edge with
/// nothing left.
QPixmap shadowPixmap(double corner, double devicePixelRatio)
{
    const double strength = orvaScheme() == OrvaScheme::dark ? 0.55 : 0.32;
    const double half = shadowRoom + corner + 1; // points, from the middle to the outer edge
    const int side = qRound(2 * half * devicePixelRatio);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    const double straight =
        half - shadowRoom - corner; // from the middle to where a corner's circle has its own
    for (int y = 0; y < side; ++y) {
        const double down = (y + 0.5) / devicePixelRatio - half - shadowFall;
        for (int x = 0; x < side; ++x) {
            const double right = (x + 0.5) / devicePixelRatio - half;
            const double distance = std::hypot(std::max(0.0, std::abs(right) - straight),
                                               std::max(0.0, std::abs(down) - straight)) -
                                    corner;
            const double rest = 1 - std::clamp((distance + shadowFall) / shadowRoom, 0.0, 1.0);
            image.setPixel(x, y, qRgba(0, 0, 0, qRound(255 * strength * rest * rest * rest)));
        }
    }
    image.setDevicePixelRatio(devicePixelRatio);
    return QPixmap::fromImage(image);
}

} // namespace

OrvaPanelWindow::OrvaPanelWindow(Style style)
    : OrvaThemed(nullptr, flagsOf(style)), m_style(style), m_translucency(platform().panels.isCompositing())
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
    // By its edges, as windows are placed that it shall lie on.
    const QPoint corner(qRound(place.left()), qRound(place.top()));
    const QRect rounded(corner,
                        QSize(qRound(place.right()) - corner.x(), qRound(place.bottom()) - corner.y()));
    setGeometry(rounded.marginsAdded(shadowMargins()));
    placeContent();
    applyMargins();
}

/// The content stays off the border and inside the round corners.
void OrvaPanelWindow::placeContent()
{
    if (!m_content)
        return;
    m_content->setGeometry(body().toRect());
    if (m_style.ground == Ground::clear)
        return;
    const QRectF inside = QRectF(m_content->rect()).adjusted(1, 1, -1, -1);
    // Rounder than the border: a mask has whole points, which would show as steps on it.
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
        create(); // the desktop's states are told before the window is shown
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

/// A window that is hidden before the window manager has brought it up is brought up nevertheless, and stays:
/// so its coming is waited for.
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

/// By nine parts of one small picture: whatever the panel's size, a shadow costs the same.
void OrvaPanelWindow::paintShadow(QPainter& painter)
{
    if (m_shadow.isNull() || m_shadow.devicePixelRatio() != devicePixelRatioF())
        m_shadow = shadowPixmap(m_style.corner, devicePixelRatioF());
    const double edge = shadowRoom + m_style.corner; // of a corner's part, points
    const double scale = m_shadow.devicePixelRatio();
    const double whole = m_shadow.width();
    const QRectF to = rect();
    const std::array<double, 4> source{0, edge * scale, whole - edge * scale, whole};
    const std::array<double, 4> x{to.left(), to.left() + edge, to.right() - edge, to.right()};
    const std::array<double, 4> y{to.top(), to.top() + edge, to.bottom() - edge, to.bottom()};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const QRectF part(QPointF(x[column], y[row]), QPointF(x[column + 1], y[row + 1]));
            const QRectF piece(QPointF(source[column], source[row]),
                               QPointF(source[column + 1], source[row + 1]));
            painter.drawPixmap(part, m_shadow, piece);
        }
    }
}

void OrvaPanelWindow::themeChanged()
{
    m_shadow = QPixmap();
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
        paintShadow(painter);
    if (m_style.ground == Ground::clear)
        return;
    // The ground goes over the shadow that would otherwise darken it from below.
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

#include "OrvaneKit/Panels/OrvaOverlayWindow.h"

#include "Platform/Panels.h"
#include "Platform/Platform.h"
#include "Platform/Screens.h"

#include <QWindow>

namespace orvane {

OrvaOverlayWindow::OrvaOverlayWindow(Overlays::Input input, Ground ground)
    : m_input(input), m_translucency(platform().panels.isCompositing())
{
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_TranslucentBackground, ground == Ground::clear);
    m_compositingChanges = platform().defaultNotificationCenter.addObserver(
        Panels::didChangeCompositingNotification(),
        [this](const Notification&) { m_translucency.set(platform().panels.isCompositing()); });
}

OrvaOverlayWindow::~OrvaOverlayWindow() = default;

void OrvaOverlayWindow::setContentView(QWidget* content)
{
    delete m_content;
    m_content = content;
    content->setParent(this);
    content->setGeometry(rect());
    content->show();
}

void OrvaOverlayWindow::setFrame(const Rect& frame)
{
    const QRectF place = platform().screens.windowGeometry(frame);
    // The far edges are rounded, and not the size: together with its neighbours it leaves no gap.
    const QPoint corner(qRound(place.left()), qRound(place.top()));
    setGeometry(
        QRect(corner, QSize(qRound(place.right()) - corner.x(), qRound(place.bottom()) - corner.y())));
}

void OrvaOverlayWindow::orderFront()
{
    if (!windowHandle()) {
        (void)winId();
        platform().overlays.prepare(*windowHandle(), m_input);
    }
    show();
}

void OrvaOverlayWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_content)
        m_content->setGeometry(rect());
}

} // namespace orvane

#include "PlatformLinux/Tray/XEmbedTrayWindow.h"

#include "PlatformLinux/Menus/MenuText.h"

#include <QApplication>
#include <QCursor>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <cstring>
#include <utility>

namespace orvane {

namespace {

constexpr std::uint32_t listenedTo = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                     XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                     XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
constexpr int smallestSide = 22;
constexpr int usualSide = 24;

} // namespace

XEmbedTrayWindow::XEmbedTrayWindow(StatusItemContent content, TrayTint tint, ClickHandler clicked)
    : m_content(std::move(content)),
      m_tint(tint),
      m_clicked(std::move(clicked)),
      m_x(X11Connection::ofApplication()),
      m_link(ApplicationLink::get())
{
    m_toolTipDelay.setSingleShot(true);
    m_toolTipDelay.setInterval(QApplication::style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay));
    connect(&m_toolTipDelay, &QTimer::timeout, this, &XEmbedTrayWindow::showToolTip);
    qApp->installNativeEventFilter(this);
}

XEmbedTrayWindow::~XEmbedTrayWindow()
{
    if (qApp)
        qApp->removeNativeEventFilter(this);
    destroy();
}

void XEmbedTrayWindow::dock(xcb_window_t tray, xcb_visualid_t visual)
{
    if (!m_x || !m_link || (tray == m_tray && m_window))
        return;
    destroy();
    m_tray = tray;
    create(visual);
    sendDockRequest();
}

void XEmbedTrayWindow::create(xcb_visualid_t visual)
{
    xcb_connection_t* c = m_x->xcb();
    const xcb_screen_t& screen = m_x->screen();
    if (!m_x->visual(visual, &m_depth)) {
        visual = screen.root_visual;
        m_depth = screen.root_depth;
    }
    m_colormap = xcb_generate_id(c);
    xcb_create_colormap(c, XCB_COLORMAP_ALLOC_NONE, m_colormap, m_x->root(), visual);

    // A window with an alpha channel shows the panel behind it; any other shows its parent's background, with
    // which the picture is blended too.
    const bool alpha = m_depth == 32;
    const std::uint32_t values[] = {alpha ? 0u : std::uint32_t{XCB_BACK_PIXMAP_PARENT_RELATIVE}, 0u,
                                    listenedTo, m_colormap};
    const std::uint32_t mask = (alpha ? XCB_CW_BACK_PIXEL : XCB_CW_BACK_PIXMAP) | XCB_CW_BORDER_PIXEL |
                               XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    m_window = xcb_generate_id(c);
    m_size = QSize(usualSide, usualSide);
    xcb_create_window(c, m_depth, m_window, m_x->root(), 0, 0, usualSide, usualSide, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual, mask, values);
    X11Connection::noteWindow(m_window);
    m_gc = xcb_generate_id(c);
    xcb_create_gc(c, m_gc, m_window, 0, nullptr);
    setProperties();
    suggestSize();
}

void XEmbedTrayWindow::destroy()
{
    m_toolTipDelay.stop();
    if (!m_window)
        return;
    xcb_connection_t* c = m_x->xcb();
    // The end of the tray may have destroyed the window already.
    m_x->ignoreErrors(xcb_destroy_window_checked(c, m_window));
    m_x->ignoreErrors(xcb_free_gc_checked(c, m_gc));
    m_x->ignoreErrors(xcb_free_colormap_checked(c, m_colormap));
    xcb_flush(c);
    X11Connection::forgetWindow(m_window);
    m_window = XCB_WINDOW_NONE;
    m_docked = false;
}

void XEmbedTrayWindow::setProperties()
{
    xcb_connection_t* c = m_x->xcb();
    constexpr std::uint32_t embedding[] = {0 /* version */, 1 /* mapped */};
    const xcb_atom_t info = m_link->atoms().xembedInfo;
    m_x->ignoreErrors(
        xcb_change_property_checked(c, XCB_PROP_MODE_REPLACE, m_window, info, info, 32, 2, embedding));

    constexpr char className[] = "orvane\0Orvane";
    m_x->ignoreErrors(xcb_change_property_checked(c, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS,
                                                  XCB_ATOM_STRING, 8, sizeof className, className));

    const QByteArray title = plainMenuTitle(m_content.title()).toUtf8();
    m_x->ignoreErrors(xcb_change_property_checked(
        c, XCB_PROP_MODE_REPLACE, m_window, m_link->atoms().windowName, m_link->atoms().utf8String, 8,
        static_cast<std::uint32_t>(title.size()), title.constData()));

    const auto pid = static_cast<std::uint32_t>(QCoreApplication::applicationPid());
    m_x->ignoreErrors(xcb_change_property_checked(c, XCB_PROP_MODE_REPLACE, m_window, m_link->atoms().process,
                                                  XCB_ATOM_CARDINAL, 32, 1, &pid));
}

void XEmbedTrayWindow::suggestSize()
{
    // WM_NORMAL_HINTS with a minimum only. Trays that stretch their icons in one direction follow it.
    const QSizeF shape = m_content.image.size;
    int width = smallestSide;
    if (m_content.length == StatusItem::variableLength && !shape.isEmpty())
        width = std::max(width, qRound(smallestSide * shape.width() / shape.height()));
    else if (m_content.length > 0)
        width = std::max(width, qRound(m_content.length * qApp->devicePixelRatio()));
    std::uint32_t hints[18] = {};
    hints[0] = 1u << 4;
    hints[5] = static_cast<std::uint32_t>(width);
    hints[6] = smallestSide;
    m_x->ignoreErrors(xcb_change_property_checked(m_x->xcb(), XCB_PROP_MODE_REPLACE, m_window,
                                                  XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, 18,
                                                  hints));
}

void XEmbedTrayWindow::sendDockRequest()
{
    constexpr std::uint32_t requestDock = 0;
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_tray;
    message.type = m_link->atoms().trayOpcode;
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = m_window;
    m_x->ignoreErrors(xcb_send_event_checked(m_x->xcb(), 0, m_tray, XCB_EVENT_MASK_NO_EVENT,
                                             reinterpret_cast<const char*>(&message)));
    xcb_flush(m_x->xcb());
}

void XEmbedTrayWindow::setContent(const StatusItemContent& content)
{
    m_content = content;
    if (!m_window)
        return;
    setProperties();
    suggestSize();
    paint();
}

void XEmbedTrayWindow::setTint(const TrayTint& tint)
{
    m_tint = tint;
    if (m_window)
        paint();
}

QImage XEmbedTrayWindow::background() const
{
    const auto width = static_cast<std::uint16_t>(m_size.width());
    const auto height = static_cast<std::uint16_t>(m_size.height());
    xcb_clear_area(m_link->xcb(), 0, m_window, 0, 0, width, height);
    const auto reply = m_link->exchange().reply<xcb_get_image_reply_t>(
        xcb_get_image(m_link->xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, 0, 0, width, height, ~0u));
    const std::uint32_t expected = 4u * width * height;
    if (!reply || static_cast<std::uint32_t>(xcb_get_image_data_length(reply.get())) != expected)
        return {};
    QImage image(m_size, QImage::Format_RGB32);
    std::memcpy(image.bits(), xcb_get_image_data(reply.get()), expected);
    return image;
}

void XEmbedTrayWindow::paint()
{
    if (!m_docked || m_size.isEmpty())
        return;
    QImage picture;
    if (m_depth == 32) {
        picture = tintedForTray(m_content.image, m_size, m_tint);
    } else {
        picture = background();
        if (picture.isNull())
            return; // The window can't be seen at present; an exposure follows when it can.
        const TrayTint tint{legibleOn(picture.pixelColor(0, 0)), TrayTint::Contour::none};
        QPainter painter(&picture);
        painter.drawImage(0, 0, tintedForTray(m_content.image, m_size, tint));
    }
    m_x->ignoreErrors(xcb_put_image_checked(
        m_x->xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, m_gc, static_cast<std::uint16_t>(picture.width()),
        static_cast<std::uint16_t>(picture.height()), 0, 0, 0, m_depth,
        static_cast<std::uint32_t>(picture.sizeInBytes()), picture.constBits()));
    xcb_flush(m_x->xcb());
}

bool XEmbedTrayWindow::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (!m_window || eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7f) {
    case XCB_EXPOSE: {
        const auto* exposed = reinterpret_cast<const xcb_expose_event_t*>(event);
        if (exposed->window == m_window && exposed->count == 0)
            paint();
        break;
    }
    case XCB_CONFIGURE_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_DESTROY_NOTIFY:
        structureEvent(event);
        break;
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE: {
        const auto* button = reinterpret_cast<const xcb_button_press_event_t*>(event);
        if (button->event == m_window)
            buttonEvent(*button, (event->response_type & 0x7f) == XCB_BUTTON_PRESS);
        break;
    }
    case XCB_ENTER_NOTIFY:
        if (reinterpret_cast<const xcb_enter_notify_event_t*>(event)->event == m_window)
            m_toolTipDelay.start();
        break;
    case XCB_LEAVE_NOTIFY:
        if (reinterpret_cast<const xcb_leave_notify_event_t*>(event)->event == m_window) {
            m_toolTipDelay.stop();
            QToolTip::hideText();
        }
        break;
    default:
        break;
    }
    return false;
}

void XEmbedTrayWindow::structureEvent(const xcb_generic_event_t* event)
{
    switch (event->response_type & 0x7f) {
    case XCB_CONFIGURE_NOTIFY: {
        const auto* told = reinterpret_cast<const xcb_configure_notify_event_t*>(event);
        if (told->window == m_window && m_size != QSize(told->width, told->height)) {
            m_size = QSize(told->width, told->height);
            paint();
        }
        break;
    }
    case XCB_REPARENT_NOTIFY: {
        const auto* told = reinterpret_cast<const xcb_reparent_notify_event_t*>(event);
        if (told->window != m_window)
            break;
        m_docked = told->parent != m_x->root();
        // A tray that ends gives the window back to the root, where it must not be seen as a window of the
        // desktop.
        if (!m_docked)
            destroy();
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window == m_window)
            destroy();
        break;
    default:
        break;
    }
}

void XEmbedTrayWindow::buttonEvent(const xcb_button_press_event_t& event, bool press)
{
    m_toolTipDelay.stop();
    QToolTip::hideText();
    if (press) {
        // While a menu is open, a press closes it, and that is all this click does; often only its release
        // arrives here.
        m_pressed = !QApplication::activePopupWidget();
        return;
    }
    if (!std::exchange(m_pressed, false) || (event.detail != 1 && event.detail != 3))
        return;
    if (!QRect(QPoint(), m_size).contains(event.event_x, event.event_y))
        return;
    const auto type =
        event.detail == 1 ? StatusItemEvent::Type::leftMouseUp : StatusItemEvent::Type::rightMouseUp;
    const StatusItemEvent click{type, eventFlagsOfXState(event.state)};
    QMetaObject::invokeMethod(
        this, [clicked = m_clicked, click] { clicked(click); }, Qt::QueuedConnection);
}

std::optional<QRect> XEmbedTrayWindow::screenGeometry() const
{
    if (!m_window || !m_docked)
        return std::nullopt;
    const auto reply = m_link->exchange().reply<xcb_translate_coordinates_reply_t>(
        xcb_translate_coordinates(m_link->xcb(), m_window, m_link->root(), 0, 0));
    if (!reply)
        return std::nullopt;
    // Qt leaves the corners of screens in pixels and scales what is inside.
    const QPoint corner(reply->dst_x, reply->dst_y);
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QPoint origin = screen->geometry().topLeft();
        const double ratio = screen->devicePixelRatio();
        if (QRect(origin, screen->geometry().size() * ratio).contains(corner))
            return QRect(origin + (corner - origin) / ratio, m_size / ratio);
    }
    return QRect(corner, m_size);
}

void XEmbedTrayWindow::showToolTip()
{
    if (!m_content.toolTip.isEmpty())
        QToolTip::showText(QCursor::pos(), m_content.toolTip.toHtmlEscaped());
}

} // namespace orvane

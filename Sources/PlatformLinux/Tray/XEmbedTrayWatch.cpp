#include "PlatformLinux/Tray/XEmbedTrayWatch.h"

#include <QCoreApplication>

#include <cstring>

namespace orvane {

XEmbedTrayWatch::XEmbedTrayWatch(QObject* parent) : QObject(parent), m_x(X11Connection::ofApplication())
{
    if (!m_x)
        return;
    const QByteArray name = "_NET_SYSTEM_TRAY_S" + QByteArray::number(m_x->screenNumber());
    m_selection = m_x->atom(name.constData());
    m_manager = m_x->atom("MANAGER");
    m_colors = m_x->atom("_NET_SYSTEM_TRAY_COLORS");
    m_x->addEventMask(m_x->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    qApp->installNativeEventFilter(this);
    findTray();
}

XEmbedTrayWatch::~XEmbedTrayWatch()
{
    if (m_x && qApp)
        qApp->removeNativeEventFilter(this);
}

void XEmbedTrayWatch::findTray()
{
    const auto owner = [this] {
        const auto cookie = xcb_get_selection_owner(m_x->xcb(), m_selection);
        const XcbReply<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(m_x->xcb(), cookie, nullptr));
        return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    };
    // We listen first and ask again, so that an owner can't vanish unnoticed in between.
    xcb_window_t tray = owner();
    for (xcb_window_t listened = XCB_WINDOW_NONE; tray != listened; tray = owner()) {
        listened = tray;
        m_x->addEventMask(tray, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
    m_tray = tray;
    readVisual();
    readForeground();
    Q_EMIT trayChanged();
}

void XEmbedTrayWatch::readVisual()
{
    m_visual = m_x->screen().root_visual;
    if (!m_tray)
        return;
    const auto bytes = m_x->property(m_tray, m_x->atom("_NET_SYSTEM_TRAY_VISUAL"), XCB_ATOM_VISUALID);
    xcb_visualid_t visual = 0;
    std::uint8_t depth = 0;
    if (bytes.size() == sizeof visual)
        std::memcpy(&visual, bytes.constData(), sizeof visual);
    if (visual && m_x->visual(visual, &depth))
        m_visual = visual;
}

void XEmbedTrayWatch::readForeground()
{
    m_foreground.reset();
    if (!m_tray)
        return;
    // Foreground, error, warning and success, three channels of 16 bits each.
    const auto bytes = m_x->property(m_tray, m_colors, XCB_ATOM_CARDINAL);
    std::uint32_t channels[12];
    if (bytes.size() != sizeof channels)
        return;
    std::memcpy(channels, bytes.constData(), sizeof channels);
    m_foreground = QColor::fromRgba64(static_cast<quint16>(channels[0]), static_cast<quint16>(channels[1]),
                                      static_cast<quint16>(channels[2]));
}

bool XEmbedTrayWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE: {
        const auto* told = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (told->type == m_manager && told->data.data32[1] == m_selection)
            findTray();
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (m_tray && reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window == m_tray)
            findTray();
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto* told = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (m_tray && told->window == m_tray && told->atom == m_colors) {
            readForeground();
            Q_EMIT foregroundChanged();
        }
        break;
    }
    default:
        break;
    }
    return false;
}

} // namespace orvane

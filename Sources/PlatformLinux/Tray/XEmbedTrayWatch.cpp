#include "PlatformLinux/Tray/XEmbedTrayWatch.h"

#include "PlatformLinux/X11/X11Connection.h"

namespace orvane {

XEmbedTrayWatch::XEmbedTrayWatch(QObject* parent) : QObject(parent), m_x(ApplicationLink::get())
{
    if (!m_x)
        return;
    m_rootSelection = m_x->link().select(m_x->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    m_listener = m_x->listen([this](const xcb_generic_event_t& event) { handle(event); });
    connect(m_x.get(), &ApplicationLink::serverIsBack, this, &XEmbedTrayWatch::findTray);
    findTray();
}

XEmbedTrayWatch::~XEmbedTrayWatch() = default;

void XEmbedTrayWatch::findTray()
{
    XExchange exchange = m_x->exchange();
    const auto owner = [&] {
        const auto reply = exchange.reply<xcb_get_selection_owner_reply_t>(
            xcb_get_selection_owner(m_x->xcb(), m_x->atoms().tray));
        return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    };
    // Listening first and asking again leaves no moment in which an owner could vanish unheard.
    XSelection selection;
    xcb_window_t tray = owner();
    for (xcb_window_t listened = XCB_WINDOW_NONE; tray != listened; tray = owner()) {
        listened = tray;
        selection =
            m_x->link().select(tray, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
    if (exchange.isLate())
        return; // it is looked for again when the server is back
    m_traySelection = std::move(selection);
    m_tray = tray;
    readVisual(exchange);
    readForeground(exchange);
    Q_EMIT trayChanged();
}

void XEmbedTrayWatch::readVisual(XExchange& exchange)
{
    m_visual = m_x->link().screen().root_visual;
    if (!m_tray)
        return;
    const auto told =
        exchange.numbers(exchange.askProperty(m_tray, m_x->atoms().trayVisual, XCB_ATOM_VISUALID));
    const auto toolkit = X11Connection::ofApplication();
    std::uint8_t depth = 0;
    if (told.size() == 1 && toolkit && toolkit->visual(told[0], &depth))
        m_visual = told[0];
}

void XEmbedTrayWatch::readForeground(XExchange& exchange)
{
    m_foreground.reset();
    if (!m_tray)
        return;
    // Foreground, error, warning and success, three channels of 16 bits each.
    constexpr std::size_t channelCount = 12;
    const auto channels =
        exchange.numbers(exchange.askProperty(m_tray, m_x->atoms().trayColors, XCB_ATOM_CARDINAL));
    if (channels.size() != channelCount)
        return;
    m_foreground = QColor::fromRgba64(static_cast<quint16>(channels[0]), static_cast<quint16>(channels[1]),
                                      static_cast<quint16>(channels[2]));
}

void XEmbedTrayWatch::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7F) {
    case XCB_CLIENT_MESSAGE: {
        const auto& told = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (told.type == m_x->atoms().manager && told.data.data32[1] == m_x->atoms().tray)
            findTray();
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (m_tray && reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == m_tray)
            findTray();
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto& told = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (m_tray && told.window == m_tray && told.atom == m_x->atoms().trayColors) {
            XExchange exchange = m_x->exchange();
            readForeground(exchange);
            Q_EMIT foregroundChanged();
        }
        break;
    }
    default:
        break;
    }
}

} // namespace orvane

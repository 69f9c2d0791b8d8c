#include "PlatformLinux/X11/WindowManagerWatch.h"

namespace orvane {

WindowManagerWatch::WindowManagerWatch(std::function<void(bool isPresent)> changed)
    : m_changed(std::move(changed)), m_x(ApplicationLink::get())
{
    if (!m_x)
        return;
    m_rootSelection = m_x->link().select(m_x->root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    m_listener = m_x->listen([this](const xcb_generic_event_t& event) { handle(event); });
    QObject::connect(m_x.get(), &ApplicationLink::serverIsBack, &m_context, [this] { findAgain(); });
    find();
}

WindowManagerWatch::~WindowManagerWatch() = default;

xcb_window_t WindowManagerWatch::windowToldBy(XExchange& exchange, xcb_window_t window) const
{
    const auto told =
        exchange.numbers(exchange.askProperty(window, exchange.atoms().supportingCheck, XCB_ATOM_WINDOW));
    return told.size() == 1 ? told[0] : xcb_window_t{XCB_WINDOW_NONE};
}

/// A window manager that died leaves its property on the root window; only its own window proves that it
/// runs.
void WindowManagerWatch::find()
{
    XExchange exchange = m_x->exchange();
    const xcb_window_t window = windowToldBy(exchange, m_x->root());
    XSelection selection; // first, so that its end isn't missed
    if (window)
        selection =
            m_x->link().select(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    const bool isAlive = window && windowToldBy(exchange, window) == window;
    if (exchange.isLate())
        return;
    m_windowSelection = std::move(selection);
    m_toldWindow = window;
    m_window = isAlive ? window : xcb_window_t{XCB_WINDOW_NONE};
}

void WindowManagerWatch::findAgain()
{
    const bool wasPresent = isPresent();
    find();
    if (m_changed && isPresent() != wasPresent)
        m_changed(isPresent());
}

void WindowManagerWatch::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7F) {
    case XCB_PROPERTY_NOTIFY: {
        const auto& told = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        // Some managers name their window on the root window before they mark the window itself.
        if (told.atom == m_x->atoms().supportingCheck &&
            (told.window == m_x->root() || told.window == m_toldWindow))
            findAgain();
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (m_window && reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == m_window)
            findAgain();
        break;
    default:
        break;
    }
}

} // namespace orvane

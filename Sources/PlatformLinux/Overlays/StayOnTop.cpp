#include "PlatformLinux/Overlays/StayOnTop.h"

#include "PlatformLinux/X11/X11Connection.h"

#include <QWindow>

namespace orvane {

namespace {

/// Another program may insist on the top as well.
constexpr int mostRaises = 100;

} // namespace

StayOnTop::StayOnTop(QWindow& window) : QObject(&window), m_window(window), m_x(ApplicationLink::get())
{
    connect(&window, &QWindow::visibleChanged, this, &StayOnTop::follow);
    follow(window.isVisible());
}

void StayOnTop::follow(bool isVisible)
{
    if (!isVisible || !m_x) {
        m_listener.reset();
        m_selection.reset();
        return;
    }
    m_raisesLeft = mostRaises;
    m_listener = m_x->listen([this](const xcb_generic_event_t& event) { handle(event); });
    m_selection = m_x->link().select(m_x->root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    m_x->link().flush();
    raise();
}

void StayOnTop::handle(const xcb_generic_event_t& event)
{
    const auto toolkit = X11Connection::ofApplication();
    if (!toolkit)
        return;
    const auto own = static_cast<xcb_window_t>(m_window.winId());
    const int type = event.response_type & 0x7F;
    if (type == XCB_MAP_NOTIFY) {
        const auto& shown = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        if (shown.event == m_x->root() && !toolkit->hasMade(shown.window))
            raise();
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        const auto& moved = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        // The event names the window below.
        if (moved.event == m_x->root() && moved.above_sibling == own && !toolkit->hasMade(moved.window))
            raise();
    }
}

void StayOnTop::raise()
{
    const auto toolkit = X11Connection::ofApplication();
    if (!toolkit || m_raisesLeft-- <= 0)
        return;
    constexpr std::uint32_t above = XCB_STACK_MODE_ABOVE;
    toolkit->ignoreErrors(xcb_configure_window_checked(
        toolkit->xcb(), static_cast<xcb_window_t>(m_window.winId()), XCB_CONFIG_WINDOW_STACK_MODE, &above));
    xcb_flush(toolkit->xcb());
}

} // namespace orvane

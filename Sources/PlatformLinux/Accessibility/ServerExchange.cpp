#include "PlatformLinux/Accessibility/ServerExchange.h"

#include "PlatformLinux/X11/PropertyNumbers.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <poll.h>

#include <xcb/res.h>
#include <xcb/xcbext.h>

namespace orvane {

std::unique_ptr<ServerLink> ServerLink::open(Deadline deadline)
{
    int screenNumber = 0;
    XcbConnection xcb(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(xcb.get()))
        return nullptr;
    std::unique_ptr<ServerLink> link(new ServerLink(std::move(xcb), screenNumber));
    ServerExchange exchange(*link, deadline);
    link->m_atoms = DesktopAtoms::intern(exchange);
    return exchange.isLate() || link->isLost() ? nullptr : std::move(link);
}

ServerLink::ServerLink(XcbConnection xcb, int screenNumber) : m_xcb(std::move(xcb))
{
    xcb_connection_t* connection = m_xcb.get();
    xcb_prefetch_extension_data(connection, &xcb_res_id);
    xcb_prefetch_extension_data(connection, &xcb_xkb_id);
    const xcb_setup_t* setup = xcb_get_setup(connection);
    auto screens = xcb_setup_roots_iterator(setup);
    for (int i = 0; i < screenNumber && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    m_root = screens.data->root;
    m_clientMask = ~setup->resource_id_mask;
    m_knowsProcesses = xcb_get_extension_data(connection, &xcb_res_id)->present;
    // A client that knows of XKB is spared the event that all others get whenever another keyboard is used,
    // and nobody reads here for hours.
    if (xcb_get_extension_data(connection, &xcb_xkb_id)->present)
        xcb_discard_reply(
            connection,
            xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION).sequence);
}

void ServerLink::takeEvents(const std::function<void(const xcb_generic_event_t&)>& handler)
{
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_xcb.get())}) {
        if (event->response_type != 0) // an error otherwise
            handler(*event);
    }
}

xcb_get_property_cookie_t ServerExchange::askProperty(xcb_window_t window, xcb_atom_t name,
                                                      xcb_atom_t type) const
{
    return xcb_get_property(xcb(), 0, window, name, type, 0, 1024);
}

std::vector<std::uint32_t> ServerExchange::numbers(xcb_get_property_cookie_t cookie)
{
    const auto property = reply<xcb_get_property_reply_t>(cookie);
    if (!property || property->format != 32)
        return {};
    return propertyNumbers(xcb_get_property_value(property.get()),
                           static_cast<std::size_t>(xcb_get_property_value_length(property.get())));
}

QByteArray ServerExchange::bytes(xcb_get_property_cookie_t cookie)
{
    const auto property = reply<xcb_get_property_reply_t>(cookie);
    if (!property || property->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(property.get())), property->value_len};
}

void* ServerExchange::await(unsigned sequence)
{
    if (m_isLate) {
        xcb_discard_reply(xcb(), sequence);
        return nullptr;
    }
    xcb_flush(xcb());
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    while (!xcb_poll_for_reply(xcb(), sequence, &reply, &error)) {
        if (!waitForInput()) {
            m_isLate = true;
            xcb_discard_reply(xcb(), sequence);
            return nullptr;
        }
    }
    const XcbReply<xcb_generic_error_t> ownedError(error);
    return reply;
}

bool ServerExchange::waitForInput()
{
    const auto left = m_deadline - std::chrono::steady_clock::now();
    if (left <= Deadline::duration::zero())
        return false;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    const timespec limit{seconds.count(), static_cast<long>((left - seconds).count())};
    pollfd server{xcb_get_file_descriptor(xcb()), POLLIN, 0};
    ::ppoll(&server, 1, &limit, nullptr);
    return true;
}

} // namespace orvane

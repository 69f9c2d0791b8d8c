#include "PlatformLinux/Screens/DockStruts.h"

#include "PlatformLinux/X11/PropertyNumbers.h"

#include <algorithm>
#include <cstring>

namespace orvane {

namespace {

using Values = std::vector<std::uint32_t>;

xcb_get_property_cookie_t ask(const X11Connection& x, xcb_window_t window, xcb_atom_t name, xcb_atom_t type)
{
    constexpr std::uint32_t longestValue = 64;
    return xcb_get_property(x.xcb(), 0, window, name, type, 0, longestValue);
}

/// Empty where the window, the property or the type isn't so.
Values take(const X11Connection& x, xcb_get_property_cookie_t cookie)
{
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(x.xcb(), cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    if (!reply || reply->format != 32)
        return {};
    return propertyNumbers(xcb_get_property_value(reply.get()),
                           static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

} // namespace

DockStruts::DockStruts(const X11Connection& x)
    : m_x(x),
      m_clientList(x.atom("_NET_CLIENT_LIST")),
      m_workArea(x.atom("_NET_WORKAREA")),
      m_windowType(x.atom("_NET_WM_WINDOW_TYPE")),
      m_dock(x.atom("_NET_WM_WINDOW_TYPE_DOCK")),
      m_partial(x.atom("_NET_WM_STRUT_PARTIAL")),
      m_whole(x.atom("_NET_WM_STRUT"))
{
    m_x.addEventMask(m_x.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
}

bool DockStruts::concerns(const xcb_property_notify_event_t& event)
{
    if (event.window == m_x.root()) {
        if (event.atom == m_clientList) {
            m_isListStale = true;
            return true;
        }
        if (event.atom != m_workArea)
            return false;
        // Some window keeps another part of it, perhaps one that isn't watched.
        for (auto& [window, client] : m_clients)
            client.isStale = true;
        return true;
    }
    if (event.atom != m_partial && event.atom != m_whole)
        return false;
    const auto found = m_clients.find(event.window);
    if (found == m_clients.end())
        return false;
    found->second.isStale = true;
    return true;
}

void DockStruts::refresh()
{
    if (m_isListStale)
        readClientList();
    readStaleClients();
}

std::vector<Strut> DockStruts::struts() const
{
    std::vector<Strut> struts;
    for (const auto& [window, client] : m_clients) {
        if (client.strut)
            struts.push_back(*client.strut);
    }
    return struts;
}

void DockStruts::readClientList()
{
    m_isListStale = false;
    const QByteArray list = m_x.property(m_x.root(), m_clientList, XCB_ATOM_WINDOW);
    std::map<xcb_window_t, Client> clients;
    constexpr qsizetype width = sizeof(xcb_window_t);
    for (qsizetype at = 0; at + width <= list.size(); at += width) {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::memcpy(&window, list.constData() + at, sizeof window);
        const auto known = m_clients.find(window);
        clients.emplace(window, known == m_clients.end() ? Client{} : known->second);
    }
    m_clients = std::move(clients);
}

void DockStruts::readStaleClients()
{
    struct Question {
        xcb_window_t window;
        Client* client;
        xcb_get_property_cookie_t type;
        xcb_get_property_cookie_t partial;
        xcb_get_property_cookie_t whole;
    };
    std::vector<Question> questions;
    for (auto& [window, client] : m_clients) {
        if (!client.isStale)
            continue;
        questions.push_back({window, &client, ask(m_x, window, m_windowType, XCB_ATOM_ATOM),
                             ask(m_x, window, m_partial, XCB_ATOM_CARDINAL),
                             ask(m_x, window, m_whole, XCB_ATOM_CARDINAL)});
    }
    bool hasNewWatch = false;
    for (const Question& question : questions) {
        const Values types = take(m_x, question.type);
        Client& client = *question.client;
        client.strut = strutOf(take(m_x, question.partial), take(m_x, question.whole));
        client.isStale = false;
        if (client.isWatched || (!client.strut && std::ranges::find(types, m_dock) == types.end()))
            continue;
        m_x.addEventMask(question.window, XCB_EVENT_MASK_PROPERTY_CHANGE);
        client.isWatched = true;
        client.isStale = true; // it may have changed before it was watched
        hasNewWatch = true;
    }
    if (hasNewWatch)
        readStaleClients();
}

} // namespace orvane

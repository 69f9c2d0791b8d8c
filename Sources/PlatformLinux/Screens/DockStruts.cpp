#include "PlatformLinux/Screens/DockStruts.h"

#include <algorithm>

namespace orvane {

DockStruts::DockStruts(ApplicationLink& x)
    : m_x(x), m_rootSelection(x.link().select(x.root(), XCB_EVENT_MASK_PROPERTY_CHANGE))
{
}

bool DockStruts::concerns(const xcb_property_notify_event_t& event)
{
    if (event.window == m_x.root()) {
        if (event.atom == m_x.atoms().clientList) {
            m_isListStale = true;
            return true;
        }
        if (event.atom != m_x.atoms().workArea)
            return false;
        // Another window reserves another part, perhaps one that isn't watched.
        for (auto& [window, client] : m_clients)
            client.isStale = true;
        return true;
    }
    if (event.atom != m_x.atoms().strutPartial && event.atom != m_x.atoms().strut)
        return false;
    const auto found = m_clients.find(event.window);
    if (found == m_clients.end())
        return false;
    found->second.isStale = true;
    return true;
}

void DockStruts::forget()
{
    m_isListStale = true;
    for (auto& [window, client] : m_clients)
        client.isStale = true;
}

void DockStruts::refresh(XExchange& exchange)
{
    if (m_isListStale)
        readClientList(exchange);
    readStaleClients(exchange);
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

void DockStruts::readClientList(XExchange& exchange)
{
    const auto list =
        exchange.numbers(exchange.askProperty(m_x.root(), m_x.atoms().clientList, XCB_ATOM_WINDOW));
    if (exchange.isLate())
        return;
    m_isListStale = false;
    std::map<xcb_window_t, Client> clients;
    for (const xcb_window_t window : list) {
        const auto known = m_clients.find(window);
        clients.emplace(window, known == m_clients.end() ? Client{} : known->second);
    }
    m_clients = std::move(clients);
}

void DockStruts::readStaleClients(XExchange& exchange)
{
    struct Question {
        xcb_window_t window;
        Client* client;
        xcb_get_property_cookie_t type;
        xcb_get_property_cookie_t partial;
        xcb_get_property_cookie_t whole;
    };
    const XAtoms& atoms = m_x.atoms();
    std::vector<Question> questions;
    for (auto& [window, client] : m_clients) {
        if (!client.isStale)
            continue;
        questions.push_back({window, &client, exchange.askProperty(window, atoms.windowType, XCB_ATOM_ATOM),
                             exchange.askProperty(window, atoms.strutPartial, XCB_ATOM_CARDINAL),
                             exchange.askProperty(window, atoms.strut, XCB_ATOM_CARDINAL)});
    }
    bool hasNewWatch = false;
    for (const Question& question : questions) {
        const auto types = exchange.numbers(question.type);
        const auto partial = exchange.numbers(question.partial);
        const auto whole = exchange.numbers(question.whole);
        if (exchange.isLate())
            continue;
        Client& client = *question.client;
        client.strut = strutOf(partial, whole);
        client.isStale = false;
        if (client.watch || (!client.strut && std::ranges::find(types, atoms.windowTypeDock) == types.end()))
            continue;
        client.watch =
            std::make_shared<XSelection>(m_x.link().select(question.window, XCB_EVENT_MASK_PROPERTY_CHANGE));
        client.isStale = true; // it may have changed before it was watched
        hasNewWatch = true;
    }
    if (hasNewWatch)
        readStaleClients(exchange);
}

} // namespace orvane

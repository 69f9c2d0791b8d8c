#include "PlatformLinux/Tray/MenuWindowWatch.h"

#include "PlatformLinux/Applications/WindowProgram.h"

#include <algorithm>
#include <vector>

namespace orvane {

MenuWindowWatch::MenuWindowWatch(std::int64_t process) : m_process(process) {}

MenuWindowWatch::~MenuWindowWatch() = default;

void MenuWindowWatch::start()
{
    m_x = ApplicationLink::get();
    if (!m_x)
        return;
    m_selection = m_x->link().select(m_x->root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    m_listener = m_x->listen([this](const xcb_generic_event_t& event) { handle(event); });
    findShown();
}

/// The menu may have come before anybody was told of it.
void MenuWindowWatch::findShown()
{
    XExchange exchange = m_x->exchange();
    const auto tree = exchange.reply<xcb_query_tree_reply_t>(xcb_query_tree(m_x->xcb(), m_x->root()));
    if (!tree)
        return;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    const std::vector<xcb_window_t> windows(children, children + xcb_query_tree_children_length(tree.get()));
    std::vector<xcb_get_window_attributes_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows)
        cookies.push_back(xcb_get_window_attributes(m_x->xcb(), window));
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto reply = exchange.reply<xcb_get_window_attributes_reply_t>(cookies[i]);
        if (reply && reply->override_redirect && reply->map_state == XCB_MAP_STATE_VIEWABLE)
            add(windows[i]);
    }
}

void MenuWindowWatch::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7F) {
    case XCB_MAP_NOTIFY: {
        const auto& mapped = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        if (mapped.override_redirect)
            add(mapped.window);
        break;
    }
    case XCB_UNMAP_NOTIFY:
        remove(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window);
        break;
    case XCB_DESTROY_NOTIFY:
        remove(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
        break;
    default:
        break;
    }
}

void MenuWindowWatch::add(xcb_window_t window)
{
    if (!isMenu(window))
        return;
    const bool isFirst = m_menus.empty();
    m_menus.insert(window);
    if (isFirst)
        Q_EMIT changed(true);
}

void MenuWindowWatch::remove(xcb_window_t window)
{
    if (m_menus.erase(window) != 0 && m_menus.empty())
        Q_EMIT changed(false);
}

bool MenuWindowWatch::isMenu(xcb_window_t window) const
{
    const XAtoms& atoms = m_x->atoms();
    XExchange exchange = m_x->exchange();
    const auto types = exchange.numbers(exchange.askProperty(window, atoms.windowType, XCB_ATOM_ATOM));
    const bool isTyped = std::ranges::any_of(types, [&](xcb_atom_t type) {
        return type == atoms.windowTypePopupMenu || type == atoms.windowTypeDropdownMenu ||
               type == atoms.windowTypeMenu;
    });
    return isTyped && processOfWindow(exchange, window) == m_process;
}

} // namespace orvane

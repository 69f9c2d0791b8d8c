#include "PlatformLinux/Tray/MenuWindowWatch.h"

#include "PlatformLinux/Applications/WindowProgram.h"

#include <QSocketNotifier>

#include <algorithm>
#include <cstring>
#include <vector>

namespace orvane {

MenuWindowWatch::MenuWindowWatch(std::int64_t process) : m_process(process) {}

MenuWindowWatch::~MenuWindowWatch() = default;

void MenuWindowWatch::start()
{
    if (!X11Connection::ofApplication())
        return;
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(m_connection.get()))
        return;
    m_x = X11Connection::over(m_connection.get(), screenNumber);
    m_windowType = m_x->atom("_NET_WM_WINDOW_TYPE");
    m_menuTypes = {m_x->atom("_NET_WM_WINDOW_TYPE_POPUP_MENU"),
                   m_x->atom("_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"), m_x->atom("_NET_WM_WINDOW_TYPE_MENU")};
    auto* notifier =
        new QSocketNotifier(xcb_get_file_descriptor(m_connection.get()), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &MenuWindowWatch::read);
    m_x->addEventMask(m_x->root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    findShown();
    read(); // the descriptor doesn't announce events that were read with the answers
}

/// Finds menus that were shown before this object listened.
void MenuWindowWatch::findShown()
{
    const auto treeCookie = xcb_query_tree(m_connection.get(), m_x->root());
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_connection.get(), treeCookie, nullptr));
    if (!tree)
        return;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    const std::vector<xcb_window_t> windows(children, children + xcb_query_tree_children_length(tree.get()));
    std::vector<xcb_get_window_attributes_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows)
        cookies.push_back(xcb_get_window_attributes(m_connection.get(), window));
    for (std::size_t i = 0; i < windows.size(); ++i) {
        xcb_generic_error_t* error = nullptr;
        const XcbReply<xcb_get_window_attributes_reply_t> reply(
            xcb_get_window_attributes_reply(m_connection.get(), cookies[i], &error));
        const XcbReply<xcb_generic_error_t> ownedError(error);
        if (reply && reply->override_redirect && reply->map_state == XCB_MAP_STATE_VIEWABLE)
            add(windows[i]);
    }
}

void MenuWindowWatch::read()
{
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())})
        handle(*event);
    if (!xcb_connection_has_error(m_connection.get()))
        return;
    for (auto* notifier : findChildren<QSocketNotifier*>())
        notifier->setEnabled(false);
    if (!m_menus.empty()) {
        m_menus.clear();
        Q_EMIT changed(false);
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
    const QByteArray types = m_x->property(window, m_windowType, XCB_ATOM_ATOM);
    bool isTyped = false;
    for (qsizetype at = 0; at + qsizetype{sizeof(xcb_atom_t)} <= types.size(); at += sizeof(xcb_atom_t)) {
        xcb_atom_t type = XCB_ATOM_NONE;
        std::memcpy(&type, types.constData() + at, sizeof type);
        isTyped = isTyped || std::ranges::find(m_menuTypes, type) != m_menuTypes.end();
    }
    return isTyped && processOfWindow(*m_x, window) == m_process;
}

} // namespace orvane

#include "PlatformLinux/WindowDrags/WindowPlaces.h"

#include <span>
#include <vector>

namespace orvane {

namespace {

/// Set in events that a program and not the server has sent.
constexpr std::uint8_t sentByAProgram = 0x80;

template <typename Event>
const Event& as(const xcb_generic_event_t& event)
{
    return reinterpret_cast<const Event&>(event);
}

} // namespace

void WindowPlaces::readAll(const ApplicationLink& x)
{
    XExchange exchange = x.exchange();
    const auto tree = exchange.reply<xcb_query_tree_reply_t>(xcb_query_tree(x.xcb(), x.root()));
    if (!tree)
        return;
    const std::span children(xcb_query_tree_children(tree.get()),
                             static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    std::vector<xcb_get_geometry_cookie_t> cookies;
    cookies.reserve(children.size());
    for (const xcb_window_t window : children)
        cookies.push_back(xcb_get_geometry(x.xcb(), window));
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (const auto geometry = exchange.reply<xcb_get_geometry_reply_t>(cookies[i]))
            put(children[i], {geometry->x, geometry->y});
    }
}

std::optional<xcb_window_t> WindowPlaces::take(const xcb_generic_event_t& event, xcb_window_t root)
{
    if (event.response_type & sentByAProgram)
        return std::nullopt;
    switch (event.response_type) {
    case XCB_CREATE_NOTIFY: {
        const auto& created = as<xcb_create_notify_event_t>(event);
        return created.parent == root ? put(created.window, {created.x, created.y}) : std::nullopt;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto& configured = as<xcb_configure_notify_event_t>(event);
        return configured.event == root ? put(configured.window, {configured.x, configured.y}) : std::nullopt;
    }
    case XCB_REPARENT_NOTIFY: {
        const auto& reparented = as<xcb_reparent_notify_event_t>(event);
        if (reparented.event != root)
            return std::nullopt;
        if (reparented.parent == root)
            return put(reparented.window, {reparented.x, reparented.y});
        m_corners.erase(reparented.window);
        return reparented.window;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto& destroyed = as<xcb_destroy_notify_event_t>(event);
        if (destroyed.event != root)
            return std::nullopt;
        m_corners.erase(destroyed.window);
        return destroyed.window;
    }
    default:
        return std::nullopt;
    }
}

std::optional<xcb_window_t> WindowPlaces::put(xcb_window_t window, Corner corner)
{
    const auto [at, isNew] = m_corners.try_emplace(window, corner);
    if (!isNew && at->second == corner)
        return std::nullopt;
    at->second = corner;
    return window;
}

std::optional<WindowPlaces::Corner> cornerOf(const WindowPlaces::Corners& corners, xcb_window_t window)
{
    const auto found = corners.find(window);
    return found == corners.end() ? std::nullopt : std::optional(found->second);
}

} // namespace orvane

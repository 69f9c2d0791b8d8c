// Requests to the window manager for windows of other programs. They are only sent and flushed; their effect
// shows later. Main thread.
#pragma once

#include "PlatformLinux/Accessibility/WindowProperties.h"
#include "PlatformLinux/X11/XExchange.h"

#include <array>
#include <optional>

namespace orvane {

class WindowRequests {
public:
    explicit WindowRequests(XLink& link) : m_link(link) {}

    enum class Change : std::uint32_t { remove = 0, add = 1 };
    /// Changes one or two states of _NET_WM_STATE.
    void changeState(xcb_window_t window, Change change, xcb_atom_t state, xcb_atom_t other = XCB_ATOM_NONE);
    /// Brings it to the front with the keyboard's focus, and restores it if it is minimized.
    void activate(xcb_window_t window);
    void minimize(xcb_window_t window);
    void close(xcb_window_t window);

    enum class Way { message, configure };
    void raise(xcb_window_t window, Way way);

    struct Placement {
        /// The origin in the terms of a request, which depends on the gravity.
        std::optional<PixelPoint> origin;
        std::optional<SizeHints::PixelSize> clientSize;
    };
    /// A message is for gravity northWest; a configure request is read by the window's own gravity.
    void place(xcb_window_t window, const Placement& placement, Way way);

private:
    void send(xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data);

    XLink& m_link;
};

} // namespace orvane

// The places of the root window's children, as the server announces them. Main thread.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"

#include <map>
#include <optional>

namespace orvane {

class WindowPlaces {
public:
    /// The upper left corner with the border, in native pixels.
    struct Corner {
        int x = 0;
        int y = 0;
        friend bool operator==(const Corner&, const Corner&) = default;
    };
    using Corners = std::map<xcb_window_t, Corner>;

    /// Asks for the places of all windows; to be called once the link selects the root window's substructure.
    void readAll(const ApplicationLink& x);
    /// Takes a notification. Returns the window whose place is another one now, or nothing.
    std::optional<xcb_window_t> take(const xcb_generic_event_t& event, xcb_window_t root);

    [[nodiscard]] const Corners& corners() const { return m_corners; }

private:
    std::optional<xcb_window_t> put(xcb_window_t window, Corner corner);

    Corners m_corners;
};

/// Absent for a window that isn't among them.
[[nodiscard]] std::optional<WindowPlaces::Corner> cornerOf(const WindowPlaces::Corners& corners,
                                                           xcb_window_t window);

} // namespace orvane

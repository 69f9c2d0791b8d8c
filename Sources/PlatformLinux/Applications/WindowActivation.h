// Bringing a program's window to the front. Main thread; a few round trips to the server.
#pragma once

#include "PlatformLinux/X11/X11Connection.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace orvane {

/// Windows by when they were the active one, the newest first. Those of long ago are forgotten.
class RecentWindows {
public:
    void add(std::int64_t process, xcb_window_t window);
    [[nodiscard]] std::vector<xcb_window_t> of(std::int64_t process) const;

private:
    struct Entry {
        std::int64_t process;
        xcb_window_t window;
    };
    std::vector<Entry> m_entries;
};

/// Of the process's windows that are there: the first of the recent ones, or else the topmost.
std::optional<xcb_window_t> windowToActivate(const X11Connection& x, std::int64_t process,
                                             const std::vector<xcb_window_t>& recent);

/// Asks the window manager, as somebody's own choice: the window is restored when it is minimized, and its
/// desktop becomes the current one.
void requestActivation(const X11Connection& x, xcb_window_t window);

} // namespace orvane

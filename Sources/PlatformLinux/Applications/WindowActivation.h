// Brings a program's window to the front. Main thread; a few round trips to the server.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace orvane {

/// Windows in the order in which they were active, the newest first. The oldest are forgotten.
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

/// Returns one of the existing windows of the process: the first of the recent ones, else the topmost.
[[nodiscard]] std::optional<xcb_window_t> windowToActivate(XExchange& exchange, std::int64_t process,
                                                           const std::vector<xcb_window_t>& recent);

/// Asks the window manager in the way of a user's choice: a minimized window is restored, and its desktop
/// becomes the current one.
void requestActivation(ApplicationLink& x, xcb_window_t window);

} // namespace orvane

// Knows if a window manager that speaks EWMH is running, as it comes and goes. Main thread. There is never
// one without an X server.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"

#include <functional>
#include <memory>

namespace orvane {

class WindowManagerWatch {
public:
    /// `changed` is called for each coming and going from now on.
    explicit WindowManagerWatch(std::function<void(bool isPresent)> changed = {});
    ~WindowManagerWatch();
    WindowManagerWatch(const WindowManagerWatch&) = delete;
    WindowManagerWatch& operator=(const WindowManagerWatch&) = delete;

    [[nodiscard]] bool isPresent() const { return m_window != XCB_WINDOW_NONE; }

private:
    void handle(const xcb_generic_event_t& event);
    void find();
    void findAgain();
    [[nodiscard]] xcb_window_t windowToldBy(XExchange& exchange, xcb_window_t window) const;

    std::function<void(bool)> m_changed;
    std::shared_ptr<ApplicationLink> m_x;
    XSelection m_rootSelection;
    XSelection m_windowSelection;
    /// The window that the root window's property names, whether it is a manager's or not.
    xcb_window_t m_toldWindow = XCB_WINDOW_NONE;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    /// The manager's own window, which goes with it.
    xcb_window_t m_window = XCB_WINDOW_NONE;
    QObject m_context;
};

} // namespace orvane

// Whether a window manager that speaks EWMH is running, as it comes and goes. Main thread.
// There is never one where there is no X server.
#pragma once

#include "PlatformLinux/X11/X11Connection.h"

#include <QAbstractNativeEventFilter>

#include <functional>
#include <optional>

namespace orvane {

class WindowManagerWatch : private QAbstractNativeEventFilter {
public:
    /// `changed` is told of each coming and going from now on.
    explicit WindowManagerWatch(std::function<void(bool isPresent)> changed = {});
    ~WindowManagerWatch() override;
    WindowManagerWatch(const WindowManagerWatch&) = delete;
    WindowManagerWatch& operator=(const WindowManagerWatch&) = delete;

    [[nodiscard]] bool isPresent() const { return m_window != XCB_WINDOW_NONE; }

private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void find();
    void findAgain();
    [[nodiscard]] xcb_window_t windowToldBy(xcb_window_t window) const;

    std::function<void(bool)> m_changed;
    std::optional<X11Connection> m_x;
    xcb_atom_t m_check = XCB_ATOM_NONE;
    /// The manager's own, which goes with it.
    xcb_window_t m_window = XCB_WINDOW_NONE;
};

} // namespace orvane

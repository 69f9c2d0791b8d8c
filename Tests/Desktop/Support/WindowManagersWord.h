// The window manager's property on the root window, by which programs know that one runs. Tests take it away,
// and stand in for a window manager that comes and goes.
#pragma once

#include <cstdint>
#include <memory>

namespace orvane::tests {

/// Restores the property at its end.
class WindowManagersWord {
public:
    using Window = std::uint32_t;

    WindowManagersWord();
    ~WindowManagersWord();
    WindowManagersWord(const WindowManagersWord&) = delete;
    WindowManagersWord& operator=(const WindowManagersWord&) = delete;

    void remove();
    void restore();

    /// Acts as a window manager that announces itself correctly; it ends when its window is destroyed.
    Window appear();
    /// Acts as one that names its window before it marks that window as its own, in two steps.
    Window nameWindow();
    void markWindow(Window window);
    void die(Window window);

private:
    struct State;
    Window makeWindow();
    void set(Window onWindow, Window to);

    std::unique_ptr<State> m_state;
};

} // namespace orvane::tests

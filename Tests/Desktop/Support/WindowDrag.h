// A drag of a window by its title bar with the hardware pointer. The button is released at the object's end.
#pragma once

#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Windows.h"

#include <QPoint>

#include <functional>

namespace orvane::tests {

class WindowDrag {
public:
    /// `settled` returns once the program under test has handled what the hardware has done so far.
    WindowDrag(Hardware& hardware, const Windows& windows, WindowId window, std::function<void()> settled);
    ~WindowDrag();
    WindowDrag(const WindowDrag&) = delete;
    WindowDrag& operator=(const WindowDrag&) = delete;

    /// Returns where a person takes a window: in the middle of its title bar, or of its header bar.
    [[nodiscard]] static QPoint handle(const Windows& windows, WindowId window);

    /// Presses at a place of the window and waits until it is the active one. False when it isn't.
    [[nodiscard]] bool begin(QPoint place);
    [[nodiscard]] bool begin() { return begin(handle(m_windows, m_window)); }
    /// Moves in steps until the pointer is there. False when the window doesn't follow at all.
    [[nodiscard]] bool moveTo(QPoint target);
    /// Moves only the pointer, once.
    void movePointer(QPoint place);
    [[nodiscard]] QPoint pointer() const { return m_pointer; }
    void release();

private:
    Hardware& m_hardware;
    const Windows& m_windows;
    WindowId m_window;
    std::function<void()> m_settled;
    QPoint m_pointer;
    bool m_held = false;
    bool m_moves = false;
};

} // namespace orvane::tests

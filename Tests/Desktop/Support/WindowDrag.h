// A drag of a window by its title bar with the hardware pointer. The button is released at the object's end.
// One hand waits until each of its steps has had its effect; a fling waits for nothing.
#pragma once

#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Windows.h"

#include <QElapsedTimer>
#include <QPoint>

#include <chrono>
#include <functional>
#include <optional>

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

    struct Fling {
        std::chrono::milliseconds time{60};
        /// The pointer's place a few milliseconds after the release; absent where it rests.
        std::optional<QPoint> goesOnTo = {};
        /// Called right after the press.
        std::function<void()> pressed = [] {};
    };
    /// Presses on the title bar, moves evenly to the place in that time and releases there. Returns the clock
    /// that runs since just before the release.
    QElapsedTimer fling(QPoint target, const Fling& fling);

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

// A recording while it goes on: it pauses the shortcuts and holds the keyboard and the events. Main thread.
#pragma once

#include "KeyboardShortcuts/Recorder/LocalEventMonitor.h"
#include "KeyboardShortcuts/Recorder/RecorderHeldKeyView.h"
#include "KeyboardShortcuts/Shortcut/Shortcut.h"

#include <functional>
#include <memory>

class QWidget;

namespace orvane::KeyboardShortcuts {

/// Its end lets the shortcuts fire again and gives the keyboard back.
class RecorderRecording {
public:
    using HotKeyHandler = std::function<void(const Shortcut&)>;

    /// `hotKeyPressed` gets the program's own shortcuts where the system reports them as hot keys.
    RecorderRecording(QWidget& control, EventMonitors::Handler handler, HotKeyHandler hotKeyPressed);

    /// The menus of a panel don't open while a program has grabbed the keyboard. So the grab ends while the
    /// pointer is outside of the window, and the program's own hot keys are reported as such.
    void pointerLeftWindow() { m_grab.reset(); }
    void pointerEnteredWindow();
    [[nodiscard]] bool holdsKeyboard() const { return m_grab != nullptr; }

    /// Hands the grab over, for a key that is still held when the recording ends. Null when there is none.
    [[nodiscard]] std::unique_ptr<KeyboardGrab> takeGrab() { return std::move(m_grab); }

private:
    /// Keeps every shortcut from firing.
    class Pause {
    public:
        explicit Pause(HotKeyHandler hotKeyPressed);
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
    };

    Pause m_pause; // ends last: the keys of the recording are no shortcuts
    QWidget& m_control;
    std::unique_ptr<KeyboardGrab> m_grab; // null while the pointer is outside of the window
    LocalEventMonitor m_eventMonitor;
};

} // namespace orvane::KeyboardShortcuts

// The key that has ended a recording, while it is still held. The keyboard repeats it, and no window may get
// the repeats: the desktop would take them for a shortcut of its own, and close the window.
#pragma once

#include "KeyboardShortcuts/Recorder/LocalEventMonitor.h"

#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>

namespace orvane::KeyboardShortcuts {

/// Brings those keys to the widget that the desktop and the program itself keep as shortcuts. Where the
/// system refuses the grab, they go where they always go.
class KeyboardGrab {
public:
    explicit KeyboardGrab(QWidget& widget) : m_widget(widget) { m_widget.grabKeyboard(); }
    ~KeyboardGrab() { m_widget.releaseKeyboard(); }
    KeyboardGrab(const KeyboardGrab&) = delete;
    KeyboardGrab& operator=(const KeyboardGrab&) = delete;

private:
    QWidget& m_widget;
};

/// Ends with the key's release; the press of another key shows that the release was missed.
class RecorderHeldKey {
public:
    /// `grab` may be null: the repeats are then kept from the program's own windows alone.
    RecorderHeldKey(std::int64_t keycode, std::unique_ptr<KeyboardGrab> grab);

private:
    EventMonitors::Disposition handle(const Event& event);
    void end();

    std::int64_t m_keycode;
    std::unique_ptr<KeyboardGrab> m_grab;
    std::optional<LocalEventMonitor> m_monitor;
};

} // namespace orvane::KeyboardShortcuts

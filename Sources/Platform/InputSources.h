// The present keyboard layout, which says what the keys print. Main thread.
#pragma once

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace orvane {

/// One layout, as it was when it was asked for.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;
    /// Returns the text to show for a key without modifiers, at most four UTF-16 units; a dead key gives its
    /// accent. Nothing for a key that prints nothing.
    [[nodiscard]] virtual std::optional<QString> keyTranslate(std::int64_t virtualKeyCode) const = 0;
};

class InputSources {
public:
    /// Posted on the default notification centre after the layout has changed.
    static QString selectedKeyboardInputSourceChangedNotification()
    {
        return QStringLiteral("SelectedKeyboardInputSourceChanged");
    }

    virtual ~InputSources() = default;

    /// The layout in use, or, where that doesn't type Latin letters, the first of the user's layouts that
    /// does. Null when the system can't tell.
    virtual std::shared_ptr<const KeyboardLayout> currentASCIICapableKeyboardLayout() = 0;

    /// Returns the name of a key that this system calls otherwise than its virtual code says, such as
    /// "Insert", or that has no virtual code and prints nothing, such as "Print Screen": events give the
    /// latter a code of the platform's own. Absent for all others.
    [[nodiscard]] virtual std::optional<QString> keyName(std::int64_t keyCode) = 0;
};

} // namespace orvane

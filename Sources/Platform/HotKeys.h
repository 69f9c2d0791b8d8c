// The system's hot key service: combinations of keys that reach the program whatever has the focus.
// Main thread.
#pragma once

#include <QVariant>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// Modifier bits as the hot key service takes them.
namespace carbonModifier {
inline constexpr std::uint32_t command = 0x100;
inline constexpr std::uint32_t shift = 0x200;
inline constexpr std::uint32_t option = 0x800;
inline constexpr std::uint32_t control = 0x1000;
} // namespace carbonModifier

using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus eventNotHandledErr = -9874;
inline constexpr OSStatus eventParameterNotFoundErr = -9870;
/// Another program holds the combination.
inline constexpr OSStatus eventHotKeyExistsErr = -9878;
/// The combination means nothing here: no such key on the keyboard.
inline constexpr OSStatus eventHotKeyInvalidErr = -9879;
/// There is no hot key service here.
inline constexpr OSStatus unimpErr = -4;

struct EventHotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    friend bool operator==(const EventHotKeyID&, const EventHotKeyID&) = default;
};

/// The event that a handler is called with. The numbers of the kinds are those of the service.
struct KeyboardEvent {
    enum class Kind : std::uint32_t { rawKeyDown = 1, rawKeyUp = 3, hotKeyPressed = 5, hotKeyReleased = 6 };
    Kind kind = Kind::hotKeyPressed;
    /// Set for the hot key kinds.
    std::optional<EventHotKeyID> directObject;
    /// Set for the raw key kinds: a virtual key code, and modifiers in carbon bits, which can be more than
    /// the four above.
    std::optional<std::uint32_t> keyCode;
    std::optional<std::uint32_t> keyModifiers;
};

/// A registration. Its end unregisters the hot key.
class EventHotKey {
public:
    virtual ~EventHotKey() = default;
};

/// An installed handler. It is told of the kinds that were added to it; none are at first.
class EventHandler {
public:
    virtual ~EventHandler() = default;
    virtual void addEventTypes(std::initializer_list<KeyboardEvent::Kind> kinds) = 0;
    virtual void removeEventTypes(std::initializer_list<KeyboardEvent::Kind> kinds) = 0;
};

class HotKeys {
public:
    struct Registration {
        OSStatus status = noErr;
        std::unique_ptr<EventHotKey> hotKey; // null unless the status is noErr
    };
    struct SymbolicHotKeys {
        OSStatus status = noErr;
        /// A list of maps with "kHISymbolicHotKeyEnabled" (bool), "kHISymbolicHotKeyCode" and
        /// "kHISymbolicHotKeyModifiers" (int, carbon bits).
        QVariant array;
    };
    /// Returns eventNotHandledErr for an event that isn't its own.
    using Handler = std::function<OSStatus(const KeyboardEvent* event)>;

    virtual ~HotKeys() = default;

    /// Tells a person why hot keys would work by half in this session and are refused with unimpErr; empty
    /// where they work.
    [[nodiscard]] virtual QString limitation() const = 0;

    /// `keyCode` is one that events carry: a virtual key code, or the platform's own for a key without.
    /// Pressed and released are reported once each, whatever the locks are and however long the key is held.
    [[nodiscard]] virtual Registration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                           EventHotKeyID id) = 0;
    /// Null when the system has nothing to install it on.
    [[nodiscard]] virtual std::unique_ptr<EventHandler> installEventHandler(Handler handler) = 0;
    /// Returns the desktop's own shortcuts, read afresh or from a copy that the platform keeps current. May
    /// not block on another program.
    virtual SymbolicHotKeys copySymbolicHotKeys() = 0;
};

} // namespace orvane

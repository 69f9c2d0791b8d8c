// One input event. A value of fixed size: passing one on allocates nothing.
#pragma once

#include "Platform/EventFlags.h"

#include <cstdint>

namespace orvane {

/// The numbers are those of the event tap's masks: the bit for type `t` is `1 << t`.
enum class EventType : std::uint32_t {
    null = 0,
    leftMouseDown = 1,
    leftMouseUp = 2,
    rightMouseDown = 3,
    rightMouseUp = 4,
    mouseMoved = 5,
    leftMouseDragged = 6,
    rightMouseDragged = 7,
    keyDown = 10,
    keyUp = 11,
    flagsChanged = 12,
    scrollWheel = 22,
    otherMouseDown = 25,
    otherMouseUp = 26,
    otherMouseDragged = 27,
    tapDisabledByTimeout = 0xFFFFFFFE,
    tapDisabledByUserInput = 0xFFFFFFFF,
};

using EventMask = std::uint64_t;
constexpr EventMask eventMaskBit(EventType type)
{
    return EventMask{1} << static_cast<std::uint32_t>(type);
}

enum class EventField : std::uint32_t {
    keyboardEventAutorepeat = 8,
    keyboardEventKeycode = 9,
    eventSourceUserData = 42,
};

struct Event {
    EventType type = EventType::null;
    /// The modifiers in force with this event; for a modifier's own key, after it.
    EventFlags flags = 0;
    /// A virtual key code: a position on the keyboard, whatever the layout prints there.
    std::int64_t keycode = 0;
    std::int64_t autorepeat = 0;
    /// Free for the sender to use; 0 in events of the hardware.
    std::int64_t userData = 0;
    /// Nanoseconds of the uptime clock.
    std::uint64_t timestamp = 0;

    [[nodiscard]] std::int64_t integerValueField(EventField field) const
    {
        switch (field) {
        case EventField::keyboardEventAutorepeat:
            return autorepeat;
        case EventField::keyboardEventKeycode:
            return keycode;
        case EventField::eventSourceUserData:
            return userData;
        }
        return 0;
    }

    void setIntegerValueField(EventField field, std::int64_t value)
    {
        switch (field) {
        case EventField::keyboardEventAutorepeat:
            autorepeat = value;
            break;
        case EventField::keyboardEventKeycode:
            keycode = value;
            break;
        case EventField::eventSourceUserData:
            userData = value;
            break;
        }
    }

    friend bool operator==(const Event&, const Event&) = default;
};

} // namespace orvane

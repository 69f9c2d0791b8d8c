#include "KeyboardShortcuts/Recorder/RecorderDecision.h"

#include "KeyboardShortcuts/Shortcut/Key.h"

#include <algorithm>
#include <array>

namespace orvane::KeyboardShortcuts {

namespace {

using Deed = RecorderDecision::Deed;

/// A click this far outside of the control still counts as one on it, points.
constexpr double reach = 3;

// All modifiers except Caps Lock, numeric pad and function, which come with keys and are not held.
constexpr EventFlags modifierMask = 0xFF5E0000;
static_assert(modifierMask ==
              (0xFFFF0000 & ~(eventFlag::alphaShift | eventFlag::numericPad | eventFlag::secondaryFn)));
// The modifiers that count, without Shift: a letter with Shift alone is typing.
constexpr EventFlags usableModifierMask = 0xFF5C0000;
static_assert(usableModifierMask == (modifierMask & ~eventFlag::shift));

/// The keys that are there for commands alone, and so need no modifier.
constexpr std::array commandKeys = {
    Key::f1,  Key::f2,  Key::f3,  Key::f4,  Key::f5,   Key::f6,       Key::f7,         Key::f8,
    Key::f9,  Key::f10, Key::f11, Key::f12, Key::f13,  Key::f14,      Key::f15,        Key::f16,
    Key::f17, Key::f18, Key::f19, Key::f20, Key::mute, Key::volumeUp, Key::volumeDown,
};

bool isMouseUp(EventType type)
{
    return type == EventType::leftMouseUp || type == EventType::rightMouseUp;
}

/// Higher codes are the platform's own, for keys without a virtual code, such as Print Screen and Play.
constexpr std::int64_t virtualKeyCodeCount = 0x80;

bool isUsable(const EventMonitors::MonitoredEvent& monitored, const RecorderSurroundings& surroundings)
{
    const Event& event = monitored.event;
    // A chord with AltGr types a character, and hot keys know nothing of AltGr.
    if (event.keycode < 0 || monitored.choosesCharacter)
        return false;
    if (event.keycode >= virtualKeyCodeCount)
        return surroundings.isNamed(event.keycode);
    return (event.flags & usableModifierMask) != 0 ||
           std::ranges::find(commandKeys, Key{event.keycode}) != commandKeys.end();
}

/// Returns what a key without modifiers does that isn't there to be recorded.
std::optional<Deed> editingDeed(const Event& event)
{
    if ((event.flags & modifierMask) != 0)
        return std::nullopt;
    switch (Key{event.keycode}) {
    case Key::tab:
        return Deed::leave;
    case Key::escape:
        return Deed::cancel;
    case Key::delete_:
    case Key::deleteForward:
        return Deed::clear;
    default:
        return std::nullopt;
    }
}

} // namespace

RecorderDecision decide(const EventMonitors::MonitoredEvent& monitored,
                        const RecorderSurroundings& surroundings)
{
    const Event& event = monitored.event;
    if (isMouseUp(event.type)) {
        const QRectF near = surroundings.bounds.adjusted(-reach, -reach, reach, reach);
        return {near.contains(monitored.location) ? Deed::ignore : Deed::leave};
    }
    if (event.type != EventType::keyDown && event.type != EventType::keyUp)
        return {Deed::ignore};
    const std::optional<Deed> deed = editingDeed(event);
    if (event.autorepeat != 0 && deed != Deed::leave)
        return {Deed::ignore};
    if (deed)
        return {*deed};

    const std::optional<Shortcut> shortcut = Shortcut::fromEvent(event);
    if (!isUsable(monitored, surroundings) || !shortcut)
        return {Deed::refuse};
    if (const std::optional<QString> title = surroundings.menuItemTitle(*shortcut))
        return {Deed::refuseForMenuItem, shortcut, *title};
    if (surroundings.isUsedBySystem(*shortcut))
        return {Deed::refuseForSystem, shortcut};
    return {Deed::accept, shortcut};
}

} // namespace orvane::KeyboardShortcuts

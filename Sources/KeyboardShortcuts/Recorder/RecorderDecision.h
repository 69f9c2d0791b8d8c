// Decides what a recorder does with an event that it sees while it records. The decision itself is pure.
#pragma once

#include "KeyboardShortcuts/Shortcut/Shortcut.h"
#include "Platform/EventMonitors.h"

#include <QRectF>

#include <cstdint>
#include <functional>
#include <optional>

namespace orvane::KeyboardShortcuts {

/// The events that a recorder sees: key down, left mouse up, right mouse up.
inline constexpr EventMask recorderEvents = eventMaskBit(EventType::keyDown) |
                                            eventMaskBit(EventType::leftMouseUp) |
                                            eventMaskBit(EventType::rightMouseUp);

struct RecorderDecision {
    enum class Deed {
        /// End the recording; pass the event on.
        leave,
        /// Swallow the event and go on.
        ignore,
        /// End the recording, swallow the event.
        cancel,
        /// Press the clear button, swallow the event.
        clear,
        /// Beep, swallow the event, go on.
        refuse,
        /// Report that the menu item named by `menuItemTitle` has the shortcut, then go on.
        refuseForMenuItem,
        /// Report that the system has it, then go on.
        refuseForSystem,
        /// Take `shortcut` and end the recording; swallow the event.
        accept,
    };

    Deed deed = Deed::ignore;
    std::optional<Shortcut> shortcut = std::nullopt;
    QString menuItemTitle = {};

    friend bool operator==(const RecorderDecision&, const RecorderDecision&) = default;
};

/// The state on which the decision depends besides the event. The last two questions are asked only about a
/// shortcut that could be taken, the very last only when the other has found nothing.
struct RecorderSurroundings {
    /// The control's bounds, in the space of the event's location.
    QRectF bounds;
    /// True for a key that prints nothing and that the platform has a name for.
    std::function<bool(std::int64_t keyCode)> isNamed;
    /// Returns the title of the program's menu item with this shortcut.
    std::function<std::optional<QString>(const Shortcut&)> menuItemTitle;
    std::function<bool(const Shortcut&)> isUsedBySystem;

    /// Makes the state for a control with these bounds: it asks the menus of this program, and the system.
    [[nodiscard]] static RecorderSurroundings of(const QRectF& bounds);
};

/// A repeat of a held key doesn't count as a press, except that Tab goes on moving.
[[nodiscard]] RecorderDecision decide(const EventMonitors::MonitoredEvent& event,
                                      const RecorderSurroundings& surroundings);

} // namespace orvane::KeyboardShortcuts

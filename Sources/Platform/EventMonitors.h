// A look at the input events on their way to the program's own windows and menus, and at those that other
// programs get. Main thread.
#pragma once

#include "Platform/Event.h"
#include "Platform/Geometry.h"

#include <QPointF>

#include <functional>
#include <memory>

namespace orvane {

/// A monitor in place. Its end takes it away; a handler may end its own.
class EventMonitor {
public:
    virtual ~EventMonitor() = default;
};

class EventMonitors {
public:
    enum class Disposition { pass, swallow };

    struct MonitoredEvent {
        Event event;
        /// The pointer's place in points, in the space of all screens: origin at the top left of the first
        /// one, y downwards.
        QPointF location;
        /// True while a key is held that chooses another character, such as AltGr. It is no modifier of a
        /// shortcut. Told of the program's own windows only.
        bool choosesCharacter = false;
    };
    using Handler = std::function<Disposition(const MonitoredEvent&)>;

    /// Sees an event and can't change it or hold it back.
    using Observer = std::function<void(const MonitoredEvent&)>;

    virtual ~EventMonitors() = default;

    /// Called for each event of the mask before a window of the program gets it; a swallowed one goes no
    /// further. The newest monitor is asked first.
    [[nodiscard]] virtual std::unique_ptr<EventMonitor> addLocalMonitor(EventMask mask, Handler handler) = 0;

    /// The same while a menu of the program is being tracked, wherever the desktop draws it: the events that
    /// the menu would get. Key down and key up only. With no menu open it costs nothing.
    [[nodiscard]] virtual std::unique_ptr<EventMonitor> addMenuTrackingMonitor(EventMask mask,
                                                                               Handler handler) = 0;

    /// Called for each mouse event of the mask that goes to another program, and for none of the program's
    /// own. Motions that the main thread has no time for are combined: only the last of those that wait is
    /// told. The release of a drag is preceded by a motion to its own place, unless the last one told was
    /// there. A permission may be needed; without it nothing comes.
    [[nodiscard]] virtual std::unique_ptr<EventMonitor> addGlobalMonitor(EventMask mask,
                                                                         Observer observer) = 0;

    /// Returns where the pointer is, in the space of `Screens`; during a monitor's call, where it was at that
    /// event.
    [[nodiscard]] virtual Point mouseLocation() const = 0;
    /// Returns the modifiers that are held, whichever program has the keyboard.
    [[nodiscard]] virtual EventFlags modifierFlags() const = 0;
};

} // namespace orvane

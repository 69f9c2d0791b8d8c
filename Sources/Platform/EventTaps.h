// Taps on the session's stream of input, and posting of events into it. Main thread.
#pragma once

#include "Platform/Event.h"

#include <memory>

namespace orvane {

enum class EventTapDecision {
    pass,
    consume, // the event is removed from the stream
};

/// Called on the main thread for each event of the mask, and with the two types that tell of a disabled tap.
/// It may change the event in place. While it runs, all input of the session waits: after one second the
/// event passes unchanged and the tap is disabled.
using EventTapCallback = EventTapDecision (*)(EventType type, Event& event, void* userInfo);

/// A tap. It is made disabled and unattached; its end takes it away and lets the devices go.
class EventTap {
public:
    virtual ~EventTap() = default;

    /// Attaches to the main run loop, in all its modes; unattached, no event is delivered.
    virtual void addToMainRunLoop() = 0;
    virtual void removeFromMainRunLoop() = 0;
    /// May not take effect at once: where another program has the devices, or the system is slow to answer,
    /// the tap stays disabled, which isEnabled() tells, and is to be enabled again later.
    virtual void enable(bool enabled) = 0;
    [[nodiscard]] virtual bool isEnabled() const = 0;
    /// Ends the tap for good; a tap that was invalidated can't be enabled again.
    virtual void invalidate() = 0;
};

class EventTaps {
public:
    enum class Location { hid = 0, session = 1 };
    enum class Placement { headInsert = 0, tailAppend = 1 };
    enum class Options {
        defaultTap = 0, // may change and consume events
        /// Sees a copy of each event and decides nothing; its callback's answer is ignored. No event waits
        /// for it, and it takes no device away from other programs. It gets a held key's repeats only while a
        /// default tap is in place too. It is never disabled by a time-out.
        listenOnly = 1,
    };

    virtual ~EventTaps() = default;

    /// Null when the system doesn't allow it or can't; the platform's log says why.
    [[nodiscard]] virtual std::unique_ptr<EventTap> tapCreate(Location location, Placement placement,
                                                              Options options, EventMask eventsOfInterest,
                                                              EventTapCallback callback, void* userInfo) = 0;

    /// Puts an event into the stream. One posted at `hid` passes every tap on its way, like one of the
    /// hardware.
    virtual void post(Location location, const Event& event) = 0;
};

} // namespace orvane

// Hands events from the tap's thread to the main thread, one at a time, and waits there for the answers, but
// not for ever. An answer that comes too late is dropped. Allocates nothing after it was made.
#pragma once

#include "Platform/Event.h"
#include "PlatformLinux/EventTap/EventSignal.h"

#include <chrono>
#include <mutex>
#include <optional>

namespace orvane {

class TapMailbox {
public:
    enum class Outcome {
        answered,
        timedOut,
        closed, // the main thread takes no more events
    };
    struct Answer {
        Outcome outcome;
        /// Of an answered event; nothing when it was removed from the stream.
        std::optional<Event> event;
    };
    struct Request {
        std::uint64_t ticket;
        Event event;
    };

    /// The tap's thread: hands an event over and waits for the answer.
    Answer exchange(const Event& event, std::chrono::nanoseconds patience);
    /// The tap's thread: wakes the main thread though there is no event for it.
    void ring();

    /// Readable when there is something to take. Main thread, as all below.
    int descriptor() const { return m_toMain.descriptor(); }
    /// The event that waits, if one still does.
    std::optional<Request> take();
    void answer(std::uint64_t ticket, const std::optional<Event>& event);
    /// Ends a wait, and all later ones before they begin.
    void close();

private:
    enum class State { idle, offered, taken, answered };

    std::mutex m_mutex;
    State m_state = State::idle;
    bool m_isClosed = false;
    std::uint64_t m_ticket = 0;
    Event m_event;
    bool m_wasRemoved = false;
    EventSignal m_toMain;
    EventSignal m_toTap;
};

} // namespace orvane

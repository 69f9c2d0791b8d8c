// Hands events from the tap's thread to the main thread, one at a time and with a time limit. Each is
// delivered exactly once: as the main thread answers it, and then at once by that thread, for to wake the
// tap's first would cost the key half as much time again; or unchanged, when there is no answer in time.
// Allocates nothing after it was made.
#pragma once

#include "Platform/Event.h"
#include "PlatformLinux/Common/EventSignal.h"

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>

namespace orvane {

class TapMailbox {
public:
    using Time = std::chrono::steady_clock::time_point;
    /// Called on either thread, with everything locked that is here; nothing is a removed event. What the
    /// tap's thread did before offer() is seen by it, and what it does is seen by that thread after settle().
    using Delivery = std::function<void(const std::optional<Event>&)>;
    enum class Outcome {
        answered,
        timedOut,
        closed, // the main thread takes no more events
    };
    struct Request {
        std::uint64_t ticket;
        Event event;
    };

    explicit TapMailbox(Delivery delivery) : m_delivery(std::move(delivery)) {}

    /// The tap's thread: hands an event over. The one before must be settled.
    void offer(const Event& event, std::chrono::nanoseconds patience);
    /// The tap's thread: returns when the event that was offered has been delivered, which it does itself at
    /// the end of the patience.
    Outcome settle();
    /// The tap's thread: wakes the main thread though there is no event for it.
    void ring();

    /// Readable when there is something to take. Main thread, as all below.
    int descriptor() const { return m_toMain.descriptor(); }
    /// The event that waits, if one still does.
    std::optional<Request> take();
    /// Delivers, unless it is too late.
    void answer(std::uint64_t ticket, const std::optional<Event>& event);
    /// Ends a wait, and all later ones before they begin.
    void close();

private:
    enum class State { idle, offered, taken, answered };

    const Delivery m_delivery;
    std::mutex m_mutex;
    State m_state = State::idle;
    bool m_isClosed = false;
    bool m_tapWaits = false;
    std::uint64_t m_ticket = 0;
    Event m_event;
    Time m_end;
    EventSignal m_toMain;
    EventSignal m_toTap;
};

} // namespace orvane

// Offers events of the tap's thread to the main thread, one at a time and with a time limit. Each is injected
// exactly once: with the answer of the main thread and by that thread, because waking the tap's thread for it
// would cost the key half as much time again; or unchanged, when there is no answer in time. Allocates
// nothing after it was made.
#pragma once

#include "Platform/EventTaps.h"
#include "PlatformLinux/Common/EventSignal.h"

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>

namespace orvane {

class TapMailbox {
public:
    using Time = std::chrono::steady_clock::time_point;
    /// Called on either thread with the mailbox locked. It sees what the tap's thread did before offer(), and
    /// that thread sees its effects after awaitAnswer().
    using Injection = std::function<void(const Event& answer, EventTapDecision decision)>;
    enum class Outcome {
        answered,
        timedOut,
        closed, // the main thread takes no more events
    };
    struct Request {
        std::uint64_t ticket;
        Event event;
    };

    explicit TapMailbox(Injection inject) : m_inject(std::move(inject)) {}

    /// The tap's thread: hands an event over. The answer to the one before must have been awaited.
    void offer(const Event& event, std::chrono::nanoseconds patience);
    /// The tap's thread: returns when the offered event has been injected. When the patience is over, this
    /// thread injects it itself.
    Outcome awaitAnswer();
    /// The tap's thread, after awaitAnswer(): true if the main thread has seen that event.
    [[nodiscard]] bool wasTaken() const { return m_wasTaken; }
    /// The tap's thread: wakes the main thread though there is no event for it.
    void ring();

    /// Readable when there is something to take. Main thread, as everything below.
    [[nodiscard]] int descriptor() const { return m_toMain.descriptor(); }
    /// Returns the event that waits, if one still does. The descriptor is readable until this has returned
    /// nothing.
    std::optional<Request> take();
    /// Injects the event in its present form, or the consequences of its removal; does nothing if it is too
    /// late.
    void answer(std::uint64_t ticket, const Event& event, EventTapDecision decision);
    /// Ends a wait, and all later ones before they begin.
    void close();

private:
    enum class State { idle, offered, taken, answered };

    std::optional<Request> takeOffered();

    const Injection m_inject;
    std::mutex m_mutex;
    State m_state = State::idle;
    bool m_isClosed = false;
    bool m_tapWaits = false;
    bool m_wasTaken = false;
    std::uint64_t m_ticket = 0;
    Event m_event;
    Time m_end;
    EventSignal m_toMain;
    EventSignal m_toTap;
};

} // namespace orvane

// The suite's taps on the session's input, shared by all subscribers: one for those that may change or
// consume events, one for those that only listen. Main thread.
//
// Without subscribers there is no tap and no timer, and the process sees no input at all.
#pragma once

#include "OrvaneCore/Base/Log.h"
#include "Platform/EventTaps.h"
#include "Platform/NotificationCenter.h"

#include <memory>
#include <vector>

namespace orvane {

class Timer;

/// The order in which subscribers are asked, however they were added.
enum class EventTapRank {
    clipboardKeys, // take chords as the user has pressed them
    keyRemapping,
};

/// Sees events before the applications do, and may change or consume them.
class EventTapSubscriber {
public:
    virtual ~EventTapSubscriber() = default;
    [[nodiscard]] virtual EventTapRank rank() const = 0;
    [[nodiscard]] virtual EventMask eventMask() const = 0;
    /// All input of the session waits for the answer. May be called with types that only others asked for,
    /// and must pass those; may change the event in place.
    virtual EventTapDecision handle(EventType type, Event& event) = 0;
};

/// Sees what the subscribers let pass, as they have changed it. Listeners alone take no device away from
/// other programs.
class EventTapListener {
public:
    virtual ~EventTapListener() = default;
    [[nodiscard]] virtual EventMask eventMask() const = 0;
    /// May be called with types that only other listeners asked for.
    virtual void hear(EventType type, const Event& event) = 0;
};

class EventTapService {
public:
    explicit EventTapService(Logger logger);
    ~EventTapService();
    EventTapService(const EventTapService&) = delete;
    EventTapService& operator=(const EventTapService&) = delete;

    /// Subscribers are asked by rank, and within one rank in the order in which they were added. Each
    /// addition and each removal makes their tap anew.
    void addSubscriber(std::shared_ptr<EventTapSubscriber> subscriber);
    /// Removes every entry for this object.
    void removeSubscriber(const std::shared_ptr<EventTapSubscriber>& subscriber);

    /// Does the same for those that only listen; they are called in the order in which they were added.
    void addListener(std::shared_ptr<EventTapListener> listener);
    void removeListener(const std::shared_ptr<EventTapListener>& listener);

    /// Arms the service: from now on there are taps for the subscribers and listeners.
    void start();
    void stop();
    /// Enables taps that the system has disabled.
    void reenableIfNeeded();

private:
    using Subscribers = std::vector<std::shared_ptr<EventTapSubscriber>>;
    using Listeners = std::vector<std::shared_ptr<EventTapListener>>;

    static EventTapDecision eventTapCallback(EventType type, Event& event, void* userInfo);
    static EventTapDecision listenOnlyCallback(EventType type, Event& event, void* userInfo);
    EventTapDecision decide(EventType type, Event& event);
    void replaceSubscribers(Subscribers subscribers);
    void replaceListeners(Listeners listeners);
    void rebuildTap();
    void rebuildListenOnlyTap();
    std::unique_ptr<EventTap> makeTap(EventTaps::Placement placement, EventTaps::Options options,
                                      EventMask mask, EventTapCallback callback);
    void teardown(std::unique_ptr<EventTap>& tap);
    void reenable(EventTap* tap);
    void startWatchdog();
    void installWakeObserver();

    Logger m_log;
    /// Never changed in place: a loop runs over the list with which it began, without copying it.
    std::shared_ptr<const Subscribers> m_subscribers = std::make_shared<Subscribers>();
    std::shared_ptr<const Listeners> m_listeners = std::make_shared<Listeners>();
    std::unique_ptr<EventTap> m_machPort;
    std::unique_ptr<EventTap> m_listenOnlyPort;
    std::unique_ptr<Timer> m_watchdog; // runs while there is a tap
    std::unique_ptr<NotificationCenter::Token> m_wakeObserver;
    bool m_running = false;
};

} // namespace orvane

// The suite's taps on the session's input, shared by all who subscribe: one for those who may change or
// consume events, one for those who only listen. Main thread.
//
// Without subscribers there is no tap, no timer, and the process sees no input at all.
#pragma once

#include "OrvaneCore/Base/Log.h"
#include "Platform/EventTaps.h"
#include "Platform/NotificationCenter.h"

#include <memory>
#include <vector>

namespace orvane {

class Timer;

/// The order in which subscribers are asked, whenever they came.
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
    /// All input of the session waits for the answer. May be shown types that only others asked for, and
    /// must pass those; may change the event in place.
    virtual EventTapDecision handle(EventType type, Event& event) = 0;
};

/// Sees what the subscribers let pass, as they have changed it. Listeners alone take no device away from
/// other programs.
class EventTapListener {
public:
    virtual ~EventTapListener() = default;
    [[nodiscard]] virtual EventMask eventMask() const = 0;
    /// May be shown types that only other listeners asked for.
    virtual void hear(EventType type, const Event& event) = 0;
};

class EventTapService {
public:
    explicit EventTapService(Logger logger);
    ~EventTapService();
    EventTapService(const EventTapService&) = delete;
    EventTapService& operator=(const EventTapService&) = delete;

    /// Subscribers are asked by rank, and within one rank in order of adding. Each arrival and each leaving
    /// makes their tap anew.
    void addSubscriber(std::shared_ptr<EventTapSubscriber> subscriber);
    /// Removes every entry that is this object.
    void removeSubscriber(const std::shared_ptr<EventTapSubscriber>& subscriber);

    /// The same for those who only listen; they are told in order of adding.
    void addListener(std::shared_ptr<EventTapListener> listener);
    void removeListener(const std::shared_ptr<EventTapListener>& listener);

    /// Arms the service: from now on subscribers and listeners get their taps.
    void start();
    void stop();
    /// Enables what the system has disabled.
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
    static void teardown(std::unique_ptr<EventTap>& tap);
    void reenable(EventTap* tap);
    void updateWatchdog();
    void installWakeObserver();

    Logger m_log;
    /// Never changed in place: a walk goes over the list that it began with, without copying it.
    std::shared_ptr<const Subscribers> m_subscribers = std::make_shared<Subscribers>();
    std::shared_ptr<const Listeners> m_listeners = std::make_shared<Listeners>();
    std::unique_ptr<EventTap> m_machPort;
    std::unique_ptr<EventTap> m_listenOnlyPort;
    std::unique_ptr<Timer> m_watchdog;
    std::unique_ptr<NotificationCenter::Token> m_wakeObserver;
    bool m_running = false;
};

} // namespace orvane

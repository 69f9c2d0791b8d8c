// The suite's one tap on the session's input, shared by all who subscribe. Main thread.
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

enum class EventTapDecision { pass, consume };

class EventTapSubscriber {
public:
    virtual ~EventTapSubscriber() = default;
    virtual EventMask eventMask() const = 0;
    /// All input of the session waits for the answer. May be shown types that only others asked for, and
    /// must pass those; may change the event in place.
    virtual EventTapDecision handle(EventType type, Event& event) = 0;
};

class EventTapService {
public:
    explicit EventTapService(Logger logger);
    ~EventTapService();
    EventTapService(const EventTapService&) = delete;
    EventTapService& operator=(const EventTapService&) = delete;

    /// Subscribers are asked in order of adding. Each arrival and each leaving makes the tap anew.
    void addSubscriber(std::shared_ptr<EventTapSubscriber> subscriber);
    /// Removes every entry that is this object.
    void removeSubscriber(const std::shared_ptr<EventTapSubscriber>& subscriber);

    /// Arms the service: from now on subscribers get a tap.
    void start();
    void stop();
    /// Enables a tap that the system has disabled.
    void reenableIfNeeded();

private:
    using Subscribers = std::vector<std::shared_ptr<EventTapSubscriber>>;

    static Event* eventTapCallback(EventType type, Event* event, void* userInfo);
    Event* walk(EventType type, Event* event);
    void replaceSubscribers(Subscribers subscribers);
    void rebuildTap();
    void teardownTap();
    void startWatchdog();
    void installWakeObserver();

    Logger m_log;
    /// Never changed in place: a walk goes over the list that it began with, without copying it.
    std::shared_ptr<const Subscribers> m_subscribers = std::make_shared<Subscribers>();
    std::unique_ptr<EventTap> m_machPort;
    std::unique_ptr<Timer> m_watchdog;
    std::unique_ptr<NotificationCenter::Token> m_wakeObserver;
    bool m_running = false;
};

} // namespace orvane

#include "OrvaneCore/Input/EventTapService.h"

#include "Platform/Platform.h"
#include "Platform/RunLoop.h"
#include "Platform/Workspace.h"

#include <algorithm>

namespace orvane {

namespace {

template <typename List>
EventMask maskOf(const List& list)
{
    EventMask mask = 0;
    for (const auto& each : list)
        mask |= each->eventMask();
    return mask;
}

bool tellsOfDisabledTap(EventType type)
{
    return type == EventType::tapDisabledByTimeout || type == EventType::tapDisabledByUserInput;
}

} // namespace

EventTapService::EventTapService(Logger logger) : m_log(std::move(logger)) {}

EventTapService::~EventTapService()
{
    teardown(m_machPort);
    teardown(m_listenOnlyPort);
}

void EventTapService::addSubscriber(std::shared_ptr<EventTapSubscriber> subscriber)
{
    Subscribers subscribers = *m_subscribers;
    const auto place = std::ranges::upper_bound(subscribers, subscriber->rank(), {},
                                                [](const auto& each) { return each->rank(); });
    subscribers.insert(place, std::move(subscriber));
    replaceSubscribers(std::move(subscribers));
}

void EventTapService::removeSubscriber(const std::shared_ptr<EventTapSubscriber>& subscriber)
{
    Subscribers subscribers = *m_subscribers;
    std::erase(subscribers, subscriber);
    replaceSubscribers(std::move(subscribers));
}

void EventTapService::addListener(std::shared_ptr<EventTapListener> listener)
{
    Listeners listeners = *m_listeners;
    listeners.push_back(std::move(listener));
    replaceListeners(std::move(listeners));
}

void EventTapService::removeListener(const std::shared_ptr<EventTapListener>& listener)
{
    Listeners listeners = *m_listeners;
    std::erase(listeners, listener);
    replaceListeners(std::move(listeners));
}

void EventTapService::replaceSubscribers(Subscribers subscribers)
{
    m_subscribers = std::make_shared<const Subscribers>(std::move(subscribers));
    if (m_running)
        rebuildTap();
}

void EventTapService::replaceListeners(Listeners listeners)
{
    m_listeners = std::make_shared<const Listeners>(std::move(listeners));
    if (m_running)
        rebuildListenOnlyTap();
}

void EventTapService::start()
{
    m_running = true;
    rebuildTap();
    rebuildListenOnlyTap();
    installWakeObserver();
}

void EventTapService::stop()
{
    m_running = false;
    teardown(m_machPort);
    teardown(m_listenOnlyPort);
    m_wakeObserver.reset();
}

void EventTapService::rebuildTap()
{
    teardown(m_machPort);
    if (!m_subscribers->empty())
        m_machPort = makeTap(EventTaps::Placement::headInsert, EventTaps::Options::defaultTap,
                             maskOf(*m_subscribers), &EventTapService::eventTapCallback);
    startWatchdog();
}

/// This tap comes after the other one: listeners see events as the subscribers have changed them.
void EventTapService::rebuildListenOnlyTap()
{
    teardown(m_listenOnlyPort);
    if (!m_listeners->empty())
        m_listenOnlyPort = makeTap(EventTaps::Placement::tailAppend, EventTaps::Options::listenOnly,
                                   maskOf(*m_listeners), &EventTapService::listenOnlyCallback);
    startWatchdog();
}

std::unique_ptr<EventTap> EventTapService::makeTap(EventTaps::Placement placement, EventTaps::Options options,
                                                   EventMask mask, EventTapCallback callback)
{
    auto tap = platform().eventTaps.tapCreate(EventTaps::Location::session, placement, options, mask,
                                              callback, this);
    if (!tap) {
        m_log.error(
            QStringLiteral("Failed to create event tap — is Accessibility/Input Monitoring granted?"));
        return nullptr;
    }
    tap->addToMainRunLoop();
    tap->enable(true);
    m_log.info(QStringLiteral("Event tap active with mask %1").arg(mask));
    return tap;
}

/// Ends the watchdog too, so that it can't find a tap that is half torn down.
void EventTapService::teardown(std::unique_ptr<EventTap>& tap)
{
    if (!tap)
        return;
    m_watchdog.reset();
    tap->removeFromMainRunLoop();
    tap->enable(false);
    tap->invalidate();
    tap.reset();
}

/// Begins a whole period anew if there is a tap.
void EventTapService::startWatchdog()
{
    m_watchdog.reset();
    if (!m_machPort && !m_listenOnlyPort)
        return;
    // The timer is owned by this service, so it can't outlive it.
    m_watchdog = platform().mainRunLoop.scheduleTimer(std::chrono::milliseconds(1500), RunLoop::Repeats::yes,
                                                      [this] { reenableIfNeeded(); });
}

void EventTapService::installWakeObserver()
{
    if (m_wakeObserver)
        return;
    m_wakeObserver = platform().sharedWorkspace.notificationCenter().addObserver(
        Workspace::didWakeNotification(), [this](const Notification&) { reenableIfNeeded(); });
}

void EventTapService::reenableIfNeeded()
{
    reenable(m_machPort.get());
    reenable(m_listenOnlyPort.get());
}

void EventTapService::reenable(EventTap* tap)
{
    if (!tap || tap->isEnabled())
        return;
    tap->enable(true);
    if (tap->isEnabled()) // otherwise the system's own log says why
        m_log.notice(QStringLiteral("Re-enabled a disabled event tap"));
}

EventTapDecision EventTapService::eventTapCallback(EventType type, Event& event, void* userInfo)
{
    if (!userInfo)
        return EventTapDecision::pass;
    auto* service = static_cast<EventTapService*>(userInfo);
    if (tellsOfDisabledTap(type)) {
        service->reenableIfNeeded();
        return EventTapDecision::pass;
    }
    return service->decide(type, event);
}

EventTapDecision EventTapService::listenOnlyCallback(EventType type, Event& event, void* userInfo)
{
    auto* service = static_cast<EventTapService*>(userInfo);
    if (tellsOfDisabledTap(type)) {
        service->reenableIfNeeded();
        return EventTapDecision::pass;
    }
    const auto snapshot = service->m_listeners; // a listener may change the list during the loop
    for (const auto& listener : *snapshot)
        listener->hear(type, event);
    return EventTapDecision::pass;
}

EventTapDecision EventTapService::decide(EventType type, Event& event)
{
    const auto snapshot = m_subscribers; // a subscriber may change the list during the loop
    for (const auto& subscriber : *snapshot) {
        if (subscriber->handle(type, event) == EventTapDecision::consume)
            return EventTapDecision::consume;
    }
    return EventTapDecision::pass;
}

} // namespace orvane

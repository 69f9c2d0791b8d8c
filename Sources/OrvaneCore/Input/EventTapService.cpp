#include "OrvaneCore/Input/EventTapService.h"

#include "Platform/Platform.h"
#include "Platform/RunLoop.h"
#include "Platform/Workspace.h"

#include <algorithm>

namespace orvane {

EventTapService::EventTapService(Logger logger) : m_log(std::move(logger)) {}

EventTapService::~EventTapService()
{
    if (m_machPort)
        teardownTap();
}

void EventTapService::addSubscriber(std::shared_ptr<EventTapSubscriber> subscriber)
{
    Subscribers subscribers = *m_subscribers;
    subscribers.push_back(std::move(subscriber));
    replaceSubscribers(std::move(subscribers));
}

void EventTapService::removeSubscriber(const std::shared_ptr<EventTapSubscriber>& subscriber)
{
    Subscribers subscribers = *m_subscribers;
    std::erase(subscribers, subscriber);
    replaceSubscribers(std::move(subscribers));
}

void EventTapService::replaceSubscribers(Subscribers subscribers)
{
    m_subscribers = std::make_shared<const Subscribers>(std::move(subscribers));
    if (m_running)
        rebuildTap();
}

void EventTapService::start()
{
    m_running = true;
    rebuildTap();
    installWakeObserver();
}

void EventTapService::stop()
{
    m_running = false;
    teardownTap();
    m_wakeObserver.reset();
}

void EventTapService::rebuildTap()
{
    teardownTap();
    if (m_subscribers->empty())
        return;
    EventMask mask = 0;
    for (const auto& subscriber : *m_subscribers)
        mask |= subscriber->eventMask();

    m_machPort = platform().eventTaps.tapCreate(
        EventTaps::Location::session, EventTaps::Placement::headInsert, EventTaps::Options::defaultTap, mask,
        &EventTapService::eventTapCallback, this);
    if (!m_machPort) {
        m_log.error(
            QStringLiteral("Failed to create event tap — is Accessibility/Input Monitoring granted?"));
        return;
    }
    m_machPort->addToMainRunLoop();
    m_machPort->enable(true);
    startWatchdog();
    m_log.info(QStringLiteral("Event tap active with mask %1").arg(mask));
}

void EventTapService::teardownTap()
{
    m_watchdog.reset();
    if (!m_machPort)
        return;
    m_machPort->removeFromMainRunLoop();
    m_machPort->enable(false);
    m_machPort->invalidate();
    m_machPort.reset();
}

void EventTapService::startWatchdog()
{
    // Owned by this service, so it can't outlive it.
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
    if (!m_machPort || m_machPort->isEnabled())
        return;
    m_machPort->enable(true);
    if (m_machPort->isEnabled()) // or the system's own log says why not
        m_log.notice(QStringLiteral("Re-enabled a disabled event tap"));
}

Event* EventTapService::eventTapCallback(EventType type, Event* event, void* userInfo)
{
    if (!userInfo)
        return event;
    auto* service = static_cast<EventTapService*>(userInfo);
    if (type == EventType::tapDisabledByTimeout || type == EventType::tapDisabledByUserInput) {
        service->reenableIfNeeded();
        return event;
    }
    return service->walk(type, event);
}

Event* EventTapService::walk(EventType type, Event* event)
{
    const auto snapshot = m_subscribers; // a subscriber may change the list while it is walked
    for (const auto& subscriber : *snapshot) {
        if (subscriber->handle(type, *event) == EventTapDecision::consume)
            return nullptr;
    }
    return event;
}

} // namespace orvane

#include "Fakes/FakeEventTaps.h"

#include <algorithm>

namespace orvane {

FakeEventTap::FakeEventTap(FakeEventTaps& taps, EventMask eventMask, EventTapCallback callback,
                           void* userInfo)
    : m_taps(taps), m_mask(eventMask), m_callback(callback), m_userInfo(userInfo)
{
    m_taps.taps.insert(m_taps.taps.begin(), this);
}

FakeEventTap::~FakeEventTap()
{
    m_taps.calls.append(QStringLiteral("end"));
    std::erase(m_taps.taps, this);
}

void FakeEventTap::addToMainRunLoop()
{
    m_taps.calls.append(QStringLiteral("add"));
    m_isAttached = true;
}

void FakeEventTap::removeFromMainRunLoop()
{
    m_taps.calls.append(QStringLiteral("remove"));
    m_isAttached = false;
}

void FakeEventTap::enable(bool enabled)
{
    m_taps.calls.append(enabled ? QStringLiteral("enable") : QStringLiteral("disable"));
    m_isEnabled = enabled && m_isValid && !m_taps.refuses;
}

void FakeEventTap::invalidate()
{
    m_taps.calls.append(QStringLiteral("invalidate"));
    m_isValid = false;
    m_isEnabled = false;
}

void FakeEventTap::disableByTimeout()
{
    m_isEnabled = false;
    Event event;
    event.type = EventType::tapDisabledByTimeout;
    call(event.type, &event);
}

std::unique_ptr<EventTap> FakeEventTaps::tapCreate(Location, Placement, Options, EventMask eventsOfInterest,
                                                   EventTapCallback callback, void* userInfo)
{
    calls.append(QStringLiteral("create %1").arg(eventsOfInterest));
    if (refuses)
        return nullptr;
    return std::make_unique<FakeEventTap>(*this, eventsOfInterest, callback, userInfo);
}

void FakeEventTaps::post(Location, const Event& event)
{
    send(event);
}

std::optional<Event> FakeEventTaps::send(Event event)
{
    const auto snapshot = taps;
    for (FakeEventTap* tap : snapshot) {
        const bool isStillThere = std::ranges::find(taps, tap) != taps.end();
        if (!isStillThere || !tap->delivers() || (tap->mask() & eventMaskBit(event.type)) == 0)
            continue;
        Event* passed = tap->call(event.type, &event);
        if (!passed)
            return std::nullopt;
        event = *passed;
    }
    delivered.push_back(event);
    return event;
}

} // namespace orvane

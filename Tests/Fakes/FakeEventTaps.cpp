#include "Fakes/FakeEventTaps.h"

#include <algorithm>

namespace orvane {

FakeEventTap::FakeEventTap(FakeEventTaps& taps, EventTaps::Location location, EventTaps::Options options,
                           EventMask eventMask, EventTapCallback callback, void* userInfo)
    : m_taps(taps),
      m_location(location),
      m_options(options),
      m_mask(eventMask),
      m_callback(callback),
      m_userInfo(userInfo)
{
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
    call(event);
}

EventTapDecision FakeEventTap::call(Event& event)
{
    if (m_options == EventTaps::Options::defaultTap)
        return m_callback(event.type, event, m_userInfo);
    Event copy = event;
    m_callback(copy.type, copy, m_userInfo);
    return EventTapDecision::pass;
}

std::unique_ptr<EventTap> FakeEventTaps::tapCreate(Location location, Placement placement, Options options,
                                                   EventMask eventsOfInterest, EventTapCallback callback,
                                                   void* userInfo)
{
    calls.append(QStringLiteral("create %1 %2 %3%4")
                     .arg(QLatin1String(location == Location::hid ? "hid" : "session"),
                          QLatin1String(placement == Placement::headInsert ? "head" : "tail"))
                     .arg(eventsOfInterest)
                     .arg(QLatin1String(options == Options::listenOnly ? " listening" : "")));
    if (refuses)
        return nullptr;
    auto tap = std::make_unique<FakeEventTap>(*this, location, options, eventsOfInterest, callback, userInfo);
    taps.insert(placement == Placement::headInsert ? taps.begin() : taps.end(), tap.get());
    return tap;
}

void FakeEventTaps::post(Location location, const Event& event)
{
    pass(event, location);
}

bool FakeEventTaps::holdsKeyboards() const
{
    return std::ranges::any_of(taps, [](const FakeEventTap* tap) {
        return tap->delivers() && tap->options() == Options::defaultTap;
    });
}

std::optional<Event> FakeEventTaps::pass(Event event, Location from)
{
    const auto snapshot = taps;
    for (FakeEventTap* tap : snapshot) {
        const bool isStillThere = std::ranges::find(taps, tap) != taps.end();
        if (!isStillThere || !tap->isAskedFor(event.type, from))
            continue;
        if (tap->call(event) == EventTapDecision::consume)
            return std::nullopt;
    }
    delivered.push_back(event);
    return event;
}

} // namespace orvane

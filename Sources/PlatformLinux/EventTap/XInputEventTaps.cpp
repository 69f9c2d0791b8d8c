#include "PlatformLinux/EventTap/XInputEventTaps.h"

#include "Platform/HotKeys.h"
#include "PlatformLinux/EventTap/XInputEventTap.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

/// The types that a tap can ask for. Mouse types would be further bits, and further devices for the thread to
/// grab.
constexpr EventMask supportedEvents =
    eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp) | eventMaskBit(EventType::flagsChanged);

std::uint32_t hotKeyModifiers(EventFlags delivered)
{
    std::uint32_t modifiers = 0;
    if ((delivered & eventFlag::shift) != 0)
        modifiers |= carbonModifier::shift;
    if ((delivered & eventFlag::control) != 0)
        modifiers |= carbonModifier::control;
    if ((delivered & eventFlag::option) != 0)
        modifiers |= carbonModifier::option;
    return modifiers;
}

TapSource::Need needOf(EventTaps::Options options)
{
    return options == EventTaps::Options::listenOnly ? TapSource::Need::listening
                                                     : TapSource::Need::filtering;
}

} // namespace

XInputEventTaps::XInputEventTaps(LogSink& log, std::function<CommandKeys()> commandKeys)
    : m_log(log),
      m_commandKeys(commandKeys),
      m_source(log, std::move(commandKeys),
               {.decide = [this](Event& event) { return decideKey(event); },
                .hear = [this](const Event& event) { hear(event); },
                .threadEnded = [this](TapThread::Ending ending) { threadEnded(ending); },
                .listenerEnded = [this] { listenerEnded(); },
                .keysWait =
                    [this](pid_t thread) {
                        m_delivered = {}; // a new thread delivers each key as it is
                        m_lastFlags = 0;
                        m_keptBack.clear();
                        onKeysWait(thread);
                    },
                .keysPass = [this] { onKeysPass(); }})
{
}

XInputEventTaps::~XInputEventTaps() = default;

std::unique_ptr<EventTap> XInputEventTaps::tapCreate(Location location, Placement placement, Options options,
                                                     EventMask eventsOfInterest, EventTapCallback callback,
                                                     void* userInfo)
{
    if ((eventsOfInterest & supportedEvents) == 0) {
        m_log.write(LogLevel::error, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("EventTap"),
                    QStringLiteral("An event tap on X11 can only see keys; none was made for the mask %1.")
                        .arg(eventsOfInterest));
        return nullptr;
    }
    noticeEnding();
    // Trying shows whether the server allows it. One that doesn't answer has not refused: the tap is made,
    // and can be enabled when the server is back.
    if (m_source.tryNeed(needOf(options)) == TapSource::Result::refused)
        return nullptr;
    auto tap = std::make_unique<XInputEventTap>(*this, location, options, eventsOfInterest & supportedEvents,
                                                callback, userInfo);
    insert(tap.get(), placement);
    return tap;
}

void XInputEventTaps::post(Location location, const Event& event)
{
    noticeEnding();
    const QScopedValueRollback observed(m_observed, std::optional<EventFlags>());
    Event passing = event;
    if (decide(passing, location) == EventTapDecision::consume ||
        (eventMaskBit(passing.type) & supportedEvents) == 0)
        return;
    if (passing.type == EventType::keyDown)
        onPost(static_cast<std::uint32_t>(passing.keycode),
               hotKeyModifiers(DeliveredModifiers::ofPosted(passing.flags, m_commandKeys())));
    m_source.press(passing);
}

void XInputEventTaps::insert(XInputEventTap* tap, Placement placement)
{
    Taps taps = *m_taps;
    taps.insert(placement == Placement::headInsert ? taps.begin() : taps.end(), tap);
    m_taps = std::make_shared<const Taps>(std::move(taps));
}

void XInputEventTaps::remove(XInputEventTap* tap)
{
    Taps taps = *m_taps;
    std::erase(taps, tap);
    m_taps = std::make_shared<const Taps>(std::move(taps));
    std::erase(m_timedOut, tap);
    update();
}

bool XInputEventTaps::update()
{
    auto need = TapSource::Need::nothing;
    EventMask mask = 0;
    for (const XInputEventTap* tap : *m_taps) {
        if (!tap->wantsEvents())
            continue;
        need = std::max(need, needOf(tap->options()));
        mask |= tap->mask();
    }
    return m_source.setNeed(need, mask) == TapSource::Result::there;
}

std::optional<EventFlags> XInputEventTaps::deliveredFlags(const Event& event) const
{
    if (!m_observed)
        return std::nullopt;
    return m_delivered.of({*m_observed, event.flags}, m_commandKeys());
}

EventTapDecision XInputEventTaps::decideKey(Event& event)
{
    const QScopedValueRollback observed(m_observed, std::optional(event.flags));
    const bool isModifier = event.type == EventType::flagsChanged;
    const std::int64_t key = event.keycode;
    const bool isReleased = (std::exchange(m_lastFlags, event.flags) & ~event.flags & chordFlags) != 0;
    const EventTapDecision decision = decide(event, Location::hid);
    if (!isModifier)
        return decision;
    const bool isConsumed = decision == EventTapDecision::consume;
    const bool wasKeptBack = m_keptBack.erase(key) > 0;
    if (isConsumed && !isReleased)
        m_keptBack.insert(key);
    else if (!wasKeptBack || !isReleased) // a release takes place even when it is consumed
        m_delivered.noteModifier(isConsumed ? DeliveredModifiers::Rewriting{}
                                            : DeliveredModifiers::Rewriting{*m_observed, event.flags});
    return decision;
}

EventTapDecision XInputEventTaps::decide(Event& event, Location from)
{
    const auto taps = m_taps;
    for (XInputEventTap* tap : *taps) {
        const bool isStillThere = std::ranges::find(*m_taps, tap) != m_taps->end();
        if (!isStillThere || !tap->isAskedFor(event.type, from))
            continue;
        if (tap->decide(event) == EventTapDecision::consume)
            return EventTapDecision::consume;
    }
    return EventTapDecision::pass;
}

void XInputEventTaps::hear(const Event& event)
{
    const auto taps = m_taps;
    for (XInputEventTap* tap : *taps) {
        const bool isStillThere = std::ranges::find(*m_taps, tap) != m_taps->end();
        if (isStillThere && tap->options() == Options::listenOnly &&
            tap->isAskedFor(event.type, Location::hid))
            tap->hear(event);
    }
}

void XInputEventTaps::threadEnded(TapThread::Ending ending)
{
    for (XInputEventTap* tap : *m_taps) {
        if (!tap->isMarkedEnabled() || tap->options() == Options::listenOnly)
            continue;
        tap->disable();
        if (ending == TapThread::Ending::timedOut && std::ranges::find(m_timedOut, tap) == m_timedOut.end())
            m_timedOut.push_back(tap);
    }
    if (!m_timedOut.empty())
        QMetaObject::invokeMethod(
            &m_context, [this] { tellOfTimeout(); }, Qt::QueuedConnection);
    if (!update())
        listenerEnded();
}

void XInputEventTaps::listenerEnded()
{
    for (XInputEventTap* tap : *m_taps)
        tap->disable();
    update();
}

void XInputEventTaps::tellOfTimeout()
{
    while (!m_timedOut.empty()) {
        XInputEventTap* tap = m_timedOut.front();
        m_timedOut.erase(m_timedOut.begin());
        tap->tellOfTimeout();
    }
}

} // namespace orvane

#include "PlatformLinux/EventTap/XInputEventTaps.h"

#include "Platform/HotKeys.h"
#include "PlatformLinux/EventTap/TapThread.h"
#include "PlatformLinux/EventTap/XInputEventTap.h"

#include <algorithm>
#include <chrono>
#include <csignal>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// What a tap can be asked for. Mouse types would be further bits, and further devices for the thread to
/// grab.
constexpr EventMask supportedEvents =
    eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp) | eventMaskBit(EventType::flagsChanged);

/// Events are posted in bursts; a connection for each would be waste.
constexpr auto postingIdleTime = 2s;

std::uint32_t hotKeyModifiers(EventFlags flags, CommandKeys command)
{
    const bool isCommand = (flags & eventFlag::command) != 0;
    std::uint32_t modifiers = 0;
    if ((flags & eventFlag::shift) != 0 || (isCommand && command == CommandKeys::controlShift))
        modifiers |= carbonModifier::shift;
    if ((flags & eventFlag::control) != 0 || isCommand)
        modifiers |= carbonModifier::control;
    if ((flags & eventFlag::option) != 0)
        modifiers |= carbonModifier::option;
    return modifiers;
}

} // namespace

void XInputEventTaps::NotifierDeleter::operator()(QSocketNotifier* notifier) const
{
    notifier->setEnabled(false);
    notifier->deleteLater(); // this may be its own signal
}

XInputEventTaps::XInputEventTaps(LogSink& log, std::function<CommandKeys()> commandKeys)
    : m_log(log), m_commandKeys(std::move(commandKeys))
{
    // The main thread presses keys, and the guardian or the server may have cut the connection just before:
    // that is an error to be noticed, and by default the end of the process.
    std::signal(SIGPIPE, SIG_IGN);
    m_postingEnd.setSingleShot(true);
    m_postingEnd.setInterval(postingIdleTime);
    QObject::connect(&m_postingEnd, &QTimer::timeout, &m_context, [this] {
        if (m_thread && m_thread->purpose() == TapThread::Purpose::posting)
            stopThread();
    });
}

XInputEventTaps::~XInputEventTaps()
{
    stopThread();
}

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
    // Whether the server allows it shows when it is tried; if nobody enables the tap, it ends with this turn.
    if (!startThread())
        return nullptr;
    if (!isWanted())
        stopThreadSoon();
    auto tap = std::make_unique<XInputEventTap>(*this, location, options, eventsOfInterest & supportedEvents,
                                                callback, userInfo);
    insert(tap.get(), placement);
    return tap;
}

void XInputEventTaps::post(Location location, const Event& event)
{
    noticeEnding();
    const auto passed = walk(event, location);
    if (!passed || ((eventMaskBit(passed->type) & supportedEvents) == 0))
        return;
    if (passed->type == EventType::keyDown)
        onPost(static_cast<std::uint32_t>(passed->keycode), hotKeyModifiers(passed->flags, m_commandKeys()));
    if (m_thread && m_thread->post(*passed)) {
        m_postingEnd.start();
        return;
    }
    noticeEnding();
    if (startPosting())
        m_thread->post(*passed);
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

bool XInputEventTaps::isWanted() const
{
    return std::ranges::any_of(*m_taps, [](const XInputEventTap* tap) { return tap->wantsEvents(); });
}

EventMask XInputEventTaps::wantedMask() const
{
    EventMask mask = 0;
    for (const XInputEventTap* tap : *m_taps) {
        if (tap->wantsEvents())
            mask |= tap->mask();
    }
    return mask;
}

bool XInputEventTaps::update()
{
    if (!isWanted()) {
        if (m_thread)
            m_thread->setMask(0);
        stopThreadSoon();
        return true;
    }
    if (!startThread())
        return false;
    m_thread->setMask(wantedMask());
    return true;
}

bool XInputEventTaps::startThread()
{
    noticeEnding();
    if (m_thread && m_thread->purpose() == TapThread::Purpose::tap)
        return true;
    stopThread(); // one that posts: what was posted goes out before
    return makeThread(true);
}

bool XInputEventTaps::startPosting()
{
    if (!m_thread && !makeThread(false))
        return false;
    m_postingEnd.start();
    return true;
}

bool XInputEventTaps::makeThread(bool forTap)
{
    const auto purpose = forTap ? TapThread::Purpose::tap : TapThread::Purpose::posting;
    auto thread = std::make_unique<TapThread>(purpose, m_log, m_commandKeys);
    if (thread->ending() == TapThread::Ending::failed)
        return false;
    m_log.forget();
    m_thread = std::move(thread);
    m_notifier.reset(new QSocketNotifier(m_thread->mailbox().descriptor(), QSocketNotifier::Read));
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context, [this] { deliver(); });
    return true;
}

void XInputEventTaps::stopThread()
{
    m_postingEnd.stop();
    m_notifier.reset();
    m_thread.reset();
}

/// A tap is often taken away to be made anew at once: the keyboards stay ours between the two, so no key that
/// is held then is torn in half.
void XInputEventTaps::stopThreadSoon()
{
    if (m_willStop || !m_thread || m_thread->purpose() != TapThread::Purpose::tap)
        return;
    m_willStop = true;
    QMetaObject::invokeMethod(
        &m_context,
        [this] {
            m_willStop = false;
            if (m_thread && m_thread->purpose() == TapThread::Purpose::tap && !isWanted())
                stopThread();
        },
        Qt::QueuedConnection);
}

void XInputEventTaps::noticeEnding()
{
    if (!m_thread || m_thread->ending() == TapThread::Ending::none)
        return;
    const TapThread::Ending ending = m_thread->ending();
    stopThread();
    for (XInputEventTap* tap : *m_taps) {
        if (!tap->isMarkedEnabled())
            continue;
        tap->disableByTimeout();
        if (ending == TapThread::Ending::timedOut && std::ranges::find(m_timedOut, tap) == m_timedOut.end())
            m_timedOut.push_back(tap);
    }
    if (!m_timedOut.empty())
        QMetaObject::invokeMethod(
            &m_context, [this] { tellOfTimeout(); }, Qt::QueuedConnection);
}

void XInputEventTaps::tellOfTimeout()
{
    while (!m_timedOut.empty()) {
        XInputEventTap* tap = m_timedOut.front();
        m_timedOut.erase(m_timedOut.begin());
        tap->tellOfTimeout();
    }
}

void XInputEventTaps::deliver()
{
    if (!m_thread)
        return;
    if (const auto request = m_thread->mailbox().take()) {
        const auto passed = walk(request->event, Location::hid);
        // A tap's callback may have ended the thread that waited.
        if (m_thread)
            m_thread->mailbox().answer(request->ticket, passed);
    }
    noticeEnding();
}

std::optional<Event> XInputEventTaps::walk(Event event, Location from)
{
    const auto taps = m_taps;
    for (XInputEventTap* tap : *taps) {
        const bool isStillThere = std::ranges::find(*m_taps, tap) != m_taps->end();
        if (!isStillThere || !tap->isAskedFor(event.type, from))
            continue;
        const auto passed = tap->pass(event);
        if (!passed)
            return std::nullopt;
        event = *passed;
    }
    return event;
}

} // namespace orvane

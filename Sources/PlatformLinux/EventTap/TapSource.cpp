#include "PlatformLinux/EventTap/TapSource.h"

#include "PlatformLinux/EventTap/KeyListener.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <utility>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// Events are posted in bursts, which share one connection.
constexpr auto postingIdleTime = 2s;
/// The pause after an attempt to reach a server that didn't answer. Shorter than the time after which a
/// disabled tap is enabled again.
constexpr auto pauseAfterLateness = 1s;

} // namespace

void TapSource::NotifierDeleter::operator()(QSocketNotifier* notifier) const
{
    notifier->setEnabled(false);
    notifier->deleteLater(); // the call may come from its own signal
}

TapSource::TapSource(LogSink& log, std::function<CommandKeys()> commandKeys, Handlers handlers)
    : m_log(log), m_commandKeys(std::move(commandKeys)), m_handlers(std::move(handlers))
{
    // The main thread presses keys, and the guardian or the server may have ended the connection just before.
    // That is an error to be noticed, but by default it would end the process.
    std::signal(SIGPIPE, SIG_IGN);
    m_postingEnd.setSingleShot(true);
    m_postingEnd.setInterval(postingIdleTime);
    QObject::connect(&m_postingEnd, &QTimer::timeout, &m_context, [this] {
        if (m_thread && m_thread->purpose() == TapThread::Purpose::posting)
            stopThread();
    });
}

TapSource::~TapSource()
{
    stopThread();
}

TapSource::Result TapSource::setNeed(Need need, EventMask mask)
{
    m_need = need;
    m_mask = mask;
    const Result result = have(need);
    if (isTapping())
        m_thread->setMask(mask);
    tidySoon();
    return result;
}

TapSource::Result TapSource::tryNeed(Need need)
{
    const Result result = have(need);
    tidySoon();
    return result;
}

TapSource::Result TapSource::have(Need need)
{
    // The thread serves those that listen too, until it is stopped.
    if (need == Need::nothing || isTapping())
        return Result::there;
    if (need == Need::listening)
        return startListener();
    stopThread(); // a thread for posting: what was posted goes out before it ends
    const Result result = startThread(TapThread::Purpose::tap);
    if (result != Result::there)
        return result;
    if (m_listener && !m_listenerIsEnding) {
        m_listenerIsEnding = true;
        m_listener->stopHearing();
    }
    return Result::there;
}

bool TapSource::isTooSoon() const
{
    return Deadline::clock::now() < m_nextAttempt;
}

TapSource::Result TapSource::noteLate()
{
    m_nextAttempt = within(pauseAfterLateness);
    return Result::late;
}

TapSource::Result TapSource::startThread(TapThread::Purpose purpose)
{
    const bool isTap = purpose == TapThread::Purpose::tap;
    if (isTooSoon() || (isTap && !m_grabPause.isOver(GrabPause::Clock::now())))
        return Result::late;
    auto thread = std::make_unique<TapThread>(purpose, m_log, m_faked, m_commandKeys);
    if (thread->ending() == TapThread::Ending::failed)
        return Result::refused;
    if (thread->ending() == TapThread::Ending::taken) {
        m_grabPause.noteTaken(GrabPause::Clock::now());
        return Result::late;
    }
    if (thread->ending() == TapThread::Ending::late)
        return noteLate();
    m_log.forget();
    m_thread = std::move(thread);
    if (isTap) {
        m_grabPause.noteFree();
        m_shortTurns.emplace();
        m_handlers.keysWait(m_thread->number());
    }
    m_notifier.reset(new QSocketNotifier(m_thread->mailbox().descriptor(), QSocketNotifier::Read));
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context, [this] { answerNext(); });
    return Result::there;
}

void TapSource::stopThread(std::chrono::milliseconds patience)
{
    m_postingEnd.stop();
    m_notifier.reset();
    m_shortTurns.reset();
    if (!m_thread)
        return;
    // The member is cleared before the thread is stopped: code that is called meanwhile finds no thread.
    const auto thread = std::move(m_thread);
    const std::vector<Event> unseen = thread->stop(patience);
    if (thread->purpose() == TapThread::Purpose::tap)
        m_handlers.keysPass();
    m_unseen.insert(m_unseen.end(), unseen.begin(), unseen.end());
}

TapSource::Result TapSource::startListener()
{
    finishListener();
    if (m_listener)
        return Result::there;
    if (isTooSoon())
        return Result::late;
    const auto lost = [this] {
        m_listener.reset();
        m_handlers.listenerEnded();
    };
    auto begun = KeyListener::begin(m_log, m_faked,
                                    {.hear = [this](const Event& event) { hear(event); }, .lost = lost});
    if (!begun.listener)
        return begun.isLate ? noteLate() : Result::refused;
    m_listener = std::move(begun.listener);
    m_log.forget();
    return Result::there;
}

/// Reports the keys from before the grab ahead of those that the thread offers.
void TapSource::finishListener()
{
    if (!std::exchange(m_listenerIsEnding, false))
        return;
    const auto listener = std::exchange(m_listener, nullptr);
    if (listener)
        listener->finish();
}

/// A tap is often removed to be made anew at once: its source stays between the two, so a key that is held
/// then isn't interrupted.
void TapSource::tidySoon()
{
    if (std::exchange(m_willTidy, true))
        return;
    QMetaObject::invokeMethod(
        &m_context, [this] { tidy(); }, Qt::QueuedConnection);
}

void TapSource::tidy()
{
    m_willTidy = false;
    finishListener();
    if (isTapping() && m_need != Need::filtering) {
        // It begins to listen before the keyboards are free, so it misses no key. A server that is late is
        // waited for once and not for both.
        const auto begun = std::chrono::steady_clock::now();
        const bool isHeard = m_need != Need::listening || startListener() == Result::there;
        const auto waited =
            std::chrono::ceil<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begun);
        stopThread(std::max(TapThread::longestWait - waited, 0ms));
        if (!isHeard)
            m_handlers.listenerEnded();
    }
    if (m_need == Need::nothing)
        m_listener.reset();
    tellUnseen();
}

void TapSource::noticeEnding()
{
    if (!m_thread || m_thread->ending() == TapThread::Ending::none)
        return;
    const TapThread::Ending ending = m_thread->ending();
    stopThread();
    tidySoon(); // this reports what was unseen
    m_handlers.threadEnded(ending);
}

void TapSource::answerNext()
{
    finishListener();
    // A tap's callback may end the thread that waits.
    while (m_thread) {
        auto request = m_thread->mailbox().take();
        if (!request)
            break;
        const EventTapDecision decision = m_handlers.decide(request->event);
        if (m_thread)
            m_thread->mailbox().answer(request->ticket, request->event, decision);
    }
    noticeEnding();
}

void TapSource::hear(const Event& event)
{
    tellUnseen();
    m_handlers.hear(event);
}

void TapSource::tellUnseen()
{
    for (const Event& event : std::exchange(m_unseen, {}))
        m_handlers.hear(event);
}

void TapSource::press(const Event& event)
{
    if (m_thread && m_thread->post(event)) {
        m_postingEnd.start();
        return;
    }
    noticeEnding();
    if (!m_thread && startThread(TapThread::Purpose::posting) != Result::there)
        return;
    m_postingEnd.start();
    (void)m_thread->post(event); // if it has ended since, the server is gone, and no program gets any key
}

} // namespace orvane

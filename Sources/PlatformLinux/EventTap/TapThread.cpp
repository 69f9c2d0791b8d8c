#include "PlatformLinux/EventTap/TapThread.h"

#include "PlatformLinux/Common/SignalFreeThread.h"
#include "PlatformLinux/EventTap/ShortTurns.h"
#include "PlatformLinux/EventTap/XtestLayout.h"

#include <csignal>
#include <string>
#include <utility>

#include <poll.h>
#include <unistd.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// The time that the X server may take to open the tap's connection; the main thread ends the wait before.
constexpr auto longestOpening = 2s;

} // namespace

TapThread::TapThread(Purpose purpose, LogSink& log, FakedMotions& faked,
                     std::function<CommandKeys()> commandKeys)
    : m_purpose(purpose),
      m_log(log),
      m_faked(faked),
      m_commandKeys(std::move(commandKeys)),
      m_guardianProgram(GuardianLink::program())
{
    constexpr std::size_t usualPosts = 64;
    m_posts.reserve(usualPosts);
    m_postsAtHand.reserve(usualPosts);
    std::promise<void> begun;
    auto answer = begun.get_future();
    std::promise<void> ended;
    m_ended = ended.get_future();
    m_thread = startSignalFreeThread([this, begins = std::move(begun), ends = std::move(ended)]() mutable {
        run(std::move(begins), std::move(ends));
    });
    if (answer.wait_for(longestWait) == std::future_status::ready)
        return;
    m_givesUp.raise();
    finish(longestWait);
    m_ending = Ending::late;
}

TapThread::~TapThread()
{
    stop();
}

std::vector<Event> TapThread::stop(std::chrono::milliseconds patience)
{
    if (m_thread.joinable())
        finish(patience);
    return std::exchange(m_unseen, {});
}

void TapThread::finish(std::chrono::milliseconds patience)
{
    m_mailbox.close();
    m_isStopping = true;
    m_wake.raise();
    if (m_ended.wait_for(patience) != std::future_status::ready)
        m_givesUp.raise();
    m_thread.join();
}

bool TapThread::post(const Event& event)
{
    {
        const std::scoped_lock lock(m_postsMutex);
        if (!m_takesPosts)
            return false;
        m_posts.push_back(event);
    }
    m_wake.raise();
    return true;
}

void TapThread::run(std::promise<void> begun, std::promise<void> ended)
{
    const ShortTurns shortTurns;
    m_number = ::gettid();
    // As a real-time thread it gets this signal itself when it takes too much: on one processor no other
    // thread could run to handle it.
    sigset_t tooMuch;
    sigemptyset(&tooMuch);
    sigaddset(&tooMuch, SIGXCPU);
    ::pthread_sigmask(SIG_UNBLOCK, &tooMuch, nullptr);
    const bool hasBegun = begin();
    if (hasBegun) {
        begun.set_value();
        work();
    }
    end();
    m_ending = m_reason;
    if (hasBegun)
        m_mailbox.ring();
    else
        begun.set_value();
    ended.set_value();
}

bool TapThread::begin()
{
    auto opened = InputConnection::open(within(longestOpening), m_givesUp.descriptor());
    if (!opened.connection) {
        m_reason = opened.isLate ? Ending::late : Ending::failed;
        log(LogLevel::error, "Keyboard events can't be reached: " + opened.problem + ".");
        return false;
    }
    const std::string problem = bringXtestIntoTheUsersLayout(*opened.connection);
    if (!problem.empty()) {
        m_reason = opened.connection->synchronize() == XOutcome::late ? Ending::late : Ending::failed;
        log(LogLevel::error,
            "Keys can't be typed for the user, since they could be the wrong ones: the layout "
            "of the keyboards can't be copied, because " +
                problem + ".");
        return false;
    }
    m_connection = std::move(opened.connection);
    m_injector = std::make_unique<KeyInjector>(KeyInjector::Parts{.connection = *m_connection,
                                                                  .mailbox = m_mailbox,
                                                                  .faked = m_faked,
                                                                  .mask = m_mask,
                                                                  .commandKeys = m_commandKeys},
                                               m_purpose == Purpose::tap ? InjectorModel::Devices::grabbed
                                                                         : InjectorModel::Devices::free);
    const auto say = [this](LogLevel level, const std::string& sentence) { log(level, sentence); };
    m_reader = std::make_unique<TapEventReader>(*m_connection, *m_injector, say);
    if (m_purpose == Purpose::posting)
        return true;
    m_guardian = std::make_unique<TapGuardian>(*m_connection, m_guardianProgram, say);
    if (!m_reader->grabKeyboards(m_faked, *m_guardian)) {
        m_reason = m_connection->synchronize() == XOutcome::late ? Ending::late
                   : m_reader->keyboardsAreTaken()               ? Ending::taken
                                                                 : Ending::failed;
        return false;
    }
    m_guardian->start();
    return true;
}

void TapThread::work()
{
    while (m_reason == Ending::none) {
        const bool hasRead = m_reader->readNext();
        injectPosts();
        noticeLateness();
        if (hasRead && m_injector->isAwaited() && m_reason == Ending::none && !m_isStopping) {
            wait(); // at once, since the main thread may need this processor; the descriptor announces more
            continue;
        }
        if (hasRead)
            continue;
        if (m_connection->link().isLost()) {
            noticeLoss();
            return;
        }
        if (m_isStopping)
            return;
        wait();
    }
}

void TapThread::wait()
{
    // While an answer is awaited nothing was sent to the server here, and a flush would delay the main
    // thread's.
    if (!m_injector->isAwaited())
        m_connection->link().flush();
    pollfd waits[] = {{m_connection->link().descriptor(), POLLIN, 0},
                      {m_wake.descriptor(), POLLIN, 0},
                      {m_guardian ? m_guardian->descriptor() : -1, 0, 0}};
    // An answer doesn't wake this thread, so it looks once whether there was one in time.
    constexpr auto limit = static_cast<int>(std::chrono::milliseconds(KeyInjector::patience).count());
    const int timeout = m_injector->isAwaited() ? limit : m_guardian ? m_guardian->timeout() : -1;
    if (::poll(waits, std::size(waits), timeout) == 0)
        m_injector->awaitAnswer();
    if (waits[1].revents != 0)
        m_wake.clear();
    if (m_guardian)
        m_guardian->watch(waits[2].revents);
}

/// Events taken so far go on unchanged, then the keyboards are free.
void TapThread::end()
{
    {
        const std::scoped_lock lock(m_postsMutex);
        m_takesPosts = false;
    }
    if (!m_connection)
        return;
    m_injector->awaitAnswer();
    noticeLateness();
    m_injector->askNobody();
    m_reader->letGo();
    while (m_reader->readNext()) // events from before the keyboards were free
        ;
    injectPosts();
    m_reader->restoreHeldKeys(m_injector->releaseAll());
    const XOutcome outcome = m_connection->synchronize();
    if (m_connection->link().isLost() && m_reason == Ending::none)
        noticeLoss(); // a dying server closes one connection after the other, and the main thread's was first
    if (outcome == XOutcome::late && m_guardian)
        m_guardian->abandon();
    m_unseen = m_injector->takeUnseen();
    m_guardian.reset();
    m_reader.reset();
    m_injector.reset();
    m_connection.reset();
}

void TapThread::injectPosts()
{
    {
        const std::scoped_lock lock(m_postsMutex);
        m_postsAtHand.swap(m_posts);
    }
    for (const Event& event : m_postsAtHand)
        m_injector->post(event);
    m_postsAtHand.clear();
}

void TapThread::log(LogLevel level, const std::string& sentence)
{
    m_log.write(level, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("EventTap"),
                QString::fromStdString(sentence));
}

void TapThread::noticeLateness()
{
    if (!m_injector->isLate() || m_reason != Ending::none)
        return;
    if (m_guardian && m_guardian->hasFreed()) {
        noticeStandstill();
        return;
    }
    log(LogLevel::notice, "A key event waited for more than a second for the main thread, so the event tap "
                          "was disabled and the keyboards are free.");
    m_reason = Ending::timedOut;
}

void TapThread::noticeLoss()
{
    if (m_guardian && m_guardian->hasFreed()) {
        noticeStandstill();
        return;
    }
    log(LogLevel::error, "The X server is gone; keyboard events can't be tapped any more.");
    m_reason = Ending::serverLost;
}

void TapThread::noticeStandstill()
{
    log(LogLevel::notice, "The program stood still while keys were typed, so its guardian has disabled the "
                          "event tap and freed the keyboards.");
    m_reason = Ending::timedOut;
    m_injector->askNobody();
}

} // namespace orvane

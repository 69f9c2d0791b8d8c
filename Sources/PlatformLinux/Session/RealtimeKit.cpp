#include "PlatformLinux/Session/RealtimeKit.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>

#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// Sound servers ask for more; a key may wait for those.
constexpr unsigned wantedPriority = 2;
constexpr int wantedNiceLevel = -11;
/// The time for all questions of one job: the program doesn't end before its jobs.
constexpr auto longestWait = 1s;

/// The thread that is to become a usual one when it takes too much.
std::atomic<pid_t> realtimeThread{0};

extern "C" void becomeUsual(int)
{
    const sched_param usual{};
    ::sched_setscheduler(realtimeThread.load(), SCHED_OTHER, &usual);
}

/// The system bus's service, for one job; each job has a connection of its own.
class Service {
public:
    /// `isWanted` is asked before each call.
    explicit Service(std::function<bool()> isWanted)
        : m_isWanted(std::move(isWanted)),
          m_bus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, nextName()))
    {
    }
    ~Service() { QDBusConnection::disconnectFromBus(m_bus.name()); }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    [[nodiscard]] std::optional<qint64> limit(const char* name)
    {
        QDBusMessage question = QDBusMessage::createMethodCall(
            service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        question << QStringLiteral("org.freedesktop.RealtimeKit1") << QLatin1String(name);
        const auto answer = call(question);
        if (!answer)
            return std::nullopt;
        const QDBusReply<QDBusVariant> reply = *answer;
        if (!reply.isValid())
            return std::nullopt;
        bool isNumber = false;
        const qint64 value = reply.value().variant().toLongLong(&isNumber);
        return isNumber ? std::optional(value) : std::nullopt;
    }
    /// False if the service was not asked or has refused; one that doesn't answer may have done it.
    template <typename Level>
    [[nodiscard]] bool make(const char* method, pid_t thread, Level level)
    {
        QDBusMessage order = QDBusMessage::createMethodCall(
            service, path, QStringLiteral("org.freedesktop.RealtimeKit1"), QLatin1String(method));
        order << static_cast<qulonglong>(thread) << level;
        const auto answer = call(order);
        return answer && (answer->type() == QDBusMessage::ReplyMessage ||
                          QDBusError(*answer).type() == QDBusError::NoReply);
    }

private:
    static QString nextName()
    {
        static std::atomic<unsigned> number{0};
        return QStringLiteral("orvane-realtime-%1").arg(++number);
    }

    /// Absent when nobody wants it any more or the time is over.
    [[nodiscard]] std::optional<QDBusMessage> call(const QDBusMessage& message)
    {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(m_end - std::chrono::steady_clock::now());
        if (left <= 0ms || !m_isWanted())
            return std::nullopt;
        return m_bus.call(message, QDBus::Block, static_cast<int>(left.count()));
    }

    const QString service = QStringLiteral("org.freedesktop.RealtimeKit1");
    const QString path = QStringLiteral("/org/freedesktop/RealtimeKit1");
    const std::function<bool()> m_isWanted;
    const std::chrono::steady_clock::time_point m_end = std::chrono::steady_clock::now() + longestWait;
    QDBusConnection m_bus;
};

/// The service demands a limit. The kernel sends the signal at the lower one and ends the process at the
/// upper one; both count only what a real-time thread takes without a wait.
bool limitRealtime(qint64 longestMicroseconds)
{
    if (longestMicroseconds <= 0)
        return false;
    struct sigaction action {};
    action.sa_handler = becomeUsual;
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGXCPU, &action, nullptr);
    rlimit present{};
    if (::getrlimit(RLIMIT_RTTIME, &present) != 0)
        return false;
    rlimit limit{};
    limit.rlim_max = std::min(present.rlim_max, static_cast<rlim_t>(longestMicroseconds));
    limit.rlim_cur = std::min(present.rlim_cur, limit.rlim_max / 2);
    return ::setrlimit(RLIMIT_RTTIME, &limit) == 0;
}

} // namespace

/// The state of the main thread, and which of the jobs on the pool may still act: the newest, unless lower()
/// was called after it. Any thread.
class RealtimeKit::Raising {
public:
    Raising() : m_thread(::gettid()), m_formerLevel(::getpriority(PRIO_PROCESS, static_cast<id_t>(m_thread)))
    {
    }

    [[nodiscard]] pid_t thread() const { return m_thread; }
    /// Returns the number of a new job; those before it give up.
    [[nodiscard]] unsigned begin()
    {
        const std::scoped_lock lock(m_mutex);
        m_isWanted = true;
        return ++m_job;
    }
    [[nodiscard]] bool isWanted(unsigned job) const
    {
        const std::scoped_lock lock(m_mutex);
        return m_isWanted && job == m_job;
    }
    /// Names the thread to be limited. False when the job has to give up.
    [[nodiscard]] bool setRealtimeThread(unsigned job, pid_t thread) const
    {
        const std::scoped_lock lock(m_mutex);
        if (!m_isWanted || job != m_job)
            return false;
        realtimeThread = thread;
        return true;
    }
    /// To be called when the service may have raised the thread, by whichever job: one that is raised for a
    /// newer job stays so.
    void noteRaised()
    {
        const std::scoped_lock lock(m_mutex);
        m_isRaised = true;
        if (!m_isWanted)
            makeUsual();
    }
    void lower()
    {
        const std::scoped_lock lock(m_mutex);
        m_isWanted = false;
        if (m_isRaised)
            makeUsual();
    }

private:
    void makeUsual()
    {
        ::setpriority(PRIO_PROCESS, static_cast<id_t>(m_thread), m_formerLevel);
        m_isRaised = false;
    }

    const pid_t m_thread;
    const int m_formerLevel;
    mutable std::mutex m_mutex;
    unsigned m_job = 0;
    /// False while no key waits.
    bool m_isWanted = false;
    bool m_isRaised = false;
};

RealtimeKit::RealtimeKit() : m_raising(std::make_shared<Raising>()) {}

RealtimeKit::~RealtimeKit()
{
    lower();
}

void RealtimeKit::raise(pid_t tapThread)
{
    QThreadPool::globalInstance()->start([raising = m_raising, job = m_raising->begin(), tapThread] {
        if (!raising->isWanted(job))
            return;
        Service service([&] { return raising->isWanted(job); });
        const auto longest = service.limit("RTTimeUSecMax");
        const auto highest = service.limit("MaxRealtimePriority");
        const auto lowestNice = service.limit("MinNiceLevel");
        if (!longest || !highest || !lowestNice || !limitRealtime(*longest) ||
            !raising->setRealtimeThread(job, tapThread))
            return;
        const auto priority = std::min(wantedPriority, static_cast<unsigned>(std::max<qint64>(*highest, 1)));
        (void)service.make("MakeThreadRealtime", tapThread, priority);
        if (service.make("MakeThreadHighPriority", raising->thread(),
                         std::max(wantedNiceLevel, static_cast<int>(*lowestNice))))
            raising->noteRaised();
    });
}

void RealtimeKit::lower()
{
    m_raising->lower();
}

} // namespace orvane

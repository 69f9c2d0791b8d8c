#include "PlatformLinux/Session/RealtimeKit.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <mutex>
#include <optional>

#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

namespace orvane {

namespace {

/// Sound servers ask for more; a key may wait for those.
constexpr unsigned wantedPriority = 2;
constexpr int wantedNiceLevel = -11;
constexpr int longestWaitMs = 2000;

/// The thread that is to become a usual one when it takes too much.
std::atomic<pid_t> realtimeThread{0};

extern "C" void becomeUsual(int)
{
    const sched_param usual{};
    ::sched_setscheduler(realtimeThread.load(), SCHED_OTHER, &usual);
}

class Service {
public:
    Service()
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("orvane-realtime")))
    {
    }
    ~Service() { QDBusConnection::disconnectFromBus(QStringLiteral("orvane-realtime")); }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    [[nodiscard]] std::optional<qint64> limit(const char* name)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        call << QStringLiteral("org.freedesktop.RealtimeKit1") << QLatin1String(name);
        const QDBusReply<QDBusVariant> reply = m_bus.call(call, QDBus::Block, longestWaitMs);
        if (!reply.isValid())
            return std::nullopt;
        bool isNumber = false;
        const qint64 value = reply.value().variant().toLongLong(&isNumber);
        return isNumber ? std::optional(value) : std::nullopt;
    }
    template <typename Level>
    bool make(const char* method, pid_t thread, Level level)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            service, path, QStringLiteral("org.freedesktop.RealtimeKit1"), QLatin1String(method));
        call << static_cast<qulonglong>(thread) << level;
        return m_bus.call(call, QDBus::Block, longestWaitMs).type() == QDBusMessage::ReplyMessage;
    }

private:
    const QString service = QStringLiteral("org.freedesktop.RealtimeKit1");
    const QString path = QStringLiteral("/org/freedesktop/RealtimeKit1");
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

void makeUsual(pid_t thread)
{
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(thread), 0);
}

} // namespace

struct RealtimeKit::Raising {
    std::mutex mutex;
    /// False once the keys don't wait any more.
    bool isWanted = true;
    bool isRaised = false;
};

RealtimeKit::RealtimeKit() : m_mainThread(::gettid()) {}

RealtimeKit::~RealtimeKit()
{
    lower();
}

void RealtimeKit::raise(pid_t tapThread)
{
    lower();
    m_raising = std::make_shared<Raising>();
    QThreadPool::globalInstance()->start([raising = m_raising, tapThread, main = m_mainThread] {
        Service service;
        const auto longest = service.limit("RTTimeUSecMax");
        const auto highest = service.limit("MaxRealtimePriority");
        const auto lowestNice = service.limit("MinNiceLevel");
        if (!longest || !highest || !lowestNice || !limitRealtime(*longest))
            return;
        realtimeThread = tapThread;
        const auto priority = std::min(wantedPriority, static_cast<unsigned>(std::max<qint64>(*highest, 1)));
        service.make("MakeThreadRealtime", tapThread, priority);
        const bool isMade = service.make("MakeThreadHighPriority", main,
                                         std::max(wantedNiceLevel, static_cast<int>(*lowestNice)));
        const std::scoped_lock lock(raising->mutex);
        raising->isRaised = isMade && raising->isWanted;
        if (isMade && !raising->isWanted)
            makeUsual(main);
    });
}

void RealtimeKit::lower()
{
    const auto raising = std::exchange(m_raising, nullptr);
    if (!raising)
        return;
    const std::scoped_lock lock(raising->mutex);
    raising->isWanted = false;
    if (raising->isRaised)
        makeUsual(m_mainThread);
}

} // namespace orvane

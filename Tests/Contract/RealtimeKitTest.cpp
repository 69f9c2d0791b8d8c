// The requests to RealtimeKit, with a stand-in on the private system bus that grants them as the real one
// does.
#include "PlatformLinux/Session/RealtimeKit.h"
#include "Support/Eventually.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThreadPool>

#include <atomic>
#include <cerrno>
#include <functional>
#include <thread>

#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

constexpr qint64 longestMicroseconds = 200000;

class StandIn : public QDBusVirtualObject {
public:
    StandIn()
    {
        EXPECT_TRUE(m_bus.registerVirtualObject(QStringLiteral("/org/freedesktop/RealtimeKit1"), this));
        EXPECT_TRUE(m_bus.registerService(QStringLiteral("org.freedesktop.RealtimeKit1")));
    }
    ~StandIn() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        const auto arguments = message.arguments();
        onCall();
        if (message.member() == QStringLiteral("Get"))
            return bus.send(
                message.createReply(QVariant::fromValue(QDBusVariant(property(arguments.at(1).toString())))));
        if (message.member() == QStringLiteral("MakeThreadRealtime") &&
            message.signature() == QStringLiteral("tu")) {
            // The real one refuses as well without such a limit.
            rlimit limit{};
            ::getrlimit(RLIMIT_RTTIME, &limit);
            if (limit.rlim_max > static_cast<rlim_t>(longestMicroseconds))
                return bus.send(message.createErrorReply(QDBusError::AccessDenied, QString()));
            const sched_param parameters{.sched_priority = arguments.at(1).toInt()};
            isAllowed = ::sched_setscheduler(arguments.at(0).toInt(), SCHED_RR | SCHED_RESET_ON_FORK,
                                             &parameters) == 0;
            realtime = arguments.at(0).toInt();
            return bus.send(message.createReply());
        }
        if (message.member() == QStringLiteral("MakeThreadHighPriority") &&
            message.signature() == QStringLiteral("ti")) {
            isAllowed = ::setpriority(PRIO_PROCESS, arguments.at(0).toUInt(), arguments.at(1).toInt()) == 0;
            high = arguments.at(0).toInt();
            niceLevel = arguments.at(1).toInt();
            return bus.send(message.createReply());
        }
        return false;
    }

    std::function<void()> onCall = [] {};
    pid_t realtime = 0;
    pid_t high = 0;
    int niceLevel = 0;
    bool isAllowed = false;

private:
    static QVariant property(const QString& name)
    {
        if (name == QStringLiteral("RTTimeUSecMax"))
            return QVariant::fromValue(longestMicroseconds);
        return name == QStringLiteral("MaxRealtimePriority") ? 20 : -8;
    }

    QDBusConnection m_bus =
        QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("stand-in-for-realtimekit"));
};

/// A thread that waits until it is told to take the processor, and then to end.
class Worker {
public:
    Worker()
        : m_thread([this] {
              m_number = ::gettid();
              while (!m_spins)
                  m_spins.wait(false);
              while (!m_ends)
                  ;
          })
    {
        while (m_number == 0)
            std::this_thread::yield();
    }
    ~Worker()
    {
        m_ends = true;
        spin();
        m_thread.join();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void spin()
    {
        m_spins = true;
        m_spins.notify_all();
    }
    [[nodiscard]] pid_t number() const { return m_number; }
    [[nodiscard]] int policy() const { return ::sched_getscheduler(m_number) & ~SCHED_RESET_ON_FORK; }

private:
    std::atomic<pid_t> m_number{0};
    std::atomic<bool> m_spins{false};
    std::atomic<bool> m_ends{false};
    std::thread m_thread;
};

bool jobsAreDone()
{
    return QThreadPool::globalInstance()->activeThreadCount() == 0;
}

int niceLevel()
{
    return ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()));
}

TEST(RealtimeKitTest, TheThreadThatTakesTheKeysGetsRealTimeAndTheMainThreadAHighPriority)
{
    StandIn service;
    const Worker worker;
    const int before = niceLevel();
    RealtimeKit kit;
    kit.raise(worker.number());
    ASSERT_TRUE(eventually(10s, [&] { return service.high != 0; }));
    EXPECT_EQ(service.realtime, worker.number());
    EXPECT_EQ(service.high, ::gettid());
    EXPECT_EQ(service.niceLevel, -8) << "not more than it grants";
    if (!service.isAllowed)
        GTEST_SKIP() << "the stand-in may not change priorities here";
    EXPECT_EQ(worker.policy(), SCHED_RR);
    EXPECT_EQ(niceLevel(), -8);
    EXPECT_TRUE(eventually(10s, [&] {
        kit.lower();
        return niceLevel() == before;
    }));
}

TEST(RealtimeKitTest, ALevelThatIsNotTheUsualOneComesBackToo)
{
    StandIn service;
    const Worker worker;
    const int before = niceLevel();
    ASSERT_EQ(::setpriority(PRIO_PROCESS, 0, before + 3), 0);
    {
        RealtimeKit kit;
        kit.raise(worker.number());
        EXPECT_TRUE(eventually(10s, [&] { return service.high != 0 && jobsAreDone(); }));
        EXPECT_EQ(niceLevel(), service.isAllowed ? -8 : before + 3);
    }
    EXPECT_EQ(niceLevel(), before + 3);
    ::setpriority(PRIO_PROCESS, 0, before); // refused to some, whose later tests begin with this level then
}

TEST(RealtimeKitTest, ARaisingThatIsNotWantedAnyMoreGivesUp)
{
    StandIn service;
    const Worker worker;
    const int before = niceLevel();
    RealtimeKit kit;
    service.onCall = [&] { kit.lower(); };
    kit.raise(worker.number());
    EXPECT_TRUE(eventually(10s, jobsAreDone));
    EXPECT_EQ(service.realtime, 0);
    EXPECT_EQ(service.high, 0);
    EXPECT_EQ(niceLevel(), before);
}

TEST(RealtimeKitTest, TheLastOfSeveralQuickChangesCounts)
{
    StandIn service;
    const Worker first;
    const Worker second;
    RealtimeKit kit;
    // The first job is in the middle of its questions when the second begins.
    int calls = 0;
    service.onCall = [&] {
        if (++calls != 2)
            return;
        kit.lower();
        kit.raise(second.number());
    };
    kit.raise(first.number());
    EXPECT_TRUE(eventually(10s, [&] { return service.high != 0 && jobsAreDone(); }));
    EXPECT_EQ(service.realtime, second.number());
    if (!service.isAllowed)
        GTEST_SKIP() << "the stand-in may not change priorities here";
    EXPECT_EQ(niceLevel(), -8);
    EXPECT_EQ(first.policy(), SCHED_OTHER);
    EXPECT_EQ(second.policy(), SCHED_RR);
}

TEST(RealtimeKitTest, AThreadThatTakesTooMuchBecomesAUsualOneAndTheProgramGoesOn)
{
    StandIn service;
    Worker worker;
    RealtimeKit kit;
    kit.raise(worker.number());
    ASSERT_TRUE(eventually(10s, [&] { return service.high != 0; }));
    if (worker.policy() != SCHED_RR)
        GTEST_SKIP() << "the stand-in may not change priorities here";
    worker.spin();
    EXPECT_TRUE(eventually(10s, [&] { return worker.policy() == SCHED_OTHER; }));
}

TEST(RealtimeKitTest, WithoutTheServiceNothingChanges)
{
    const Worker worker;
    const int before = niceLevel();
    {
        RealtimeKit kit;
        kit.raise(worker.number());
        kit.lower();
        kit.raise(worker.number());
        ASSERT_TRUE(QThreadPool::globalInstance()->waitForDone(10000));
        EXPECT_EQ(niceLevel(), before);
        EXPECT_EQ(worker.policy(), SCHED_OTHER);
    }
    EXPECT_EQ(niceLevel(), before);
}

} // namespace
} // namespace orvane::tests

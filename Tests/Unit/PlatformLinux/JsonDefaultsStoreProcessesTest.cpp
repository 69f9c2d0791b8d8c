#include "ChildProcess.h"
#include "DefaultsFixture.h"
#include "PlatformLinux/Defaults/DefaultsCodec.h"

#include <csignal>
#include <ctime>
#include <optional>
#include <random>

#include <sys/wait.h>

namespace orvane::tests {

namespace {

const QString left = QStringLiteral("left");
const QString right = QStringLiteral("right");

/// Ends the calling process by SIGKILL after `delay`, wherever it is then.
void killThisProcessAfter(std::chrono::microseconds delay)
{
    sigevent event = {};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGKILL;
    timer_t timer = {};
    itimerspec when = {};
    when.it_value.tv_nsec = std::chrono::nanoseconds(delay).count();
    if (::timer_create(CLOCK_MONOTONIC, &event, &timer) != 0 ||
        ::timer_settime(timer, 0, &when, nullptr) != 0)
        ::_exit(98);
}

} // namespace

class JsonDefaultsStoreProcessesTest : public DefaultsFixture {};

/// On the disk most kills would hit the wait for it; in memory they hit every step equally.
class KilledWriter : public JsonDefaultsStoreProcessesTest,
                     public ::testing::WithParamInterface<const char*> {
protected:
    /// Runs a process that sets pairs of equal numbers and is ended at a random moment, its start included.
    /// Returns how many pairs it reported as set.
    qint64 liveAndDie(std::chrono::microseconds lifetime)
    {
        ChildProcess child([&](int toParent) {
            killThisProcessAfter(lifetime);
            JsonDefaultsStore store(path, log, runLoop);
            for (qint64 number = store.integer(right) + 1;; ++number) {
                store.set(left, number);
                store.set(right, number);
                sendByte(toParent);
            }
            return 0;
        });
        const auto acknowledged = static_cast<qint64>(child.readAll().size());
        const int status = child.wait();
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        return acknowledged;
    }
};

INSTANTIATE_TEST_SUITE_P(Folders, KilledWriter, ::testing::Values("", "/dev/shm"),
                         [](const auto& test) { return std::string(*test.param ? "InMemory" : "OnDisk"); });

TEST_P(KilledWriter, LeavesAWholeFileWithAllThatWasAcknowledged)
{
    std::optional<QTemporaryDir> memory;
    if (*GetParam()) {
        memory.emplace(QLatin1String(GetParam()) + QStringLiteral("/orvane-test-XXXXXX"));
        if (!memory->isValid())
            GTEST_SKIP() << "There is no " << GetParam() << " to write in.";
        path = memory->filePath(QStringLiteral("defaults.json"));
    }
    constexpr int kills = 200;
    std::mt19937 random(20261120);
    std::uniform_int_distribution<int> lifetime(200, 20'000);
    qint64 lastSeen = 0;
    int betweenTheTwo = 0;
    for (int round = 0; round < kills; ++round) {
        const qint64 acknowledged = liveAndDie(std::chrono::microseconds(lifetime(random)));
        if (!QFileInfo::exists(path)) {
            ASSERT_EQ(lastSeen + acknowledged, 0);
            continue;
        }
        const auto decoded = defaultscodec::decode(content());
        ASSERT_TRUE(decoded.values) << "round " << round << ": " << decoded.problem.toStdString();
        const qint64 nowLeft = decoded.values->value(left).toLongLong();
        const qint64 nowRight = decoded.values->value(right).toLongLong();
        ASSERT_TRUE(nowLeft == nowRight || nowLeft == nowRight + 1) << nowLeft << " and " << nowRight;
        ASSERT_GE(nowRight, lastSeen + acknowledged) << "an acknowledged set is gone";
        betweenTheTwo += nowLeft == nowRight ? 0 : 1;
        lastSeen = nowRight;
    }
    RecordProperty("pairs", std::to_string(lastSeen));
    RecordProperty("killsBetweenTheTwo", betweenTheTwo);
    EXPECT_TRUE(setAside().isEmpty());
    EXPECT_TRUE(log.entries().empty());
    EXPECT_GT(lastSeen, 0) << "no kill came after a set: the lifetimes are too short for this machine";

    open();
    EXPECT_TRUE(beside(QStringLiteral(".tmp-")).isEmpty());
    EXPECT_TRUE(journals().isEmpty());
}

TEST_F(JsonDefaultsStoreProcessesTest, TwoProcessesThatSetAtTheSameTimeLoseNoneOfTheirKeys)
{
    constexpr int keys = 500;
    const auto work = [&](const QString& prefix) {
        return [this, prefix](int) {
            JsonDefaultsStore store(path, log, runLoop);
            for (int number = 0; number < keys; ++number)
                store.set(QString(prefix + QString::number(number)), number);
            return 0;
        };
    };
    {
        ChildProcess first(work(QStringLiteral("first.")));
        ChildProcess second(work(QStringLiteral("second.")));
        ASSERT_EQ(first.wait(), 0);
        ASSERT_EQ(second.wait(), 0);
    }
    const auto store = open(); // takes over what the last one may have left in a journal
    const QVariantMap all = store->dictionaryRepresentation();
    EXPECT_EQ(all.size(), 2 * keys);
    for (int number = 0; number < keys; ++number) {
        EXPECT_EQ(all.value(QString(QLatin1String("first.") + QString::number(number))),
                  QVariant(qint64{number}));
        EXPECT_EQ(all.value(QString(QLatin1String("second.") + QString::number(number))),
                  QVariant(qint64{number}));
    }
    EXPECT_TRUE(setAside().isEmpty());
    EXPECT_TRUE(journals().isEmpty());
}

TEST_F(JsonDefaultsStoreProcessesTest, TwoProcessesThatStartOnABrokenFileSetItAsideOnce)
{
    for (int round = 0; round < 20; ++round) {
        writeFile("broken");
        const auto work = [&](const QString& key) {
            return [this, key](int) {
                JsonDefaultsStore(path, log, runLoop).set(key, 1LL);
                return 0;
            };
        };
        {
            ChildProcess first(work(left));
            ChildProcess second(work(right));
            ASSERT_EQ(first.wait(), 0);
            ASSERT_EQ(second.wait(), 0);
        }
        ASSERT_EQ(setAside().size(), round + 1);
        ASSERT_EQ(open()->dictionaryRepresentation().size(), 2);
    }
}

} // namespace orvane::tests

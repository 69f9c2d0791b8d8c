#include "ChildProcess.h"
#include "DefaultsFixture.h"
#include "PlatformLinux/Defaults/DefaultsCoding.h"

#include <QRandomGenerator>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <ctime>
#include <optional>
#include <vector>

#include <sys/timerfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane::tests {

namespace {

const QString left = QStringLiteral("left");
const QString right = QStringLiteral("right");

using Nanoseconds = std::chrono::nanoseconds;

Nanoseconds monotonicNow()
{
    timespec now = {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return std::chrono::seconds(now.tv_sec) + Nanoseconds(now.tv_nsec);
}

timespec timeOf(Nanoseconds time)
{
    return {std::chrono::duration_cast<std::chrono::seconds>(time).count(), (time % 1s).count()};
}

/// Ends the calling process by SIGKILL at `time`, wherever it is then.
void killThisProcessAt(Nanoseconds time)
{
    sigevent event = {};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = SIGKILL;
    timer_t timer = {};
    itimerspec when = {};
    when.it_value = timeOf(time);
    if (::timer_create(CLOCK_MONOTONIC, &event, &timer) != 0 ||
        ::timer_settime(timer, TIMER_ABSTIME, &when, nullptr) != 0)
        ::_exit(98);
}

/// A child writes one of these after each set that returned; the first holds the time of its death.
struct Report {
    qint64 number;
    std::int64_t time;
};

void tell(int toParent, qint64 number, Nanoseconds time)
{
    const Report report{number, time.count()};
    if (::write(toParent, &report, sizeof report) != sizeof report)
        ::_exit(97);
}

/// Sets pairs of equal numbers every two milliseconds until the process is killed after `lifetime`.
int liveAndDie(const QString& path, LogSink& log, std::chrono::milliseconds lifetime, int toParent)
{
    const Nanoseconds death = monotonicNow() + lifetime;
    tell(toParent, 0, death);
    killThisProcessAt(death);
    const FileDescriptor beat(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC));
    itimerspec interval = {};
    interval.it_value = interval.it_interval = timeOf(2ms);
    ::timerfd_settime(beat.get(), 0, &interval, nullptr);
    JsonDefaultsStore store(path, log);
    for (qint64 number = store.integer(right) + 1;; ++number) {
        store.set(left, number);
        store.set(right, number);
        tell(toParent, number, monotonicNow());
        std::uint64_t beats = 0;
        if (::read(beat.get(), &beats, sizeof beats) != sizeof beats)
            return 1;
    }
}

/// Sums up the time in which the machine let a process wait that wanted to report every two milliseconds.
Nanoseconds stallOf(const std::vector<Report>& reports)
{
    Nanoseconds stall(0);
    for (std::size_t index = 2; index < reports.size(); ++index)
        stall += std::max(Nanoseconds(reports[index].time - reports[index - 1].time) - 10ms, Nanoseconds(0));
    return stall;
}

/// A place to write in, and the age from which a set has to survive there.
struct Place {
    const char* name;
    const char* folder;
    std::chrono::milliseconds age;
};

} // namespace

class JsonDefaultsStoreProcessesTest : public DefaultsFixture {};

/// On the disk most kills hit the wait for it, which may take any time while others write. In memory they hit
/// every step equally, and nothing but the store's own time counts.
class KilledWriter : public JsonDefaultsStoreProcessesTest, public ::testing::WithParamInterface<Place> {
protected:
    struct Life {
        QString path;
        qint64 lastSeen = 0;
        std::unique_ptr<ChildProcess> process;
    };

    /// Reads the reports of a process that was killed and checks the file that it left.
    void judge(Life& life)
    {
        const std::string bytes = life.process->readAll();
        std::vector<Report> reports(bytes.size() / sizeof(Report));
        std::memcpy(reports.data(), bytes.data(), reports.size() * sizeof(Report));
        const int status = life.process->wait();
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
        ASSERT_FALSE(reports.empty());
        const Nanoseconds death(reports.front().time);

        const Nanoseconds stall = stallOf(reports);
        qint64 due = life.lastSeen;
        for (std::size_t index = 1; index < reports.size(); ++index) {
            ++acknowledged;
            if (Nanoseconds(reports[index].time) + GetParam().age + stall < death)
                due = reports[index].number;
        }
        if (!QFileInfo::exists(life.path)) {
            ASSERT_EQ(due, 0);
            return;
        }
        const auto parsed = defaultscoding::parse(contentOf(life.path));
        ASSERT_TRUE(parsed.values) << parsed.problem.toStdString();
        const qint64 nowLeft = parsed.values->value(left).toInteger();
        const qint64 nowRight = parsed.values->value(right).toInteger();
        ASSERT_TRUE(nowLeft == nowRight || nowLeft == nowRight + 1) << nowLeft << " and " << nowRight;
        ASSERT_GE(nowRight, due) << "a set that was old enough is gone; the last was "
                                 << reports.back().number;
        life.lastSeen = nowRight;
    }

    int acknowledged = 0;
};

INSTANTIATE_TEST_SUITE_P(Places, KilledWriter,
                         ::testing::Values(Place{"OnDisk", "", 10s}, Place{"InMemory", "/dev/shm", 100ms}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(KilledWriter, LeavesAWholeFileWithAllThatIsOldEnough)
{
    std::optional<QTemporaryDir> memory;
    QString folder = directory.path();
    if (*GetParam().folder) {
        memory.emplace(QLatin1String(GetParam().folder) + QStringLiteral("/orvane-test-XXXXXX"));
        if (!memory->isValid())
            GTEST_SKIP() << "There is no " << GetParam().folder << " to write in.";
        folder = memory->path();
    }
    constexpr int population = 10;
    constexpr int rounds = 25;
    QRandomGenerator random(20261121);
    std::vector<Life> lives(population);
    for (std::size_t index = 0; index < lives.size(); ++index)
        lives[index].path = folder + QStringLiteral("/%1/defaults.json").arg(index);
    for (int round = 0; round < rounds; ++round) {
        for (Life& life : lives) {
            const std::chrono::milliseconds lifetime(random.bounded(5, 400));
            life.process = std::make_unique<ChildProcess>(
                [&](int toParent) { return liveAndDie(life.path, log, lifetime, toParent); });
        }
        for (Life& life : lives)
            ASSERT_NO_FATAL_FAILURE(judge(life)) << "round " << round;
    }
    RecordProperty("acknowledged", acknowledged);
    EXPECT_GT(lives.front().lastSeen, 0) << "no kill came after a write";
    path = lives.front().path;
    EXPECT_TRUE(setAside().isEmpty());
    open()->set(left, 0LL);
    EXPECT_EQ(beside(QString()).size(), 1) << "leftovers of killed writes stay";
}

TEST_F(JsonDefaultsStoreProcessesTest, TwoProcessesThatSetAtTheSameTimeLoseNoneOfTheirKeys)
{
    constexpr int keys = 50;
    pace.gathering = 0ms;
    const auto work = [&](const QString& prefix) {
        return [this, prefix](int) {
            JsonDefaultsStore store(path, log, pace);
            for (int number = 0; number < keys; ++number) {
                const QString key = prefix + QString::number(number) + u'.';
                store.set(key, number);
                // Each in a write of its own, so that the two meet often.
                if (!eventually(20s, [&] { return content().contains(key.toLatin1()); }))
                    return 1;
            }
            return 0;
        };
    };
    {
        ChildProcess first(work(QStringLiteral("first.")));
        ChildProcess second(work(QStringLiteral("second.")));
        ASSERT_EQ(first.wait(), 0);
        ASSERT_EQ(second.wait(), 0);
    }
    const QVariantMap all = open()->dictionaryRepresentation();
    EXPECT_EQ(all.size(), 2 * keys);
    for (int number = 0; number < keys; ++number) {
        EXPECT_EQ(all.value(QString(QLatin1String("first.") + QString::number(number) + u'.')),
                  QVariant(qint64{number}));
        EXPECT_EQ(all.value(QString(QLatin1String("second.") + QString::number(number) + u'.')),
                  QVariant(qint64{number}));
    }
    EXPECT_TRUE(setAside().isEmpty());
}

TEST_F(JsonDefaultsStoreProcessesTest, TwoProcessesThatStartOnABrokenFileSetItAsideOnce)
{
    for (int round = 0; round < 20; ++round) {
        writeFile("broken");
        const auto work = [&](const QString& key) {
            return [this, key](int) {
                JsonDefaultsStore(path, log).set(key, 1LL);
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

#include "ChildProcess.h"
#include "DefaultsFixture.h"
#include "PlatformLinux/Defaults/DefaultsCoding.h"

#include <QRandomGenerator>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <ctime>
#include <optional>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <poll.h>
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

/// Returns the number of the last set that was older than `age` at the death, or `none`. A process that is
/// to report every two milliseconds and doesn't waits for the processor, and its writer with it: that time
/// between a set and the death doesn't count.
qint64 lastDueSet(const std::vector<Report>& reports, Nanoseconds age, qint64 none)
{
    const Nanoseconds death(reports.front().time);
    Nanoseconds stall(0);
    Nanoseconds next = death;
    for (std::size_t index = reports.size() - 1; index > 0; --index) {
        const Nanoseconds time(reports[index].time);
        stall += std::max(next - time - 3ms, Nanoseconds(0));
        if (time + age + stall < death)
            return reports[index].number;
        next = time;
    }
    return none;
}

/// Replaces a file as the store does, and returns how long that waits for the disk.
Nanoseconds timeOfReplacement(const QString& folder)
{
    const QByteArray name = QFile::encodeName(folder + QStringLiteral("/probe"));
    const QByteArray temporary = name + ".tmp";
    const FileDescriptor directory(
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const FileDescriptor file(::open(temporary.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    const Nanoseconds start = monotonicNow();
    const bool isDone = ::write(file.get(), "probe", 5) == 5 && ::fsync(file.get()) == 0 &&
                        ::rename(temporary.constData(), name.constData()) == 0 &&
                        ::fsync(directory.get()) == 0;
    if (!isDone)
        throw std::runtime_error("the disk can't be measured");
    return monotonicNow() - start;
}

struct Place {
    const char* name;
    const char* folder; // of the test itself where empty
    int population;
    int rounds;
    bool hasDisk;
};

} // namespace

class JsonDefaultsStoreProcessesTest : public DefaultsFixture {};

/// In memory the kills hit every step of a write equally, and each set has to survive from the age of a tenth
/// of a second. On the disk most of them hit the wait for it, which takes any time while others write: there
/// the test measures that wait during the same run and allows for it.
class KilledWriter : public JsonDefaultsStoreProcessesTest, public ::testing::WithParamInterface<Place> {
protected:
    struct Life {
        QString path;
        qint64 lastSeen = 0;
        std::unique_ptr<ChildProcess> process;
    };

    /// The age from which a set has to survive. One that comes during a write waits for that and for its own.
    [[nodiscard]] Nanoseconds age() const { return 100ms + 2 * longestReplacement; }

    void begin(Life& life)
    {
        // On a slow disk the lives are longer, so that many have a set of that age.
        const Nanoseconds longest = 400ms + (GetParam().hasDisk ? 2 * age() : 0ms);
        const std::chrono::milliseconds lifetime(random.bounded(5, static_cast<int>(longest / 1ms)));
        life.process = std::make_unique<ChildProcess>(
            [&](int toParent) { return liveAndDie(life.path, log, lifetime, toParent); });
    }

    /// Measures the disk until the last of the processes is dead.
    void measureDuring(const std::vector<Life>& lives, const QString& folder)
    {
        std::vector<pollfd> ends;
        for (const Life& life : lives)
            ends.push_back({life.process->fromChild(), 0, 0}); // only the end of a process is reported
        while (!ends.empty()) {
            longestReplacement = std::max(longestReplacement, timeOfReplacement(folder));
            ::poll(ends.data(), ends.size(), 5);
            std::erase_if(ends, [](const pollfd& end) { return end.revents != 0; });
        }
    }

    /// Reads the reports of a process that was killed and checks the file that it left.
    void judge(Life& life)
    {
        const std::string bytes = life.process->readAll();
        std::vector<Report> reports(bytes.size() / sizeof(Report));
        std::memcpy(reports.data(), bytes.data(), reports.size() * sizeof(Report));
        const int status = life.process->wait();
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
        ASSERT_FALSE(reports.empty());

        const qint64 due = lastDueSet(reports, age(), life.lastSeen);
        livesWithDueSets += due > life.lastSeen ? 1 : 0;
        if (!QFileInfo::exists(life.path)) {
            ASSERT_EQ(due, 0);
            return;
        }
        const auto parsed = defaultscoding::parse(contentOf(life.path));
        ASSERT_TRUE(parsed.values) << parsed.problem.toStdString();
        const qint64 nowLeft = parsed.values->value(left).toInteger();
        const qint64 nowRight = parsed.values->value(right).toInteger();
        ASSERT_TRUE(nowLeft == nowRight || nowLeft == nowRight + 1) << nowLeft << " and " << nowRight;
        ASSERT_GE(nowRight, due) << "a set older than " << age().count() << " ns is gone; the last was "
                                 << reports.back().number;
        life.lastSeen = nowRight;
    }

    QRandomGenerator random{20261121};
    Nanoseconds longestReplacement{0};
    int livesWithDueSets = 0;
};

INSTANTIATE_TEST_SUITE_P(Places, KilledWriter,
                         ::testing::Values(Place{"OnDisk", "", 10, 10, true},
                                           Place{"InMemory", "/dev/shm", 20, 25, false}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(KilledWriter, LeavesAWholeFileWithAllThatIsOldEnough)
{
    const Place& place = GetParam();
    std::optional<QTemporaryDir> memory;
    QString folder = directory.path();
    if (*place.folder) {
        memory.emplace(QLatin1String(place.folder) + QStringLiteral("/orvane-test-XXXXXX"));
        if (!memory->isValid())
            GTEST_SKIP() << "There is no " << place.folder << " to write in.";
        folder = memory->path();
    }
    std::vector<Life> lives(static_cast<std::size_t>(place.population));
    for (std::size_t index = 0; index < lives.size(); ++index)
        lives[index].path = folder + QStringLiteral("/%1/defaults.json").arg(index);
    for (int round = 0; round < place.rounds; ++round) {
        for (Life& life : lives)
            begin(life);
        if (place.hasDisk)
            measureDuring(lives, folder);
        for (Life& life : lives)
            ASSERT_NO_FATAL_FAILURE(judge(life)) << "round " << round;
    }
    RecordProperty("livesWithDueSets", livesWithDueSets);
    RecordProperty("longestReplacementInMicroseconds", static_cast<int>(longestReplacement / 1us));
    EXPECT_GT(livesWithDueSets, place.population * place.rounds / 10) << "too few could have lost anything";
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

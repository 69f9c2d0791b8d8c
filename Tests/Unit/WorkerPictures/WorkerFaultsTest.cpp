// What happens to a request when the worker, the files or the disk fail.
#include "../PlatformLinux/ChildProcess.h"
#include "PicturesFixture.h"
#include "Support/Eventually.h"

#include <QRandomGenerator>
#include <QThreadPool>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/timerfd.h>

namespace orvane::tests {

namespace {

class WorkerFaultsTest : public PicturesFixture {};

/// Kills this process's worker, if there is one, when the time has passed.
void killWorkerAfter(std::chrono::microseconds time, const std::function<QList<pid_t>()>& workers)
{
    const FileDescriptor timer(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC));
    itimerspec when{};
    when.it_value.tv_nsec = std::chrono::nanoseconds(time).count() + 1;
    ::timerfd_settime(timer.get(), 0, &when, nullptr);
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = ::read(timer.get(), &count, sizeof count);
    for (const pid_t worker : workers())
        ::kill(worker, SIGKILL);
}

/// True while the kernel carries out that call for a thread of ours.
bool isInCall(pid_t thread, long call)
{
    QFile state(QStringLiteral("/proc/self/task/%1/syscall").arg(thread));
    return state.open(QFile::ReadOnly) && state.readAll().split(' ').value(0).toLong() == call;
}

/// Takes all of this process's descriptors but a few.
class FewDescriptors {
public:
    explicit FewDescriptors(std::size_t left)
    {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        rlimit low = m_before;
        low.rlim_cur = 256;
        ::setrlimit(RLIMIT_NOFILE, &low);
        while (true) {
            FileDescriptor taken(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0));
            if (!taken)
                break;
            m_taken.push_back(std::move(taken));
        }
        EXPECT_GE(m_taken.size(), left);
        m_taken.resize(m_taken.size() - std::min(left, m_taken.size()));
    }
    ~FewDescriptors() { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;

private:
    rlimit m_before{};
    std::vector<FileDescriptor> m_taken;
};

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(bytes);
}

} // namespace

TEST_F(WorkerFaultsTest, IsStartedAtTheFirstRequestAndServesTheNext)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    EXPECT_TRUE(workers().isEmpty());
    ASSERT_EQ(measure(picture), (Pictures::Size{40, 30}));
    const auto first = workers();
    ASSERT_EQ(first.size(), 1);
    ASSERT_TRUE(measure(picture));
    EXPECT_EQ(workers(), first);
}

TEST_F(WorkerFaultsTest, OneThatWasKilledWithoutARequestIsReplacedAndNothingFails)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    ASSERT_TRUE(measure(picture));
    const pid_t first = workers().value(0);
    ASSERT_EQ(::kill(first, SIGKILL), 0);
    ASSERT_TRUE(eventually(10s, [] { return workers().isEmpty(); })); // it doesn't stay as a zombie
    EXPECT_TRUE(measure(picture));
    EXPECT_NE(workers().value(0), first);
}

TEST_F(WorkerFaultsTest, OneThatIsStoppedFailsTheRequestAtTheTimeLimitAndIsReplaced)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    {
        WorkerPictures first(helperProgram("orvane-worker"), log, 3s);
        ASSERT_TRUE(first.measure(picture, {}));
        const pid_t worker = workers().value(0);
        ASSERT_EQ(::kill(worker, SIGSTOP), 0);
        EXPECT_FALSE(first.measure(picture, {}));
        EXPECT_FALSE(workers().contains(worker));
        EXPECT_TRUE(first.measure(picture, {}));
    }
    EXPECT_TRUE(workers().isEmpty()); // it goes with its owner
}

TEST_F(WorkerFaultsTest, AStopEndsTheRequestThatWaits)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    ASSERT_TRUE(measure(picture));
    ASSERT_EQ(::kill(workers().value(0), SIGSTOP), 0);
    std::stop_source stop;
    std::atomic<pid_t> waitingID = 0;
    std::thread waiting([&] {
        waitingID = ::gettid();
        EXPECT_FALSE(pictures.measure(picture, stop.get_token()));
    });
    ASSERT_TRUE(eventually(10s, [&] { return isInCall(waitingID, SYS_poll); }));
    stop.request_stop();
    waiting.join();
    EXPECT_TRUE(measure(picture));
}

TEST_F(WorkerFaultsTest, GivingUpEndsTheRequestsThatWaitAndFailsTheNext)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    ASSERT_TRUE(measure(picture));
    ASSERT_EQ(::kill(workers().value(0), SIGSTOP), 0);
    std::array<std::atomic<pid_t>, 2> ids{};
    std::vector<std::thread> waiting;
    for (auto& id : ids) {
        waiting.emplace_back([&] {
            id = ::gettid();
            EXPECT_FALSE(pictures.measure(picture, {}));
        });
    }
    EXPECT_TRUE(eventually(10s, [&] {
        const auto is = [&](long call) {
            return std::ranges::any_of(ids, [call](pid_t id) { return isInCall(id, call); });
        };
        return is(SYS_poll) && is(SYS_futex); // one has the turn
    }));
    pictures.giveUp();
    for (std::thread& thread : waiting)
        thread.join();
    EXPECT_TRUE(workers().isEmpty());
    EXPECT_FALSE(measure(picture));
    EXPECT_TRUE(workers().isEmpty()); // nobody is asked any more
}

TEST_F(WorkerFaultsTest, ARequestThatWaitsLeavesThePoolToOthers)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    ASSERT_TRUE(measure(picture));
    ASSERT_EQ(::kill(workers().value(0), SIGSTOP), 0);
    QThreadPool& pool = *QThreadPool::globalInstance();
    const int before = pool.maxThreadCount();
    pool.setMaxThreadCount(1);
    std::atomic<pid_t> waitingID = 0;
    std::atomic<bool> isOtherDone = false;
    pool.start([&] {
        waitingID = ::gettid();
        EXPECT_FALSE(pictures.measure(picture, {}));
    });
    EXPECT_TRUE(eventually(10s, [&] { return isInCall(waitingID, SYS_poll); }));
    pool.start([&] { isOtherDone = true; });
    EXPECT_TRUE(eventually(10s, [&] { return isOtherDone.load(); }));
    pictures.giveUp();
    pool.waitForDone();
    // No more threads than before are left to it.
    EXPECT_EQ(pool.activeThreadCount(), 0);
    pool.setMaxThreadCount(before);
}

TEST_F(WorkerFaultsTest, WithoutDescriptorsARequestFailsAndTheNextSucceeds)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs descriptors of its own to look at an exception";
#endif
    const QString picture = addPicture(QStringLiteral("a.png"));
    ASSERT_TRUE(measure(picture));
    {
        const FewDescriptors room(1); // the picture's own
        EXPECT_NO_THROW(EXPECT_FALSE(measure(picture)));
    }
    EXPECT_TRUE(workers().isEmpty());
    {
        const FewDescriptors room(3); // the picture's and a pair of sockets
        EXPECT_NO_THROW(EXPECT_FALSE(measure(picture)));
    }
    EXPECT_TRUE(workers().isEmpty());
    EXPECT_EQ(log.messages().size(), 1); // the second one couldn't be started
    EXPECT_TRUE(measure(picture));
}

TEST_F(WorkerFaultsTest, AHundredKillsAtAnyInstantLeaveNothingHalf)
{
    const QString picture = addPicture(QStringLiteral("a.png"), 1200, 900);
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(resizeToPng(picture, {300, 225}));
    ASSERT_TRUE(resizeToPng(picture, {300, 225}));
    const auto usual =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    int done = 2;
    int failed = 0;
    for (int i = 0; i < 100; ++i) {
        const auto instant =
            std::chrono::microseconds(QRandomGenerator::global()->bounded(qint64{usual.count()}));
        std::thread killer([instant] { killWorkerAfter(instant, [] { return workers(); }); });
        (resizeToPng(picture, {300, 225}) ? done : failed) += 1;
        killer.join();
    }
    RecordProperty("failed", failed);
    EXPECT_GT(failed, 0);
    EXPECT_EQ(names().size(), 1 + done);
    for (int i = 0; i < done; ++i)
        EXPECT_EQ(QImage(picture + QStringLiteral(".copy%1.png").arg(i)).size(), QSize(300, 225));
    EXPECT_TRUE(resizeToPng(picture));
}

TEST_F(WorkerFaultsTest, AProgramThatIsMissingFailsAndIsTold)
{
    WorkerPictures without(QByteArrayLiteral("/nonexistent/orvane-worker"), log, limit);
    EXPECT_FALSE(without.measure(addPicture(QStringLiteral("a.png")), {}));
    ASSERT_EQ(log.messages().size(), 1);
    EXPECT_TRUE(log.messages().first().contains(QStringLiteral("Install Orvane again")));
}

TEST_F(WorkerFaultsTest, AProgramThatAnswersNothingFails)
{
    WorkerPictures silent(QByteArrayLiteral("/bin/true"), log, limit);
    EXPECT_FALSE(silent.measure(addPicture(QStringLiteral("a.png")), {}));
    EXPECT_FALSE(silent.measure(path(QStringLiteral("a.png")), {}));
}

TEST_F(WorkerFaultsTest, WhatIsNoPlainFileIsNotOpened)
{
    EXPECT_FALSE(measure(folder.path()));
    EXPECT_FALSE(measure(path(QStringLiteral("nothing.png"))));
    const QString fifo = path(QStringLiteral("fifo.png"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    EXPECT_FALSE(measure(fifo));
    EXPECT_FALSE(measure(QStringLiteral("/dev/zero")));
    EXPECT_TRUE(workers().isEmpty()); // nobody had to be asked
}

TEST_F(WorkerFaultsTest, ASourceThatChangesOrGoesMeanwhileIsNotCopied)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    const auto size = measure(picture);
    ASSERT_TRUE(size);
    const Pictures::Copy order{picture,  *size,
                               {20, 15}, Pictures::Type::png,
                               1,        [this](int) { return path(QStringLiteral("b.png")); }};
    addPicture(QStringLiteral("a.png"), 30, 40);
    EXPECT_FALSE(pictures.writeCopy(order, {}));
    writeFile(picture, "no picture any more");
    EXPECT_FALSE(pictures.writeCopy(order, {}));
    QFile::remove(picture);
    EXPECT_FALSE(pictures.writeCopy(order, {}));
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(WorkerFaultsTest, NamesThatAreTakenAreNeverOverwritten)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    writeFile(picture + QStringLiteral(".copy0.png"), "mine");
    ASSERT_TRUE(QFile::link(QStringLiteral("/nonexistent"), picture + QStringLiteral(".copy1.png")));
    EXPECT_EQ(resizeToPng(picture), picture + QStringLiteral(".copy2.png"));
    QFile mine(picture + QStringLiteral(".copy0.png"));
    ASSERT_TRUE(mine.open(QFile::ReadOnly));
    EXPECT_EQ(mine.readAll(), "mine");
    EXPECT_FALSE(QFile::exists(QStringLiteral("/nonexistent")));
}

TEST_F(WorkerFaultsTest, ANameThatIsTakenAtTheLastMomentIsNotOverwritten)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    int asked = 0;
    const auto made = pictures.writeCopy({picture,
                                          {40, 30},
                                          {20, 15},
                                          Pictures::Type::png,
                                          1,
                                          [&](int index) {
                                              const QString name = path(QStringLiteral("b%1.png").arg(index));
                                              // The first question is for the folder, the second for the
                                              // name.
                                              if (++asked == 2)
                                                  writeFile(name, "theirs");
                                              return name;
                                          }},
                                         {});
    EXPECT_EQ(made, path(QStringLiteral("b1.png")));
    EXPECT_EQ(QFileInfo(path(QStringLiteral("b0.png"))).size(), 6);
}

TEST_F(WorkerFaultsTest, ANewFileHasThePermissionsOfANewFile)
{
    const mode_t before = ::umask(027);
    const auto made = resizeToPng(addPicture(QStringLiteral("a.png")));
    ::umask(before);
    ASSERT_TRUE(made);
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(*made).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(WorkerFaultsTest, UnreadableSourcesAndFoldersThatCannotBeWrittenFail)
{
    const QString picture = addPicture(QStringLiteral("a.png"));
    const QByteArray place = QFile::encodeName(folder.path());
    ASSERT_EQ(::chmod(place.constData(), 0555), 0);
    const std::string complaint = inChild([&]() -> std::string {
        ORVANE_REQUIRE(becomeUnprivileged());
        WorkerPictures own(helperProgram("orvane-worker"), log, limit);
        ORVANE_REQUIRE(own.measure(picture, {}));
        ORVANE_REQUIRE(!own.writeCopy({picture,
                                       {40, 30},
                                       {20, 15},
                                       Pictures::Type::png,
                                       1,
                                       [this](int) { return path(QStringLiteral("b.png")); }},
                                      {}));
        return {};
    });
    EXPECT_EQ(complaint, "");
    ASSERT_EQ(::chmod(QFile::encodeName(picture).constData(), 0), 0);
    const std::string second = inChild([&]() -> std::string {
        ORVANE_REQUIRE(becomeUnprivileged());
        WorkerPictures own(helperProgram("orvane-worker"), log, limit);
        ORVANE_REQUIRE(!own.measure(picture, {}));
        return {};
    });
    EXPECT_EQ(second, "");
    ASSERT_EQ(::chmod(place.constData(), 0700), 0);
    EXPECT_EQ(names(), QStringList{QStringLiteral("a.png")});
}

TEST_F(WorkerFaultsTest, AFullDiskFailsAndLeavesNothing)
{
    const QString picture = addPicture(QStringLiteral("a.png"), 800, 600);
    QDir(folder.path()).mkdir(QStringLiteral("small"));
    const QString small = path(QStringLiteral("small"));
    const std::string complaint = inChild([&]() -> std::string {
        if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("none", QFile::encodeName(small).constData(), "tmpfs", 0, "size=64k") != 0)
            return "skipped";
        WorkerPictures own(helperProgram("orvane-worker"), log, limit);
        const auto write = [&](Pictures::Size size) {
            return own.writeCopy(
                {picture,
                 {800, 600},
                 size,
                 Pictures::Type::tiff,
                 1,
                 [&](int index) { return QString(small + QStringLiteral("/%1.tiff").arg(index)); }},
                {});
        };
        ORVANE_REQUIRE(!write({1600, 1200}));
        ORVANE_REQUIRE(QDir(small).entryList(QDir::Files | QDir::Hidden).isEmpty());
        ORVANE_REQUIRE(write({16, 12}));
        return {};
    });
    if (complaint == "skipped")
        GTEST_SKIP() << "a file system can't be mounted here";
    EXPECT_EQ(complaint, "");
}

} // namespace orvane::tests

#include "ChildProcess.h"
#include "DefaultsFixture.h"
#include "PlatformLinux/Defaults/DefaultsCoding.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane::tests {

class JsonDefaultsStoreThreadsTest : public DefaultsFixture {
protected:
    const QString key = QStringLiteral("key");
    const QString other = QStringLiteral("other");
};

namespace {

/// Lets three threads call `read` while this one calls `write` two hundred times. Returns the number of
/// reads.
int readWhileWriting(const std::function<void()>& read, const std::function<void(int)>& write)
{
    std::atomic<bool> stop = false;
    std::atomic<int> reads = 0;
    std::vector<std::thread> readers;
    for (int index = 0; index < 3; ++index) {
        readers.emplace_back([&] {
            do {
                read();
                ++reads;
            } while (!stop);
        });
    }
    for (int number = 1; number <= 200; ++number)
        write(number);
    stop = true;
    for (auto& reader : readers)
        reader.join();
    return reads;
}

} // namespace

TEST_F(JsonDefaultsStoreThreadsTest, ReadersOnOtherThreadsSeeOneNumberOrTheOther)
{
    const auto store = open();
    store->registerDefaults({{other, 1LL}});
    store->set(key, 0LL);
    std::atomic<int> wrong = 0;
    const int reads = readWhileWriting(
        [&] {
            const qint64 seen = store->integer(key);
            const QVariantMap all = store->dictionaryRepresentation();
            if (seen < 0 || seen > 200 || all.size() != 2 || all.value(key).toLongLong() < seen)
                ++wrong;
        },
        [&](int number) { store->set(key, number); });
    EXPECT_EQ(wrong, 0);
    EXPECT_GE(reads, 3);
}

TEST_F(JsonDefaultsStoreThreadsTest, ReadersOnOtherThreadsSeeWholeValues)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP()
        << "The sanitizer doesn't see the reference counts that Qt's own library keeps of shared values.";
#endif
    const auto store = open();
    const auto pair = [](int number) {
        return QVariantMap{{QStringLiteral("a"), number}, {QStringLiteral("b"), QString::number(number)}};
    };
    store->set(key, pair(0));
    std::atomic<int> torn = 0;
    const int reads = readWhileWriting(
        [&] {
            const QVariantMap seen = store->object(key).toMap();
            if (seen.size() != 2 ||
                seen.value(QStringLiteral("a")).toString() != seen.value(QStringLiteral("b")).toString())
                ++torn;
        },
        [&](int number) { store->set(key, pair(number)); });
    EXPECT_EQ(torn, 0);
    EXPECT_GE(reads, 3);
}

namespace {

/// Makes the kernel end the process as soon as the calling thread, or one that it starts later, uses a file
/// by its name or waits for a disk.
bool forbidFilesToThisThread()
{
    const std::array forbidden{SYS_open,      SYS_openat,     SYS_openat2,    SYS_creat,      SYS_stat,
                               SYS_lstat,     SYS_fstat,      SYS_newfstatat, SYS_statx,      SYS_access,
                               SYS_faccessat, SYS_faccessat2, SYS_fsync,      SYS_fdatasync,  SYS_sync,
                               SYS_rename,    SYS_renameat,   SYS_renameat2,  SYS_unlink,     SYS_unlinkat,
                               SYS_mkdir,     SYS_mkdirat,    SYS_readlink,   SYS_readlinkat, SYS_flock};
    std::vector<sock_filter> filter{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (const long number : forbidden) {
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<__u32>(number), 0, 1));
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

TEST_F(JsonDefaultsStoreThreadsTest, ASliderThatIsPulledTouchesNoFileOnItsThreadAndIsInTheFileRightAfter)
{
    constexpr int cannotForbid = 2;
    int answers[2];
    ASSERT_EQ(::pipe2(answers, O_CLOEXEC), 0);
    const FileDescriptor answersOut(answers[0]);
    const FileDescriptor answersIn(answers[1]);
    ChildProcess child([&](int toParent) {
        pace.lingering = 1h;
        JsonDefaultsStore store(path, log, pace);
        store.registerDefaults({{key, 0.5}});
        store.set(other, 0LL); // starts the writer, which is free to use the disk
        if (!forbidFilesToThisThread())
            return cannotForbid;
        for (int number = 1; number <= 600; ++number) {
            store.set(key, number / 1000.0);
            if (store.object(key) != QVariant(number / 1000.0))
                return 3;
            if (number % 30 != 0)
                continue;
            // As many writes as a pull of some seconds would cause.
            sendByte(toParent);
            char answer = 0;
            if (::read(answersOut.get(), &answer, 1) != 1)
                return 4;
        }
        store.remove(other);
        return 0; // by _exit, so that it isn't the store's end that writes
    });
    for (int number = 30; number <= 600; number += 30) {
        if (!child.readByte())
            break;
        const double value = number / 1000.0;
        EXPECT_TRUE(eventually(10s, [&] {
            const auto parsed = defaultscoding::parse(content());
            return parsed.values && parsed.values->value(key).toDouble() == value;
        })) << number;
        ASSERT_EQ(::write(answersIn.get(), "x", 1), 1);
    }
    const int status = child.wait();
    if (WIFEXITED(status) && WEXITSTATUS(status) == cannotForbid)
        GTEST_SKIP() << "The kernel gives no means to watch the calls of a thread.";
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "status " << status;
    EXPECT_EQ(open()->object(key), QVariant(0.6));
}

TEST_F(JsonDefaultsStoreThreadsTest, TheWatchOverTheSlidersThreadSeesAFileThatIsOpened)
{
    ChildProcess child([&](int) {
        if (!forbidFilesToThisThread())
            return 2;
        return QFile(path).open(QIODevice::ReadOnly) ? 1 : 0;
    });
    const int status = child.wait();
    if (WIFEXITED(status) && WEXITSTATUS(status) == 2)
        GTEST_SKIP() << "The kernel gives no means to watch the calls of a thread.";
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGSYS) << "status " << status;
}

TEST_F(JsonDefaultsStoreThreadsTest, TheWriterIsThereOnlyWhileThereIsSomethingToWrite)
{
    const auto threads = [] {
        return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::NoDotAndDotDot | QDir::Dirs).size();
    };
    pace.lingering = 10ms;
    const auto before = threads();
    const auto store = open();
    EXPECT_EQ(threads(), before);
    store->set(key, 1LL);
    EXPECT_EQ(threads(), before + 1);
    EXPECT_TRUE(eventually(10s, [&] { return threads() == before; }));
    EXPECT_TRUE(content().contains("key"));
}

} // namespace orvane::tests

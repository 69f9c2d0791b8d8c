#include "ChildProcess.h"
#include "DefaultsFixture.h"

#include <chrono>
#include <csignal>

#include <fcntl.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/resource.h>

namespace orvane::tests {

namespace {

const QString key = QStringLiteral("key");
const QString other = QStringLiteral("other");

/// Limits a resource of this process until its end.
class Limited {
public:
    Limited(__rlimit_resource_t resource, rlim_t value) : m_resource(resource)
    {
        rlimit limit = {};
        EXPECT_EQ(::getrlimit(resource, &limit), 0);
        m_before = std::exchange(limit.rlim_cur, value);
        EXPECT_EQ(::setrlimit(resource, &limit), 0);
    }
    ~Limited()
    {
        rlimit limit = {};
        ::getrlimit(m_resource, &limit);
        limit.rlim_cur = m_before;
        ::setrlimit(m_resource, &limit);
    }
    Limited(const Limited&) = delete;
    Limited& operator=(const Limited&) = delete;

private:
    __rlimit_resource_t m_resource;
    rlim_t m_before = 0;
};

} // namespace

class JsonDefaultsStoreRetriesTest : public DefaultsFixture {
protected:
    JsonDefaultsStoreRetriesTest()
    {
        pace.gathering = 1ms;
        pace.firstRetry = 2ms;
        pace.rareRetry = 20ms;
    }

    /// Locks the file as another process does in its turn.
    [[nodiscard]] FileDescriptor takeTurn() const
    {
        const QString folder = QFileInfo(path).path();
        QDir().mkpath(folder);
        FileDescriptor lock(
            ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        EXPECT_EQ(::flock(lock.get(), LOCK_EX | LOCK_NB), 0);
        return lock;
    }
};

TEST_F(JsonDefaultsStoreRetriesTest, SettingsBeyondTheLimitStayInMemoryAndTheFileStays)
{
    open()->set(other, 1LL);
    const QByteArray before = content();
    const auto store = open();
    store->set(key, QString(9'000'000, u'x'));
    ASSERT_TRUE(eventually(10s, [&] { return isLogged("too large"); }));
    EXPECT_EQ(store->object(key).toString().size(), 9'000'000);
    EXPECT_EQ(content(), before);
    store->set(key, 2LL);
    EXPECT_TRUE(isWritten("\"key\": 2"));
}

TEST_F(JsonDefaultsStoreRetriesTest, AFileThatCanNotBeReadNowIsLeftAloneAndReadAsSoonAsItCan)
{
    writeFile("{\"key\": 1}");
    changeMode(path, 0);
    giveFolderAway();
    const std::string complaint = inChild([&]() -> std::string {
        ORVANE_REQUIRE(becomeUnprivileged());
        const auto store = open();
        store->registerDefaults({{key, 5LL}});
        ORVANE_REQUIRE(eventually(10s, [&] { return isLogged("Permission"); }));
        store->set(other, 2LL);
        ORVANE_REQUIRE(store->object(key) == QVariant(5LL) && store->object(other) == QVariant(2LL));
        ORVANE_REQUIRE(changeMode(path, 0600));
        ORVANE_REQUIRE(eventually(10s, [&] { return store->object(key) == QVariant(1LL); }));
        ORVANE_REQUIRE(isWritten("other") && content().contains("key"));
        ORVANE_REQUIRE(log.entries().size() == 1 && setAside().isEmpty());
        return {};
    });
    EXPECT_EQ(complaint, "");
}

TEST_F(JsonDefaultsStoreRetriesTest, TooManyOpenFilesAtTheStartMakeNoGoodFileCorrupt)
{
    writeFile("{\"key\": 1}");
    const std::string complaint = inChild([&]() -> std::string {
        std::unique_ptr<JsonDefaultsStore> store;
        {
            const Limited files(RLIMIT_NOFILE, 3);
            store = open();
            ORVANE_REQUIRE(eventually(10s, [&] { return isLogged("Too many open files"); }));
            store->set(other, 2LL);
            ORVANE_REQUIRE(!store->object(key).isValid() && store->object(other) == QVariant(2LL));
        }
        ORVANE_REQUIRE(eventually(10s, [&] { return store->object(key) == QVariant(1LL); }));
        ORVANE_REQUIRE(isWritten("other") && content().contains("key"));
        ORVANE_REQUIRE(setAside().isEmpty() && log.entries().size() == 1);
        return {};
    });
    EXPECT_EQ(complaint, "");
}

TEST_F(JsonDefaultsStoreRetriesTest, TooManyOpenFilesLaterLoseNothing)
{
    const std::string complaint = inChild([&]() -> std::string {
        auto store = open();
        store->set(key, 1LL);
        ORVANE_REQUIRE(isWritten("key"));
        {
            const Limited files(RLIMIT_NOFILE, 3);
            store->set(other, 2LL);
            ORVANE_REQUIRE(eventually(10s, [&] { return isLogged("Too many open files"); }));
        }
        ORVANE_REQUIRE(isWritten("other"));
        ORVANE_REQUIRE(setAside().isEmpty() && log.entries().size() == 1);
        return {};
    });
    EXPECT_EQ(complaint, "");
}

TEST_F(JsonDefaultsStoreRetriesTest, AReadOnlyFileIsReadAndLeftAloneUntilItMayBeWritten)
{
    writeFile("{\"key\": 1, \"gone\": 1}");
    changeMode(path, 0444);
    pace.rareRetry = 1h;
    {
        const auto store = open();
        EXPECT_EQ(store->object(key), QVariant(1LL));
        EXPECT_TRUE(log.entries().empty());
        store->set(key, 2LL);
        ASSERT_TRUE(eventually(10s, [&] { return isLogged("read-only"); }));
        store->set(other, 3LL);
        store->remove(QStringLiteral("gone"));
        EXPECT_EQ(store->object(key), QVariant(2LL));
    }
    EXPECT_EQ(content(), QByteArray("{\"key\": 1, \"gone\": 1}"));
    EXPECT_EQ(log.entries().size(), 1u);
    EXPECT_EQ(beside(QString()).size(), 1);

    auto store = open();
    store->set(key, 2LL);
    store->remove(QStringLiteral("gone"));
    ASSERT_TRUE(eventually(10s, [&] { return log.entries().size() == 2; }));
    changeMode(path, 0600);
    store->set(other, 3LL); // isn't delayed by the long pause
    EXPECT_TRUE(isWritten("other"));
    EXPECT_EQ(content(), QByteArray("{\n    \"key\": 2,\n    \"other\": 3\n}\n"));
}

TEST_F(JsonDefaultsStoreRetriesTest, ALinkIntoAFolderThatCanNotBeWrittenIsLeftAloneToo)
{
    const QString target = directory.path() + QLatin1String("/managed/real.json");
    write(target, "{\"key\": 1}");
    changeMode(target, 0644);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    ASSERT_TRUE(QFile::link(target, path));
    changeMode(QFileInfo(target).path(), 0555);
    giveFolderAway();
    const std::string complaint = inChild([&]() -> std::string {
        ORVANE_REQUIRE(becomeUnprivileged());
        const auto store = open();
        store->set(key, 2LL);
        ORVANE_REQUIRE(eventually(10s, [&] { return isLogged("can't be kept"); }));
        ORVANE_REQUIRE(contentOf(target) == "{\"key\": 1}" && store->object(key) == QVariant(2LL));
        ORVANE_REQUIRE(QFileInfo(path).isSymLink());
        return {};
    });
    changeMode(QFileInfo(target).path(), 0755);
    EXPECT_EQ(complaint, "");
}

TEST_F(JsonDefaultsStoreRetriesTest, AFailedWriteKeepsTheFileAndTheValuesLogsOnceAndIsMadeUp)
{
    const std::string complaint = inChild([&]() -> std::string {
        const auto store = open();
        store->set(key, 1LL);
        ORVANE_REQUIRE(isWritten("key"));
        const QByteArray before = content();
        ::signal(SIGXFSZ, SIG_IGN);
        {
            const Limited size(RLIMIT_FSIZE, 0);
            store->set(key, 2LL);
            ORVANE_REQUIRE(eventually(10s, [&] { return isLogged("in memory"); }));
            store->set(other, 3LL);
            store->set(other, 4LL);
            ORVANE_REQUIRE(store->object(key) == QVariant(2LL) && store->object(other) == QVariant(4LL));
            ORVANE_REQUIRE(content() == before && log.entries().size() == 1);
        }
        ORVANE_REQUIRE(isWritten("other"));
        ORVANE_REQUIRE(open()->dictionaryRepresentation().size() == 2);
        ORVANE_REQUIRE(open()->object(key) == QVariant(2LL));
        ORVANE_REQUIRE(log.entries().size() == 1 && beside(QStringLiteral(".tmp-")).isEmpty());
        return {};
    });
    EXPECT_EQ(complaint, "");
}

TEST_F(JsonDefaultsStoreRetriesTest, AFullDiskLosesNothingThatWasStored)
{
    const std::string complaint = inChild([&]() -> std::string {
        const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
        QDir().mkpath(QFileInfo(path).path());
        if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("none", folder.constData(), "tmpfs", 0, "size=64k") != 0)
            return "SKIP";
        open()->set(key, QString(1000, u'a'));
        const auto store = open();
        QFile filler(inFolder(QStringLiteral("filler")));
        ORVANE_REQUIRE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(1024, 'x')) > 0) {
        }
        store->set(key, QString(2000, u'b'));
        ORVANE_REQUIRE(eventually(10s, [&] { return isLogged("No space left"); }));
        ORVANE_REQUIRE(content().contains("aaaa") && !content().contains("bbbb"));
        ORVANE_REQUIRE(store->object(key) == QVariant(QString(2000, u'b')));
        filler.remove();
        ORVANE_REQUIRE(isWritten("bbbb"));
        ORVANE_REQUIRE(log.entries().size() == 1);
        return {};
    });
    if (complaint == "SKIP")
        GTEST_SKIP() << "A small file system can only be mounted by root in a mount namespace.";
    EXPECT_EQ(complaint, "");
}

TEST_F(JsonDefaultsStoreRetriesTest, RetriesGrowFarApart)
{
    open()->set(other, 1LL);
    const FileDescriptor watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    ASSERT_GE(::inotify_add_watch(watch.get(), QFile::encodeName(path).constData(), IN_OPEN), 0);
    pace.firstRetry = 4ms;
    pace.rareRetry = 1h;
    const auto begin = std::chrono::steady_clock::now();
    auto store = open();
    store->set(key, QString(9'000'000, u'x')); // never fits
    int openings = 0;
    ASSERT_TRUE(eventually(20s, [&] {
        alignas(inotify_event) char event[sizeof(inotify_event)];
        while (::read(watch.get(), event, sizeof event) > 0)
            ++openings;
        return openings >= 1 + 6; // at the start and by six attempts
    }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, (4 + 8 + 16 + 32 + 64) * 1ms);
    EXPECT_EQ(log.entries().size(), 1u);
}

TEST_F(JsonDefaultsStoreRetriesTest, AnothersTurnIsAwaited)
{
    writeFile("{\"old\": 1}");
    pace.patience = 1h;
    auto turn = takeTurn();
    const auto store = open();
    for (int number = 0; number < 50; ++number)
        store->set(QString::number(number), number);
    EXPECT_EQ(store->dictionaryRepresentation().size(), 51);
    EXPECT_EQ(content(), QByteArray("{\"old\": 1}"));
    turn.reset();
    EXPECT_TRUE(isWritten("\"49\""));
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 51);
    EXPECT_TRUE(log.entries().empty());
}

TEST_F(JsonDefaultsStoreRetriesTest, AProcessThatIsStuckInItsTurnHoldsUpNeitherTheFileNorTheEnd)
{
    pace.patience = 10ms;
    const auto turn = takeTurn();
    const auto store = open();
    store->set(key, 1LL);
    EXPECT_TRUE(isWritten("key"));
    open()->set(other, 2LL);
    EXPECT_TRUE(content().contains("other"));
}

TEST_F(JsonDefaultsStoreRetriesTest, AFolderThatCanNotBeMadeMeansMemoryAndOneLine)
{
    write(QFileInfo(path).path(), "a file where the folder should be");
    {
        const auto store = open();
        store->set(key, 1LL);
        store->set(key, 2LL);
        EXPECT_EQ(store->object(key), QVariant(2LL));
    }
    EXPECT_EQ(log.entries().size(), 1u);
    EXPECT_EQ(contentOf(QFileInfo(path).path()), QByteArray("a file where the folder should be"));
}

} // namespace orvane::tests

#include "ChildProcess.h"
#include "DefaultsFixture.h"

#include <QRegularExpression>

#include <chrono>
#include <csignal>

#include <fcntl.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;

const QString key = QStringLiteral("key");
const QString other = QStringLiteral("other");

} // namespace

class JsonDefaultsStoreFaultsTest : public DefaultsFixture {
protected:
    /// Locks the file as a process that hangs would hold it.
    FileDescriptor holdLock()
    {
        QDir().mkpath(QFileInfo(path).path());
        FileDescriptor lock(::open(QFile::encodeName(QString(path + QLatin1String(".lock"))).constData(),
                                   O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        EXPECT_EQ(::flock(lock.get(), LOCK_EX | LOCK_NB), 0);
        return lock;
    }

    /// Gives the folder and its content to the unprivileged user of a child.
    void giveFolderAway() const
    {
        if (::geteuid() != 0)
            return;
        for (const QString& each : {directory.path(), QFileInfo(path).path(), path})
            ASSERT_EQ(::lchown(QFile::encodeName(each).constData(), 65534, 65534), 0);
    }

    static void changeMode(const QString& file, mode_t mode)
    {
        ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), mode), 0);
    }
};

struct BadContent {
    const char* name;
    QByteArray bytes;
    const char* complaint;
};

class UnreadableContent : public JsonDefaultsStoreFaultsTest,
                          public ::testing::WithParamInterface<BadContent> {};

TEST_P(UnreadableContent, IsSetAsideUnchangedAndTheDefaultsAreInForce)
{
    writeFile(GetParam().bytes);
    const auto store = open();
    store->registerDefaults({{key, 5LL}});
    EXPECT_EQ(store->object(key), QVariant(5LL));

    const QStringList aside = setAside();
    ASSERT_EQ(aside.size(), 1);
    static const QRegularExpression name(QStringLiteral("^defaults\\.json\\.corrupt-\\d{8}T\\d{6}Z$"));
    EXPECT_TRUE(name.match(aside.first()).hasMatch()) << aside.first().toStdString();
    EXPECT_TRUE(contentOf(inFolder(aside.first())) == GetParam().bytes);
    EXPECT_FALSE(QFileInfo::exists(path));

    const auto entries = log.entries();
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].level, LogLevel::error);
    EXPECT_EQ(entries[0].subsystem, QStringLiteral("net.lindenrow.orvane"));
    EXPECT_EQ(entries[0].category, QStringLiteral("Defaults"));
    EXPECT_TRUE(entries[0].message.contains(path)) << entries[0].message.toStdString();
    EXPECT_TRUE(entries[0].message.contains(inFolder(aside.first()))) << entries[0].message.toStdString();
    EXPECT_TRUE(entries[0].message.contains(QLatin1String(GetParam().complaint)))
        << entries[0].message.toStdString();

    store->set(key, 6LL);
    EXPECT_EQ(open()->object(key), QVariant(6LL));
    EXPECT_EQ(setAside().size(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Defaults, UnreadableContent,
    ::testing::Values(
        BadContent{"Empty", "", "it is empty"}, BadContent{"Blank", " \n", "it is empty"},
        BadContent{"NoJson", "hello", "not an object"},
        BadContent{"HalfWritten", "{\n  \"key\": tr", "line 2"},
        BadContent{"CutInText", "{\"key\": \"val", "a text has no end"},
        BadContent{"CutInEscape", "{\"key\": \"val\\u12", "hexadecimal"},
        BadContent{"List", "[1, 2]", "not an object"}, BadContent{"Number", "1", "not an object"},
        BadContent{"Trailing", "{} {}", "after the end"}, BadContent{"TrailingComma", "{\"a\": 1,}", "a key"},
        BadContent{"WrongUtf8", "{\"key\": \"\xff\"}", "UTF-8"},
        BadContent{"SurrogateInUtf8", "{\"key\": \"\xed\xa0\x80\"}", "UTF-8"},
        BadContent{"Zeros", QByteArray(4096, '\0'), "not an object"},
        BadContent{"ZeroTail", QByteArray("{\"key\": 1") + QByteArray(64, '\0'), "comma"},
        BadContent{"DeepLists", "{\"key\": " + QByteArray(1'000'000, '['), "nested too deep"},
        BadContent{"DeepMaps", QByteArray("{\"key\":").repeated(100'000), "nested too deep"},
        BadContent{"TooManyValues", "{\"key\": [" + QByteArray("1,").repeated(1'000'001) + "1]}",
                   "too many values"},
        BadContent{"FiftyMegabytes", "{\"key\": [" + QByteArray("1,").repeated(25'000'000) + "1]}",
                   "too many values"},
        BadContent{"TooLarge",
                   "{\"key\": \"" + QByteArray(65'000'000, 'x') + QByteArray(4'000'000, 'x') + "\"}",
                   "larger than"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(JsonDefaultsStoreFaultsTest, AFileOfFiftyMegabytesThatIsValidIsRead)
{
    writeFile("{\"other\": 1, \"key\": \"" + QByteArray(50'000'000, 'x') + "\"}");
    const auto store = open();
    EXPECT_EQ(store->object(key).toString().size(), 50'000'000);
    EXPECT_EQ(store->object(other), QVariant(1LL));
    EXPECT_TRUE(log.entries().empty());
}

TEST_F(JsonDefaultsStoreFaultsTest, HugeNumbersAreReadAsTheNearestDouble)
{
    writeFile("{\"key\": " + QByteArray(100'000, '9') +
              ", \"other\": 9223372036854775808, \"tiny\": 1e-999999}");
    const auto store = open();
    EXPECT_EQ(store->object(key), QVariant(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(store->object(other), QVariant(9223372036854775808.0));
    EXPECT_EQ(store->object(QStringLiteral("tiny")), QVariant(0.0));
    store->set(other, 1LL);
    EXPECT_EQ(open()->object(key), QVariant(std::numeric_limits<double>::infinity()));
}

TEST_F(JsonDefaultsStoreFaultsTest, ADirectoryInItsPlaceIsSetAsideWithAllThatIsInIt)
{
    ASSERT_TRUE(QDir().mkpath(path));
    write(QString(path + QLatin1String("/inside")), "precious");
    const auto store = open();
    store->set(key, 1LL);
    ASSERT_EQ(setAside().size(), 1);
    EXPECT_EQ(contentOf(QString(inFolder(setAside().first()) + QLatin1String("/inside"))),
              QByteArray("precious"));
    EXPECT_EQ(open()->object(key), QVariant(1LL));
    ASSERT_EQ(log.entries().size(), 1u);
    EXPECT_TRUE(log.messages().first().contains(QLatin1String("directory")));
}

TEST_F(JsonDefaultsStoreFaultsTest, APipeInItsPlaceIsSetAsideAndNeverWaitedFor)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    open()->set(key, 1LL);
    EXPECT_EQ(setAside().size(), 1);
    EXPECT_EQ(open()->object(key), QVariant(1LL));
}

TEST_F(JsonDefaultsStoreFaultsTest, ALinkToWhatIsNoFileIsSetAsideAndNotWhatItNames)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    for (const QString& target : {QStringLiteral("/dev/null"), path}) { // the second is a loop
        ASSERT_TRUE(QFile::link(target, path));
        open()->set(key, 1LL);
        EXPECT_TRUE(QFileInfo::exists(QStringLiteral("/dev/null")));
        EXPECT_FALSE(QFileInfo(path).isSymLink());
        EXPECT_EQ(open()->object(key), QVariant(1LL));
        ASSERT_TRUE(QFile::remove(path));
    }
    EXPECT_EQ(setAside().size(), 2);
}

TEST_F(JsonDefaultsStoreFaultsTest, WhatWasSetAsideBeforeIsNotOverwritten)
{
    for (int count = 0; count < 5; ++count) {
        writeFile("broken " + QByteArray::number(count));
        open();
    }
    QStringList kept;
    for (const QString& name : setAside())
        kept.append(QString::fromLatin1(contentOf(inFolder(name))));
    kept.sort();
    EXPECT_EQ(kept.join(u','), QStringLiteral("broken 0,broken 1,broken 2,broken 3,broken 4"));
}

TEST_F(JsonDefaultsStoreFaultsTest, AFileThatBreaksWhileWeRunIsSetAsideAndOurSettingsGoOn)
{
    const auto store = open();
    store->set(key, 1LL);
    writeFile("half of some ed");
    store->set(other, 2LL);
    ASSERT_EQ(setAside().size(), 1);
    EXPECT_EQ(contentOf(inFolder(setAside().first())), QByteArray("half of some ed"));
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 2);
    EXPECT_EQ(log.entries().size(), 1u);
}

TEST_F(JsonDefaultsStoreFaultsTest, AFileWithoutReadPermissionIsSetAside)
{
    writeFile("{\"key\": 1}");
    changeMode(path, 0);
    giveFolderAway();
    const std::string complaint = inChild([&]() -> std::string {
        ORVANE_REQUIRE(becomeUnprivileged());
        const auto store = open();
        ORVANE_REQUIRE(!store->object(key).isValid());
        ORVANE_REQUIRE(setAside().size() == 1);
        ORVANE_REQUIRE(log.entries().size() == 1 &&
                       log.messages().first().contains(QLatin1String("Permission")));
        store->set(key, 2LL);
        ORVANE_REQUIRE(open()->object(key) == QVariant(2LL));
        return {};
    });
    EXPECT_EQ(complaint, "");
    ASSERT_EQ(setAside().size(), 1);
    changeMode(inFolder(setAside().first()), 0600);
    EXPECT_EQ(contentOf(inFolder(setAside().first())), QByteArray("{\"key\": 1}"));
}

TEST_F(JsonDefaultsStoreFaultsTest, WhatCanNotBeSetAsideIsNotTouchedAndChangesStayInMemory)
{
    writeFile("broken");
    changeMode(path, 0644);
    giveFolderAway();
    changeMode(QFileInfo(path).path(), 0555);
    const std::string complaint = inChild([&]() -> std::string {
        ORVANE_REQUIRE(becomeUnprivileged());
        auto store = open();
        ORVANE_REQUIRE(log.entries().size() == 1);
        ORVANE_REQUIRE(log.messages().first().contains(QLatin1String("in memory only")));
        store->set(key, 1LL);
        store->set(other, 2LL);
        ORVANE_REQUIRE(store->object(key) == QVariant(1LL) && store->object(other) == QVariant(2LL));
        ORVANE_REQUIRE(log.entries().size() == 1);
        // The file must stay even when the folder becomes writable meanwhile.
        ORVANE_REQUIRE(::chmod(QFile::encodeName(QFileInfo(path).path()).constData(), 0755) == 0);
        store->set(key, 3LL);
        store.reset();
        ORVANE_REQUIRE(content() == "broken");
        return {};
    });
    EXPECT_EQ(complaint, "");
    EXPECT_EQ(content(), QByteArray("broken"));
}

TEST_F(JsonDefaultsStoreFaultsTest, AReadOnlyFileIsReadAndLeftAloneAndChangesOutliveTheProcessBesideIt)
{
    writeFile("{\"key\": 1, \"gone\": 1}");
    changeMode(path, 0444);
    {
        const auto store = open();
        EXPECT_EQ(store->object(key), QVariant(1LL));
        EXPECT_TRUE(log.entries().empty());
        store->set(key, 2LL);
        store->set(other, 3LL);
        store->remove(QStringLiteral("gone"));
        EXPECT_EQ(store->object(key), QVariant(2LL));
    }
    EXPECT_EQ(content(), QByteArray("{\"key\": 1, \"gone\": 1}"));
    ASSERT_EQ(log.entries().size(), 1u);
    EXPECT_TRUE(log.messages().first().contains(QLatin1String("read-only")));
    EXPECT_EQ(journals().size(), 1);
    {
        const auto store = open();
        EXPECT_EQ(store->object(key), QVariant(2LL));
        EXPECT_EQ(store->object(other), QVariant(3LL));
        EXPECT_FALSE(store->object(QStringLiteral("gone")).isValid());
    }
    EXPECT_EQ(journals().size(), 1);
    changeMode(path, 0600);
    open();
    EXPECT_TRUE(journals().isEmpty());
    EXPECT_EQ(content(), QByteArray("{\n  \"key\": 2,\n  \"other\": 3\n}\n"));
}

TEST_F(JsonDefaultsStoreFaultsTest, ALinkIntoAFolderThatCanNotBeWrittenIsLeftAloneToo)
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
        open()->set(key, 2LL);
        ORVANE_REQUIRE(contentOf(target) == "{\"key\": 1}");
        ORVANE_REQUIRE(open()->object(key) == QVariant(2LL));
        ORVANE_REQUIRE(QFileInfo(path).isSymLink());
        return {};
    });
    changeMode(QFileInfo(target).path(), 0755);
    EXPECT_EQ(complaint, "");
    EXPECT_EQ(journals().size(), 1);
}

TEST_F(JsonDefaultsStoreFaultsTest, AFailedWriteKeepsTheValuesLogsOnceAndIsMadeUpByTheNextSet)
{
    // A limit on the size of files acts like a full disk: nothing can be written, not even beside the file.
    const std::string complaint = inChild([&]() -> std::string {
        const auto store = open();
        store->set(key, 1LL);
        const QByteArray before = content();
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = {};
        ORVANE_REQUIRE(::getrlimit(RLIMIT_FSIZE, &limit) == 0);
        const rlim_t unlimited = std::exchange(limit.rlim_cur, 0);
        ORVANE_REQUIRE(::setrlimit(RLIMIT_FSIZE, &limit) == 0);
        store->set(key, 2LL);
        store->set(other, 3LL);
        store->set(other, 4LL);
        ORVANE_REQUIRE(store->object(key) == QVariant(2LL) && store->object(other) == QVariant(4LL));
        ORVANE_REQUIRE(content() == before);
        ORVANE_REQUIRE(log.entries().size() == 1 &&
                       log.messages().first().contains(QLatin1String("in memory")));
        ORVANE_REQUIRE(beside(QStringLiteral(".tmp-")).isEmpty() && journals().isEmpty());

        limit.rlim_cur = unlimited;
        ORVANE_REQUIRE(::setrlimit(RLIMIT_FSIZE, &limit) == 0);
        store->set(QStringLiteral("third"), 5LL);
        ORVANE_REQUIRE(open()->dictionaryRepresentation().size() == 3);
        ORVANE_REQUIRE(open()->object(key) == QVariant(2LL));
        ORVANE_REQUIRE(log.entries().size() == 1);
        return {};
    });
    EXPECT_EQ(complaint, "");
}

TEST_F(JsonDefaultsStoreFaultsTest, AFullDiskLosesNothingThatWasStored)
{
    const std::string complaint = inChild([&]() -> std::string {
        const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
        QDir().mkpath(QFileInfo(path).path());
        if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("none", folder.constData(), "tmpfs", 0, "size=64k") != 0)
            return "SKIP";
        const auto store = open();
        store->set(key, QString(1000, u'a'));
        write(inFolder(QStringLiteral("filler")), QByteArray());
        QFile filler(inFolder(QStringLiteral("filler")));
        ORVANE_REQUIRE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(1024, 'x')) > 0) {
        }
        store->set(key, QString(2000, u'b'));
        ORVANE_REQUIRE(content().contains("aaaa") && !content().contains("bbbb"));
        ORVANE_REQUIRE(store->object(key) == QVariant(QString(2000, u'b')));
        ORVANE_REQUIRE(log.entries().size() == 1 &&
                       log.messages().first().contains(QLatin1String("No space left")));
        filler.remove();
        store->set(other, 1LL);
        ORVANE_REQUIRE(open()->object(key) == QVariant(QString(2000, u'b')));
        ORVANE_REQUIRE(log.entries().size() == 1);
        return {};
    });
    if (complaint == "SKIP")
        GTEST_SKIP() << "A small file system can only be mounted by root in a mount namespace.";
    EXPECT_EQ(complaint, "");
}

TEST_F(JsonDefaultsStoreFaultsTest, AnEndTriesOnceMoreToWriteWhatIsPending)
{
    auto lock = holdLock();
    auto store = open();
    store->set(key, 1LL);
    EXPECT_TRUE(content().isEmpty());
    lock.reset();
    store.reset();
    EXPECT_EQ(content(), QByteArray("{\n  \"key\": 1\n}\n"));
    EXPECT_TRUE(journals().isEmpty());
}

TEST_F(JsonDefaultsStoreFaultsTest, AStuckHolderOfTheLockCostsNoTimeWorthMentioningAndNoKey)
{
    writeFile("{\"old\": 1}");
    auto lock = holdLock();
    const auto store = open();
    for (int number = 0; number < 50; ++number)
        store->set(QString::number(number), number);
    EXPECT_EQ(store->dictionaryRepresentation().size(), 51);
    EXPECT_EQ(content(), QByteArray("{\"old\": 1}"));
    EXPECT_EQ(log.entries().size(), 1u);
    EXPECT_EQ(journals().size(), 1);
    EXPECT_EQ(runLoop.timerCount(), 1u);

    runLoop.advance(1s);
    EXPECT_EQ(runLoop.timerCount(), 1u);
    lock.reset();
    runLoop.advance(20s);
    EXPECT_EQ(runLoop.timerCount(), 0u);
    EXPECT_TRUE(journals().isEmpty());
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 51);
}

TEST_F(JsonDefaultsStoreFaultsTest, RetriesForAStuckLockGrowFarApart)
{
    const auto lock = holdLock();
    const auto store = open();
    store->set(key, 1LL);
    ASSERT_EQ(runLoop.timerIntervals(), std::vector<std::chrono::milliseconds>{50ms});
    runLoop.advance(1h);
    EXPECT_EQ(runLoop.timerIntervals(), std::vector<std::chrono::milliseconds>{10s});
    EXPECT_EQ(log.entries().size(), 1u);
}

TEST_F(JsonDefaultsStoreFaultsTest, AProcessKilledWhileTheLockIsStuckLosesNothing)
{
    auto lock = holdLock();
    ChildProcess child([&](int toParent) {
        const auto store = open();
        store->set(key, 1LL);
        store->set(other, 2LL);
        sendByte(toParent);
        ::raise(SIGKILL);
        return 0;
    });
    ASSERT_TRUE(child.readByte());
    EXPECT_TRUE(WIFSIGNALED(child.wait()));
    // The child's copy of the descriptor is closed; this one still holds the lock.
    {
        const auto store = open();
        EXPECT_EQ(store->object(key), QVariant(1LL));
        EXPECT_EQ(store->object(other), QVariant(2LL));
        lock.reset();
    }
    EXPECT_TRUE(journals().isEmpty());
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 2);
}

TEST_F(JsonDefaultsStoreFaultsTest, TheJournalOfALivingProcessIsItsOwn)
{
    auto lock = holdLock();
    const auto first = open();
    first->set(key, 1LL);
    const auto second = open();
    EXPECT_FALSE(second->object(key).isValid());
    second->set(other, 2LL);
    EXPECT_EQ(journals().size(), 2);
    lock.reset();
    runLoop.advance(20s);
    EXPECT_TRUE(journals().isEmpty());
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 2);
}

TEST_F(JsonDefaultsStoreFaultsTest, LeftoversOfKilledWritesGoAtTheStartAndThoseOfLivingOnesStay)
{
    const QString dead = QString(path + QLatin1String(".tmp-0123456789abcdef"));
    const QString alive = QString(path + QLatin1String(".tmp-fedcba9876543210"));
    const QString deadJournal =
        QString(path + QLatin1String(".pending-0123456789abcdef.tmp-0123456789abcdef"));
    const QStringList foreign = {inFolder(QStringLiteral("defaults.json.tmp-mine")),
                                 inFolder(QStringLiteral("defaults.jsonx.tmp-0123456789abcdef")),
                                 inFolder(QStringLiteral("defaults.json.bak"))};
    for (const QString& name : QStringList{dead, alive, deadJournal} + foreign)
        write(name, "{");
    const FileDescriptor writer(::open(QFile::encodeName(alive).constData(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(::flock(writer.get(), LOCK_EX | LOCK_NB), 0);
    open();
    EXPECT_FALSE(QFileInfo::exists(dead));
    EXPECT_FALSE(QFileInfo::exists(deadJournal));
    EXPECT_TRUE(QFileInfo::exists(alive));
    for (const QString& name : foreign)
        EXPECT_TRUE(QFileInfo::exists(name)) << name.toStdString();
}

TEST_F(JsonDefaultsStoreFaultsTest, AFolderThatCanNotBeMadeMeansMemoryAndOneLine)
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

#include "DefaultsFixture.h"

#include <atomic>
#include <cmath>
#include <functional>
#include <limits>
#include <thread>
#include <vector>

#include <sys/stat.h>

namespace orvane::tests {

namespace {

const QString key = QStringLiteral("net.lindenrow.orvane.test.key");
const QString other = QStringLiteral("other");

mode_t modeOf(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

ino_t numberOf(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
}

} // namespace

class JsonDefaultsStoreTest : public DefaultsFixture {};

TEST_F(JsonDefaultsStoreTest, AFirstStartIsSilentAndLeavesNoTrace)
{
    const auto store = open();
    EXPECT_TRUE(store->dictionaryRepresentation().isEmpty());
    EXPECT_TRUE(log.entries().empty());
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(path).path()));
}

TEST_F(JsonDefaultsStoreTest, ASetIsOnTheDiskAtOnce)
{
    const auto store = open();
    store->set(key, true);
    EXPECT_EQ(content(), QByteArray("{\n  \"net.lindenrow.orvane.test.key\": true\n}\n"));
    store->remove(key);
    EXPECT_EQ(content(), QByteArray("{\n}\n"));
}

TEST_F(JsonDefaultsStoreTest, EveryTypeIsKeptOverARestart)
{
    const qint64 big = std::numeric_limits<qint64>::max();
    const qint64 low = std::numeric_limits<qint64>::min();
    const QVariantMap values{
        {QStringLiteral("true"), true},
        {QStringLiteral("false"), false},
        {QStringLiteral("big"), big},
        {QStringLiteral("low"), low},
        {QStringLiteral("one"), 1.0},
        {QStringLiteral("minus zero"), -0.0},
        {QStringLiteral("small"), 5e-324},
        {QStringLiteral("huge"), 1.7976931348623157e308},
        {QStringLiteral("third"), 1.0 / 3},
        {QStringLiteral("infinite"), -std::numeric_limits<double>::infinity()},
        {QStringLiteral("text"), QStringLiteral("\u00e9 \U0001f600 \" \\ / \n\t\u0001\u007f")},
        {QStringLiteral("empty"), QString()},
        {QStringLiteral("mark"), QString(QString(QChar(0xfeff)) + u'a' + QChar(0xfeff))},
        {QStringLiteral("half a pair"), QString(QChar(0xd800))},
        {QStringLiteral("nul"), QString(QChar(0))},
        {QStringLiteral("bytes"), QByteArray("\x00\xff\n", 3)},
        {QStringLiteral("no bytes"), QByteArray("")},
        {QStringLiteral("list"), QVariantList{1LL, 1.0, QVariantList{}, QByteArray("x"), QVariantMap{}}},
        {QStringLiteral("map"),
         QVariantMap{{QString(), QVariantMap{{QStringLiteral("$"), QStringLiteral("a")}}}}},
        {QString(), QStringLiteral("under the empty key")},
        {QStringLiteral("$data"), QStringLiteral("AA==")},
    };
    {
        const auto store = open();
        for (auto it = values.begin(); it != values.end(); ++it)
            store->set(it.key(), it.value());
    }
    const auto store = open();
    for (auto it = values.begin(); it != values.end(); ++it) {
        const QVariant value = store->object(it.key());
        EXPECT_EQ(value.typeId(), it.value().typeId()) << it.key().toStdString();
        EXPECT_EQ(value, it.value()) << it.key().toStdString();
    }
    EXPECT_TRUE(std::signbit(store->object(QStringLiteral("minus zero")).toDouble()));
    EXPECT_EQ(store->dictionaryRepresentation().size(), values.size());
    EXPECT_TRUE(log.entries().empty());
}

TEST_F(JsonDefaultsStoreTest, NotANumberIsKeptAsSuch)
{
    open()->set(key, std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(std::isnan(open()->object(key).toDouble()));
}

TEST_F(JsonDefaultsStoreTest, MapsThatLookLikeTagsStayMaps)
{
    const QVariantMap maps[] = {
        {{QStringLiteral("$data"), QStringLiteral("AAEC")}},
        {{QStringLiteral("$data"), QByteArray("AAEC")}},
        {{QStringLiteral("$double"), QStringLiteral("nan")}},
        {{QStringLiteral("$$data"), QStringLiteral("AAEC")}},
        {{QStringLiteral("$"), QVariantMap{{QStringLiteral("$data"), QStringLiteral("AAEC")}}}},
        {{QStringLiteral("$data"), QStringLiteral("AAEC")}, {QStringLiteral("b"), 1LL}},
    };
    for (const QVariantMap& map : maps) {
        open()->set(key, map);
        EXPECT_EQ(open()->object(key), QVariant(map)) << content().toStdString();
    }
}

TEST_F(JsonDefaultsStoreTest, NumbersOfOtherWidthsBecomeWholeNumbersOf64Bits)
{
    const auto store = open();
    store->set(key, 5);
    EXPECT_EQ(store->object(key).typeId(), QMetaType::LongLong);
    store->set(key, std::numeric_limits<quint64>::max());
    EXPECT_EQ(store->object(key).typeId(), QMetaType::Double);
    store->set(key, QStringList{QStringLiteral("a")});
    EXPECT_EQ(store->object(key), QVariant(QVariantList{QStringLiteral("a")}));
    EXPECT_EQ(store->object(key).typeId(), QMetaType::QVariantList);
}

TEST_F(JsonDefaultsStoreTest, AValueOfAnotherTypeIsLoggedAndNotStored)
{
    const auto store = open();
    store->set(key, 1LL);
    store->set(key, QVariant(QChar(u'x')));
    store->set(key, QVariantList{QVariant(QChar(u'x'))});
    EXPECT_EQ(store->object(key), QVariant(1LL));
    EXPECT_EQ(log.entries().size(), 2u);
    EXPECT_EQ(open()->object(key), QVariant(1LL));
}

TEST_F(JsonDefaultsStoreTest, AValueNestedTooDeepToBeReadAgainIsNotStored)
{
    const auto nested = [](int depth) {
        QVariant value = QByteArray("innermost");
        for (int level = 0; level < depth; ++level)
            value = level % 2 == 0 ? QVariant(QVariantList{value})
                                   : QVariant(QVariantMap{{QStringLiteral("$"), value}});
        return value;
    };
    open()->set(key, nested(200));
    EXPECT_EQ(open()->object(key), nested(200));
    EXPECT_TRUE(log.entries().empty());
    open()->set(key, nested(201));
    EXPECT_EQ(open()->object(key), nested(200));
    EXPECT_EQ(log.entries().size(), 1u);
}

TEST_F(JsonDefaultsStoreTest, SettingAnEqualValueWritesNothing)
{
    const auto store = open();
    store->set(key, 1LL);
    const ino_t before = numberOf(path);
    store->set(key, 1LL);
    store->set(key, 1);
    store->remove(other);
    EXPECT_EQ(numberOf(path), before);
    store->set(key, 1.0); // equal in value, but of another type
    EXPECT_NE(numberOf(path), before);
    EXPECT_EQ(open()->object(key).typeId(), QMetaType::Double);
}

TEST_F(JsonDefaultsStoreTest, TheFileAndItsNewFolderAreTheUsersAlone)
{
    const mode_t before = ::umask(0);
    open()->set(key, 1);
    ::umask(before);
    EXPECT_EQ(modeOf(path), 0600u);
    EXPECT_EQ(modeOf(QFileInfo(path).path()), 0700u);
    EXPECT_EQ(modeOf(QString(path + QLatin1String(".lock"))), 0600u);
    EXPECT_TRUE(beside(QStringLiteral(".tmp-")).isEmpty());
}

TEST_F(JsonDefaultsStoreTest, ALinkIsFollowedAndStays)
{
    const QString target = directory.path() + QLatin1String("/elsewhere/real.json");
    write(target, "{\"other\": 2}");
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    ASSERT_TRUE(QFile::link(QStringLiteral("../elsewhere/real.json"), path));
    const auto store = open();
    EXPECT_EQ(store->object(other), QVariant(2LL));
    store->set(key, 1LL);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_FALSE(QFileInfo(target).isSymLink());
    EXPECT_TRUE(contentOf(target).contains("test.key\": 1"));
}

TEST_F(JsonDefaultsStoreTest, ALinkToNothingIsAFirstStartAndIsFilled)
{
    const QString target = directory.path() + QLatin1String("/real.json");
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    ASSERT_TRUE(QFile::link(target, path));
    open()->set(key, 1LL);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(open()->object(key), QVariant(1LL));
    EXPECT_FALSE(contentOf(target).isEmpty());
    EXPECT_TRUE(log.entries().empty());
}

TEST_F(JsonDefaultsStoreTest, ANullIsNoValue)
{
    writeFile("{\"other\": null, \"list\": [null]}");
    const auto store = open();
    EXPECT_FALSE(store->object(other).isValid());
    EXPECT_FALSE(store->dictionaryRepresentation().contains(other));
    EXPECT_EQ(store->object(QStringLiteral("list")).toList().size(), 1);
}

TEST_F(JsonDefaultsStoreTest, TheLaterOfTwoEqualKeysCounts)
{
    writeFile("{\"other\": 1, \"other\": 2}");
    EXPECT_EQ(open()->object(other), QVariant(2LL));
    EXPECT_TRUE(setAside().isEmpty());
}

TEST_F(JsonDefaultsStoreTest, RegisteredValuesAreNeverWritten)
{
    const auto store = open();
    store->registerDefaults({{other, 7LL}});
    store->set(key, 1LL);
    EXPECT_FALSE(content().contains("other"));
    EXPECT_EQ(store->object(other), QVariant(7LL));
}

TEST_F(JsonDefaultsStoreTest, TheKeysOfAnotherStoreAreKeptAndSeenWithTheNextSet)
{
    const auto first = open();
    const auto second = open();
    first->set(key, 1LL);
    second->set(other, 2LL);
    EXPECT_EQ(second->object(key), QVariant(1LL));
    EXPECT_FALSE(first->object(other).isValid());
    first->set(QStringLiteral("third"), 3LL);
    EXPECT_EQ(first->object(other), QVariant(2LL));
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 3);
}

TEST_F(JsonDefaultsStoreTest, AKeyThatAnotherStoreRemovedStaysRemoved)
{
    open()->set(key, 1LL);
    const auto first = open();
    open()->remove(key);
    first->set(other, 2LL);
    EXPECT_FALSE(first->object(key).isValid());
    EXPECT_FALSE(content().contains("test.key"));
}

TEST_F(JsonDefaultsStoreTest, AnEqualSetStillWinsOverWhatAnotherStoreWroteMeanwhile)
{
    const auto first = open();
    first->set(key, 1LL);
    open()->set(key, 2LL);
    first->set(key, 1LL);
    EXPECT_EQ(open()->object(key), QVariant(1LL));
}

TEST_F(JsonDefaultsStoreTest, AFileThatVanishedIsWrittenAnewWithAllThatWasInIt)
{
    const auto store = open();
    store->set(key, 1LL);
    ASSERT_TRUE(QFile::remove(path));
    store->set(other, 2LL);
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 2);
}

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

TEST_F(JsonDefaultsStoreTest, ReadersOnOtherThreadsSeeOneNumberOrTheOther)
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

TEST_F(JsonDefaultsStoreTest, ReadersOnOtherThreadsSeeWholeValues)
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

TEST_F(JsonDefaultsStoreTest, WithoutAPathAllStaysInMemoryAndTheLogSaysSo)
{
    path.clear();
    const auto store = open();
    store->set(key, 1LL);
    EXPECT_EQ(store->object(key), QVariant(1LL));
    EXPECT_EQ(log.entries().size(), 1u);
    EXPECT_FALSE(QFileInfo::exists(QStringLiteral(".lock")));
}

TEST_F(JsonDefaultsStoreTest, TheStandardPathIsInTheConfigHome)
{
    EXPECT_EQ(JsonDefaultsStore::standardPath(),
              QString(qEnvironmentVariable("XDG_CONFIG_HOME") + QLatin1String("/orvane/defaults.json")));
}

} // namespace orvane::tests

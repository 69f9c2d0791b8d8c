#include "DefaultsFixture.h"
#include "PlatformLinux/Defaults/SavingAtExit.h"
#include "Support/Eventually.h"

#include <QJsonDocument>

#include <chrono>
#include <cstdlib>
#include <limits>

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

TEST_F(JsonDefaultsStoreTest, ASetIsReadAtOnceAndIsInTheFileSoonAfter)
{
    const auto store = open();
    store->set(key, true);
    EXPECT_EQ(store->object(key), QVariant(true));
    EXPECT_TRUE(
        eventually(10s, [&] { return content() == "{\n    \"net.lindenrow.orvane.test.key\": true\n}\n"; }));
    store->remove(key);
    EXPECT_FALSE(store->object(key).isValid());
    EXPECT_TRUE(eventually(10s, [&] { return content() == "{\n}\n"; }));
}

TEST_F(JsonDefaultsStoreTest, TheEndOfAStoreWritesWhatIsUnsavedWithoutWaitingForItsTime)
{
    pace.gathering = 1h;
    {
        const auto store = open();
        for (int number = 0; number <= 100; ++number)
            store->set(key, number);
        EXPECT_FALSE(QFileInfo::exists(path));
    }
    EXPECT_EQ(content(), QByteArray("{\n    \"net.lindenrow.orvane.test.key\": 100\n}\n"));
}

TEST_F(JsonDefaultsStoreTest, ChangesAreWrittenAfterTheWriterHasEndedToo)
{
    pace.gathering = 1ms;
    pace.lingering = 1ms;
    const auto store = open();
    for (int number = 1; number <= 50; ++number) {
        store->set(key, number);
        const QByteArray line = "test.key\": " + QByteArray::number(number) + "\n";
        ASSERT_TRUE(eventually(10s, [&] { return content().contains(line); }));
    }
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
        {QStringLiteral("small"), 5e-324},
        {QStringLiteral("huge"), 1.7976931348623157e308},
        {QStringLiteral("third"), 1.0 / 3},
        {QStringLiteral("text"), QStringLiteral("\u00e9 \U0001f600 \" \\ / \n\t\u0001\u007f")},
        {QStringLiteral("empty"), QString()},
        {QStringLiteral("mark"), QString(u'a' + QString(QChar(0xfeff)))},
        {QStringLiteral("nul"), QString(QChar(0))},
        {QStringLiteral("bytes"), QByteArray("\x00\xff\n", 3)},
        {QStringLiteral("no bytes"), QByteArray("")},
        {QStringLiteral("list"), QVariantList{1LL, 1.5, QVariantList{}, QByteArray("x"), QVariantMap{}}},
        {QStringLiteral("map"),
         QVariantMap{{QString(), QVariantMap{{QStringLiteral("$"), QStringLiteral("a")}}}}},
        {QString(), QStringLiteral("under the empty key")},
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
    EXPECT_EQ(store->dictionaryRepresentation().size(), values.size());
    EXPECT_TRUE(log.entries().empty());
}

TEST_F(JsonDefaultsStoreTest, AWholeDoubleStaysOneWhileItsStoreRunsAndIsAWholeNumberAfterwards)
{
    {
        const auto store = open();
        store->set(key, 2.0);
        EXPECT_TRUE(eventually(10s, [&] { return content().contains("2"); }));
        store->set(other, 1LL);
        EXPECT_TRUE(eventually(10s, [&] { return content().contains("other"); }));
        EXPECT_EQ(store->object(key).typeId(), QMetaType::Double);
    }
    const auto store = open();
    EXPECT_EQ(store->object(key).typeId(), QMetaType::LongLong);
    EXPECT_EQ(store->object(key).toDouble(), 2.0);
}

TEST_F(JsonDefaultsStoreTest, WhatThePresentFormReplacedIsRead)
{
    writeFile("{\n  \"bytes\": {\"$data\": \"AP8=\"},\n  \"list\": [1, 1.0, \"a\"],\n  \"number\": 0.5,\n"
              "  \"other\": {\"a\": true},\n  \"whole\": 3.0\n}\n");
    const auto store = open();
    EXPECT_EQ(store->object(QStringLiteral("bytes")), QVariant(QByteArray("\x00\xff", 2)));
    EXPECT_EQ(store->object(QStringLiteral("list")), QVariant(QVariantList{1LL, 1.0, QStringLiteral("a")}));
    EXPECT_EQ(store->object(QStringLiteral("number")), QVariant(0.5));
    EXPECT_EQ(store->object(other), QVariant(QVariantMap{{QStringLiteral("a"), true}}));
    EXPECT_EQ(store->object(QStringLiteral("whole")).toDouble(), 3.0);
    EXPECT_TRUE(log.entries().empty());
}

TEST_F(JsonDefaultsStoreTest, AListOfTextsIsKept)
{
    const QStringList texts{QStringLiteral("a"), QStringLiteral("b")};
    open()->set(key, texts);
    EXPECT_EQ(open()->object(key).toStringList(), texts);
}

TEST_F(JsonDefaultsStoreTest, AValueOfAnotherTypeIsLoggedAndNotStored)
{
    auto store = open();
    store->set(key, 1LL);
    store->set(key, QVariant(QChar(u'x')));
    store->set(key, QVariantList{QVariant(QChar(u'x'))});
    store->set(key, std::numeric_limits<double>::quiet_NaN());
    store->set(key, -std::numeric_limits<double>::infinity());
    EXPECT_EQ(store->object(key), QVariant(1LL));
    EXPECT_EQ(log.entries().size(), 4u);
    store.reset();
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
    open()->set(key, 1LL);
    const ino_t before = numberOf(path);
    {
        const auto store = open();
        store->set(key, 1LL);
        store->set(key, 1);
        store->remove(other);
    }
    EXPECT_EQ(numberOf(path), before);
    open()->set(key, 2LL);
    EXPECT_NE(numberOf(path), before);
}

TEST_F(JsonDefaultsStoreTest, TheFileAndItsNewFolderAreTheUsersAlone)
{
    const mode_t before = ::umask(0);
    open()->set(key, 1);
    ::umask(before);
    EXPECT_EQ(modeOf(path), 0600u);
    EXPECT_EQ(modeOf(QFileInfo(path).path()), 0700u);
    EXPECT_EQ(beside(QString()), QStringList{QFileInfo(path).fileName()});
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
    EXPECT_TRUE(eventually(10s, [&] { return contentOf(target).contains("test.key\": 1"); }));
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_FALSE(QFileInfo(target).isSymLink());
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
    EXPECT_TRUE(eventually(10s, [&] { return content().contains("test.key"); }));
    EXPECT_FALSE(content().contains("other"));
    EXPECT_EQ(store->object(other), QVariant(7LL));
}

TEST_F(JsonDefaultsStoreTest, TheKeysOfAnotherStoreAreKeptAndSeenAfterTheNextWrite)
{
    const auto first = open();
    const auto second = open();
    first->set(key, 1LL);
    ASSERT_TRUE(eventually(10s, [&] { return content().contains("test.key"); }));
    EXPECT_FALSE(second->object(key).isValid());
    second->set(other, 2LL);
    EXPECT_TRUE(eventually(10s, [&] { return second->object(key) == QVariant(1LL); }));
    EXPECT_FALSE(first->object(other).isValid());
    first->set(QStringLiteral("third"), 3LL);
    EXPECT_TRUE(eventually(10s, [&] { return first->object(other) == QVariant(2LL); }));
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 3);
}

TEST_F(JsonDefaultsStoreTest, AKeyThatAnotherStoreRemovedStaysRemoved)
{
    open()->set(key, 1LL);
    const auto first = open();
    open()->remove(key);
    first->set(other, 2LL);
    EXPECT_TRUE(eventually(10s, [&] { return !first->object(key).isValid(); }));
    EXPECT_FALSE(content().contains("test.key"));
}

TEST_F(JsonDefaultsStoreTest, AHandEditOfOtherKeysIsKeptToTheLetterOfItsValues)
{
    const auto store = open();
    store->set(key, 1LL);
    ASSERT_TRUE(eventually(10s, [&] { return content().contains("test.key"); }));
    writeFile("{\"mine\": {\"$data\": \"no base64\"}, \"nothing\": null, \"big\": 9223372036854775807, "
              "\"list\": [1.5, []]}");
    store->set(other, 2LL);
    ASSERT_TRUE(eventually(10s, [&] { return content().contains("other"); }));
    EXPECT_EQ(QJsonDocument::fromJson(content()),
              QJsonDocument::fromJson("{\"mine\": {\"$data\": \"no base64\"}, \"nothing\": null, \"big\": "
                                      "9223372036854775807, \"list\": [1.5, []], \"other\": 2}"));
}

TEST_F(JsonDefaultsStoreTest, AnEqualSetStillWinsOverWhatAnotherStoreWroteMeanwhile)
{
    auto first = open();
    first->set(key, 1LL);
    ASSERT_TRUE(eventually(10s, [&] { return content().contains("test.key"); }));
    open()->set(key, 2LL);
    first->set(key, 1LL);
    first.reset();
    EXPECT_EQ(open()->object(key), QVariant(1LL));
}

TEST_F(JsonDefaultsStoreTest, AFileThatVanishedIsWrittenAnewWithAllThatWasInIt)
{
    auto store = open();
    store->set(key, 1LL);
    ASSERT_TRUE(eventually(10s, [&] { return QFileInfo::exists(path); }));
    ASSERT_TRUE(QFile::remove(path));
    store->set(other, 2LL);
    store.reset();
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 2);
}

TEST_F(JsonDefaultsStoreTest, AChangeOfTheLastMomentIsInTheFileWhenTheProcessEndsByExit)
{
    pace.gathering = std::chrono::hours(1);
    // As the toolkit ends the process when the X server is gone: nothing on the stack is destroyed.
    const auto endAfterAChange = [this] {
        JsonDefaultsStore store(path, log, pace);
        const SavingAtExit saving(store);
        store.set(key, 5LL);
        std::exit(3);
    };
    EXPECT_EXIT(endAfterAChange(), ::testing::ExitedWithCode(3), "");
    EXPECT_EQ(open()->object(key), QVariant(5LL));
}

TEST_F(JsonDefaultsStoreTest, AStoreThatIsFinishedStillKeepsWhatComesLater)
{
    pace.gathering = std::chrono::hours(1);
    const auto store = open();
    store->set(key, 1LL);
    store->finish();
    EXPECT_TRUE(content().contains("1"));
    store->set(other, 2LL);
    EXPECT_TRUE(eventually(10s, [&] { return content().contains("2"); }));
}

TEST_F(JsonDefaultsStoreTest, WithoutAPathAllStaysInMemoryAndTheLogSaysSo)
{
    path.clear();
    const auto store = open();
    store->set(key, 1LL);
    EXPECT_EQ(store->object(key), QVariant(1LL));
    EXPECT_EQ(log.entries().size(), 1u);
}

TEST_F(JsonDefaultsStoreTest, TheStandardPathIsInTheConfigHome)
{
    EXPECT_EQ(JsonDefaultsStore::standardPath(),
              QString(qEnvironmentVariable("XDG_CONFIG_HOME") + QLatin1String("/orvane/defaults.json")));
}

} // namespace orvane::tests

#include "ChildProcess.h"
#include "DefaultsFixture.h"

#include <QRegularExpression>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace orvane::tests {

namespace {

const QString key = QStringLiteral("key");
const QString other = QStringLiteral("other");

} // namespace

class JsonDefaultsStoreFaultsTest : public DefaultsFixture {
protected:
    JsonDefaultsStoreFaultsTest()
    {
        pace.gathering = 1ms;
        pace.firstRetry = 2ms;
        pace.rareRetry = 20ms;
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
    auto store = open();
    store->registerDefaults({{key, 5LL}});
    EXPECT_EQ(store->object(key), QVariant(5LL));

    ASSERT_TRUE(eventually(10s, [&] { return !log.entries().empty(); }));
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
    store.reset();
    EXPECT_EQ(open()->object(key), QVariant(6LL));
    EXPECT_EQ(setAside().size(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Defaults, UnreadableContent,
    ::testing::Values(
        BadContent{"Empty", "", "it is empty"}, BadContent{"Blank", " \n", "it is empty"},
        BadContent{"NoJson", "hello", "illegal value"},
        BadContent{"HalfWritten", "{\n  \"key\": tr", "line 2"},
        BadContent{"CutInText", "{\"key\": \"val", "unterminated"},
        BadContent{"CutInEscape", "{\"key\": \"val\\u12", "escape"},
        BadContent{"List", "[1, 2]", "not an object"}, BadContent{"Number", "1", "illegal value"},
        BadContent{"Trailing", "{} {}", "garbage"}, BadContent{"TrailingComma", "{\"a\": 1,}", "comma"},
        BadContent{"WrongUtf8", "{\"key\": \"\xff\"}", "UTF"},
        BadContent{"SurrogateInUtf8", "{\"key\": \"\xed\xa0\x80\"}", "UTF"},
        BadContent{"Zeros", QByteArray(4096, '\0'), "illegal value"},
        BadContent{"ZeroTail", QByteArray("{\"key\": 1") + QByteArray(64, '\0'), "unterminated"},
        BadContent{"NumberBeyondAllDoubles", "{\"key\": 1e999}", "number"},
        BadContent{"DeepLists", "{\"key\": " + QByteArray(1'000'000, '['), "nested"},
        BadContent{"DeepMaps", QByteArray("{\"key\":").repeated(100'000), "nested"},
        BadContent{"TooLarge", "{\"key\": \"" + QByteArray(qsizetype{8} * 1024 * 1024, 'x') + "\"}",
                   "larger than"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(JsonDefaultsStoreFaultsTest, AFileJustBelowTheLimitIsRead)
{
    writeFile(R"({"other": 1, "key": ")" + QByteArray(8'000'000, 'x') + "\"}");
    const auto store = open();
    EXPECT_EQ(store->object(key).toString().size(), 8'000'000);
    EXPECT_EQ(store->object(other), QVariant(1LL));
    EXPECT_TRUE(log.entries().empty());
}

TEST_F(JsonDefaultsStoreFaultsTest, ADirectoryInItsPlaceIsSetAsideWithAllThatIsInIt)
{
    ASSERT_TRUE(QDir().mkpath(path));
    write(QString(path + QLatin1String("/inside")), "precious");
    open()->set(key, 1LL);
    ASSERT_EQ(setAside().size(), 1);
    EXPECT_EQ(contentOf(QString(inFolder(setAside().first()) + QLatin1String("/inside"))),
              QByteArray("precious"));
    EXPECT_EQ(open()->object(key), QVariant(1LL));
    ASSERT_EQ(log.entries().size(), 1u);
    EXPECT_TRUE(isLogged("directory"));
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
    auto store = open();
    store->set(key, 1LL);
    ASSERT_TRUE(isWritten("key"));
    writeFile("half of some ed");
    store->set(other, 2LL);
    store.reset();
    ASSERT_EQ(setAside().size(), 1);
    EXPECT_EQ(contentOf(inFolder(setAside().first())), QByteArray("half of some ed"));
    EXPECT_EQ(open()->dictionaryRepresentation().size(), 2);
    EXPECT_EQ(log.entries().size(), 1u);
}

TEST_F(JsonDefaultsStoreFaultsTest, WhatCanNotBeSetAsideIsNotTouchedUntilItCan)
{
    writeFile("broken");
    changeMode(path, 0644);
    giveFolderAway();
    changeMode(QFileInfo(path).path(), 0555);
    const std::string complaint = inChild([&]() -> std::string {
        ORVANE_REQUIRE(becomeUnprivileged());
        auto store = open();
        ORVANE_REQUIRE(eventually(10s, [&] { return isLogged("can't be renamed either"); }));
        store->set(key, 1LL);
        store->set(other, 2LL);
        ORVANE_REQUIRE(store->object(key) == QVariant(1LL) && store->object(other) == QVariant(2LL));
        ORVANE_REQUIRE(content() == "broken" && log.entries().size() == 1);
        ORVANE_REQUIRE(changeMode(QFileInfo(path).path(), 0755));
        ORVANE_REQUIRE(isWritten("other") && setAside().size() == 1);
        return {};
    });
    EXPECT_EQ(complaint, "");
    ASSERT_EQ(setAside().size(), 1);
    EXPECT_EQ(contentOf(inFolder(setAside().first())), QByteArray("broken"));
}

TEST_F(JsonDefaultsStoreFaultsTest, LeftoversOfKilledWritesGoWithTheFirstWriteAndThoseOfLivingOnesStay)
{
    const QString dead = QString(path + QLatin1String(".tmp-0123456789abcdef"));
    const QString alive = QString(path + QLatin1String(".tmp-fedcba9876543210"));
    const QStringList foreign = {inFolder(QStringLiteral("defaults.json.tmp-mine")),
                                 inFolder(QStringLiteral("defaults.jsonx.tmp-0123456789abcdef")),
                                 inFolder(QStringLiteral("defaults.json.bak"))};
    for (const QString& name : QStringList{dead, alive} + foreign)
        write(name, "{");
    const FileDescriptor writer(::open(QFile::encodeName(alive).constData(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(::flock(writer.get(), LOCK_EX | LOCK_NB), 0);
    open()->set(key, 1LL);
    EXPECT_FALSE(QFileInfo::exists(dead));
    EXPECT_TRUE(QFileInfo::exists(alive));
    for (const QString& name : foreign)
        EXPECT_TRUE(QFileInfo::exists(name)) << name.toStdString();
}

} // namespace orvane::tests

#include "ClipItems.h"

#include "Capabilities/ClipboardHistory/Archive/HistoryArchive.h"
#include "Capabilities/ClipboardHistory/Archive/HistoryCodec.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

namespace orvane::tests {

namespace {

const QUuid knownID = QUuid::fromString(QLatin1StringView("0f0e0d0c-0b0a-4908-8706-050403020100"));

ClipItem knownItem()
{
    ClipItem item = textClip(QStringLiteral("a/b \"c\"\\\n\t\x01 \u00E9"));
    item.id = knownID;
    item.date = ClipItem::Date(700000000.25);
    return item;
}

/// From now on nobody in this process can change a file's mode, as on a file system without modes.
void refuseModes()
{
    const auto refused = [](unsigned number, unsigned char remaining) {
        return sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, remaining, 0);
    };
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        refused(SYS_chmod, 3),
        refused(SYS_fchmod, 2),
        refused(SYS_fchmodat, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
    };
    const sock_fprog program{static_cast<unsigned short>(std::size(rules)), rules};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        std::_Exit(2);
}

/// Returns an element of a file with all fields, which the tests spoil one by one.
QJsonObject element()
{
    return {{QStringLiteral("id"), QStringLiteral("0F0E0D0C-0B0A-4908-8706-050403020100")},
            {QStringLiteral("kind"), QStringLiteral("text")},
            {QStringLiteral("text"), QStringLiteral("hello")},
            {QStringLiteral("date"), 1.5},
            {QStringLiteral("pinned"), false}};
}

std::optional<QList<ClipItem>> decoded(const QJsonObject& object)
{
    return HistoryCodec::decode(QJsonDocument(QJsonArray{element(), object}).toJson());
}

std::optional<QList<ClipItem>> decodedWith(const char* key, const QJsonValue& value)
{
    QJsonObject object = element();
    object[QLatin1StringView(key)] = value;
    return decoded(object);
}

class HistoryArchiveTest : public ::testing::Test {
protected:
    [[nodiscard]] QByteArray content() const
    {
        QFile file(archive.historyPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }
    void put(const QString& path) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("x");
    }
    [[nodiscard]] QStringList images() const
    {
        return QDir(archive.imagesPath())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QTemporaryDir home;
    HistoryArchive archive{home.filePath(QStringLiteral("Orvane/net.example.history"))};
};

} // namespace

TEST(HistoryCodec, WritesTheFileToTheLetter)
{
    EXPECT_EQ(HistoryCodec::encode({}), QByteArray("[]"));
    EXPECT_EQ(HistoryCodec::encode({knownItem()}),
              QByteArray("[{\"id\":\"0F0E0D0C-0B0A-4908-8706-050403020100\",\"kind\":\"text\","
                         "\"text\":\"a\\/b \\\"c\\\"\\\\\\n\\t\\u0001 \xC3\xA9\",\"date\":700000000.25,"
                         "\"pinned\":false}]"));
}

TEST(HistoryCodec, WritesEveryFieldInOrder)
{
    ClipItem item = filesClip({QStringLiteral("/a"), QStringLiteral("/b c")}, QStringLiteral("a, b c"));
    item.id = knownID;
    item.imageFileName = QStringLiteral("1.png");
    item.date = ClipItem::Date(3);
    item.pinned = true;
    item.sourceApp = QStringLiteral("org.example.editor");
    EXPECT_EQ(
        HistoryCodec::encode({item, item}).mid(1).split('}').first() + '}',
        QByteArray("{\"id\":\"0F0E0D0C-0B0A-4908-8706-050403020100\",\"kind\":\"fileURLs\","
                   "\"text\":\"a, b c\",\"imageFileName\":\"1.png\",\"filePaths\":[\"\\/a\",\"\\/b c\"],"
                   "\"date\":3,\"pinned\":true,\"sourceApp\":\"org.example.editor\"}"));
    EXPECT_TRUE(HistoryCodec::encode({item, item}).contains("},{"));
}

TEST(HistoryCodec, EscapesEveryControlCharacter)
{
    QString text;
    for (char16_t character = 0; character < 0x20; ++character)
        text.append(QChar(character));
    const QByteArray json = HistoryCodec::encode({textClip(text)});
    EXPECT_TRUE(
        json.contains("\"\\u0000\\u0001\\u0002\\u0003\\u0004\\u0005\\u0006\\u0007\\b\\t\\n\\u000b\\f\\r"
                      "\\u000e\\u000f\\u0010"));
    const auto again = HistoryCodec::decode(json);
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(again->first().text, text);
}

TEST(HistoryCodec, DatesReadBackAsTheSameNumber)
{
    const double largest = std::numeric_limits<double>::max();
    const double smallest = std::numeric_limits<double>::denorm_min();
    for (const double seconds :
         {0.0, 0.1, 785246400.123456, -31622400.5, 1e21, largest, smallest, std::nextafter(7e8, 8e8)}) {
        ClipItem item = knownItem();
        item.date = ClipItem::Date(seconds);
        const auto again = HistoryCodec::decode(HistoryCodec::encode({item}));
        ASSERT_TRUE(again.has_value()) << seconds;
        EXPECT_EQ(again->first().date.count(), seconds);
    }
}

TEST(HistoryCodec, ReadsBackWhatItWrote)
{
    ClipItem files = filesClip({QStringLiteral("/a/\u00E9"), QString()}, std::nullopt);
    files.pinned = true;
    const QList<ClipItem> items{knownItem(), imageClip(QStringLiteral("1.png")), files,
                                clip(ClipKind::url, QStringLiteral("https://example.org/?a=1#\U0001F600"))};
    EXPECT_EQ(HistoryCodec::decode(HistoryCodec::encode(items)), items);
}

TEST(HistoryCodec, TakesKeysInAnyOrderPlainSlashesAndLowerCase)
{
    const auto items = HistoryCodec::decode(
        " [ {\"unknown\": [1], "
        "\"pinned\":true,\"date\":7,\"text\":\"a/b\\/c\",\"kind\":\"url\",\"sourceApp\":null,"
        "\"id\":\"0f0e0d0c-0b0a-4908-8706-050403020100\"} ]\n");
    ASSERT_TRUE(items.has_value());
    ClipItem expected = clip(ClipKind::url, QStringLiteral("a/b/c"));
    expected.id = knownID;
    expected.date = ClipItem::Date(7);
    expected.pinned = true;
    EXPECT_EQ(*items, QList<ClipItem>{expected});
}

TEST(HistoryCodec, OneMissingFieldLosesTheWholeList)
{
    ASSERT_TRUE(decoded(element()).has_value());
    for (const char* key : {"id", "kind", "date", "pinned"}) {
        QJsonObject object = element();
        object.remove(QLatin1StringView(key));
        EXPECT_FALSE(decoded(object).has_value()) << key;
        EXPECT_FALSE(decodedWith(key, QJsonValue::Null).has_value()) << key;
    }
}

TEST(HistoryCodec, OneWrongFieldLosesTheWholeList)
{
    EXPECT_FALSE(decodedWith("kind", QStringLiteral("video")).has_value());
    EXPECT_FALSE(decodedWith("kind", 1).has_value());
    EXPECT_FALSE(decodedWith("id", QStringLiteral("{0F0E0D0C-0B0A-4908-8706-050403020100}")).has_value());
    EXPECT_FALSE(decodedWith("id", QStringLiteral("0F0E0D0C0B0A49088706050403020100")).has_value());
    EXPECT_FALSE(decodedWith("id", QStringLiteral("0F0E0D0C-0B0A-4908-8706-05040302010G")).has_value());
    EXPECT_FALSE(decodedWith("date", QStringLiteral("1.5")).has_value());
    EXPECT_FALSE(decodedWith("pinned", 1).has_value());
    EXPECT_FALSE(decodedWith("text", 1).has_value());
    EXPECT_FALSE(decodedWith("imageFileName", true).has_value());
    EXPECT_FALSE(decodedWith("filePaths", QStringLiteral("/a")).has_value());
    EXPECT_FALSE(decodedWith("filePaths", QJsonArray{QStringLiteral("/a"), 1}).has_value());
    EXPECT_FALSE(decodedWith("sourceApp", QJsonArray()).has_value());
}

TEST(HistoryCodec, WhatIsNoArrayOfObjectsIsNoHistory)
{
    for (const char* json :
         {"", " ", "{}", "null", "[1]", "[[]]", "[null]", "[{}]", "[", "[]x", "\xFF", "[\"a\"]"})
        EXPECT_FALSE(HistoryCodec::decode(json).has_value()) << json;
    EXPECT_EQ(HistoryCodec::decode("[]"), QList<ClipItem>());
}

TEST(HistoryCodec, AFileCutAnywhereIsNoHistory)
{
    const QByteArray whole = HistoryCodec::encode({knownItem(), imageClip(QStringLiteral("1.png"))});
    for (qsizetype length = 0; length < whole.size(); ++length)
        ASSERT_FALSE(HistoryCodec::decode(whole.first(length)).has_value()) << length;
}

TEST_F(HistoryArchiveTest, SavesTheListForItsOwnerAlone)
{
    archive.save({knownItem()});
    EXPECT_EQ(content(), HistoryCodec::encode({knownItem()}));
    const auto everybodyElse = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                               QFile::WriteOther | QFile::ExeOther;
    for (const QString& path : {archive.historyPath(), archive.imagesPath(), archive.directory})
        EXPECT_FALSE(QFileInfo(path).permissions() & everybodyElse) << qPrintable(path);
    EXPECT_TRUE(QFileInfo(archive.imagesPath()).isDir());
}

TEST_F(HistoryArchiveTest, SavesOnAFileSystemWithoutModes)
{
    // In a process of its own: what it has given up doesn't come back.
    EXPECT_EXIT(
        {
            refuseModes();
            archive.save({knownItem()});
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(archive.load(), QList<ClipItem>{knownItem()});
}

TEST_F(HistoryArchiveTest, ClosesWhatAnEarlierSaveLeftOpen)
{
    archive.save({});
    ASSERT_TRUE(QFile::setPermissions(archive.historyPath(), QFile::ReadOwner | QFile::ReadOther));
    ASSERT_TRUE(QFile::setPermissions(archive.imagesPath(), QFile::ReadOwner | QFile::WriteOwner |
                                                                QFile::ExeOwner | QFile::ReadOther));
    archive.save({knownItem()});
    EXPECT_FALSE(QFileInfo(archive.historyPath()).permissions() & QFile::ReadOther);
    EXPECT_FALSE(QFileInfo(archive.imagesPath()).permissions() & QFile::ReadOther);
    EXPECT_EQ(content(), HistoryCodec::encode({knownItem()}));
}

TEST_F(HistoryArchiveTest, LeavesNothingBesideTheFile)
{
    archive.save({knownItem()});
    archive.save({});
    EXPECT_EQ(QDir(archive.directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList({QStringLiteral("history.json"), QStringLiteral("images")}));
    EXPECT_EQ(content(), QByteArray("[]"));
}

TEST_F(HistoryArchiveTest, AFailedSaveKeepsTheOldFile)
{
    archive.save({knownItem()});
    const QByteArray before = content();
    // A folder with the file's name can't be replaced by a file, not even by root.
    const HistoryArchive blocked{home.filePath(QStringLiteral("blocked"))};
    ASSERT_TRUE(QDir().mkpath(blocked.historyPath() + QStringLiteral("/inner")));
    blocked.save({knownItem()});
    EXPECT_TRUE(QFileInfo(blocked.historyPath()).isDir());

    const HistoryArchive underAFile{archive.historyPath() + QStringLiteral("/below")};
    underAFile.save({});
    EXPECT_EQ(content(), before);
}

TEST_F(HistoryArchiveTest, PruningRemovesWhatNoEntryNames)
{
    archive.ensureDirectories();
    for (const char* name : {"1.png", "2.png", ".hidden", "notes.txt"})
        put(archive.imagesPath() + u'/' + QLatin1StringView(name));
    ASSERT_TRUE(QDir(archive.imagesPath()).mkpath(QStringLiteral("folder/inner")));
    put(archive.imagesPath() + QStringLiteral("/folder/inner/file"));
    archive.pruneImages({imageClip(QStringLiteral("2.png")), textClip(QStringLiteral("1.png"))});
    EXPECT_EQ(images(), QStringList({QStringLiteral("2.png")}));
}

TEST_F(HistoryArchiveTest, PruningDoesNotFollowLinks)
{
    archive.ensureDirectories();
    const QString outside = home.filePath(QStringLiteral("outside"));
    ASSERT_TRUE(QDir().mkpath(outside));
    put(outside + QStringLiteral("/precious"));
    ASSERT_TRUE(QFile::link(outside, archive.imagesPath() + QStringLiteral("/link")));
    archive.pruneImages({});
    EXPECT_TRUE(images().isEmpty());
    EXPECT_TRUE(QFile::exists(outside + QStringLiteral("/precious")));
}

TEST_F(HistoryArchiveTest, PruningWithoutAFolderDoesNothing)
{
    archive.pruneImages({});
    EXPECT_FALSE(QFileInfo::exists(archive.directory));
}

TEST_F(HistoryArchiveTest, PurgingTakesTheDirectoryAndNothingAboveIt)
{
    archive.save({knownItem()});
    put(archive.imagesPath() + QStringLiteral("/1.png"));
    archive.purge();
    EXPECT_FALSE(QFileInfo::exists(archive.directory));
    EXPECT_TRUE(QFileInfo::exists(home.filePath(QStringLiteral("Orvane"))));
    archive.purge();
}

TEST_F(HistoryArchiveTest, AnIndependentReaderFindsWhatWasSaved)
{
    ClipItem files =
        filesClip({QStringLiteral("/a/b"), QStringLiteral("/\U0001F600")}, QStringLiteral("b, x"));
    files.pinned = true;
    files.sourceApp = QStringLiteral("org.example.files");
    archive.save({knownItem(), files});
    QProcess python;
    python.start(
        QStringLiteral("python3"),
        {QStringLiteral("-c"),
         QStringLiteral("import json, sys\n"
                        "first, second = json.load(open(sys.argv[1], encoding='utf-8'))\n"
                        "assert first == {'id': '0F0E0D0C-0B0A-4908-8706-050403020100', 'kind': 'text',\n"
                        "  'text': 'a/b \"c\"\\\\\\n\\t\\x01 \\u00e9', 'date': 700000000.25,\n"
                        "  'pinned': False}, first\n"
                        "assert list(second) == ['id', 'kind', 'text', 'filePaths', 'date', 'pinned',\n"
                        "  'sourceApp'], second\n"
                        "assert second['filePaths'] == ['/a/b', '/\\U0001F600'], second\n"
                        "assert second['pinned'] is True and second['sourceApp'] == 'org.example.files'\n"),
         archive.historyPath()});
    ASSERT_TRUE(python.waitForFinished());
    EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().constData();
}

} // namespace orvane::tests

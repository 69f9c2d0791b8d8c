// The list, its panel and its file.
#include "HistoryFixture.h"

#include <QFileInfo>
#include <QProcess>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;

class ClipboardHistoryControllerTest : public HistoryFixture {
protected:
    void putFile(const QByteArray& content)
    {
        archive.ensureDirectories();
        QFile file(archive.historyPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    void putImage(const QString& name, const QByteArray& content)
    {
        archive.ensureDirectories();
        QFile file(archive.imagesPath() + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
};

/// While this lives, writing anything to a file fails, as on a full disk.
class FullDisk {
public:
    FullDisk() : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_limit);
        rlimit none = m_limit;
        none.rlim_cur = 0;
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_limit = {};
    void (*m_handler)(int);
};

} // namespace

// The file.

TEST_F(ClipboardHistoryControllerTest, TheListOutlivesTheController)
{
    capture(QStringLiteral("one"));
    capture({{pasteboardType::png, picture("PNG")}});
    model().onTogglePin(items().last());
    settle();
    const QList<ClipItem> before = items();
    remake();
    EXPECT_TRUE(items().isEmpty());
    load();
    EXPECT_EQ(items(), before);
    EXPECT_EQ(shown(), before);
}

TEST_F(ClipboardHistoryControllerTest, WithoutPersistTheListInMemoryStays)
{
    archive.save({textClip(QStringLiteral("on the disk"))});
    settings->persist.set(false);
    capture(QStringLiteral("in memory"));
    load();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("in memory")});
    EXPECT_EQ(shown(), items());
    model().onTogglePin(items().first());
    controller->clearHistory();
    controller->saveHistory();
    settle();
    EXPECT_EQ(texts(savedItems().value_or(QList<ClipItem>())), QStringList{QStringLiteral("on the disk")});
}

TEST_F(ClipboardHistoryControllerTest, ALoadedListIsNotTrimmed)
{
    QList<ClipItem> many;
    for (int number = 0; number < 30; ++number)
        many.append(textClip(QString::number(number)));
    archive.save(many);
    settings->maxItems.set(20);
    load();
    EXPECT_EQ(items(), many);
    EXPECT_EQ(controller->store().maxItems, 20);
}

TEST_F(ClipboardHistoryControllerTest, PinningBetweenALoweredCapAndTheNextCopyTrimsWithTheOldOne)
{
    settings->maxItems.set(20);
    remake();
    for (int number = 0; number < 5; ++number)
        capture(QString::number(number));
    settings->maxItems.set(2);
    model().onTogglePin(items().last());
    settle();
    EXPECT_EQ(items().size(), 5);
}

TEST_F(ClipboardHistoryControllerTest, AFileThatIsNoHistoryGivesAnEmptyOneAndStaysUntilTheNextSave)
{
    const QByteArray whole = HistoryCodec::encode({textClip(QStringLiteral("a"))});
    for (const QByteArray& content :
         {QByteArray(), QByteArray("{}"), whole.chopped(1), QByteArray(2000, '['),
          QByteArray("\xFF\xFE\0", 3), QByteArray(whole).replace("text\",\"text", "video\",\"text")}) {
        putFile(content);
        load();
        EXPECT_TRUE(items().isEmpty()) << content.left(80).constData();
        EXPECT_EQ(fileContent(), content);
    }
    putImage(QStringLiteral("of-the-damaged-file.png"), "x");
    capture(QStringLiteral("new"));
    EXPECT_EQ(savedItems(), items());
    EXPECT_TRUE(imageFiles().isEmpty());
}

TEST_F(ClipboardHistoryControllerTest, WhatIsNoFileIsNotOpened)
{
    archive.ensureDirectories();
    ASSERT_EQ(::mkfifo(QFile::encodeName(archive.historyPath()).constData(), 0600), 0);
    load(); // a read of the pipe would wait for ever
    EXPECT_TRUE(items().isEmpty());
    capture(QStringLiteral("text"));
    EXPECT_EQ(savedItems(), items()) << "the next save replaces it";
}

TEST_F(ClipboardHistoryControllerTest, AFolderInThePlaceOfTheFileLeavesTheListInMemory)
{
    ASSERT_TRUE(QDir().mkpath(archive.historyPath()));
    load();
    capture(QStringLiteral("text"));
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("text")});
    ASSERT_TRUE(QDir().rmdir(archive.historyPath()));
    capture(QStringLiteral("more"));
    EXPECT_EQ(savedItems(), items()) << "the next change tries again";
}

TEST_F(ClipboardHistoryControllerTest, HostileStringsComeBackAsTheyWere)
{
    QString every;
    for (char32_t character = 0; character < 0x2100; ++character)
        every += QChar(static_cast<char16_t>(character));
    const QStringList hostile{every,
                              QStringLiteral("\"},{\"id\":\"x"),
                              QStringLiteral("\\u0000\\"),
                              QStringLiteral("\u2028\u2029\uFEFF\uFFFF\U0010FFFF"),
                              QString(100'000, u'\u0301'),
                              QStringLiteral("</script>\r\n\t")};
    for (const QString& text : hostile)
        capture(text);
    const QList<ClipItem> before = items();
    EXPECT_EQ(before.size(), hostile.size());
    remake();
    load();
    EXPECT_EQ(items(), before);
}

TEST_F(ClipboardHistoryControllerTest, HalfACharacterDoesNotLoseTheList)
{
    archive.save({textClip(QStringLiteral("a") + QChar(0xD800)), textClip(QStringLiteral("b"))});
    load();
    ASSERT_EQ(items().size(), 2);
    EXPECT_EQ(items()[1].text, QStringLiteral("b"));
}

TEST_F(ClipboardHistoryControllerTest, OnAFullDiskTheListStaysAndTheOldFileToo)
{
    capture(QStringLiteral("one"));
    const auto before = fileContent();
    {
        const FullDisk full;
        capture(QStringLiteral("two"));
        capture({{pasteboardType::png, picture("PNG")}});
    }
    EXPECT_EQ(itemTexts(), QStringList({QStringLiteral("two"), QStringLiteral("one")}));
    EXPECT_EQ(fileContent(), before);
    EXPECT_TRUE(imageFiles().isEmpty()) << "the half of a picture doesn't stay";
    capture(QStringLiteral("three"));
    EXPECT_EQ(savedItems(), items());
    EXPECT_EQ(items().size(), 3);
}

TEST_F(ClipboardHistoryControllerTest, EverythingIsForItsOwnerAlone)
{
    const mode_t mask = ::umask(0);
    capture({{pasteboardType::png, picture("PNG")}});
    ::umask(mask);
    const QString image = archive.imagesPath() + u'/' + imageFiles().at(0);
    const auto mode = [](const QString& path) {
        struct stat status = {};
        ::stat(QFile::encodeName(path).constData(), &status);
        return status.st_mode & 07777;
    };
    EXPECT_EQ(mode(archive.directory), 0700);
    EXPECT_EQ(mode(archive.imagesPath()), 0700);
    EXPECT_EQ(mode(archive.historyPath()), 0600);
    EXPECT_EQ(mode(image), 0600);
}

TEST_F(ClipboardHistoryControllerTest, AnIndependentReaderFindsTheCapturedCopies)
{
    capture({{pasteboardType::png, picture("PNG")}});
    copyFiles({QStringLiteral("/a/b c"), QStringLiteral("/\U0001F600")});
    controller->checkPasteboard();
    settle();
    capture({{pasteboardType::url, " https://example.org/ "}});
    QProcess python;
    python.start(
        QStringLiteral("python3"),
        {QStringLiteral("-c"),
         QStringLiteral(
             "import json, os, sys\n"
             "link, files, image = json.load(open(sys.argv[1] + '/history.json', encoding='utf-8'))\n"
             "assert (link['kind'], link['text']) == ('url', 'https://example.org/'), link\n"
             "assert files['filePaths'] == ['/a/b c', '/\\U0001F600'], files\n"
             "assert files['text'] == 'b c, \\U0001F600', files\n"
             "assert set(image) == {'id', 'kind', 'imageFileName', 'date', 'pinned'}, image\n"
             "assert open(os.path.join(sys.argv[1], 'images', image['imageFileName']), 'rb').read(4) == "
             "b'\\x89PNG'\n"),
         archive.directory});
    ASSERT_TRUE(python.waitForFinished());
    EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().constData();
}

// Clearing, and the panel's requests.

TEST_F(ClipboardHistoryControllerTest, ClearingKeepsWhatIsPinnedAndItsPictures)
{
    capture({{pasteboardType::png, picture("PNG")}});
    capture({{pasteboardType::png, picture("PNG")}});
    capture(QStringLiteral("text"));
    model().onTogglePin(items().last());
    settle();
    const ClipItem kept = items().last();
    controller->clearHistory();
    settle();
    EXPECT_EQ(items(), QList<ClipItem>{kept});
    EXPECT_EQ(shown(), items());
    EXPECT_EQ(savedItems(), items());
    EXPECT_EQ(imageFiles(), QStringList{*kept.imageFileName});
}

TEST_F(ClipboardHistoryControllerTest, DeletingTakesTheEntryAndItsPicture)
{
    capture({{pasteboardType::png, picture("PNG")}});
    capture(QStringLiteral("text"));
    model().onDelete(items().last());
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("text")});
    EXPECT_EQ(shown(), items());
    EXPECT_EQ(savedItems(), items());
    EXPECT_TRUE(imageFiles().isEmpty());
    model().onDelete(items().first());
    settle();
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_EQ(savedItems(), QList<ClipItem>());
}

TEST_F(ClipboardHistoryControllerTest, PinningStaysInPlaceAndIsSaved)
{
    capture(QStringLiteral("one"));
    capture(QStringLiteral("two"));
    model().onTogglePin(items().last());
    settle();
    EXPECT_EQ(itemTexts(), QStringList({QStringLiteral("two"), QStringLiteral("one")}));
    EXPECT_TRUE(shown().last().pinned);
    EXPECT_EQ(savedItems(), items());
    model().onTogglePin(items().last());
    EXPECT_FALSE(shown().last().pinned);
}

TEST_F(ClipboardHistoryControllerTest, TheImageProviderReadsFilesOfTheImageFolderAlone)
{
    putImage(QStringLiteral("1.png"), picture("PNG", 0xFF010203));
    putImage(QStringLiteral("broken.png"), "no picture");
    QFile outside(archive.directory + QStringLiteral("/outside.png"));
    ASSERT_TRUE(outside.open(QIODevice::WriteOnly));
    outside.write(picture("PNG"));
    outside.close();
    const auto provider = model().imageProvider;
    const auto image = provider(QStringLiteral("1.png"));
    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->pixel(0, 0), 0xFF010203);
    for (const char* name : {"gone.png", "broken.png", "", ".", "..", "../outside.png", "/etc/hostname"})
        EXPECT_FALSE(provider(QLatin1StringView(name)).has_value()) << name;
    controller.reset();
    EXPECT_FALSE(provider(QStringLiteral("1.png")).has_value());
}

} // namespace orvane::tests

// The way of a copy from another program to the entry.
#include "HistoryFixture.h"

#include <QRegularExpression>

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;

const QString concealed = QStringLiteral("org.nspasteboard.ConcealedType");
const QRegularExpression imageName(QStringLiteral("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.png$"));

class ClipboardCaptureTest : public HistoryFixture {
protected:
    ClipboardCaptureTest() { fake.workspace.frontmost = editor; }

    const RunningApplication editor{7, QStringLiteral("org.example.editor"), QStringLiteral("Editor")};
};

} // namespace

TEST_F(ClipboardCaptureTest, ATextBecomesAnEntryAsItStands)
{
    capture(QStringLiteral("  text\r\n"));
    ASSERT_EQ(items().size(), 1);
    const ClipItem& item = items().first();
    EXPECT_EQ(item.kind, ClipKind::text);
    EXPECT_EQ(item.text, QStringLiteral("  text\r\n"));
    EXPECT_EQ(item.imageFileName, std::nullopt);
    EXPECT_EQ(item.filePaths, std::nullopt);
    EXPECT_EQ(item.date, ClipItem::dateFrom(fake.clock.date()));
    EXPECT_FALSE(item.pinned);
    EXPECT_EQ(item.sourceApp, QStringLiteral("org.example.editor"));
    EXPECT_FALSE(item.id.isNull());
    EXPECT_EQ(shown(), items());
}

TEST_F(ClipboardCaptureTest, TheSourceIsTheProgramInFrontAtTheTick)
{
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    const RunningApplication other{8, QStringLiteral("org.example.other"), QStringLiteral("Other")};
    fake.workspace.frontmost = other;
    controller->checkPasteboard();
    fake.workspace.frontmost = editor;
    settle();
    EXPECT_EQ(items().first().sourceApp, QStringLiteral("org.example.other"));

    fake.workspace.frontmost = RunningApplication{9, std::nullopt, QStringLiteral("unknown")};
    capture(QStringLiteral("from a program without a name"));
    EXPECT_EQ(items().first().sourceApp, std::nullopt);
    fake.workspace.frontmost.reset();
    capture(QStringLiteral("from nobody"));
    EXPECT_EQ(items().first().sourceApp, std::nullopt);
}

TEST_F(ClipboardCaptureTest, ACountThatHasFallenIsANewCopyToo)
{
    fake.generalPasteboard.setChangeCount(2'000'000'000);
    controller->skipPresentContent();
    fake.generalPasteboard.setChangeCount(-5);
    capture(QStringLiteral("after the count began anew"));
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("after the count began anew")});
}

TEST_F(ClipboardCaptureTest, ALinkIsTrimmedAndTheSameTextAloneIsNot)
{
    const QByteArray spaced("  https://example.org \n");
    capture({{pasteboardType::url, spaced}, {pasteboardType::string, spaced}});
    EXPECT_EQ(items().first().kind, ClipKind::url);
    EXPECT_EQ(items().first().text, QStringLiteral("https://example.org"));
    capture({{pasteboardType::string, spaced}});
    EXPECT_EQ(items().first().kind, ClipKind::text);
    EXPECT_EQ(items().first().text, QString::fromUtf8(spaced));
    EXPECT_EQ(items().size(), 2);
}

TEST_F(ClipboardCaptureTest, AnEmptyLinkGivesWayToTheText)
{
    capture({{pasteboardType::url, ""}, {pasteboardType::string, "text"}});
    EXPECT_EQ(items().first().kind, ClipKind::text);
    EXPECT_EQ(items().first().text, QStringLiteral("text"));
}

TEST_F(ClipboardCaptureTest, WhiteSpaceAloneIsNoEntry)
{
    capture(QStringLiteral(" \t\r\n\u00A0"));
    EXPECT_TRUE(items().isEmpty());
    EXPECT_EQ(fileContent(), std::nullopt);
}

TEST_F(ClipboardCaptureTest, FilesBecomeTheirPathsAndNames)
{
    copyFiles({QStringLiteral("/home/a b.txt"), QStringLiteral("/caf\u00E9/folder/"), QStringLiteral("/")});
    controller->checkPasteboard();
    settle();
    ASSERT_EQ(items().size(), 1);
    EXPECT_EQ(items().first().kind, ClipKind::fileURLs);
    EXPECT_EQ(items().first().filePaths,
              QStringList({QStringLiteral("/home/a b.txt"), QStringLiteral("/caf\u00E9/folder"),
                           QStringLiteral("/")}));
    EXPECT_EQ(items().first().text, QStringLiteral("a b.txt, folder, /"));
}

TEST_F(ClipboardCaptureTest, APictureBecomesAFileOfANameOfItsOwn)
{
    const QByteArray png = picture("PNG");
    capture({{pasteboardType::png, png}, {pasteboardType::string, "and a text"}});
    ASSERT_EQ(items().size(), 1);
    const ClipItem& item = items().first();
    EXPECT_EQ(item.kind, ClipKind::image);
    EXPECT_EQ(item.text, std::nullopt);
    ASSERT_TRUE(item.imageFileName.has_value());
    EXPECT_TRUE(imageName.match(*item.imageFileName).hasMatch()) << qPrintable(*item.imageFileName);
    EXPECT_FALSE(item.imageFileName->startsWith(item.id.toString(QUuid::WithoutBraces).toUpper()));
    QFile file(archive.imagesPath() + u'/' + *item.imageFileName);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), png);
    EXPECT_EQ(file.permissions() & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
}

TEST_F(ClipboardCaptureTest, TheSamePictureTwiceIsTwoEntriesAndTwoFiles)
{
    const QByteArray png = picture("PNG");
    capture({{pasteboardType::png, png}});
    capture({{pasteboardType::png, png}});
    EXPECT_EQ(items().size(), 2);
    EXPECT_EQ(imageFiles().size(), 2);
}

TEST_F(ClipboardCaptureTest, ATiffIsKeptAsPng)
{
    capture({{pasteboardType::tiff, picture("TIFF")}});
    ASSERT_EQ(items().size(), 1);
    EXPECT_EQ(items().first().kind, ClipKind::image);
    EXPECT_FALSE(QImage(archive.imagesPath() + u'/' + *items().first().imageFileName, "PNG").isNull());
}

TEST_F(ClipboardCaptureTest, ATiffThatCannotBeDecodedGivesWayToTheText)
{
    capture({{pasteboardType::tiff, "II*\0broken"}, {pasteboardType::string, "text"}});
    ASSERT_EQ(items().size(), 1);
    EXPECT_EQ(items().first().kind, ClipKind::text);
    EXPECT_TRUE(imageFiles().isEmpty());
}

TEST_F(ClipboardCaptureTest, APngThatIsOfferedAndDoesNotComeIsFollowedByTheTiff)
{
    for (const bool comesEmpty : {false, true}) {
        QMap<QString, QByteArray> data{{pasteboardType::tiff, picture("TIFF")},
                                       {pasteboardType::string, "a"}};
        if (comesEmpty)
            data.insert(pasteboardType::png, QByteArray(""));
        capture(data, {pasteboardType::png});
        ASSERT_FALSE(items().isEmpty());
        EXPECT_EQ(items().first().kind, ClipKind::image) << comesEmpty;
    }
    EXPECT_EQ(imageFiles().size(), 2);
}

TEST_F(ClipboardCaptureTest, ATextAboveItsLimitIsNotKept)
{
    const auto most = static_cast<qsizetype>(ClipboardStore::largestText / qint64{sizeof(QChar)});
    capture(QString(most, u'a'));
    EXPECT_EQ(items().size(), 1);
    capture(QString(most + 1, u'b'));
    EXPECT_EQ(items().size(), 1);
    EXPECT_TRUE(items().first().text->startsWith(u'a'));
}

TEST_F(ClipboardCaptureTest, AnEmptyPngIsNoPicture)
{
    capture({{pasteboardType::png, ""}, {pasteboardType::string, "text"}});
    ASSERT_EQ(items().size(), 1);
    EXPECT_EQ(items().first().kind, ClipKind::text);
    capture({{pasteboardType::png, ""}});
    EXPECT_EQ(items().size(), 1);
}

TEST_F(ClipboardCaptureTest, WithPicturesOffTheTextBesideOneIsTaken)
{
    settings->captureImages.set(false);
    capture({{pasteboardType::png, picture("PNG")}, {pasteboardType::string, "text"}});
    ASSERT_EQ(items().size(), 1);
    EXPECT_EQ(items().first().kind, ClipKind::text);
    capture({{pasteboardType::png, picture("PNG")}});
    EXPECT_EQ(items().size(), 1);
}

TEST_F(ClipboardCaptureTest, WithFilesOffFilesAloneAreNoEntry)
{
    settings->captureFiles.set(false);
    copyFiles({QStringLiteral("/a")});
    controller->checkPasteboard();
    settle();
    EXPECT_TRUE(items().isEmpty());
}

TEST_F(ClipboardCaptureTest, WithTextOffNeitherTextNorLinksAreTaken)
{
    settings->captureText.set(false);
    capture({{pasteboardType::url, "https://example.org"}, {pasteboardType::string, "text"}});
    EXPECT_TRUE(items().isEmpty());
    EXPECT_EQ(fake.generalPasteboard.reads, 1) << "only the types are asked for";
}

TEST_F(ClipboardCaptureTest, WhatIsMarkedAsPrivateIsNotEvenRead)
{
    const QMap<QString, QByteArray> secret{{pasteboardType::string, "secret"}};
    capture(secret, {concealed});
    EXPECT_TRUE(items().isEmpty());
    EXPECT_EQ(fake.generalPasteboard.reads, 1) << "its types, without data";
    controller->checkPasteboard();
    settle();
    EXPECT_EQ(fake.generalPasteboard.reads, 1) << "and not looked at again";

    settings->ignoreConcealed.set(false);
    capture(secret, {concealed});
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("secret")});
}

TEST_F(ClipboardCaptureTest, TheCapIsThatOfTheMomentOfTheCopy)
{
    for (int number = 0; number < 5; ++number)
        capture(QString::number(number));
    settings->maxItems.set(2);
    EXPECT_EQ(items().size(), 5);
    capture(QStringLiteral("5"));
    EXPECT_EQ(itemTexts(), QStringList({QStringLiteral("5"), QStringLiteral("4")}));
}

TEST_F(ClipboardCaptureTest, EachCopyIsSavedAndPicturesThatFellOutGo)
{
    settings->maxItems.set(1);
    capture({{pasteboardType::png, picture("PNG")}});
    EXPECT_EQ(savedItems(), items());
    EXPECT_EQ(imageFiles().size(), 1);
    capture(QStringLiteral("text"));
    EXPECT_EQ(savedItems(), items());
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("text")});
    EXPECT_TRUE(imageFiles().isEmpty());
}

TEST_F(ClipboardCaptureTest, WithoutPersistOnlyPicturesReachTheDiskAndPileUp)
{
    settings->persist.set(false);
    settings->maxItems.set(1);
    capture({{pasteboardType::png, picture("PNG")}});
    capture({{pasteboardType::png, picture("PNG")}});
    capture(QStringLiteral("text"));
    EXPECT_EQ(fileContent(), std::nullopt);
    EXPECT_EQ(imageFiles().size(), 2);
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("text")});
    EXPECT_EQ(shown(), items());
}

TEST_F(ClipboardCaptureTest, APictureThatCannotBeWrittenIsNoEntry)
{
    ASSERT_TRUE(QDir().mkpath(archive.directory));
    QFile inTheWay(archive.imagesPath());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    capture({{pasteboardType::png, picture("PNG")}, {pasteboardType::string, "text"}});
    EXPECT_TRUE(items().isEmpty());
    capture(QStringLiteral("later"));
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("later")});
}

// Owners that are slow, or never answer.

TEST_F(ClipboardCaptureTest, AnOwnerThatDoesNotAnswerIsPassedOver)
{
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::fails);
    capture(QStringLiteral("lost"));
    EXPECT_TRUE(items().isEmpty());
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    controller->checkPasteboard();
    settle();
    EXPECT_TRUE(items().isEmpty()) << "the change stays consumed";
    capture(QStringLiteral("kept"));
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("kept")});
}

TEST_F(ClipboardCaptureTest, AnOwnerThatDiesBetweenTheTwoReadsIsPassedOver)
{
    fake.generalPasteboard.copyString(QStringLiteral("lost"));
    controller->checkPasteboard();
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::hangs);
    settle();
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::fails);
    settle();
    EXPECT_TRUE(items().isEmpty());
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    capture(QStringLiteral("kept"));
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("kept")});
}

TEST_F(ClipboardCaptureTest, ASlowOwnersCopyKeepsItsTimeAndSource)
{
    const auto copied = fake.clock.date();
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::hangs);
    capture(QStringLiteral("slow"));
    EXPECT_TRUE(items().isEmpty());
    fake.runLoop.advance(5s);
    fake.workspace.frontmost.reset();
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    settle();
    ASSERT_EQ(items().size(), 1);
    EXPECT_EQ(items().first().date, ClipItem::dateFrom(copied));
    EXPECT_EQ(items().first().sourceApp, QStringLiteral("org.example.editor"));
}

TEST_F(ClipboardCaptureTest, WhatIsCopiedWhileAnOwnerHangsIsTakenOnceAndForItself)
{
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::hangs);
    capture(QStringLiteral("hung"));
    fake.generalPasteboard.copyString(QStringLiteral("newer"));
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    settle();
    EXPECT_TRUE(items().isEmpty()) << "what is newer isn't taken for the copy that was asked for";
    controller->checkPasteboard();
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("newer")});
}

TEST_F(ClipboardCaptureTest, ASecretCopiedBetweenTheTwoReadsIsNotTaken)
{
    fake.generalPasteboard.copyString(QStringLiteral("harmless"));
    controller->checkPasteboard();
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::hangs);
    settle();
    copy({{pasteboardType::string, "secret"}}, {concealed});
    fake.generalPasteboard.setOwner(FakePasteboard::Owner::answers);
    settle();
    controller->checkPasteboard();
    settle();
    EXPECT_TRUE(items().isEmpty());
}

TEST_F(ClipboardCaptureTest, CopiesKeepTheirOrderWhenThePictureTakesLonger)
{
    copy({{pasteboardType::png, picture("PNG")}});
    controller->checkPasteboard();
    fake.runLoop.drain(); // read; the copy waits for the pool
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    controller->checkPasteboard();
    // The text is done first: the picture still has to be written.
    fake.runLoop.drain();
    fake.runLoop.drainDetached();
    fake.runLoop.drain();
    EXPECT_TRUE(items().isEmpty());
    settle();
    ASSERT_EQ(items().size(), 2);
    EXPECT_EQ(items()[0].text, QStringLiteral("text"));
    EXPECT_EQ(items()[1].kind, ClipKind::image);
    EXPECT_EQ(savedItems(), items());
    EXPECT_EQ(imageFiles().size(), 1);
}

TEST_F(ClipboardCaptureTest, ASaveMeanwhileDoesNotPruneThePictureThatIsOnItsWay)
{
    capture(QStringLiteral("text"));
    copy({{pasteboardType::png, picture("PNG")}});
    controller->checkPasteboard();
    fake.runLoop.drain();
    fake.runLoop.drainDetached(); // classified
    fake.runLoop.drain();         // asks for its writing
    controller->panel().model.onTogglePin(items().first());
    fake.runLoop.drainDetached(); // written, saved, pruned
    EXPECT_EQ(imageFiles().size(), 1);
    settle();
    ASSERT_EQ(items().size(), 2);
    EXPECT_EQ(imageFiles(), QStringList{*items().first().imageFileName});
}

TEST_F(ClipboardCaptureTest, ClearingDropsCopiesThatAreOnTheirWayAndTheirPictures)
{
    copy({{pasteboardType::png, picture("PNG")}});
    controller->checkPasteboard();
    fake.runLoop.drain();
    fake.runLoop.drainDetached();
    fake.runLoop.drain();
    fake.runLoop.drainDetached(); // written
    EXPECT_EQ(imageFiles().size(), 1);
    controller->clearHistory();
    settle();
    EXPECT_TRUE(items().isEmpty());
    EXPECT_TRUE(imageFiles().isEmpty());
    EXPECT_EQ(savedItems(), QList<ClipItem>());
}

TEST_F(ClipboardCaptureTest, TheEndOfTheControllerEndsItsCaptures)
{
    copy({{pasteboardType::png, picture("PNG")}});
    controller->checkPasteboard();
    fake.runLoop.drain();
    controller.reset();
    settle();
    EXPECT_TRUE(imageFiles().isEmpty());
    EXPECT_EQ(fileContent(), std::nullopt);
}

} // namespace orvane::tests

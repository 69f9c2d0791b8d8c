#include "PlatformLinux/Pasteboard/PasteboardFormats.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

QByteArray utf16(const QString& text, const char* mark = "")
{
    return QByteArray(mark) + QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

QList<QUrl> urls(std::initializer_list<const char*> texts)
{
    QList<QUrl> list;
    for (const char* text : texts)
        list.append(QUrl(QString::fromUtf8(text)));
    return list;
}

} // namespace

TEST(UriList, GivesTheUrlsInOrder)
{
    EXPECT_EQ(decodeUriList("file:///b\r\nfile:///a\r\n"), urls({"file:///b", "file:///a"}));
}

TEST(UriList, CommentsAndEmptyLinesAreLeftOut)
{
    EXPECT_EQ(decodeUriList("# of somebody\r\n\r\n  \nfile:///a\n"), urls({"file:///a"}));
}

TEST(UriList, WhatIsNotAUrlIsLeftOut)
{
    EXPECT_EQ(decodeUriList("plain text\r\n/tmp/a\r\n://\r\nfile:///a"), urls({"file:///a"}));
}

TEST(UriList, ZerosAtTheEndAreNoPartOfIt)
{
    EXPECT_EQ(decodeUriList(QByteArray("file:///a\0\0", 11)), urls({"file:///a"}));
}

TEST(UriList, UnescapedBlanksArePartOfThePath)
{
    const auto list = decodeUriList("file:///tmp/a b\r\n");
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list[0].toLocalFile(), QStringLiteral("/tmp/a b"));
}

TEST(UriList, ThisMachineByNameIsThisMachine)
{
    const auto list = decodeUriList("file://localhost/tmp/a");
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list[0].toLocalFile(), QStringLiteral("/tmp/a"));
}

TEST(UriList, FurtherSlashesBehindTheNameOfThisMachineAreOne)
{
    EXPECT_EQ(decodeUriList("file://localhost//tmp/a%20b"), urls({"file:///tmp/a%20b"}));
    EXPECT_EQ(decodeUriList("file://localhost///100%25"), urls({"file:///100%25"}));
}

TEST(UriList, IsReadAsItWasWritten)
{
    const QList<QUrl> files{QUrl::fromLocalFile(QStringLiteral("/tmp/a b\u00FC%")),
                            QUrl::fromLocalFile(QStringLiteral("/tmp/#?\n"))};
    EXPECT_EQ(decodeUriList(encodeUriList(files)), files);
}

TEST(CopiedFiles, TheFirstLineIsWhatToDoWithThem)
{
    EXPECT_EQ(decodeCopiedFiles("copy\nfile:///a\nfile:///b"), urls({"file:///a", "file:///b"}));
    EXPECT_EQ(decodeCopiedFiles("cut\nfile:///a"), urls({"file:///a"}));
}

TEST(CopiedFiles, WithoutItAllLinesAreFiles)
{
    EXPECT_EQ(decodeCopiedFiles("file:///a\nfile:///b"), urls({"file:///a", "file:///b"}));
    EXPECT_TRUE(decodeCopiedFiles("copy").isEmpty());
    EXPECT_TRUE(decodeCopiedFiles("").isEmpty());
}

TEST(CopiedFiles, IsReadAsItWasWritten)
{
    const auto files = urls({"file:///tmp/a%20b", "file:///c"});
    EXPECT_EQ(decodeCopiedFiles(encodeCopiedFiles(files)), files);
}

TEST(MozUrl, IsTheLineBeforeTheTitle)
{
    EXPECT_EQ(decodeMozUrl(utf16(QStringLiteral("https://a.b/\nA title"))), QStringLiteral("https://a.b/"));
    EXPECT_EQ(decodeMozUrl("https://a.b/\nA title"), QStringLiteral("https://a.b/"));
}

TEST(MozUrl, NeedsNoTitle)
{
    EXPECT_EQ(decodeMozUrl(utf16(QStringLiteral("https://a.b/"))), QStringLiteral("https://a.b/"));
}

TEST(MozUrl, AnEmptyLineIsNoLink)
{
    EXPECT_EQ(decodeMozUrl(utf16(QStringLiteral("\nA title"))), std::nullopt);
    EXPECT_EQ(decodeMozUrl(""), std::nullopt);
}

TEST(MozUrl, IsReadAsItWasWritten)
{
    const QString url = QStringLiteral("https://a.b/\u00FC\U0001F600");
    EXPECT_EQ(decodeMozUrl(encodeMozUrl(url)), url);
}

TEST(PasteboardText, AMarkTellsTheOrderOfBytes)
{
    EXPECT_EQ(decodeText(QByteArray("\xFF\xFE<\0b\0", 6)), QStringLiteral("<b"));
    EXPECT_EQ(decodeText(QByteArray("\xFE\xFF\0<\0b", 6)), QStringLiteral("<b"));
    EXPECT_EQ(decodeText("\xEF\xBB\xBF<b"), QStringLiteral("<b"));
}

TEST(PasteboardText, Utf16IsKnownWithoutAMark)
{
    EXPECT_EQ(decodeText(utf16(QStringLiteral("<b>\u00FC"))), QStringLiteral("<b>\u00FC"));
}

TEST(PasteboardText, WhatIsNotUtf8IsLatin1)
{
    EXPECT_EQ(decodeText("gr\xC3\xBC\xC3\x9F"), QStringLiteral("gr\u00FC\u00DF"));
    EXPECT_EQ(decodeText("gr\xFC\xDF"), QStringLiteral("gr\u00FC\u00DF"));
    EXPECT_EQ(decodeText(""), QString());
    EXPECT_EQ(decodeText(QByteArray("\0", 1)), QString());
}

TEST(PasteboardFormats, APngIsKnownByItsFirstBytes)
{
    EXPECT_TRUE(isPng("\x89PNG\r\n\x1A\n"));
    EXPECT_FALSE(isPng("BM"));
}

} // namespace orvane::tests

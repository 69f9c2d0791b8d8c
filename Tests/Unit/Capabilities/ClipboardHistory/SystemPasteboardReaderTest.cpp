#include "Capabilities/ClipboardHistory/Capture/SystemPasteboardReader.h"
#include "Fakes/FakePlatform.h"
#include "HistoryFixture.h"

namespace orvane::tests {

TEST(SystemPasteboardReader, GivesWhatWasRead)
{
    const QUrl file = QUrl::fromLocalFile(QStringLiteral("/a"));
    const SystemPasteboardReader reader(
        {.types = {QStringLiteral("x"), QStringLiteral("y")},
         .data = {{pasteboardType::url, "https://example.org"}, {pasteboardType::string, "caf\xC3\xA9"}},
         .fileURLs = {file}});
    EXPECT_EQ(reader.types(), QStringList({QStringLiteral("x"), QStringLiteral("y")}));
    EXPECT_EQ(reader.urlString(), QStringLiteral("https://example.org"));
    EXPECT_EQ(reader.plainString(), QStringLiteral("caf\u00E9"));
    EXPECT_EQ(reader.pngData(), std::nullopt);
    EXPECT_EQ(reader.fileURLs(), QList<QUrl>{file});
}

TEST(SystemPasteboardReader, GivesNothingOfAnEmptyPasteboard)
{
    const SystemPasteboardReader reader(PasteboardContents{});
    EXPECT_TRUE(reader.types().isEmpty());
    EXPECT_EQ(reader.urlString(), std::nullopt);
    EXPECT_EQ(reader.plainString(), std::nullopt);
    EXPECT_EQ(reader.pngData(), std::nullopt);
    EXPECT_EQ(reader.fileURLs(), std::nullopt);
}

TEST(SystemPasteboardReader, APngComesAsItStandsAlsoBesideATiff)
{
    const SystemPasteboardReader reader(
        {.data = {{pasteboardType::png, "whatever"}, {pasteboardType::tiff, picture("TIFF")}}});
    EXPECT_EQ(reader.pngData(), QByteArray("whatever"));
    const SystemPasteboardReader empty(
        {.data = {{pasteboardType::png, ""}, {pasteboardType::tiff, picture("TIFF")}}});
    EXPECT_EQ(empty.pngData(), QByteArray(""));
}

TEST(SystemPasteboardReader, ATiffIsConverted)
{
    FakePlatform fake;
    convertByToolkit(fake);
    const QByteArray tiff = picture("TIFF", 0xFF123456);
    ASSERT_FALSE(tiff.isEmpty()) << "the toolkit's plugin for TIFF is missing";
    const SystemPasteboardReader reader({.data = {{pasteboardType::tiff, tiff}}});
    const auto png = reader.pngData();
    ASSERT_TRUE(png.has_value());
    const QImage image = QImage::fromData(*png, "PNG");
    EXPECT_EQ(image.size(), QSize(8, 4));
    EXPECT_EQ(image.pixel(3, 2), 0xFF123456);
}

TEST(SystemPasteboardReader, WhatIsNoTiffGivesNoPicture)
{
    FakePlatform fake;
    convertByToolkit(fake);
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("no picture"), QByteArray("II*"), QByteArray("II*\0\xFF\xFF\xFF\xFF", 8),
          picture("TIFF").first(40), QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9'/>")}) {
        const SystemPasteboardReader reader({.data = {{pasteboardType::tiff, bytes}}});
        EXPECT_EQ(reader.pngData(), std::nullopt) << bytes.toPercentEncoding().constData();
    }
}

} // namespace orvane::tests

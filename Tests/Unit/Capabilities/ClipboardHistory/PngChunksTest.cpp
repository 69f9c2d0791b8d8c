// The parts of a PNG file that reach the decoder.
#include "Capabilities/ClipboardHistory/Capture/PngChunks.h"
#include "Capabilities/ClipboardHistory/Capture/Picture.h"
#include "HistoryFixture.h"
#include "Support/LeaksOfOthers.h"

#include <QtEndian>

namespace orvane::tests {

namespace {

constexpr qsizetype beforeData = 8 + 25; // the signature and the header

QByteArray chunk(const char* name, quint32 claimed, const QByteArray& content)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(claimed, bytes.data());
    return bytes + name + content + QByteArray(4, '\0');
}

/// Returns the most memory that the process has had mapped, in KiB.
qint64 peakOfMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const qsizetype start = text.indexOf("VmPeak:") + 7;
    return text.sliced(start, text.indexOf("kB", start) - start).trimmed().toLongLong();
}

} // namespace

TEST(PngChunks, APictureKeepsItsPixels)
{
    const QByteArray png = picture("PNG");
    EXPECT_EQ(Picture::image(png), std::optional(QImage::fromData(png, "PNG")));
    EXPECT_EQ(PngChunks::ofPixels(PngChunks::ofPixels(png)), PngChunks::ofPixels(png));
}

TEST(PngChunks, TextsAndProfilesAreLeftOut)
{
    QByteArray png = picture("PNG");
    png.insert(beforeData, chunk("zTXt", 3, "abc") + chunk("iCCP", 2, "de"));
    const QByteArray pixels = PngChunks::ofPixels(png);
    EXPECT_FALSE(pixels.contains("zTXt") || pixels.contains("iCCP"));
    EXPECT_TRUE(Picture::image(png));
}

TEST(PngChunks, ATextThatClaimsMoreThanThereIsCostsNothing)
{
    const qint64 before = peakOfMemory();
    ASSERT_GT(before, 0);
    QByteArray png = picture("PNG");
    const QByteArray claim = chunk("tEXt", 0x7FFFFFF0, "abc");
    EXPECT_FALSE(Picture::image(png.first(beforeData) + claim + png.sliced(beforeData)));
    EXPECT_FALSE(Picture::image(png.first(beforeData) + claim));
    EXPECT_LT(peakOfMemory() - before, qint64{1} << 20) << "less than a GiB";
}

TEST(PngChunks, NoLengthIsTooShort)
{
    const QByteArray png = picture("PNG");
    for (qsizetype length = 0; length <= png.size(); ++length)
        EXPECT_LE(PngChunks::ofPixels(png.first(length)).size(), std::max<qsizetype>(length, 8)) << length;
}

TEST(Picture, WhereverItsTimeEndsItGivesNothing)
{
    const QByteArray bytes = picture("PNG");
    int questions = 0;
    const auto count = [&questions] {
        ++questions;
        return false;
    };
    ASSERT_TRUE(Picture::image(bytes, count));
    for (int end = 0; end < questions; ++end) {
        int asked = 0;
        const LeaksOfOthers ofTheDecoder;
        EXPECT_EQ(Picture::image(bytes, [&] { return asked++ >= end; }), std::nullopt) << end;
    }
}

TEST(Picture, OnlyPngIsReadHere)
{
    EXPECT_TRUE(Picture::isReadable(picture("PNG")));
    for (const char* format : {"TIFF", "BMP", "JPEG"}) {
        EXPECT_EQ(Picture::image(picture(format)), std::nullopt) << format;
        EXPECT_FALSE(Picture::isReadable(picture(format))) << format;
    }
}

TEST(Picture, OneAboveTheToolkitsOwnLimitIsRead)
{
    QImage large(6000, 6000, QImage::Format_RGB32); // 137 MiB
    large.fill(0xFF3366CC);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(large.save(&buffer, "PNG"));
    const auto read = Picture::image(buffer.data());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->size(), large.size());
}

} // namespace orvane::tests

// The conversion of foreign pictures to PNG, and its end by time.
#include "PlatformLinux/Pasteboard/PictureConversion.h"
#include "Support/LeaksOfOthers.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

bool never()
{
    return false;
}

QByteArray encoded(const QImage& image, const char* format)
{
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&bytes, format));
    return bytes.data();
}

/// Returns a picture that hardly becomes smaller by compression.
QImage noise()
{
    QImage image(150, 100, QImage::Format_RGB32);
    std::uint32_t state = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            state = state * 1664525u + 1013904223u;
            image.setPixel(x, y, 0xFF000000u | state >> 8);
        }
    }
    return image;
}

} // namespace

TEST(PictureConversion, WhatCannotBeReadIsNone)
{
    EXPECT_EQ(convertToPng({"", "bmp"}, never), std::nullopt);
    EXPECT_EQ(convertToPng({"BM not a picture", "bmp"}, never), std::nullopt);
}

TEST(PictureConversion, APictureBecomesAPng)
{
    for (const char* format : {"bmp", "jpeg"}) {
        const auto png = convertToPng({encoded(noise(), format), format}, never);
        ASSERT_TRUE(png) << format;
        EXPECT_EQ(QImage::fromData(*png, "PNG").size(), QSize(150, 100));
    }
}

TEST(PictureConversion, EachPixelOfABmpIsThere)
{
    const auto png = convertToPng({encoded(noise(), "bmp"), "bmp"}, never);
    ASSERT_TRUE(png);
    EXPECT_EQ(QImage::fromData(*png, "PNG").convertToFormat(QImage::Format_RGB32), noise());
}

TEST(PictureConversion, AJpegIsTheSameAsFromItsBytesAtOnce)
{
    const QByteArray jpeg = encoded(noise(), "jpeg");
    const auto png = convertToPng({jpeg, "jpeg"}, never);
    ASSERT_TRUE(png);
    EXPECT_EQ(QImage::fromData(*png, "PNG").convertToFormat(QImage::Format_RGB32),
              QImage::fromData(jpeg, "JPEG").convertToFormat(QImage::Format_RGB32));
}

TEST(PictureConversion, WhereverItsTimeEndsItGivesNothing)
{
    for (const char* format : {"bmp", "jpeg"}) {
        const ForeignPicture picture{encoded(noise(), format), format};
        int questions = 0;
        ASSERT_TRUE(convertToPng(picture, [&] {
            ++questions;
            return false;
        }));
        // A BMP is read row by row, a JPEG in pieces of 256 bytes, and the result has several pieces.
        EXPECT_GE(questions, 50) << format;
        for (int end = 0; end < questions; ++end) {
            int asked = 0;
            const LeaksOfOthers ofTheEncoder;
            EXPECT_EQ(convertToPng(picture, [&] { return asked++ >= end; }), std::nullopt)
                << format << " ended at " << end << " of " << questions;
        }
    }
}

TEST(PictureConversion, OnlyTheFormatThatWasOfferedIsLookedInto)
{
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QByteArray bmp = encoded(image, "BMP");
    EXPECT_TRUE(convertToPng({bmp, "bmp"}, never));
    EXPECT_EQ(convertToPng({bmp, "jpeg"}, never), std::nullopt);
    const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'><rect width='4' "
                           "height='4'/></svg>";
    const QByteArray xpm = "/* XPM */\nstatic char* a[] = {\"1 1 1 1\", \"a c #000000\", \"a\"};";
    for (const char* format : {"bmp", "jpeg"}) {
        EXPECT_EQ(convertToPng({svg, format}, never), std::nullopt) << format;
        EXPECT_EQ(convertToPng({xpm, format}, never), std::nullopt) << format;
    }
}

} // namespace orvane::tests

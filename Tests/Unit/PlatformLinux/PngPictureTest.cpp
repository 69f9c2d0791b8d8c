#include "PlatformLinux/Tray/PngPicture.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace orvane;

namespace {

TEST(PngPicture, IsReadBackAsTheSamePicture)
{
    QImage image(7, 5, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(x * 30, y * 50, 255 - x * 9, x * 40));
    const QImage read = QImage::fromData(pngPicture(image), "PNG");
    EXPECT_EQ(read.convertToFormat(QImage::Format_ARGB32), image);
}

TEST(PngPicture, KeepsWhatWasMultipliedByItsAlpha)
{
    QImage image(3, 3, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(200, 100, 50, 128));
    const QColor read = QImage::fromData(pngPicture(image), "PNG").pixelColor(1, 1);
    EXPECT_NEAR(read.red(), 200, 2);
    EXPECT_NEAR(read.blue(), 50, 2);
    EXPECT_EQ(read.alpha(), 128);
}

} // namespace

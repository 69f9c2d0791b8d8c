// The conversion of foreign pictures to PNG by the worker.
#include "PicturesFixture.h"
#include "Support/Eventually.h"

#include <QBuffer>

#include <csignal>
#include <thread>

namespace orvane::tests {

namespace {

using enum Pictures::Foreign;

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

class ConversionTest : public PicturesFixture {
protected:
    [[nodiscard]] std::optional<QByteArray> convert(const QByteArray& bytes, Pictures::Foreign format)
    {
        return pictures.png(bytes, format, {});
    }
};

constexpr std::pair<Pictures::Foreign, const char*> formats[] = {
    {bmp, "bmp"}, {jpeg, "jpeg"}, {tiff, "tiff"}};

} // namespace

TEST_F(ConversionTest, WhatCannotBeReadIsNone)
{
    for (const auto& [format, name] : formats) {
        EXPECT_EQ(convert("", format), std::nullopt) << name;
        EXPECT_EQ(convert("BM not a picture", format), std::nullopt) << name;
        const QByteArray whole = encoded(noise(), name);
        for (int tenth = 0; tenth < 10; ++tenth)
            EXPECT_EQ(convert(whole.first(whole.size() * tenth / 10), format), std::nullopt) << name << tenth;
    }
}

TEST_F(ConversionTest, APictureBecomesAPng)
{
    for (const auto& [format, name] : formats) {
        const auto png = convert(encoded(noise(), name), format);
        ASSERT_TRUE(png) << name;
        EXPECT_EQ(QImage::fromData(*png, "PNG").size(), QSize(150, 100));
    }
}

TEST_F(ConversionTest, EachPixelIsThere)
{
    for (const auto& [format, name] : {formats[0], formats[2]}) {
        const auto png = convert(encoded(noise(), name), format);
        ASSERT_TRUE(png) << name;
        EXPECT_EQ(QImage::fromData(*png, "PNG").convertToFormat(QImage::Format_RGB32), noise()) << name;
    }
}

TEST_F(ConversionTest, TranslucentPixelsStay)
{
    QImage image(20, 10, QImage::Format_ARGB32);
    image.fill(qRgba(200, 100, 50, 128));
    const auto png = convert(encoded(image, "tiff"), tiff);
    ASSERT_TRUE(png);
    const QColor pixel = QImage::fromData(*png, "PNG").pixelColor(7, 7);
    EXPECT_NEAR(pixel.red(), 200, 1);
    EXPECT_NEAR(pixel.green(), 100, 1);
    EXPECT_EQ(pixel.alpha(), 128);
}

TEST_F(ConversionTest, AJpegIsTheSameAsByTheToolkit)
{
    const QByteArray bytes = encoded(noise(), "jpeg");
    const auto png = convert(bytes, jpeg);
    ASSERT_TRUE(png);
    EXPECT_EQ(QImage::fromData(*png, "PNG").convertToFormat(QImage::Format_RGB32),
              QImage::fromData(bytes, "JPEG").convertToFormat(QImage::Format_RGB32));
}

TEST_F(ConversionTest, AStopAndTheTimeLimitEndIt)
{
    const QByteArray bytes = encoded(noise(), "bmp");
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_EQ(pictures.png(bytes, bmp, stopped.get_token()), std::nullopt);
    WorkerPictures hurried(helperProgram("orvane-worker"), log, 3s);
    ASSERT_TRUE(hurried.png(bytes, bmp, {}));
    ASSERT_EQ(::kill(workers().value(0), SIGSTOP), 0);
    EXPECT_EQ(hurried.png(bytes, bmp, {}), std::nullopt);
    EXPECT_TRUE(hurried.png(bytes, bmp, {}));
}

TEST_F(ConversionTest, OnlyTheFormatThatWasOfferedIsLookedInto)
{
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'><rect width='4' "
                           "height='4'/></svg>";
    const QByteArray xpm = "/* XPM */\nstatic char* a[] = {\"1 1 1 1\", \"a c #000000\", \"a\"};";
    for (const auto& [format, name] : formats) {
        for (const auto& [other, otherName] : formats)
            EXPECT_EQ(convert(encoded(image, otherName), format).has_value(), format == other)
                << name << otherName;
        EXPECT_EQ(convert(encoded(image, "png"), format), std::nullopt) << name;
        EXPECT_EQ(convert(svg, format), std::nullopt) << name;
        EXPECT_EQ(convert(xpm, format), std::nullopt) << name;
    }
}

TEST_F(ConversionTest, APictureThatIsTooLargeIsRefused)
{
    // 12,000 by 12,000 pixels by its own account, and by its size on the disk.
    QByteArray header(54, '\0');
    header.replace(0, 2, "BM");
    const auto put = [&header](qsizetype place, std::uint32_t value) {
        for (int i = 0; i < 4; ++i)
            header[place + i] = static_cast<char>(value >> (8 * i) & 0xFF);
    };
    put(10, 54);
    put(14, 40);
    put(18, 12000);
    put(22, 12000);
    header[26] = 1;
    header[28] = 8;
    EXPECT_EQ(convert(header + QByteArray(qsizetype{12000} * 12000, '\0'), bmp), std::nullopt);
}

} // namespace orvane::tests

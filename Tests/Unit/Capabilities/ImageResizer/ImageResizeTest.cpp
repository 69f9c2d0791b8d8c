// The pure side: fitting, names, types, presets, settings.
#include "Capabilities/ImageResizer/ImageResizerSettings.h"
#include "Fakes/FakePlatform.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <cmath>

namespace orvane::tests {

using enum ImageResizeMath::Enlarging;
using ImageResizeEngine::outputPath;
using ImageResizeEngine::outputType;
using ImageResizeMath::fittedSize;

namespace {

const QString id = QStringLiteral("net.lindenrow.orvane.imageresizer");

struct ImageResizerSettingsTest : ::testing::Test {
    void store(const char* key, const QVariant& value)
    {
        ScopedPreferences(fake.defaults, id).set(value, QLatin1String(key));
    }
    [[nodiscard]] ImageResizerSettings read()
    {
        return ImageResizerSettings(ScopedPreferences(fake.defaults, id));
    }

    FakePlatform fake;
};

} // namespace

TEST(ImageResizeMathTest, FitsIntoTheBox)
{
    struct Row {
        QSizeF original;
        QSizeF box;
        ImageResizeMath::Enlarging enlarging;
        QSizeF expected;
    };
    for (const Row& row : {
             Row{{4000, 3000}, {1920, 1080}, no, {1440, 1080}},
             Row{{100, 100}, {1366, 768}, no, {100, 100}},
             Row{{100, 100}, {1366, 768}, yes, {768, 768}},
             Row{{10000, 10}, {854, 480}, no, {854, 1}},
             Row{{10, 10000}, {854, 480}, no, {1, 480}},
             Row{{750, 1334}, {750, 1334}, no, {750, 1334}},
             Row{{3000, 4000}, {750, 1334}, no, {750, 1000}},
             // 3 × 1/2 is 1.5: halves go away from zero.
             Row{{3, 2}, {2, 1}, no, {2, 1}},
             Row{{5, 2}, {1000, 1}, no, {3, 1}},
             Row{{1, 1}, {1, 1}, yes, {1, 1}},
         }) {
        EXPECT_EQ(fittedSize(row.original, row.box.width(), row.box.height(), row.enlarging), row.expected)
            << row.original.width() << "x" << row.original.height();
    }
}

TEST(ImageResizeMathTest, WithoutAPositiveLengthTheOriginalStays)
{
    const QSizeF original(40, 30);
    EXPECT_EQ(fittedSize(original, 0, 10, yes), original);
    EXPECT_EQ(fittedSize(original, 10, 0, yes), original);
    EXPECT_EQ(fittedSize(original, -5, 10, yes), original);
    EXPECT_EQ(fittedSize(original, 10, -5, yes), original);
    EXPECT_EQ(fittedSize({0, 30}, 10, 10, yes), QSizeF(0, 30));
    EXPECT_EQ(fittedSize({40, -1}, 10, 10, yes), QSizeF(40, -1));
    EXPECT_EQ(fittedSize(original, std::nan(""), 10, yes), original);
}

TEST(ImageResizeMathTest, NeverLeavesTheBoxNorLosesADirection)
{
    QRandomGenerator random(14);
    const auto length = [&random] { return double(random.bounded(1, 30000)); };
    for (int i = 0; i < 20000; ++i) {
        const QSizeF original(length(), length());
        const QSizeF box(length(), length());
        const bool enlarges = i % 2 == 0;
        const QSizeF fitted = fittedSize(original, box.width(), box.height(), enlarges ? yes : no);
        ASSERT_GE(fitted.width(), 1);
        ASSERT_GE(fitted.height(), 1);
        ASSERT_LE(fitted.width(), box.width());
        ASSERT_LE(fitted.height(), box.height());
        ASSERT_EQ(fitted.width(), std::floor(fitted.width()));
        if (!enlarges) {
            ASSERT_LE(fitted.width(), original.width());
            ASSERT_LE(fitted.height(), original.height());
        } else {
            // One direction fills the box.
            ASSERT_TRUE(fitted.width() == box.width() || fitted.height() == box.height());
        }
        // Where neither direction was raised to 1, each is the scaled one but for half a pixel.
        const double scale = std::min(
            {box.width() / original.width(), box.height() / original.height(), enlarges ? INFINITY : 1.0});
        if (original.width() * scale >= 1 && original.height() * scale >= 1) {
            ASSERT_NEAR(fitted.width(), original.width() * scale, 0.5001);
            ASSERT_NEAR(fitted.height(), original.height() * scale, 0.5001);
        }
    }
}

TEST(ImageResizeEngineTest, ChoosesTypeAndExtension)
{
    using enum Pictures::Type;
    struct Row {
        const char* name;
        ResizeFormat format;
        Pictures::Type type;
        const char* extension;
    };
    for (const Row& row : {
             Row{"/a/p.gif", ResizeFormat::png, Pictures::Type::png, "png"},
             Row{"/a/p", ResizeFormat::png, Pictures::Type::png, "png"},
             Row{"/a/p.PNG", ResizeFormat::jpeg, Pictures::Type::jpeg, "jpg"},
             Row{"/a/p.jpeg", ResizeFormat::jpeg, Pictures::Type::jpeg, "jpg"},
             Row{"/a/p.png", ResizeFormat::keepOriginal, Pictures::Type::png, "png"},
             Row{"/a/p.PNG", ResizeFormat::keepOriginal, Pictures::Type::png, "png"},
             Row{"/a/p.heic", ResizeFormat::keepOriginal, heic, "heic"},
             Row{"/a/p.tiff", ResizeFormat::keepOriginal, tiff, "tiff"},
             Row{"/a/p", ResizeFormat::keepOriginal, Pictures::Type::jpeg, "jpg"},
             Row{"/a.png/p", ResizeFormat::keepOriginal, Pictures::Type::jpeg, "jpg"},
             Row{"/a/.png", ResizeFormat::keepOriginal, Pictures::Type::jpeg, "jpg"},
             // The rest is JPEG under the name that it has.
             Row{"/a/p.jpg", ResizeFormat::keepOriginal, Pictures::Type::jpeg, "jpg"},
             Row{"/a/p.jpeg", ResizeFormat::keepOriginal, Pictures::Type::jpeg, "jpeg"},
             Row{"/a/p.gif", ResizeFormat::keepOriginal, Pictures::Type::jpeg, "gif"},
             Row{"/a/p.bmp", ResizeFormat::keepOriginal, Pictures::Type::jpeg, "bmp"},
             Row{"/a/p.webp", ResizeFormat::keepOriginal, Pictures::Type::jpeg, "webp"},
             Row{"/a/p.tif", ResizeFormat::keepOriginal, Pictures::Type::jpeg, "tif"},
         }) {
        EXPECT_EQ(outputType(QLatin1String(row.name), row.format),
                  (ImageResizeEngine::Output{row.type, QLatin1String(row.extension)}))
            << row.name;
    }
}

TEST(ImageResizeEngineTest, NamesCopies)
{
    const auto name = [](const char* path, const char* extension, int index) {
        return outputPath(QLatin1String(path), QStringLiteral("Medium"), QLatin1String(extension), index);
    };
    EXPECT_EQ(name("/a/photo.png", "png", 0), QStringLiteral("/a/photo (Medium).png"));
    EXPECT_EQ(name("/a/photo.png", "png", 1), QStringLiteral("/a/photo (Medium) 2.png"));
    EXPECT_EQ(name("/a/photo.png", "jpg", 2), QStringLiteral("/a/photo (Medium) 3.jpg"));
    EXPECT_EQ(name("/a/my.photo.png", "png", 0), QStringLiteral("/a/my.photo (Medium).png"));
    EXPECT_EQ(name("/a.b/photo", "jpg", 0), QStringLiteral("/a.b/photo (Medium).jpg"));
    EXPECT_EQ(name("/a/.png", "jpg", 0), QStringLiteral("/a/.png (Medium).jpg"));
    EXPECT_EQ(outputPath(QStringLiteral("/a/%1.png"), QStringLiteral("1280×720"), QStringLiteral("png"), 0),
              QStringLiteral("/a/%1 (1280×720).png"));
}

TEST(ImageResizeEngineTest, ResizesOneFile)
{
    FakePictures pictures;
    pictures.add(QStringLiteral("/a/photo.jpg"), {4000, 3000});
    pictures.addOther(QStringLiteral("/a/photo (Medium).jpg"));
    const ImageResizeEngine::Options options{
        {1366, 768}, no, ResizeFormat::keepOriginal, 0.7, QStringLiteral("Medium")};
    EXPECT_EQ(ImageResizeEngine::resize(pictures, QStringLiteral("/a/photo.jpg"), options, {}),
              QStringLiteral("/a/photo (Medium) 2.jpg"));
    ASSERT_EQ(pictures.copies().size(), 1);
    EXPECT_EQ(pictures.copies()[0].size, (Pictures::Size{1024, 768}));
    EXPECT_EQ(pictures.copies()[0].type, Pictures::Type::jpeg);
    EXPECT_EQ(pictures.copies()[0].quality, 0.7);
    EXPECT_FALSE(ImageResizeEngine::resize(pictures, QStringLiteral("/a/none.jpg"), options, {}));
    EXPECT_FALSE(ImageResizeEngine::resize(pictures, QStringLiteral("/a/photo (Medium).jpg"), options, {}));
}

TEST(ResizePresetTest, TitlesBoxesAndLabels)
{
    struct Row {
        const char* name;
        QString title;
        QString label;
        std::optional<QSize> box;
    };
    const QList<Row> rows{
        {"small", QStringLiteral("Small — 854 × 480"), QStringLiteral("Small"), QSize(854, 480)},
        {"medium", QStringLiteral("Medium — 1366 × 768"), QStringLiteral("Medium"), QSize(1366, 768)},
        {"large", QStringLiteral("Large — 1920 × 1080"), QStringLiteral("Large"), QSize(1920, 1080)},
        {"phone", QStringLiteral("Phone — 750 × 1334"), QStringLiteral("Phone"), QSize(750, 1334)},
        {"custom", QStringLiteral("Custom"), QStringLiteral("Custom"), std::nullopt}};
    ASSERT_EQ(allCases<ResizePreset>().size(), 5U);
    for (const Row& row : rows) {
        const auto preset = fromRawValue<ResizePreset>(QString::fromLatin1(row.name));
        ASSERT_TRUE(preset) << row.name;
        EXPECT_EQ(title(*preset), row.title);
        EXPECT_EQ(shortLabel(*preset), row.label);
        EXPECT_EQ(box(*preset), row.box);
    }
}

TEST_F(ImageResizerSettingsTest, HaveTheirDefaults)
{
    const auto settings = read();
    EXPECT_EQ(settings.preset.get(), ResizePreset::medium);
    EXPECT_EQ(settings.customWidth.get(), 1280);
    EXPECT_EQ(settings.customHeight.get(), 1280);
    EXPECT_EQ(settings.format.get(), ResizeFormat::keepOriginal);
    EXPECT_EQ(settings.quality.get(), 0.85);
    EXPECT_FALSE(settings.allowUpscale.get());
    EXPECT_EQ(settings.label(), QStringLiteral("Medium"));
    EXPECT_EQ(settings.boundingBox(), QSize(1366, 768));
}

TEST_F(ImageResizerSettingsTest, ReadWhatIsStoredUnderTheirKeys)
{
    store("preset", QStringLiteral("custom"));
    store("customW", 1280);
    store("customH", 720);
    store("format", QStringLiteral("jpeg"));
    store("quality", 0.5);
    store("allowUpscale", true);
    const auto options = read().options();
    EXPECT_EQ(options.box, QSizeF(1280, 720));
    EXPECT_EQ(options.label, QStringLiteral("1280×720"));
    EXPECT_EQ(options.format, ResizeFormat::jpeg);
    EXPECT_EQ(options.quality, 0.5);
    EXPECT_EQ(options.enlarging, yes);
}

TEST_F(ImageResizerSettingsTest, UnknownNamesAndImpossibleSizesHaveASubstitute)
{
    store("preset", QStringLiteral("huge"));
    store("format", QStringLiteral("tga"));
    store("customW", -5);
    store("customH", 0);
    const auto settings = read();
    EXPECT_EQ(settings.boundingBox(), QSize(1366, 768));
    EXPECT_EQ(settings.label(), QStringLiteral("Medium"));
    EXPECT_EQ(settings.options().format, ResizeFormat::keepOriginal);
    EXPECT_EQ(settings.customWidth.get(), -5); // read as 1, but kept
    store("preset", QStringLiteral("custom"));
    EXPECT_EQ(read().boundingBox(), QSize(1, 1));
    EXPECT_EQ(read().label(), QStringLiteral("1×1"));
}

} // namespace orvane::tests

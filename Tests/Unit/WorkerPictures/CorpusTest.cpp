// Pictures that other programs made, resized and compared with what another program makes of them.
#include "PicturesFixture.h"

#include <QProcess>

#include <cmath>

namespace orvane::tests {

namespace {

/// Made once for all tests.
QString corpus()
{
    static const QTemporaryDir folder;
    static const bool isMade = [] {
        QProcess script;
        script.start(QStringLiteral(ORVANE_MAKE_CORPUS), {folder.path()});
        return script.waitForFinished(300'000) && script.exitCode() == 0;
    }();
    EXPECT_TRUE(isMade);
    return folder.path();
}

QStringList corpusFiles(const char* pattern)
{
    QStringList paths;
    for (const QString& name : QDir(corpus()).entryList({QLatin1String(pattern)}, QDir::Files))
        paths.append(corpus() + u'/' + name);
    EXPECT_FALSE(paths.isEmpty());
    return paths;
}

/// Has another program resize a file of the corpus.
QImage byOtherProgram(const QString& name, QSize size)
{
    const QTemporaryDir folder;
    const QString result = folder.filePath(QStringLiteral("other.png"));
    QProcess convert;
    convert.start(QStringLiteral("convert"),
                  {corpus() + u'/' + name, QStringLiteral("-filter"), QStringLiteral("Lanczos"),
                   QStringLiteral("-resize"), QStringLiteral("%1x%2!").arg(size.width()).arg(size.height()),
                   result});
    EXPECT_TRUE(convert.waitForFinished(60'000));
    return QImage(result);
}

/// The mean of what a channel differs by.
double difference(const QImage& left, const QImage& right)
{
    if (left.size() != right.size() || left.isNull())
        return 255;
    double sum = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const QRgb one = left.pixel(x, y);
            const QRgb other = right.pixel(x, y);
            sum += std::abs(qRed(one) - qRed(other)) + std::abs(qGreen(one) - qGreen(other)) +
                   std::abs(qBlue(one) - qBlue(other));
        }
    }
    return sum / 3 / left.width() / left.height();
}

/// Few colours and strong compression change more than a resampling does.
double tolerance(const QString& path)
{
    if (path.contains(QStringLiteral("palette")) || path.contains(QStringLiteral("runs")) ||
        path.endsWith(QStringLiteral(".gif")))
        return 8;
    return path.contains(QStringLiteral("inks")) ? 12 : 4;
}

class CorpusTest : public PicturesFixture {
protected:
    /// Resizes into the test's own folder.
    [[nodiscard]] std::optional<QString> resized(const QString& source, Pictures::Size size,
                                                 Pictures::Type type = Pictures::Type::png)
    {
        const QString copy = path(QFileInfo(source).fileName());
        QFile::remove(copy);
        EXPECT_TRUE(QFile::copy(source, copy));
        return resize(copy, size, type, QStringLiteral("out"));
    }
};

} // namespace

TEST_F(CorpusTest, EveryFormatIsResizedToTheSamePicture)
{
    const QImage reference = byOtherProgram(QStringLiteral("reference.png"), {200, 150});
    for (const QString& file : corpusFiles("good-*")) {
        SCOPED_TRACE(file.toStdString());
        EXPECT_EQ(measure(file), (Pictures::Size{400, 300}));
        const auto made = resized(file, {200, 150});
        ASSERT_TRUE(made);
        EXPECT_LT(difference(QImage(*made), reference), tolerance(file));
        EXPECT_TRUE(QImage(*made).textKeys().isEmpty());
    }
}

TEST_F(CorpusTest, GreyPicturesStayGrey)
{
    const QImage reference = byOtherProgram(QStringLiteral("grey-picture.png"), {200, 150});
    for (const QString& file : corpusFiles("grey-*")) {
        SCOPED_TRACE(file.toStdString());
        const auto made = resized(file, {200, 150});
        ASSERT_TRUE(made);
        EXPECT_LT(difference(QImage(*made), reference), 4);
    }
}

TEST_F(CorpusTest, TransparencyStaysAndIsWhiteInAJpeg)
{
    for (const QString& file : corpusFiles("alpha-*")) {
        SCOPED_TRACE(file.toStdString());
        const auto made = resized(file, {200, 150});
        ASSERT_TRUE(made);
        const QColor colour = QImage(*made).pixelColor(100, 75);
        EXPECT_EQ(colour.red(), 255);
        EXPECT_EQ(colour.green(), 0);
        EXPECT_NEAR(colour.alpha(), 128, 1);
        const auto flat = resized(file, {200, 150}, Pictures::Type::jpeg);
        ASSERT_TRUE(flat);
        const QColor opaque = QImage(*flat, "JPEG").pixelColor(100, 75);
        EXPECT_NEAR(opaque.red(), 255, 3);
        EXPECT_NEAR(opaque.green(), 127, 3);
    }
}

TEST_F(CorpusTest, EveryTypeIsWritten)
{
    const QString photo = corpus() + QStringLiteral("/good-photo.jpg");
    const QImage reference = byOtherProgram(QStringLiteral("reference.png"), {200, 150});
    for (const auto& [type, beginning] : {std::pair(Pictures::Type::jpeg, QByteArray("\xFF\xD8\xFF")),
                                          {Pictures::Type::png, QByteArray("\x89PNG")},
                                          {Pictures::Type::tiff, QByteArray("II*")},
                                          {Pictures::Type::heic, QByteArray("\0\0\0\x1C"
                                                                            "ftypheic",
                                                                            12)}}) {
        SCOPED_TRACE(static_cast<int>(type));
        const auto made = resized(photo, {200, 150}, type);
        ASSERT_TRUE(made);
        QFile file(*made);
        ASSERT_TRUE(file.open(QFile::ReadOnly));
        EXPECT_EQ(file.read(beginning.size()), beginning);
        EXPECT_EQ(measure(*made), (Pictures::Size{200, 150}));
        const auto back = resize(*made, {200, 150}, Pictures::Type::png, QStringLiteral("png"));
        ASSERT_TRUE(back);
        EXPECT_LT(difference(QImage(*back), reference), 5);
        // Nothing is carried over from the source: neither its profile nor anything else.
        EXPECT_FALSE(file.readAll().contains("Exif"));
    }
}

TEST_F(CorpusTest, AJpegIsLargerWithMoreQuality)
{
    const QString photo = path(QStringLiteral("photo.jpg"));
    ASSERT_TRUE(QFile::copy(corpus() + QStringLiteral("/good-photo.jpg"), photo));
    qint64 before = 0;
    for (const double quality : {0.3, 0.85, 1.0}) {
        const auto made = resize(photo, {200, 150}, Pictures::Type::jpeg, QStringLiteral("jpg"), quality);
        ASSERT_TRUE(made);
        EXPECT_GT(QFileInfo(*made).size(), before);
        before = QFileInfo(*made).size();
    }
}

TEST_F(CorpusTest, ExtremeSizesAreResized)
{
    const auto check = [this](const char* name, Pictures::Size source, Pictures::Size target) {
        SCOPED_TRACE(name);
        const QString file = corpus() + u'/' + QLatin1String(name);
        EXPECT_EQ(measure(file), source);
        for (const Pictures::Type type :
             {Pictures::Type::png, Pictures::Type::jpeg, Pictures::Type::tiff, Pictures::Type::heic}) {
            const auto made = resized(file, target, type);
            ASSERT_TRUE(made);
            EXPECT_EQ(measure(*made), target);
        }
    };
    check("size-1x1.png", {1, 1}, {1, 1});
    check("size-1x1.png", {1, 1}, {768, 768});
    check("size-20000x3.png", {20000, 3}, {854, 1});
    check("size-20000x3.jpg", {20000, 3}, {854, 1});
    check("size-3x20000.tiff", {3, 20000}, {1, 480});
}

TEST_F(CorpusTest, WhatIsNoWholePictureIsNotResized)
{
    for (const QString& file : corpusFiles("bad-*")) {
        SCOPED_TRACE(file.toStdString());
        EXPECT_FALSE(resized(file, {200, 150}));
    }
}

TEST_F(CorpusTest, APictureThatWasCutOffIsNeverCopiedAsHalfOfOne)
{
    const QImage reference = byOtherProgram(QStringLiteral("reference.png"), {200, 150});
    int refused = 0;
    for (const QString& file : corpusFiles("cut-*")) {
        SCOPED_TRACE(file.toStdString());
        const auto made = resized(file, {200, 150});
        refused += made ? 0 : 1;
        if (made) { // what was cut away was no part of the picture
            EXPECT_LT(difference(QImage(*made), reference), tolerance(file));
        }
    }
    RecordProperty("refused", refused);
    EXPECT_GE(refused, 56);
    EXPECT_TRUE(log.messages().isEmpty());
}

TEST_F(CorpusTest, AThumbnailHasThePixelsOfThePicture)
{
    const QImage reference = byOtherProgram(QStringLiteral("reference.png"), {64, 48});
    const auto pixels = pictures.thumbnail(corpus() + QStringLiteral("/good-photo.jpg"), {64, 64}, {});
    ASSERT_TRUE(pixels);
    ASSERT_EQ(pixels->size, (Pictures::Size{64, 48}));
    const QImage image(reinterpret_cast<const uchar*>(pixels->bytes.constData()), 64, 48, 64 * 4,
                       QImage::Format_RGBA8888_Premultiplied);
    EXPECT_LT(difference(image, reference), 4);
}

} // namespace orvane::tests

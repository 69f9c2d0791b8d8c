#include "Fakes/FakeLogSink.h"
#include "Fakes/FakePictures.h"
#include "PlatformLinux/Worker/WorkerPictures.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

/// A folder with the service that knows it.
class FakeAlbum {
public:
    Pictures& pictures() { return m_pictures; }
    [[nodiscard]] QString path(const QString& name) const { return QStringLiteral("/album/") + name; }
    void addPicture(const QString& name, Pictures::Size size) { m_pictures.add(path(name), size); }
    void addText(const QString& name) { m_pictures.addOther(path(name)); }
    [[nodiscard]] bool exists(const QString& name) const { return m_pictures.exists(path(name)); }

private:
    FakePictures m_pictures;
};

class RealAlbum {
public:
    Pictures& pictures() { return m_pictures; }
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    void addPicture(const QString& name, Pictures::Size size)
    {
        QImage image(size.width, size.height, QImage::Format_RGB32);
        image.fill(Qt::white);
        ASSERT_TRUE(image.save(path(name)));
    }
    void addText(const QString& name)
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write("text");
    }
    [[nodiscard]] bool exists(const QString& name) const { return QFile::exists(path(name)); }

private:
    QTemporaryDir m_folder;
    FakeLogSink m_log;
    WorkerPictures m_pictures{m_log};
};

template <typename Album>
class PicturesContract : public ::testing::Test {
protected:
    PicturesContract()
    {
        album.addPicture(QStringLiteral("a.png"), {40, 30});
        album.addText(QStringLiteral("text.png"));
    }

    [[nodiscard]] Pictures::Copy copyTo(Pictures::Size size) const
    {
        return {
            album.path(QStringLiteral("a.png")), {40, 30}, size, Pictures::Type::png, 1, [this](int index) {
                return album.path(QStringLiteral("copy %1.png").arg(index));
            }};
    }

    Album album;
};

using Albums = ::testing::Types<FakeAlbum, RealAlbum>;
TYPED_TEST_SUITE(PicturesContract, Albums);

} // namespace

TYPED_TEST(PicturesContract, MeasuresPicturesAndNothingElse)
{
    Pictures& pictures = this->album.pictures();
    EXPECT_EQ(pictures.measure(this->album.path(QStringLiteral("a.png")), {}), (Pictures::Size{40, 30}));
    EXPECT_FALSE(pictures.measure(this->album.path(QStringLiteral("text.png")), {}));
    EXPECT_FALSE(pictures.measure(this->album.path(QStringLiteral("none.png")), {}));
}

TYPED_TEST(PicturesContract, ACopyGetsTheFirstFreeNameAndItsSize)
{
    Pictures& pictures = this->album.pictures();
    const QString first = this->album.path(QStringLiteral("copy 0.png"));
    EXPECT_EQ(pictures.writeCopy(this->copyTo({20, 15}), {}), first);
    EXPECT_EQ(pictures.measure(first, {}), (Pictures::Size{20, 15}));
    this->album.addText(QStringLiteral("copy 1.png"));
    EXPECT_EQ(pictures.writeCopy(this->copyTo({80, 7}), {}), this->album.path(QStringLiteral("copy 2.png")));
    EXPECT_EQ(pictures.measure(this->album.path(QStringLiteral("copy 2.png")), {}), (Pictures::Size{80, 7}));
    EXPECT_EQ(pictures.measure(first, {}), (Pictures::Size{20, 15}));
}

TYPED_TEST(PicturesContract, WhatCannotBeCopiedLeavesNothing)
{
    Pictures& pictures = this->album.pictures();
    auto other = this->copyTo({20, 15});
    other.source = this->album.path(QStringLiteral("text.png"));
    EXPECT_FALSE(pictures.writeCopy(other, {}));
    auto changed = this->copyTo({20, 15});
    changed.sourceSize = {41, 30};
    EXPECT_FALSE(pictures.writeCopy(changed, {}));
    EXPECT_FALSE(pictures.writeCopy(this->copyTo({0, 15}), {}));
    EXPECT_FALSE(this->album.exists(QStringLiteral("copy 0.png")));
}

TYPED_TEST(PicturesContract, AThumbnailIsFittedAndNeverEnlarged)
{
    Pictures& pictures = this->album.pictures();
    const QString path = this->album.path(QStringLiteral("a.png"));
    const auto small = pictures.thumbnail(path, {20, 20}, {});
    ASSERT_TRUE(small);
    EXPECT_EQ(small->size, (Pictures::Size{20, 15}));
    EXPECT_EQ(small->bytes, QByteArray(20 * 15 * 4, '\xFF'));
    const auto whole = pictures.thumbnail(path, {100, 100}, {});
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->size, (Pictures::Size{40, 30}));
    EXPECT_FALSE(pictures.thumbnail(this->album.path(QStringLiteral("text.png")), {20, 20}, {}));
    EXPECT_FALSE(pictures.thumbnail(path, {0, 20}, {}));
}

TYPED_TEST(PicturesContract, NothingIsDoneAfterAStop)
{
    std::stop_source stop;
    stop.request_stop();
    Pictures& pictures = this->album.pictures();
    const QString path = this->album.path(QStringLiteral("a.png"));
    EXPECT_FALSE(pictures.measure(path, stop.get_token()));
    EXPECT_FALSE(pictures.thumbnail(path, {20, 20}, stop.get_token()));
    EXPECT_FALSE(pictures.writeCopy(this->copyTo({20, 15}), stop.get_token()));
    EXPECT_FALSE(this->album.exists(QStringLiteral("copy 0.png")));
}

} // namespace orvane::tests

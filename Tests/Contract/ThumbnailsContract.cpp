#include "Fakes/FakeLogSink.h"
#include "Fakes/FakePictures.h"
#include "Fakes/FakeThumbnails.h"
#include "Support/ThumbnailFolder.h"

#include <QFile>

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

/// Files of which the desktop has pictures already.
class FakeFolder {
public:
    Thumbnails& thumbnails() { return m_thumbnails; }
    [[nodiscard]] QString path(const QString& name) const { return QStringLiteral("/folder/") + name; }
    void addPicture(const QString& name, Pictures::Size size) { m_pictures.add(path(name), size); }
    void addText(const QString& name) { m_pictures.addOther(path(name)); }
    void keep(const QString& name, Pictures::Size size)
    {
        m_thumbnails.add(path(name), {size, QByteArray(qsizetype{size.width} * size.height * 4, '\x7F')});
    }

private:
    FakePictures m_pictures;
    FakeThumbnails m_thumbnails{m_pictures};
};

class RealFolder : public ThumbnailFolder {
public:
    Thumbnails& thumbnails() { return m_thumbnails; }
    void addText(const QString& name)
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write("text");
    }
    void keep(const QString& name, Pictures::Size size) { addEntry(name, size, QStringLiteral("normal")); }

private:
    FakeLogSink m_log;
    WorkerPictures m_pictures{m_log};
    DesktopThumbnails m_thumbnails{m_pictures, cache(), std::chrono::seconds(5)};
};

template <typename Folder>
class ThumbnailsContract : public ::testing::Test {
protected:
    [[nodiscard]] std::optional<Pictures::Pixels> thumbnail(const char* name, Pictures::Size most)
    {
        return folder.thumbnails().thumbnail(folder.path(QLatin1String(name)), most, {});
    }

    Folder folder;
};

using Folders = ::testing::Types<FakeFolder, RealFolder>;
TYPED_TEST_SUITE(ThumbnailsContract, Folders);

} // namespace

TYPED_TEST(ThumbnailsContract, APictureThatTheDesktopHasIsGiven)
{
    this->folder.addText(QStringLiteral("film.avi"));
    this->folder.keep(QStringLiteral("film.avi"), {64, 48});
    const auto pixels = this->thumbnail("film.avi", {100, 100});
    ASSERT_TRUE(pixels);
    EXPECT_EQ(pixels->size, (Pictures::Size{64, 48}));
    EXPECT_EQ(pixels->bytes.size(), 64 * 48 * 4);
}

TYPED_TEST(ThumbnailsContract, WithoutOneAPictureIsMadeSmall)
{
    this->folder.addPicture(QStringLiteral("a.png"), {400, 300});
    const auto pixels = this->thumbnail("a.png", {100, 100});
    ASSERT_TRUE(pixels);
    EXPECT_EQ(pixels->size, (Pictures::Size{100, 75}));
    EXPECT_EQ(pixels->bytes, QByteArray(100 * 75 * 4, '\xFF'));
}

TYPED_TEST(ThumbnailsContract, OtherFilesHaveNone)
{
    this->folder.addText(QStringLiteral("text.txt"));
    EXPECT_FALSE(this->thumbnail("text.txt", {100, 100}));
    EXPECT_FALSE(this->thumbnail("none.png", {100, 100}));
}

} // namespace orvane::tests

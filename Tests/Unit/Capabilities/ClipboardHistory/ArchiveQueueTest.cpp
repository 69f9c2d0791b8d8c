#include "Capabilities/ClipboardHistory/Archive/ArchiveQueue.h"
#include "HistoryFixture.h"

namespace orvane::tests {

namespace {

class ArchiveQueueTest : public ::testing::Test {
protected:
    void save(const QString& text)
    {
        queue->save([this, text] {
            snapshots.append(text);
            return QList<ClipItem>{textClip(text)};
        });
    }
    std::unique_ptr<UnlistedImage> writtenImage()
    {
        std::unique_ptr<UnlistedImage> written;
        const auto write = [](ArchiveQueue& to, std::unique_ptr<UnlistedImage>& result) -> UnownedTask {
            result = co_await to.writeImage(picture("PNG"));
        };
        write(*queue, written);
        fake.runLoop.drainDetached();
        fake.runLoop.drain();
        return written;
    }
    [[nodiscard]] QStringList imageFiles() const { return QDir(archive.imagesPath()).entryList(QDir::Files); }

    FakePlatform fake;
    QTemporaryDir home;
    HistoryArchive archive{home.filePath(QStringLiteral("history"))};
    std::unique_ptr<ArchiveQueue> queue = std::make_unique<ArchiveQueue>(archive);
    QStringList snapshots;
};

} // namespace

TEST_F(ArchiveQueueTest, NothingIsDoneOnTheCallersThread)
{
    save(QStringLiteral("a"));
    bool isLoaded = false;
    const auto loaded = queue->load([&] { isLoaded = true; });
    EXPECT_FALSE(QFileInfo::exists(archive.directory));
    fake.runLoop.drainDetached();
    EXPECT_EQ(texts(*loaded), QStringList{QStringLiteral("a")});
    EXPECT_FALSE(isLoaded);
    fake.runLoop.drain();
    EXPECT_TRUE(isLoaded);
}

TEST_F(ArchiveQueueTest, OfSavesThatWaitOnlyTheNewestIsDone)
{
    for (int number = 0; number < 100; ++number)
        save(QString::number(number));
    fake.runLoop.drainDetached();
    EXPECT_EQ(snapshots, QStringList{QStringLiteral("99")});
    EXPECT_EQ(texts(archive.load()), QStringList{QStringLiteral("99")});
    save(QStringLiteral("later"));
    fake.runLoop.drainDetached();
    EXPECT_EQ(texts(archive.load()), QStringList{QStringLiteral("later")});
}

TEST_F(ArchiveQueueTest, ASaveAskedForDuringASaveIsDoneAfterIt)
{
    queue->save([this] {
        save(QStringLiteral("second"));
        return QList<ClipItem>{textClip(QStringLiteral("first"))};
    });
    fake.runLoop.drainDetached();
    EXPECT_EQ(texts(archive.load()), QStringList{QStringLiteral("second")});
}

TEST_F(ArchiveQueueTest, WhatWasAskedForIsDoneAfterItsEnd)
{
    save(QStringLiteral("a"));
    queue.reset();
    fake.runLoop.drainDetached();
    EXPECT_EQ(texts(archive.load()), QStringList{QStringLiteral("a")});
}

TEST_F(ArchiveQueueTest, AnUnlistedImageIsNotPrunedAndGoesWithItsObject)
{
    auto image = writtenImage();
    ASSERT_TRUE(image);
    save(QStringLiteral("a"));
    fake.runLoop.drainDetached();
    EXPECT_EQ(imageFiles(), QStringList{image->fileName()});
    image.reset();
    fake.runLoop.drainDetached();
    EXPECT_TRUE(imageFiles().isEmpty());
}

TEST_F(ArchiveQueueTest, AKeptImageSurvivesASaveThatWasAskedForBefore)
{
    auto image = writtenImage();
    ASSERT_TRUE(image);
    save(QStringLiteral("asked for before the entry was in the list"));
    image->keep();
    image.reset();
    fake.runLoop.drainDetached();
    EXPECT_EQ(imageFiles().size(), 1);
    save(QStringLiteral("asked for afterwards, without it"));
    fake.runLoop.drainDetached();
    EXPECT_TRUE(imageFiles().isEmpty());
}

TEST_F(ArchiveQueueTest, PurgingIsTheEndOfSaving)
{
    save(QStringLiteral("a"));
    fake.runLoop.drainDetached();
    bool isPurged = false;
    save(QStringLiteral("waits"));
    startTask([this, &isPurged]() -> Task<> {
        co_await queue->purge();
        isPurged = true;
    });
    fake.runLoop.drain();
    save(QStringLiteral("comes later"));
    EXPECT_FALSE(isPurged);
    fake.runLoop.drainDetached();
    fake.runLoop.drain();
    EXPECT_TRUE(isPurged);
    EXPECT_FALSE(QFileInfo::exists(archive.directory));
    EXPECT_EQ(snapshots, QStringList{QStringLiteral("a")});
}

} // namespace orvane::tests

#include "Capabilities/ImageResizer/ResizerModel.h"
#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

QUrl url(const QString& name)
{
    return QUrl::fromLocalFile(QStringLiteral("/a/") + name);
}

struct ResizerModelTest : ::testing::Test {
    /// Drops pictures that exist.
    void addPictures(int count)
    {
        for (int i = 0; i < count; ++i) {
            const QString name = QStringLiteral("%1.jpg").arg(i);
            fake.pictures.add(QStringLiteral("/a/") + name, {4000, 3000});
            model->add({url(name)});
        }
    }
    /// Runs the batch to its end.
    void finish()
    {
        while (model->isWorking.get())
            step();
    }
    /// Does the two files that are under way.
    void step()
    {
        fake.runLoop.drainDetached();
        fake.runLoop.drain();
    }

    FakePlatform fake;
    std::shared_ptr<ImageResizerSettings> settings = std::make_shared<ImageResizerSettings>(
        ScopedPreferences(fake.defaults, QStringLiteral("net.lindenrow.orvane.imageresizer")));
    std::shared_ptr<ResizerModel> model = std::make_shared<ResizerModel>(settings);
};

} // namespace

TEST_F(ResizerModelTest, KeepsPicturesInOrderWithoutRepeats)
{
    const QList<QUrl> expected{url(QStringLiteral("b.PNG")), url(QStringLiteral("a.jpg")),
                               url(QStringLiteral("c.webp"))};
    model->add({url(QStringLiteral("b.PNG")), url(QStringLiteral("a.jpg")), url(QStringLiteral("b.PNG"))});
    model->add({url(QStringLiteral("a.jpg")), url(QStringLiteral("c.webp"))});
    EXPECT_EQ(model->files.get(), expected);
}

TEST_F(ResizerModelTest, IgnoresEverythingElseSilently)
{
    model->add({url(QStringLiteral("folder")), url(QStringLiteral("a.pdf")), url(QStringLiteral(".png")),
                url(QStringLiteral("png")), url(QStringLiteral("a.tif"))});
    EXPECT_TRUE(model->files.get().isEmpty());
    EXPECT_FALSE(model->status.get());
    for (const char* extension : {"png", "jpg", "jpeg", "heic", "tiff", "gif", "bmp", "webp"})
        model->add({url(QStringLiteral("a.") + QLatin1String(extension))});
    EXPECT_EQ(model->files.get().size(), 8);
}

TEST_F(ResizerModelTest, IgnoresAddressesThatAreNoFiles)
{
    model->add({QUrl(QStringLiteral("https://example.org/a.png")), QUrl(QStringLiteral("a.png")),
                QUrl(QStringLiteral("data:image/png;base64,a.png")),
                QUrl(QStringLiteral("sftp://host/a.png")), url(QStringLiteral("b.png"))});
    EXPECT_EQ(model->files.get(), QList{url(QStringLiteral("b.png"))});
}

TEST_F(ResizerModelTest, RemovesOneAndAll)
{
    addPictures(3);
    model->remove(url(QStringLiteral("1.jpg")));
    EXPECT_EQ(model->files.get(), (QList{url(QStringLiteral("0.jpg")), url(QStringLiteral("2.jpg"))}));
    model->clear();
    EXPECT_TRUE(model->files.get().isEmpty());
}

TEST_F(ResizerModelTest, WithoutFilesNothingHappens)
{
    model->resizeAll();
    EXPECT_FALSE(model->isWorking.get());
    EXPECT_FALSE(model->status.get());
}

TEST_F(ResizerModelTest, ResizesAllAndSaysSo)
{
    addPictures(3);
    std::vector<int> done;
    const auto subscription = model->progress.subscribeToChanges(
        [&done](const ResizerModel::Progress& progress) { done.push_back(progress.done); });
    model->resizeAll();
    EXPECT_TRUE(model->isWorking.get());
    EXPECT_EQ(model->status.get(), QStringLiteral("Resizing 3…"));
    EXPECT_EQ(model->progress.get(), (ResizerModel::Progress{0, 3}));
    step();
    EXPECT_EQ(model->progress.get(), (ResizerModel::Progress{2, 3}));
    EXPECT_TRUE(model->isWorking.get());
    finish();
    EXPECT_EQ(done, (std::vector{0, 1, 2, 3}));
    EXPECT_EQ(model->status.get(), QStringLiteral("Resized 3 of 3 images — saved next to the originals."));
    EXPECT_EQ(model->files.get().size(), 3);
    EXPECT_TRUE(fake.pictures.exists(QStringLiteral("/a/0 (Medium).jpg")));
    EXPECT_TRUE(fake.pictures.exists(QStringLiteral("/a/1 (Medium).jpg")));
}

TEST_F(ResizerModelTest, FailuresAreCountedOut)
{
    addPictures(1);
    model->add({url(QStringLiteral("none.jpg")), url(QStringLiteral("neither.png"))});
    model->resizeAll();
    finish();
    EXPECT_EQ(model->status.get(), QStringLiteral("Resized 1 of 3 images — saved next to the originals."));
}

TEST_F(ResizerModelTest, OneImageIsSingular)
{
    addPictures(1);
    model->resizeAll();
    finish();
    EXPECT_EQ(model->status.get(), QStringLiteral("Resized 1 of 1 image — saved next to the originals."));
    model->clear();
    model->add({url(QStringLiteral("none.jpg"))});
    model->resizeAll();
    finish();
    EXPECT_EQ(model->status.get(), QStringLiteral("Resized 0 of 1 image — saved next to the originals."));
}

TEST_F(ResizerModelTest, AThousandFilesAreResizedOnceEach)
{
    addPictures(1000);
    model->resizeAll();
    finish();
    EXPECT_EQ(model->status.get(),
              QStringLiteral("Resized 1000 of 1000 images — saved next to the originals."));
    QSet<QString> sources;
    for (const Pictures::Copy& copy : fake.pictures.copies())
        sources.insert(copy.source);
    EXPECT_EQ(sources.size(), 1000);
    EXPECT_EQ(fake.pictures.copies().size(), 1000);
}

TEST_F(ResizerModelTest, FilesAndSettingsThatChangeDuringABatchWaitForTheNext)
{
    addPictures(3);
    model->resizeAll();
    step();
    settings->preset.set(ResizePreset::small);
    fake.pictures.add(QStringLiteral("/a/late.jpg"), {100, 100});
    model->add({url(QStringLiteral("late.jpg"))});
    model->remove(url(QStringLiteral("2.jpg")));
    model->resizeAll(); // one at a time
    finish();
    EXPECT_EQ(model->status.get(), QStringLiteral("Resized 3 of 3 images — saved next to the originals."));
    ASSERT_EQ(fake.pictures.copies().size(), 3);
    EXPECT_TRUE(fake.pictures.exists(QStringLiteral("/a/2 (Medium).jpg")));
    EXPECT_EQ(model->files.get().size(), 3);
    model->resizeAll();
    finish();
    EXPECT_TRUE(fake.pictures.exists(QStringLiteral("/a/late (Small).jpg")));
}

TEST_F(ResizerModelTest, CancelKeepsWhatIsDoneAndCountsIt)
{
    addPictures(5);
    model->resizeAll();
    step();
    model->cancel();
    EXPECT_TRUE(model->isWorking.get()); // until the files under way have ended
    finish();
    EXPECT_EQ(model->status.get(), QStringLiteral("Resized 2 of 5 images — saved next to the originals."));
    EXPECT_EQ(fake.pictures.copies().size(), 2);
    model->resizeAll(); // a cancelled batch leaves nothing behind that would stop the next
    finish();
    EXPECT_EQ(model->status.get(), QStringLiteral("Resized 5 of 5 images — saved next to the originals."));
}

TEST_F(ResizerModelTest, CancelWithoutABatchDoesNotConcernTheNext)
{
    addPictures(1);
    model->cancel();
    model->resizeAll();
    finish();
    EXPECT_EQ(fake.pictures.copies().size(), 1);
}

TEST_F(ResizerModelTest, ItsEndInTheMiddleOfABatchEndsTheBatch)
{
    addPictures(5);
    model->resizeAll();
    step();
    model.reset();
    step();
    step();
    EXPECT_EQ(fake.pictures.copies().size(), 2);
}

} // namespace orvane::tests

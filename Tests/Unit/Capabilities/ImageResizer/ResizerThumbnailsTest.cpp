#include "Capabilities/ImageResizer/ResizerThumbnails.h"
#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

QUrl url(const QString& name)
{
    return QUrl::fromLocalFile(QStringLiteral("/a/") + name);
}

struct ResizerThumbnailsTest : ::testing::Test {
    void step()
    {
        fake.runLoop.drainDetached();
        fake.runLoop.drain();
    }

    FakePlatform fake;
    std::shared_ptr<ResizerModel> model =
        std::make_shared<ResizerModel>(std::make_shared<ImageResizerSettings>(
            ScopedPreferences(fake.defaults, QStringLiteral("net.lindenrow.orvane.imageresizer"))));
    std::shared_ptr<ResizerThumbnails> thumbnails = ResizerThumbnails::make(model, 64);
    const QUrl picture = url(QStringLiteral("a.jpg"));
    const QUrl broken = url(QStringLiteral("b.jpg"));

    void SetUp() override
    {
        fake.pictures.add(picture.toLocalFile(), {4000, 3000});
        fake.pictures.addOther(broken.toLocalFile());
        model->add({picture, broken});
    }
};

} // namespace

TEST_F(ResizerThumbnailsTest, ArriveAfterTheyAreAskedFor)
{
    int arrivals = 0;
    const auto subscription = thumbnails->arrived.subscribeToChanges([&](const QUrl&) { ++arrivals; });
    EXPECT_TRUE(thumbnails->image(picture).isNull());
    EXPECT_TRUE(thumbnails->image(broken).isNull());
    step();
    step();
    EXPECT_EQ(thumbnails->image(picture).size(), QSize(64, 48));
    EXPECT_TRUE(thumbnails->image(broken).isNull()); // and its icon stays
    EXPECT_EQ(arrivals, 1);
}

TEST_F(ResizerThumbnailsTest, WaitForTheEndOfABatch)
{
    model->resizeAll();
    EXPECT_TRUE(thumbnails->image(picture).isNull());
    step();
    EXPECT_TRUE(thumbnails->image(picture).isNull());
    step(); // the batch ends
    ASSERT_FALSE(model->isWorking.get());
    step();
    EXPECT_FALSE(thumbnails->image(picture).isNull());
}

TEST_F(ResizerThumbnailsTest, AreForgottenWithTheirFiles)
{
    EXPECT_TRUE(thumbnails->image(picture).isNull());
    model->clear();
    step();
    model->add({picture});
    EXPECT_TRUE(thumbnails->image(picture).isNull());
}

} // namespace orvane::tests

// Thumbnails: read on the pool, for the rows in view, and a few at a time.
#include "Capabilities/ClipboardHistory/Panel/HistoryThumbnails.h"
#include "Fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using State = HistoryThumbnails::State;

class HistoryThumbnailsTest : public testing::Test {
protected:
    FakePlatform fake;
    HistoryViewModel model;
    QStringList loads;
    int arrivals = 0;
    std::unique_ptr<HistoryThumbnails> thumbnails;

    HistoryThumbnailsTest()
    {
        model.imageProvider = [this](const QString& name) -> std::optional<QImage> {
            loads.append(name);
            if (name.startsWith(QStringLiteral("gone")))
                return std::nullopt;
            QImage image(400, 300, QImage::Format_RGB32);
            image.fill(Qt::red);
            return image;
        };
        thumbnails = std::make_unique<HistoryThumbnails>(model, [this] { ++arrivals; });
    }

    void settle()
    {
        for (int turn = 0; turn < 20; ++turn) {
            fake.runLoop.drainDetached();
            fake.runLoop.drain();
        }
    }
};

const QString a = QStringLiteral("a.png");
const QString b = QStringLiteral("b.png");

TEST_F(HistoryThumbnailsTest, NothingIsReadOnTheMainThread)
{
    thumbnails->setWanted({a}, 1);
    fake.runLoop.drain();
    EXPECT_TRUE(loads.isEmpty());
    EXPECT_EQ(thumbnails->state(a), State::loading);
    settle();
    EXPECT_EQ(loads, QStringList{a});
    EXPECT_EQ(thumbnails->state(a), State::ready);
    EXPECT_EQ(arrivals, 1);
}

TEST_F(HistoryThumbnailsTest, APictureIsKeptSmallAtTheScreensScale)
{
    thumbnails->setWanted({a}, 2);
    settle();
    EXPECT_EQ(thumbnails->image(a).size(), QSize(56, 56));
}

TEST_F(HistoryThumbnailsTest, AFileThatHasGoneIsMissing)
{
    const QString gone = QStringLiteral("gone.png");
    thumbnails->setWanted({gone}, 1);
    settle();
    EXPECT_EQ(thumbnails->state(gone), State::missing);
    EXPECT_TRUE(thumbnails->image(gone).isNull());
    EXPECT_EQ(arrivals, 1);
}

TEST_F(HistoryThumbnailsTest, WithoutAProviderAllAreMissing)
{
    model.imageProvider = nullptr;
    thumbnails->setWanted({a}, 1);
    settle();
    EXPECT_EQ(thumbnails->state(a), State::missing);
}

TEST_F(HistoryThumbnailsTest, OneInViewIsReadOnce)
{
    thumbnails->setWanted({a, a}, 1);
    settle();
    thumbnails->setWanted({a}, 1);
    settle();
    EXPECT_EQ(loads, QStringList{a});
}

TEST_F(HistoryThumbnailsTest, WhatLeavesTheViewGoesAndIsReadAgain)
{
    thumbnails->setWanted({a}, 1);
    settle();
    thumbnails->setWanted({b}, 1);
    EXPECT_TRUE(thumbnails->image(a).isNull());
    settle();
    thumbnails->setWanted({a}, 1);
    settle();
    EXPECT_EQ(loads, (QStringList{a, b, a}));
}

TEST_F(HistoryThumbnailsTest, TwoAtATimeAndNothingThatIsNoMoreInView)
{
    const auto names = [](int from) {
        QStringList list;
        for (int each = from; each < from + 8; ++each)
            list.append(QString::number(each));
        return list;
    };
    for (int from = 0; from < 10'000; from += 8)
        thumbnails->setWanted(names(from), 1);
    fake.runLoop.drainDetached();
    EXPECT_EQ(loads.size(), 2); // those that had begun before the list was scrolled
    settle();
    EXPECT_EQ(loads.size(), 2 + 8);
    EXPECT_EQ(thumbnails->state(QStringLiteral("9999")), State::ready);
}

TEST_F(HistoryThumbnailsTest, ClearReadsAllAnewAndDropsWhatIsOnItsWay)
{
    thumbnails->setWanted({a}, 1);
    fake.runLoop.drainDetached();
    thumbnails->clear();
    fake.runLoop.drain();
    EXPECT_EQ(arrivals, 0);
    thumbnails->setWanted({a}, 1);
    settle();
    EXPECT_EQ(loads, (QStringList{a, a}));
    EXPECT_EQ(thumbnails->state(a), State::ready);
}

TEST_F(HistoryThumbnailsTest, APictureThatCannotBeReadIsTriedOnce)
{
    const QString gone = QStringLiteral("gone.png");
    thumbnails->setWanted({gone}, 1);
    settle();
    const auto tried = loads.size();
    thumbnails->clear();
    thumbnails->setWanted({gone}, 1);
    settle();
    EXPECT_EQ(loads.size(), tried);
    EXPECT_EQ(thumbnails->state(gone), State::missing);
}

TEST_F(HistoryThumbnailsTest, AnotherScaleReadsAllAnew)
{
    thumbnails->setWanted({a}, 1);
    settle();
    thumbnails->setWanted({a}, 2);
    settle();
    EXPECT_EQ(thumbnails->image(a).size(), QSize(56, 56));
}

TEST_F(HistoryThumbnailsTest, AnAnswerAfterTheEndIsDropped)
{
    thumbnails->setWanted({a}, 1);
    fake.runLoop.drainDetached();
    thumbnails.reset();
    fake.runLoop.drain();
    EXPECT_EQ(arrivals, 0);
}

TEST(HistoryThumbnailSquare, TakesTheMiddleOfAWidePicture)
{
    QImage image(300, 100, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (int y = 0; y < 100; ++y) {
        for (int x = 100; x < 200; ++x)
            image.setPixelColor(x, y, Qt::blue);
    }
    const QImage square = HistoryThumbnails::squareOf(image, 28);
    EXPECT_EQ(square.size(), QSize(28, 28));
    EXPECT_EQ(square.pixelColor(0, 14), QColor(Qt::blue));
    EXPECT_EQ(square.pixelColor(27, 14), QColor(Qt::blue));
    EXPECT_TRUE(HistoryThumbnails::squareOf(QImage(), 28).isNull());
}

TEST(HistoryThumbnailSquare, KeepsTheColorsOfAPictureThatHasFewOfThem)
{
    for (const QImage::Format format : {QImage::Format_Mono, QImage::Format_Indexed8}) {
        QImage image(100, 100, format);
        image.setColorTable({qRgb(255, 165, 0), qRgb(255, 255, 255)});
        image.fill(0);
        const QImage square = HistoryThumbnails::squareOf(image, 28);
        for (int x = 0; x < 28; ++x)
            EXPECT_EQ(square.pixelColor(x, x), QColor(255, 165, 0)) << format << " " << x;
    }
}

} // namespace

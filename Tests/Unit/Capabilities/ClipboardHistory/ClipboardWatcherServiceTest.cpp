#include "Capabilities/ClipboardHistory/Capture/ClipboardWatcherService.h"
#include "HistoryFixture.h"

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;

class ClipboardWatcherTest : public HistoryFixture {
protected:
    std::shared_ptr<ClipboardWatcherService> service =
        std::make_shared<ClipboardWatcherService>(controller, 0.4);
};

} // namespace

TEST_F(ClipboardWatcherTest, WhatIsThereAtTheStartIsNotCaptured)
{
    fake.generalPasteboard.copyString(QStringLiteral("before"));
    service->start();
    fake.runLoop.advance(2s);
    settle();
    EXPECT_TRUE(items().isEmpty());
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
    fake.generalPasteboard.copyString(QStringLiteral("after"));
    fake.runLoop.advance(400ms);
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("after")});
}

TEST_F(ClipboardWatcherTest, TheTimerHasTheInterval)
{
    service->start();
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector{400ms});
    EXPECT_TRUE(service->isRunning());
    service->start();
    EXPECT_EQ(fake.runLoop.timerCount(), 1);
    service->stop();
    EXPECT_EQ(fake.runLoop.timerCount(), 0);
    EXPECT_FALSE(service->isRunning());
    service->stop();
}

TEST_F(ClipboardWatcherTest, StrangeIntervalsMakeTimersToo)
{
    for (const double seconds : {1e300, -1.0, 0.0}) {
        ClipboardWatcherService strange(controller, seconds);
        strange.start();
        EXPECT_GE(fake.runLoop.timerIntervals().at(0), 0ms);
        EXPECT_LE(fake.runLoop.timerIntervals().at(0), 24h);
    }
}

TEST_F(ClipboardWatcherTest, OfSeveralCopiesWithinAnIntervalTheLastIsTaken)
{
    service->start();
    fake.generalPasteboard.copyString(QStringLiteral("one"));
    fake.generalPasteboard.copyString(QStringLiteral("two"));
    fake.runLoop.advance(400ms);
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("two")});
}

TEST_F(ClipboardWatcherTest, StoppedItLooksNoMore)
{
    service->start();
    service->stop();
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    fake.runLoop.advance(2s);
    settle();
    EXPECT_TRUE(items().isEmpty());
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
}

TEST_F(ClipboardWatcherTest, ItsEndEndsTheTimer)
{
    service->start();
    service.reset();
    EXPECT_EQ(fake.runLoop.timerCount(), 0);
}

} // namespace orvane::tests

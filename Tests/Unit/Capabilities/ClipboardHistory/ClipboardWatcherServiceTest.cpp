// The looks at the pasteboard, where the platform announces copies and where it doesn't.
#include "Capabilities/ClipboardHistory/Capture/ClipboardWatcherService.h"
#include "HistoryFixture.h"

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;

class ClipboardWatcherTest : public HistoryFixture {
protected:
    void copyString(const char* text) { fake.generalPasteboard.copyString(QLatin1StringView(text)); }
    void advance(std::chrono::milliseconds by)
    {
        fake.runLoop.advance(by);
        settle();
    }

    std::shared_ptr<ClipboardWatcherService> service =
        std::make_shared<ClipboardWatcherService>(controller, 0.4);
};

/// The platform doesn't announce copies.
class ClipboardTimerTest : public ClipboardWatcherTest {
protected:
    ClipboardTimerTest() { fake.generalPasteboard.announcesCopies = false; }
};

} // namespace

TEST_F(ClipboardWatcherTest, WithoutCopiesThereIsNoTimerAndNoTurn)
{
    copyString("before");
    service->start();
    EXPECT_TRUE(service->isRunning());
    advance(1h);
    EXPECT_EQ(fake.runLoop.timerCount(), 0);
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
    EXPECT_TRUE(items().isEmpty());
    copyString("after");
    advance(1s);
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("after")});
    EXPECT_EQ(fake.runLoop.timerCount(), 0);
}

TEST_F(ClipboardWatcherTest, ALookComesFiftyMillisecondsAfterTheCopy)
{
    service->start();
    copyString("text");
    advance(49ms);
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
    advance(1ms);
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("text")});
}

TEST_F(ClipboardWatcherTest, TwoCopiesATenthOfASecondApartAreBothTaken)
{
    service->start();
    copyString("one");
    advance(100ms);
    copyString("two");
    advance(50ms);
    EXPECT_EQ(itemTexts(), QStringList({QStringLiteral("two"), QStringLiteral("one")}));
}

TEST_F(ClipboardWatcherTest, ACopyInSeveralStepsIsLookedAtOnce)
{
    service->start();
    for (const char* step : {"a", "ab", "abc"}) {
        copyString(step);
        advance(30ms);
    }
    advance(1s);
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("abc")});
}

TEST_F(ClipboardWatcherTest, CopiesWithoutAPauseAreLookedAtAfterOneHundredAndFiftyMilliseconds)
{
    service->start();
    for (int copy = 0; copy < 14; ++copy) {
        copyString("text");
        advance(10ms);
    }
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
    copyString("the fifteenth");
    advance(10ms);
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("the fifteenth")});
}

TEST_F(ClipboardWatcherTest, AnEndlessRowOfCopiesIsLookedAtOncePerInterval)
{
    service->start();
    for (int copy = 0; copy < 1000; ++copy) {
        fake.generalPasteboard.copyString(QString::number(copy));
        advance(10ms);
    }
    // In ten seconds 25 intervals pass, and five looks may be made ahead.
    EXPECT_GE(items().size(), 25);
    EXPECT_LE(items().size(), 30);
}

TEST_F(ClipboardWatcherTest, OwnWritesAreSeenAlso)
{
    service->start();
    fake.generalPasteboard.clearContents();
    fake.generalPasteboard.setString(QStringLiteral("plain"), pasteboardType::string);
    advance(50ms);
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("plain")});
}

TEST_F(ClipboardWatcherTest, StoppedWithALookDueItLooksNoMore)
{
    service->start();
    copyString("text");
    advance(10ms);
    service->stop();
    EXPECT_FALSE(service->isRunning());
    EXPECT_EQ(fake.runLoop.timerCount(), 0);
    copyString("another");
    advance(1s);
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
}

TEST_F(ClipboardWatcherTest, StoppedWithAnAnnouncementQueuedItLooksNoMore)
{
    service->start();
    copyString("text");
    service->stop();
    advance(1s);
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
}

TEST_F(ClipboardWatcherTest, ItsEndEndsTheWatch)
{
    service->start();
    copyString("text");
    advance(10ms);
    service.reset();
    copyString("another");
    advance(1s);
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
}

TEST_F(ClipboardWatcherTest, StartedAgainItTakesUpTheNextCopy)
{
    service->start();
    service->stop();
    copyString("while off");
    service->start();
    advance(1s);
    EXPECT_TRUE(items().isEmpty());
    copyString("on");
    advance(50ms);
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("on")});
}

TEST_F(ClipboardTimerTest, WhatIsThereAtTheStartIsNotCaptured)
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

TEST_F(ClipboardTimerTest, TheTimerHasTheInterval)
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

TEST_F(ClipboardTimerTest, StrangeIntervalsMakeTimersToo)
{
    for (const double seconds : {1e300, -1.0, 0.0}) {
        ClipboardWatcherService strange(controller, seconds);
        strange.start();
        EXPECT_GE(fake.runLoop.timerIntervals().at(0), 0ms);
        EXPECT_LE(fake.runLoop.timerIntervals().at(0), 24h);
    }
}

TEST_F(ClipboardTimerTest, OfSeveralCopiesWithinAnIntervalTheLastIsTaken)
{
    service->start();
    fake.generalPasteboard.copyString(QStringLiteral("one"));
    fake.generalPasteboard.copyString(QStringLiteral("two"));
    fake.runLoop.advance(400ms);
    settle();
    EXPECT_EQ(itemTexts(), QStringList{QStringLiteral("two")});
}

TEST_F(ClipboardTimerTest, StoppedItLooksNoMore)
{
    service->start();
    service->stop();
    fake.generalPasteboard.copyString(QStringLiteral("text"));
    fake.runLoop.advance(2s);
    settle();
    EXPECT_TRUE(items().isEmpty());
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
}

TEST_F(ClipboardTimerTest, ATickThatIsQueuedWhenItStopsDoesNotLook)
{
    service->start();
    copyString("text");
    fake.runLoop.advanceWithoutTasks(400ms);
    service->stop();
    settle();
    EXPECT_EQ(fake.generalPasteboard.reads, 0);
}

TEST_F(ClipboardTimerTest, ItsEndEndsTheTimer)
{
    service->start();
    service.reset();
    EXPECT_EQ(fake.runLoop.timerCount(), 0);
}

} // namespace orvane::tests

// When a picture is fetched, which one is shown, and what becomes of failures.
#include "DailyFrameFixture.h"

#include <QDateTime>
#include <QTimeZone>

#include <algorithm>
#include <ctime>

using namespace orvane;
using namespace orvane::tests;
using namespace std::chrono_literals;

namespace {

/// The time zone of the process while it exists.
class TimeZone {
public:
    explicit TimeZone(const char* name) : m_old(qgetenv("TZ")) { set(name); }
    ~TimeZone()
    {
        if (m_old.isNull())
            qunsetenv("TZ");
        else
            qputenv("TZ", m_old);
        ::tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

    static void set(const char* name)
    {
        qputenv("TZ", name);
        ::tzset();
    }

private:
    QByteArray m_old;
};

Clock::Date utc(const char* text)
{
    const auto time = QDateTime::fromString(QString::fromLatin1(text) + u'Z', Qt::ISODate);
    return Clock::Date(std::chrono::milliseconds(time.toMSecsSinceEpoch()));
}

struct DailyFrameControllerTest : DailyFrameFixture {
    DailyFrameControllerTest() { fake.clock.setDate(utc("2026-07-04T12:00:00")); }

    void start()
    {
        controller->start();
        settle();
    }
    void pass(std::chrono::milliseconds time)
    {
        fake.runLoop.advance(time);
        settle();
    }
    void wake()
    {
        fake.workspace.notificationCenter().post(Workspace::didWakeNotification());
        settle();
    }

    TimeZone zone{"UTC"};
};

} // namespace

// The day.

TEST_F(DailyFrameControllerTest, ADayIsThatOfTheTimeZone)
{
    const auto date = utc("2026-07-04T23:30:00");
    EXPECT_EQ(DailyFrameController::dayString(date), QStringLiteral("2026-07-04"));
    TimeZone::set("Asia/Tokyo");
    EXPECT_EQ(DailyFrameController::dayString(date), QStringLiteral("2026-07-05"));
    TimeZone::set("America/Los_Angeles");
    EXPECT_EQ(DailyFrameController::dayString(utc("2026-07-05T06:59:59")), QStringLiteral("2026-07-04"));
    EXPECT_EQ(DailyFrameController::dayString(utc("2026-07-05T07:00:00")), QStringLiteral("2026-07-05"));
}

TEST_F(DailyFrameControllerTest, ADayBeginsAtLocalMidnightOnTheDaysOfDaylightSaving)
{
    TimeZone::set("Europe/Berlin");
    EXPECT_EQ(DailyFrameController::dayString(utc("2026-03-28T22:59:59")), QStringLiteral("2026-03-28"));
    EXPECT_EQ(DailyFrameController::dayString(utc("2026-03-28T23:00:00")), QStringLiteral("2026-03-29"));
    EXPECT_EQ(DailyFrameController::dayString(utc("2026-03-29T21:59:59")), QStringLiteral("2026-03-29"))
        << "the day has 23 hours";
    EXPECT_EQ(DailyFrameController::dayString(utc("2026-03-29T22:00:00")), QStringLiteral("2026-03-30"));
    EXPECT_EQ(DailyFrameController::dayString(utc("2026-10-25T22:59:59")), QStringLiteral("2026-10-25"))
        << "the day has 25 hours";
    EXPECT_EQ(DailyFrameController::dayString(utc("2026-10-25T23:00:00")), QStringLiteral("2026-10-26"));
}

TEST_F(DailyFrameControllerTest, AStartFetchesAndMarksTheDay)
{
    serveBing({4, 3});
    start();
    EXPECT_EQ(currentID(), QStringLiteral("bing-4"));
    EXPECT_EQ(shown(), fileFor(QStringLiteral("bing-4.jpg")));
    EXPECT_EQ(controller->currentFile.get(), shown());
    EXPECT_EQ(storedDay(), QStringLiteral("2026-07-04"));
    EXPECT_EQ(controller->history().size(), 2);
    EXPECT_EQ(controller->index(), 0);
    EXPECT_FALSE(controller->isWorking.get());
}

TEST_F(DailyFrameControllerTest, AStartOnAMarkedDayStillFetches)
{
    settings->prefs().set(QStringLiteral("2026-07-04"), QStringLiteral("lastChangeDay"));
    serveBing({4});
    start();
    EXPECT_EQ(currentID(), QStringLiteral("bing-4")) << "nothing is known of the present picture";
}

TEST_F(DailyFrameControllerTest, TheDayChangesAtTheFirstCheckAfterMidnight)
{
    fake.clock.setDate(utc("2026-07-04T23:10:00"));
    serveBing({4});
    start();
    serveBing({5, 4});
    pass(30min);
    EXPECT_EQ(asked(bingList()), 1) << "it is 23:40";
    pass(30min - 1ms);
    EXPECT_EQ(currentID(), QStringLiteral("bing-4"));
    pass(1ms);
    EXPECT_EQ(currentID(), QStringLiteral("bing-5"));
    EXPECT_EQ(storedDay(), QStringLiteral("2026-07-05"));
    pass(23h + 30min);
    EXPECT_EQ(asked(bingList()), 2);
}

TEST_F(DailyFrameControllerTest, ThereIsOneTimerOfHalfAnHour)
{
    start();
    EXPECT_EQ(fake.runLoop.timerIntervals(), std::vector<std::chrono::milliseconds>{30min});
    controller->stop();
    EXPECT_EQ(fake.runLoop.timerCount(), 0U);
}

TEST_F(DailyFrameControllerTest, AWakeOnTheSameDayFetchesNothing)
{
    serveBing({4});
    start();
    const auto before = fake.http.requests.size();
    wake();
    EXPECT_EQ(fake.http.requests.size(), before);
    fake.clock.advance(12h);
    wake();
    EXPECT_EQ(asked(bingList()), 2) << "it is another day";
}

TEST_F(DailyFrameControllerTest, AClockThatIsSetBackOrIntoAnotherZoneMakesAnotherDay)
{
    serveBing({4});
    start();
    fake.clock.setDate(utc("2026-07-01T12:00:00"));
    pass(30min);
    EXPECT_EQ(asked(bingList()), 2);
    EXPECT_EQ(storedDay(), QStringLiteral("2026-07-01"));
    TimeZone::set("Pacific/Auckland"); // twelve hours ahead
    pass(30min);
    EXPECT_EQ(asked(bingList()), 3);
    EXPECT_EQ(storedDay(), QStringLiteral("2026-07-02"));
}

TEST_F(DailyFrameControllerTest, AFailureIsTriedAgainAtTheNextCheck)
{
    cutNetwork(bingList());
    start();
    EXPECT_EQ(controller->statusMessage.get(), QStringLiteral("No network."));
    EXPECT_FALSE(storedDay().isValid());
    EXPECT_FALSE(controller->isWorking.get());
    serveBing({4});
    pass(30min);
    EXPECT_EQ(currentID(), QStringLiteral("bing-4"));
    EXPECT_FALSE(controller->statusMessage.get());
    EXPECT_EQ(storedDay(), QStringLiteral("2026-07-04"));
}

TEST_F(DailyFrameControllerTest, TheDayIsMarkedOnlyAfterTheDesktopHasThePicture)
{
    serveBing({4});
    serve(bingPicture(4), "<html>Log in</html>");
    start();
    EXPECT_EQ(controller->statusMessage.get(),
              QStringLiteral("The wallpaper service returned an unexpected response."));
    EXPECT_FALSE(storedDay().isValid());
    EXPECT_EQ(controller->history().size(), 1) << "nothing before the failed step is undone";
    EXPECT_FALSE(controller->current.get());
}

TEST_F(DailyFrameControllerTest, AChangeByHandDoesNotMarkTheDay)
{
    serveBing({4});
    controller->changeNow();
    EXPECT_FALSE(controller->isWorking.get()) << "it begins later";
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("bing-4"));
    EXPECT_FALSE(storedDay().isValid());
}

TEST_F(DailyFrameControllerTest, SwitchedOffNothingIsAskedAndAJobGoesOn)
{
    start(); // the list isn't answered
    controller->stop();
    serveBing({4});
    fake.http.answer(std::get<Http::Response>(fake.http.answers.value(bingList())));
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("bing-4"));
    const auto before = fake.http.requests.size();
    fake.clock.advance(48h);
    wake();
    pass(48h);
    fake.screens.arrange({});
    settle();
    EXPECT_EQ(fake.http.requests.size(), before);
}

TEST_F(DailyFrameControllerTest, AnEndInTheMiddleOfAJobEndsIt)
{
    serveBing({4});
    controller->changeNow();
    fake.runLoop.drain(); // the list is answered, and being read
    controller.reset();
    settle();
    EXPECT_TRUE(fake.desktopPicture.calls.isEmpty());
}

// One job at a time.

TEST_F(DailyFrameControllerTest, WhatIsAskedForDuringAJobIsDropped)
{
    controller->changeNow();
    settle();
    EXPECT_TRUE(controller->isWorking.get());
    controller->changeNow();
    controller->next();
    controller->previous();
    settle();
    EXPECT_EQ(fake.http.requests.size(), 1);
    fake.http.answer(500, {});
    settle();
    EXPECT_EQ(fake.http.requests.size(), 1);
    EXPECT_FALSE(controller->isWorking.get());
    EXPECT_TRUE(controller->statusMessage.get());
    controller->changeNow();
    settle();
    EXPECT_FALSE(controller->statusMessage.get()) << "the next job clears it";
}

TEST_F(DailyFrameControllerTest, ASourceChangeDuringAJobEmptiesTheListAndIsDropped)
{
    serveBing({4, 3});
    start();
    fake.http.answers.clear();
    controller->changeNow();
    settle();
    settings->source.set(SourceKind::unsplash);
    controller->reloadForSourceChange();
    EXPECT_TRUE(controller->history().isEmpty());
    EXPECT_EQ(controller->index(), 0);
    settle();
    EXPECT_EQ(asked(unsplashList()), 0);
}

// The walk through the list.

TEST_F(DailyFrameControllerTest, OlderAndNewerWalkTheList)
{
    serveBing({4, 3, 2});
    start();
    EXPECT_FALSE(controller->canGoNewer());
    controller->previous();
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("bing-3"));
    EXPECT_TRUE(controller->canGoNewer());
    controller->previous();
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("bing-2"));
    EXPECT_FALSE(controller->canGoOlder());
    controller->next();
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("bing-3"));
    controller->next();
    settle();
    controller->next();
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("bing-4")) << "there is nothing newer";
    EXPECT_EQ(asked(bingPicture(3)), 2) << "nothing is kept of an earlier download";
}

TEST_F(DailyFrameControllerTest, PastTheEndBingHasNothingMore)
{
    serveBing({4});
    start();
    controller->previous();
    settle();
    EXPECT_EQ(asked(bingList()), 2);
    EXPECT_EQ(currentID(), QStringLiteral("bing-4"));
    EXPECT_EQ(controller->index(), 0);
    EXPECT_FALSE(controller->statusMessage.get()) << "it ends silently";
    EXPECT_EQ(asked(bingPicture(4)), 1);
}

TEST_F(DailyFrameControllerTest, PastTheEndUnsplashFetchesMore)
{
    settings->source.set(SourceKind::unsplash);
    serveUnsplash({1});
    start();
    EXPECT_TRUE(controller->canGoOlder());
    serveUnsplash({1, 2, 1, 3, 2});
    controller->previous();
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("unsplash-https://images.example/2.png"));
    EXPECT_EQ(controller->history().size(), 3);
    EXPECT_EQ(controller->index(), 1);
}

TEST_F(DailyFrameControllerTest, WithoutAListThereIsNothingToWalk)
{
    controller->previous();
    settle();
    controller->next();
    settle();
    EXPECT_TRUE(fake.http.requests.isEmpty());
    EXPECT_FALSE(controller->isWorking.get());
    EXPECT_FALSE(controller->statusMessage.get());
}

TEST_F(DailyFrameControllerTest, APictureThatFailsKeepsItsPlace)
{
    serveBing({4, 3});
    start();
    serve(bingPicture(3), {}, 404);
    controller->previous();
    settle();
    EXPECT_EQ(controller->index(), 1);
    EXPECT_EQ(currentID(), QStringLiteral("bing-4"));
    EXPECT_EQ(shown(), fileFor(QStringLiteral("bing-4.jpg")));
}

// Sources and displays.

TEST_F(DailyFrameControllerTest, TheRegionAndTheSourceAreThoseOfTheSettings)
{
    serveBing({4});
    start();
    settings->bingMarket.set(QStringLiteral("ja-JP"));
    serveBing({7}, QStringLiteral("ja-JP"));
    controller->reloadForSourceChange();
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("bing-7"));
    settings->source.set(SourceKind::unsplash);
    serveUnsplash({1});
    controller->reloadForSourceChange();
    settle();
    EXPECT_EQ(currentID(), QStringLiteral("unsplash-https://images.example/1.png"));
}

TEST_F(DailyFrameControllerTest, TheSizeIsTheMainDisplaysInPixels)
{
    settings->source.set(SourceKind::unsplash);
    fake.screens.list.first().frame = {{0, 0}, {1366.5, 768}};
    fake.screens.list.first().backingScaleFactor = 1.5;
    controller->changeNow();
    settle();
    EXPECT_EQ(fake.http.requests.last().url, unsplashList(1152, 2049));
    fake.http.answer(500, {});
    settle();
    fake.screens.list = {};
    controller->changeNow();
    settle();
    EXPECT_EQ(fake.http.requests.last().url, unsplashList(1600, 2560));
}

TEST_F(DailyFrameControllerTest, TheLimitsOfSizeAreTold)
{
    serveBing({4});
    start();
    ASSERT_EQ(fake.http.requests.size(), 2);
    EXPECT_EQ(fake.http.requests.first().mostBytes, 8'000'000);
    EXPECT_EQ(fake.http.requests.last().mostBytes, 100'000'000);
    EXPECT_EQ(fake.http.requests.last().patience, 60s);
}

TEST_F(DailyFrameControllerTest, ADisplayThatComesGetsThePictureAfterANewDownload)
{
    serveBing({4});
    start();
    auto screens = fake.screens.list;
    screens.append(FakeScreens::screen(2, {{1440, 0}, {1280, 1000}}, {{1440, 0}, {1280, 1000}}));
    fake.screens.arrange(screens);
    settle();
    EXPECT_EQ(fake.desktopPicture.pictures.value(QStringLiteral("Display 2")), shown());
    EXPECT_EQ(asked(bingPicture(4)), 2);
    EXPECT_EQ(asked(bingList()), 1);
}

TEST_F(DailyFrameControllerTest, APanelThatComesOrGoesDownloadsNothing)
{
    serveBing({4});
    start();
    auto screens = fake.screens.list;
    screens.first().visibleFrame = {{0, 0}, {1440, 876}};
    fake.screens.arrange(screens);
    settle();
    EXPECT_EQ(asked(bingPicture(4)), 1);
}

TEST_F(DailyFrameControllerTest, WithoutAllDisplaysOnlyTheMainOneGetsThePicture)
{
    settings->applyToAllDisplays.set(false);
    fake.screens.list.append(FakeScreens::screen(2, {{1440, 0}, {1280, 1000}}, {{1440, 0}, {1280, 1000}}));
    fake.screens.main = fake.screens.list.last();
    serveBing({4});
    start();
    EXPECT_EQ(fake.desktopPicture.pictures.keys(), QStringList{QStringLiteral("Display 2")});
    settings->applyToAllDisplays.set(true);
    controller->reapplyCurrent();
    settle();
    EXPECT_EQ(fake.desktopPicture.pictures.size(), 2);
}

TEST_F(DailyFrameControllerTest, WithoutAnyDisplayTheFileIsKept)
{
    settings->applyToAllDisplays.set(false);
    fake.screens.list = {};
    serveBing({4});
    start();
    EXPECT_EQ(currentID(), QStringLiteral("bing-4"));
    EXPECT_TRUE(fake.desktopPicture.calls.isEmpty());
    EXPECT_FALSE(controller->statusMessage.get());
    EXPECT_TRUE(QFile::exists(fileFor(QStringLiteral("bing-4.jpg"))));
}

TEST_F(DailyFrameControllerTest, ACopyIsMadeOnlyWhenItIsWanted)
{
    serveBing({4});
    start();
    EXPECT_TRUE(namesIn(QStringLiteral("Pictures/Daily Frame")).isEmpty());
    settings->saveToFolder.set(true);
    controller->reapplyCurrent();
    settle();
    EXPECT_EQ(namesIn(QStringLiteral("Pictures/Daily Frame")), QStringList{QStringLiteral("bing-4.jpg")});
}

TEST_F(DailyFrameControllerTest, WithoutAPictureThereIsNothingToShowAgain)
{
    controller->reapplyCurrent();
    settle();
    EXPECT_TRUE(fake.http.requests.isEmpty());
}

TEST_F(DailyFrameControllerTest, FailuresAreLogged)
{
    cutNetwork(bingList());
    start();
    EXPECT_TRUE(std::ranges::any_of(fake.log.entries(), [](const auto& entry) {
        return entry.level == LogLevel::error && entry.message == QStringLiteral("No network.");
    }));
}

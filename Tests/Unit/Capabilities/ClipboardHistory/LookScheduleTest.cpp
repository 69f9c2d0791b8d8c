#include "Capabilities/ClipboardHistory/Capture/LookSchedule.h"

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

using namespace std::chrono_literals;

} // namespace

TEST(LookScheduleTest, ASingleCopyIsLookedAtAfterAMomentOfSilence)
{
    LookSchedule schedule(400ms);
    EXPECT_EQ(schedule.announced(1s), 1050ms);
}

TEST(LookScheduleTest, EachFurtherCopyDelaysTheLookUpToALimit)
{
    LookSchedule schedule(400ms);
    EXPECT_EQ(schedule.announced(0ms), 50ms);
    EXPECT_EQ(schedule.announced(40ms), 90ms);
    EXPECT_EQ(schedule.announced(80ms), 130ms);
    EXPECT_EQ(schedule.announced(120ms), 150ms);
    EXPECT_EQ(schedule.announced(149ms), 150ms);
}

TEST(LookScheduleTest, ALookBeginsAnew)
{
    LookSchedule schedule(400ms);
    EXPECT_EQ(schedule.announced(0ms), 50ms);
    EXPECT_EQ(schedule.announced(140ms), 150ms);
    schedule.looked(150ms);
    EXPECT_EQ(schedule.announced(160ms), 210ms);
}

TEST(LookScheduleTest, FiveLooksMayBeMadeAheadAndThenOnePerInterval)
{
    LookSchedule schedule(400ms);
    for (const auto copy : {0ms, 100ms, 200ms, 300ms, 400ms}) {
        EXPECT_EQ(schedule.announced(copy), copy + 50ms);
        schedule.looked(copy + 50ms);
    }
    EXPECT_EQ(schedule.announced(500ms), 550ms) << "an interval has passed meanwhile";
    schedule.looked(550ms);
    EXPECT_EQ(schedule.announced(560ms), 850ms);
    schedule.looked(850ms);
    EXPECT_EQ(schedule.announced(860ms), 1250ms);
}

TEST(LookScheduleTest, APauseGivesTheLooksBack)
{
    LookSchedule schedule(400ms);
    for (int look = 0; look < 5; ++look)
        schedule.looked(0ms);
    EXPECT_EQ(schedule.announced(10ms), 400ms);
    schedule.looked(400ms);
    EXPECT_EQ(schedule.announced(1h), 1h + 50ms);
}

TEST(LookScheduleTest, TheLongestIntervalLimitsTheRateToo)
{
    LookSchedule schedule(24h);
    for (int look = 0; look < 5; ++look)
        schedule.looked(0ms);
    EXPECT_EQ(schedule.announced(1ms), 24h);
}

} // namespace orvane::tests

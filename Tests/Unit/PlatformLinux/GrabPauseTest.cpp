#include "PlatformLinux/EventTap/GrabPause.h"

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

using namespace std::chrono_literals;

class GrabPauseTest : public ::testing::Test {
protected:
    /// Returns the time from an attempt that found them taken to the next one, in steps of 50 ms.
    GrabPause::Clock::duration pauseAfterAttempt()
    {
        pause.noteTaken(now);
        const auto begin = now;
        while (!pause.isOver(now))
            now += 50ms;
        return now - begin;
    }

    GrabPause pause;
    GrabPause::Clock::time_point now{1h};
};

TEST_F(GrabPauseTest, ThereIsNoneBeforeTheFirstAttempt)
{
    EXPECT_TRUE(pause.isOver(now));
}

TEST_F(GrabPauseTest, ATapThatIsMadeAndEnabledAtOnceIsTriedTwice)
{
    EXPECT_EQ(pauseAfterAttempt(), 0s);
    EXPECT_EQ(pauseAfterAttempt(), 0s);
    EXPECT_EQ(pauseAfterAttempt(), 1s);
}

TEST_F(GrabPauseTest, TheyDoubleUpToAMinute)
{
    for (int i = 0; i < 3; ++i)
        pauseAfterAttempt();
    for (const auto expected : {2s, 4s, 8s, 16s, 32s, 60s, 60s})
        EXPECT_EQ(pauseAfterAttempt(), expected);
}

TEST_F(GrabPauseTest, AfterTheKeyboardsWereFreeTheyBeginAnew)
{
    for (int i = 0; i < 6; ++i)
        pauseAfterAttempt();
    pause.noteTaken(now);
    EXPECT_FALSE(pause.isOver(now));
    pause.noteFree();
    EXPECT_TRUE(pause.isOver(now));
    EXPECT_EQ(pauseAfterAttempt(), 0s);
}

} // namespace
} // namespace orvane::tests

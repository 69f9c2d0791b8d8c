#include "PlatformLinux/Common/CallBudget.h"

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

using namespace std::chrono_literals;

int spent(CallBudget& budget, CallBudget::Time now)
{
    int count = 0;
    while (count < 1000 && budget.spend(now))
        ++count;
    return count;
}

TEST(CallBudget, SomeCallsComeAtOnceAndTheOthersAtASteadyRate)
{
    CallBudget budget(20, 50ms);
    const CallBudget::Time start{1h};
    EXPECT_EQ(spent(budget, start), 20);
    EXPECT_EQ(spent(budget, start + 49ms), 0);
    EXPECT_EQ(spent(budget, start + 50ms), 1);
    EXPECT_EQ(spent(budget, start + 220ms), 3);
}

TEST(CallBudget, ALongRestGivesNoMoreThanTheFirstCalls)
{
    CallBudget budget(3, 50ms);
    const CallBudget::Time start{1h};
    EXPECT_EQ(spent(budget, start), 3);
    EXPECT_EQ(spent(budget, start + 24h), 3);
    EXPECT_EQ(spent(budget, start + 24h), 0);
}

} // namespace
} // namespace orvane::tests

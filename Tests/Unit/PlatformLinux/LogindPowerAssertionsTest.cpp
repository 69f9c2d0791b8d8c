#include "PlatformLinux/Session/LogindPowerAssertions.h"
#include "Fakes/FakeLogSink.h"

#include <gtest/gtest.h>

namespace orvane::tests {

TEST(LogindPowerAssertionsWithoutABus, NothingIsHeldAndThatIsSaid)
{
    FakeLogSink log;
    LogindPowerAssertions assertions(log);
    const auto result = assertions.createWithName(PowerAssertionType::preventUserIdleSystemSleep,
                                                  PowerAssertions::levelOn, QStringLiteral("Reading"));
    EXPECT_EQ(result.status, PowerAssertions::Status::unsupported);
    EXPECT_EQ(result.id, 0u);
    EXPECT_EQ(log.entries().size(), 1u);
}

} // namespace orvane::tests

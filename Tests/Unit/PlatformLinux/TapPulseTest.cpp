#include "PlatformLinux/EventTap/Guardian/SharedPulse.h"

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

TEST(TapPulseTest, AKeyIsTakenOnceOneOfItsTimeOrLaterWas)
{
    TapPulse pulse;
    EXPECT_FALSE(pulse.hasTakenSince(0));
    pulse.setTaken(1000);
    EXPECT_TRUE(pulse.hasTakenSince(999));
    EXPECT_TRUE(pulse.hasTakenSince(1000));
    EXPECT_FALSE(pulse.hasTakenSince(1001));
}

TEST(TapPulseTest, TheServersClockMayWrapAroundBetweenTheTwo)
{
    TapPulse pulse;
    pulse.setTaken(5);
    EXPECT_TRUE(pulse.hasTakenSince(0xFFFFFFF0));
    pulse.setTaken(0xFFFFFFF0);
    EXPECT_FALSE(pulse.hasTakenSince(5));
}

TEST(TapPulseTest, KeyboardsAreNamedOneByOne)
{
    TapPulse pulse;
    pulse.setTakes(3, true);
    pulse.setTakes(70, true);
    pulse.setTakes(3, false);
    EXPECT_FALSE(pulse.takes(3));
    EXPECT_TRUE(pulse.takes(70));
    EXPECT_FALSE(pulse.takes(6));
    pulse.setTakes(60000, true);
    EXPECT_FALSE(pulse.takes(60000));
}

TEST(TapPulseTest, WhoHasTheDescriptorHasTheSamePulse)
{
    const SharedPulse pulse = SharedPulse::make();
    ASSERT_TRUE(pulse);
    const SharedPulse same = SharedPulse::ofDescriptor(::dup(pulse.descriptor()));
    ASSERT_TRUE(same);
    pulse->setThread(42);
    EXPECT_EQ(same->thread(), 42u);
    same->setFreed();
    EXPECT_TRUE(pulse->wasFreed());
}

TEST(TapPulseTest, ADescriptorThatIsNoneHasNone)
{
    EXPECT_FALSE(SharedPulse::ofDescriptor(-1));
    EXPECT_FALSE(SharedPulse::ofDescriptor(::open("/", O_RDONLY)));
}

} // namespace
} // namespace orvane::tests

#include "PlatformLinux/EventTap/JoinedKeyboards.h"

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

constexpr std::uint8_t keyA = 38, keyB = 56;

class JoinedKeyboardsTest : public ::testing::Test {
protected:
    JoinedKeyboardsTest()
    {
        keyboards.add(1, {});
        keyboards.add(2, {});
    }
    bool moves(DeviceId id, std::uint8_t key, KeyMotion motion)
    {
        return keyboards.motion(id, key, motion).has_value();
    }

    JoinedKeyboards keyboards;
};

TEST_F(JoinedKeyboardsTest, AKeyIsPressedWithTheFirstAndReleasedWithTheLastOfItsKind)
{
    EXPECT_TRUE(moves(1, keyA, KeyMotion::press));
    EXPECT_FALSE(moves(2, keyA, KeyMotion::press));
    EXPECT_FALSE(moves(1, keyA, KeyMotion::release));
    EXPECT_TRUE(keyboards.down().test(keyA));
    EXPECT_TRUE(moves(2, keyA, KeyMotion::release));
    EXPECT_TRUE(keyboards.down().none());
}

TEST_F(JoinedKeyboardsTest, AKeyboardThatGoesReleasesWhatIsDownNowhereElse)
{
    moves(1, keyA, KeyMotion::press);
    moves(1, keyB, KeyMotion::press);
    moves(2, keyB, KeyMotion::press);
    const KeySet released = keyboards.remove(1);
    EXPECT_EQ(released.count(), 1u);
    EXPECT_TRUE(released.test(keyA));
    EXPECT_FALSE(keyboards.has(1));
    EXPECT_TRUE(moves(2, keyB, KeyMotion::release));
}

TEST_F(JoinedKeyboardsTest, AStrangersKeyAndOneOutOfRangeMeanNothing)
{
    EXPECT_FALSE(moves(3, keyA, KeyMotion::press));
    EXPECT_FALSE(keyboards.motion(1, 300, KeyMotion::press));
    EXPECT_TRUE(keyboards.remove(3).none());
}

} // namespace
} // namespace orvane::tests

#include "Platform/TimedBuffer.h"

#include <gtest/gtest.h>

using namespace orvane;

TEST(TimedBuffer, ReadsNothingBeyondTheEnd)
{
    TimedBuffer buffer(QByteArrayLiteral("four"), [] { return false; });
    char read[8] = "unread";
    ASSERT_TRUE(buffer.seek(6));
    EXPECT_EQ(buffer.read(read, sizeof(read)), 0) << "the end, and no failure";
    EXPECT_STREQ(read, "unread");
    ASSERT_TRUE(buffer.seek(2));
    EXPECT_EQ(buffer.read(sizeof(read)), QByteArrayLiteral("ur"));
}

TEST(TimedBuffer, EndsOnceItsTimeIsOver)
{
    bool isOver = false;
    TimedBuffer buffer(QByteArrayLiteral("four"), [&] { return isOver; });
    char read[2] = {};
    EXPECT_EQ(buffer.read(read, 2), 2);
    isOver = true;
    EXPECT_EQ(buffer.read(read, 2), 0);
    TimedBuffer target([&] { return isOver; });
    EXPECT_EQ(target.write("more"), -1);
    EXPECT_TRUE(target.bytes().isEmpty());
}

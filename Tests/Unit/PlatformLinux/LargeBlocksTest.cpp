#include "PlatformLinux/Common/LargeBlocks.h"

#include <vector>

#include <malloc.h>

#include <gtest/gtest.h>

namespace orvane::tests {

TEST(LargeBlocks, EachGoesBackToTheSystemAlsoAfterTheFirst)
{
#ifndef __GLIBC__
    GTEST_SKIP() << "other libraries have no such threshold";
#endif
    returnLargeBlocksToSystem();
    const auto mapped = [] { return mallinfo2().hblkhd; };
    const std::size_t before = mapped();
    for (const std::size_t size : {20'000'000, 10'000'000, 1'000'000}) {
        {
            const std::vector<char> block(size, 'x');
            EXPECT_GE(mapped(), before + size) << "a mapping of its own";
            EXPECT_EQ(block.back(), 'x');
        }
        EXPECT_EQ(mapped(), before) << size;
    }
}

} // namespace orvane::tests

#include "PlatformLinux/Common/LargeBlocks.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <malloc.h>

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

std::size_t mapped()
{
    return mallinfo2().hblkhd;
}

/// Ends the process, with 0 if each block had a mapping of its own that has gone with it.
[[noreturn]] void useLargeBlocks()
{
    returnLargeBlocksToSystem();
    const std::size_t before = mapped();
    for (const std::size_t size : {20'000'000, 10'000'000, 1'000'000}) {
        {
            const std::vector<char> block(size, 'x');
            if (mapped() < before + size || block.back() != 'x') {
                std::fprintf(stderr, "%zu bytes had no mapping of their own\n", size);
                std::exit(1);
            }
        }
        if (mapped() != before) {
            std::fprintf(stderr, "%zu bytes are still mapped\n", size);
            std::exit(1);
        }
    }
    std::exit(0);
}

} // namespace

/// In a process of its own: what other tests have freed would be used first.
TEST(LargeBlocksDeathTest, EachGoesBackToTheSystemAlsoAfterTheFirst)
{
#if !defined(__GLIBC__) || defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "other allocators have no such threshold";
#endif
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(useLargeBlocks(), testing::ExitedWithCode(0), "");
}

} // namespace orvane::tests

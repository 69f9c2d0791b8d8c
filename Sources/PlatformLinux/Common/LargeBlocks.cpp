#include "PlatformLinux/Common/LargeBlocks.h"

#include <malloc.h>

namespace orvane {

void returnLargeBlocksToSystem()
{
#ifdef __GLIBC__
    // A threshold that is set doesn't grow with the blocks that are freed.
    constexpr int largeBlock = 256 * 1024;
    mallopt(M_MMAP_THRESHOLD, largeBlock);
#endif
}

} // namespace orvane

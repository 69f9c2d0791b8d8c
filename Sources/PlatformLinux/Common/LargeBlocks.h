// The memory of large blocks.
#pragma once

namespace orvane {

/// Makes each large block that is freed from now on go back to the system at once. Otherwise the library
/// keeps larger and larger ones after the first, in each thread: some 30 MB after a copy of 60 MB.
void returnLargeBlocksToSystem();

} // namespace orvane

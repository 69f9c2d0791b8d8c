// Takes requests from the socket pair and answers them, one after the other.
#pragma once

#include <chrono>

namespace orvane::RequestLoop {

/// Returns after `idleLimit` without a request, or when the other side has gone. A request that takes longer
/// than `requestLimit` ends the process.
void run(int descriptor, std::chrono::milliseconds idleLimit, std::chrono::seconds requestLimit);

} // namespace orvane::RequestLoop

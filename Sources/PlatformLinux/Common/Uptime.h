// The clock of the events' timestamps. Any thread.
#pragma once

#include <chrono>
#include <cstdint>

namespace orvane {

/// Counts from the start of the system, without the time that it slept.
[[nodiscard]] inline std::uint64_t uptimeNanoseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::nanoseconds(now).count());
}

} // namespace orvane

// Waits for a condition. This is the only place in the tests that looks again and again.
#pragma once

#include <chrono>
#include <functional>

namespace orvane::tests {

using namespace std::chrono_literals;

/// Runs the event loop until the condition holds. The condition is tested after each event, every 20 ms, and
/// a last time at the deadline; false when it doesn't hold then.
[[nodiscard]] bool eventually(std::chrono::milliseconds deadline, const std::function<bool()>& condition);

} // namespace orvane::tests

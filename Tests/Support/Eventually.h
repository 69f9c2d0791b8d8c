// Waiting on a condition: the one place in the tests that looks again and again.
#pragma once

#include <chrono>
#include <functional>

namespace orvane::tests {

using namespace std::chrono_literals;

/// Runs the event loop until the condition holds. False when it doesn't within the deadline, and then it was
/// tested a last time after it. The condition is tested after each event and every 20 ms.
[[nodiscard]] bool eventually(std::chrono::milliseconds deadline, const std::function<bool()>& condition);

} // namespace orvane::tests

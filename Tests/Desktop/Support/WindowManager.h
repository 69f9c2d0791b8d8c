// Waits for the window manager of the private desktop.
#pragma once

#include <chrono>
#include <cstdint>

namespace orvane::tests {

/// Returns once the window manager has acted on all that happened before the call. When a window goes, the
/// window manager gives the focus to another one, even if some window has got it meanwhile. False when it
/// doesn't answer within the deadline; true at once where there is none.
[[nodiscard]] bool
settleWindowManager(std::chrono::milliseconds deadline = std::chrono::milliseconds(10'000));

/// Gives a window the input focus with the present time. Programs that were offered the focus earlier and
/// have not yet taken it are refused from then on: of two requests the server grants the later one.
void holdFocus(std::uint32_t window);

} // namespace orvane::tests

// The window manager of the private desktop, as somebody who has to wait for it.
#pragma once

#include <chrono>
#include <cstdint>

namespace orvane::tests {

/// Returns once the window manager has acted on all that happened before the call. When a window goes, it
/// gives the focus to another one, and would take it from whoever has it by then. False when it doesn't
/// answer within the deadline; true at once where there is none.
[[nodiscard]] bool
settleWindowManager(std::chrono::milliseconds deadline = std::chrono::milliseconds(10'000));

/// Gives a window the input focus as of now. Programs that were offered it earlier and still are to take it
/// are refused from then on: of two wishes the server grants the later one.
void holdFocus(std::uint32_t window);

} // namespace orvane::tests

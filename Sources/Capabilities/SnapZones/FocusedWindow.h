// The window that snapping acts on. Main thread.
#pragma once

#include "Platform/Accessibility.h"

#include <chrono>

namespace orvane::FocusedWindow {

/// The longest wait of one call on the window. A program that hangs must not delay a person for longer.
inline constexpr std::chrono::duration<float> longestWait{0.5F};

/// Absent where no window has the focus, where it can't be read, and for a full-screen window, which is never
/// snapped. Waits up to half a second for each of its reads.
std::optional<AXUIElement> current();

} // namespace orvane::FocusedWindow

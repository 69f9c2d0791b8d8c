// The window that snapping acts on. Main thread.
#pragma once

#include "Platform/Accessibility.h"

namespace orvane::FocusedWindow {

/// Absent where no window has the focus, where it can't be read, and for a full-screen window, which is never
/// snapped. Waits up to half a second for each of its reads.
std::optional<AXUIElement> current();

} // namespace orvane::FocusedWindow

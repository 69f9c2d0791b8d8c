// Virtual key codes and X key codes, matched by the key's position, whatever the layout prints there. X key
// codes are those of the evdev driver: the kernel's code + 8. One to one; any thread.
#pragma once

#include <optional>

namespace orvane {

/// Absent for a key that has no virtual code, such as Scroll Lock.
std::optional<int> virtualKeyCode(int xKeyCode);
/// Absent for a code that belongs to no key.
std::optional<int> xKeyCode(int virtualKeyCode);

} // namespace orvane

// The flags that a key itself puts into its events, whatever is held with it. Pure; any thread.
#pragma once

#include "Platform/EventFlags.h"

#include <cstdint>

namespace orvane {

/// Returns `numericPad` for the keypad and the arrows, and `secondaryFn` for the keys that a small keyboard
/// reaches by Fn: function keys, arrows, and those around them. Takes a virtual key code.
EventFlags flagsOfKeyItself(std::int64_t keycode);

} // namespace orvane

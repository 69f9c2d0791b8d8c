// The flags that a key brings into its events by what it is, whatever is held with it. Pure; any thread.
#pragma once

#include "Platform/EventFlags.h"

#include <cstdint>

namespace orvane {

/// `numericPad` for the keypad and the arrows; `secondaryFn` for the keys that a small keyboard reaches by
/// Fn: function keys, arrows, and those around them. By virtual key code.
EventFlags flagsOfKeyItself(std::int64_t keycode);

} // namespace orvane

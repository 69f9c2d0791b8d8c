// A shortcut's modifiers in both their encodings, and how they are written. Pure.
#pragma once

#include "Platform/EventFlags.h"

#include <QString>

#include <cstdint>

namespace orvane::KeyboardShortcuts {

/// Converts Control, Option, Shift and Command; every other bit is dropped.
std::int64_t toCarbonModifiers(EventFlags flags);
/// Converts the same four the other way.
EventFlags toEventFlags(std::int64_t carbonModifiers);

/// Returns the symbols in the order control, option, shift, command, function, with nothing between them; on
/// a desktop that writes shortcuts in words, those words in its order, each with the sign that follows it.
QString description(EventFlags flags);

} // namespace orvane::KeyboardShortcuts

// The text that a shortcut is stored as: {"carbonKeyCode":49,"carbonModifiers":4096}. Pure.
#pragma once

#include "KeyboardShortcuts/Shortcut/Shortcut.h"

#include <QString>

#include <optional>

namespace orvane::KeyboardShortcuts {

[[nodiscard]] QString encode(const Shortcut& shortcut);

/// Reads a JSON object with whole numbers of 64 bits under both names, in any order, with any other members.
/// Nothing for any other text.
[[nodiscard]] std::optional<Shortcut> decode(const QString& text);

} // namespace orvane::KeyboardShortcuts

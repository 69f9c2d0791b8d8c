// The text that a shortcut is stored as: {"carbonKeyCode":49,"carbonModifiers":4096}. Pure.
#pragma once

#include "KeyboardShortcuts/Shortcut/Shortcut.h"

#include <QString>

#include <optional>

namespace orvane::KeyboardShortcuts {

QString encode(const Shortcut& shortcut);

/// A JSON object with whole numbers of 64 bits under both names, in any order, whatever else it holds; of a
/// name that is there twice the first counts. Nothing for any other text. Allocates nothing.
std::optional<Shortcut> decode(QStringView text);

} // namespace orvane::KeyboardShortcuts

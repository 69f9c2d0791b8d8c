// The texts of keys that print nothing, or nothing readable, and the characters that menus use for them.
// Pure.
#pragma once

#include <QStringView>

#include <cstdint>
#include <optional>

namespace orvane::KeyboardShortcuts {

/// Returns the fixed text of a key, the same in every layout. Nothing for a key that shows what its layout
/// prints.
std::optional<QStringView> keyToCharacterMapping(std::int64_t keyCode);

/// Returns the word that this desktop has for a key with the given text, in the language of the user; the
/// text itself where it has none.
QString wordForKey(const QString& text);

/// Returns the one character that stands for the key in a menu's key equivalent, where its text is longer
/// than that.
std::optional<QStringView> keyToKeyEquivalentString(std::int64_t keyCode);

/// Returns the first letter of each word in upper case and the others in lower case, letter by letter: a text
/// never grows, so "ß" stays.
QString capitalized(QStringView text);

/// Counts the characters that a person sees: a digit in a keycap is one.
qsizetype characterCount(const QString& text);

} // namespace orvane::KeyboardShortcuts

// What keys show that print nothing, or nothing readable; and what menus take for them. Pure.
#pragma once

#include <QStringView>

#include <cstdint>
#include <optional>

namespace orvane::KeyboardShortcuts {

/// The fixed text of a key, the same in every layout. Nothing for a key that shows what its layout prints.
std::optional<QStringView> keyToCharacterMapping(std::int64_t keyCode);

/// The one character that stands for the key in a menu's key equivalent, where its text is longer than that.
std::optional<QStringView> keyToKeyEquivalentString(std::int64_t keyCode);

/// The first letter of each word in upper case and the others in lower case, letter by letter: a text never
/// grows, so "ß" stays.
QString capitalized(QStringView text);

/// As a person counts them: a digit in a keycap is one.
qsizetype characterCount(const QString& text);

} // namespace orvane::KeyboardShortcuts

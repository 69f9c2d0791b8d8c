// The place of a name's shortcut in the defaults, and its form. Main thread.
#pragma once

#include "KeyboardShortcuts/Shortcut/Name.h"
#include "KeyboardShortcuts/Shortcut/Shortcut.h"

#include <QString>

#include <optional>

namespace orvane::KeyboardShortcuts::storage {

QString key(const Name& name);

/// Nothing where there is no shortcut, and for any value that can't be decoded.
std::optional<Shortcut> read(const QString& key);
/// True if there is any value, also the mark of a cleared name.
bool hasObject(const QString& key);

void write(const QString& key, const Shortcut& shortcut);
/// Marks the shortcut as removed on purpose, unlike one that was never set, for which the default stands.
void writeCleared(const QString& key);
void remove(const QString& key);

} // namespace orvane::KeyboardShortcuts::storage

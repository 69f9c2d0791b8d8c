// Where a name's shortcut is in the defaults, and in what form. Main thread.
#pragma once

#include "KeyboardShortcuts/Shortcut/Name.h"
#include "KeyboardShortcuts/Shortcut/Shortcut.h"

#include <QString>

#include <optional>

namespace orvane::KeyboardShortcuts::storage {

QString key(const Name& name);

/// Nothing where there is none and for anything that doesn't decode.
std::optional<Shortcut> read(const QString& key);
/// Whether there is anything, the mark of a cleared name too.
bool hasObject(const QString& key);

void write(const QString& key, const Shortcut& shortcut);
/// Tells a shortcut removed on purpose from one that was never set, for which the default stands.
void writeCleared(const QString& key);
void remove(const QString& key);

} // namespace orvane::KeyboardShortcuts::storage

// A shortcut in words, for people who hear it: symbols such as "⌃" mean nothing to a screen reader.
#pragma once

#include "KeyboardShortcuts/Shortcut/Shortcut.h"

namespace orvane::KeyboardShortcuts {

/// Returns a text such as "Control Option Space"; the present layout says what the key prints. Main thread.
QString spokenDescription(const Shortcut& shortcut);

} // namespace orvane::KeyboardShortcuts

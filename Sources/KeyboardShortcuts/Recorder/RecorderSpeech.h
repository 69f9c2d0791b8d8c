// A shortcut in words, for those who hear it: symbols such as "⌃" mean nothing to a screen reader.
#pragma once

#include "KeyboardShortcuts/Recorder/RecorderStrings.h"
#include "KeyboardShortcuts/Shortcut/Shortcut.h"

namespace orvane::KeyboardShortcuts {

/// Such as "Control Option Space"; what the key prints comes from the present layout. Main thread.
QString spokenDescription(const Shortcut& shortcut, const ResourceBundle& texts = orvaneResourceBundle());

} // namespace orvane::KeyboardShortcuts

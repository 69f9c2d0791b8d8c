// Makes a menu item show the shortcut of a name and follow its changes. Main thread.
#pragma once

#include "KeyboardShortcuts/Shortcut/Name.h"
#include "KeyboardShortcuts/Shortcut/Shortcut.h"
#include "Platform/Menu.h"

#include <memory>
#include <optional>

namespace orvane::KeyboardShortcuts {

/// Binds the item until it ends or is bound anew; without a name it has no key equivalent from here on. The
/// binding is the item's `association`, and reaches this one item, not its copies.
void setShortcutFor(const std::shared_ptr<MenuItem>& item, const std::optional<Name>& name);

/// Sets the key equivalent once. On any thread: away from the main one it is done in the main thread's next
/// turn.
void setShortcut(const std::shared_ptr<MenuItem>& item, const std::optional<Shortcut>& shortcut);

} // namespace orvane::KeyboardShortcuts

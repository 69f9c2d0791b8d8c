// Shortcuts as registrations with the system's hot key service, and raw keys in their place while a menu has
// the keyboard. The only place that speaks to that service. Main thread; failures are answers.
#pragma once

#include "KeyboardShortcuts/Shortcut/Shortcut.h"
#include "Platform/HotKeys.h"

#include <QList>

#include <functional>

namespace orvane::KeyboardShortcuts::CarbonKeyboardShortcuts {

using Callback = std::function<void(const Shortcut&)>;

/// "SSKS", the signature in the id of every hot key.
inline constexpr std::uint32_t hotKeySignature = 0x53534B53;

/// Adds a registration, for an equal shortcut too; none where the system refuses, whose answer is returned.
OSStatus registerShortcut(const Shortcut& shortcut, Callback onKeyDown, Callback onKeyUp);
/// Ends all registrations of the shortcut.
void unregisterShortcut(const Shortcut& shortcut);
/// To be called after a change of `isEnabled` or `isMenuOpen`.
void updateEventHandler();

/// Returns the shortcuts that the desktop keeps for itself, those in force only.
QList<Shortcut> system();

} // namespace orvane::KeyboardShortcuts::CarbonKeyboardShortcuts

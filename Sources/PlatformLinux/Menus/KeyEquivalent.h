// A menu item's key equivalent as the toolkit's key: the command modifier is Control on this desktop, and
// control is Super. Pure; main thread.
#pragma once

#include "Platform/Menu.h"

#include <QKeySequence>

#include <optional>

namespace orvane {

/// Control and Command in each other's place; all else as it is.
EventFlags menuModifiers(EventFlags pressed);

/// Absent for an item without one, or with a character that no key stands for.
std::optional<QKeyCombination> keyCombination(const MenuItem& item);

/// As a menu shows it; empty for none.
QString keyEquivalentText(const MenuItem& item);

bool isKeyEquivalent(const MenuItem& item, QKeyCombination pressed);

} // namespace orvane

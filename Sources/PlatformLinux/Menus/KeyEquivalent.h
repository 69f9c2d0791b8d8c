// Converts a menu item's key equivalent to the toolkit's key: the command modifier is Control on this
// desktop, and control is Super. Pure; main thread.
#pragma once

#include "Platform/Menu.h"

#include <QKeySequence>

#include <optional>

namespace orvane {

/// Exchanges Control and Command; everything else stays.
EventFlags menuModifiers(EventFlags pressed);

/// Absent for an item without one, or with a character that no key stands for.
std::optional<QKeyCombination> keyCombination(const MenuItem& item);

/// Returns the text that a menu shows; empty for none.
QString keyEquivalentText(const MenuItem& item);

bool isKeyEquivalent(const MenuItem& item, QKeyCombination pressed);

} // namespace orvane

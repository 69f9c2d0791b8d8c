// The texts of shortcuts and of their recorder: KeyboardShortcutsText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane::KeyboardShortcuts {

struct KeyboardShortcutsText {
    Q_DECLARE_TR_FUNCTIONS(KeyboardShortcutsText)
};

} // namespace orvane::KeyboardShortcuts

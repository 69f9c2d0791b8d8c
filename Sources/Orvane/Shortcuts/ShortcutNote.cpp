#include "Orvane/Shortcuts/ShortcutNote.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "Orvane/Brand/ShellText.h"
#include "Platform/HotKeys.h"
#include "Platform/Platform.h"

namespace orvane {

namespace {

QString sentence(OSStatus refusal)
{
    switch (refusal) {
    case eventHotKeyExistsErr:
        return ShellText::tr("Another program has this shortcut. It works here once that lets it go.");
    case eventHotKeyInvalidErr:
        return ShellText::tr("This keyboard has no such key.");
    default:
        return ShellText::tr("The system refuses this shortcut.");
    }
}

} // namespace

QString shortcutNote(const QString& actionID, const ActionTitle& titleOf)
{
    const KeyboardShortcuts::Name name(actionID);
    if (!KeyboardShortcuts::getShortcut(name))
        return {};
    if (const QString limitation = platform().hotKeys.limitation(); !limitation.isEmpty())
        return limitation;
    if (const auto refusal = KeyboardShortcuts::refusal(name))
        return sentence(*refusal);
    for (const QString& other : KeyboardShortcuts::namesSharingShortcut(name)) {
        if (const QString title = titleOf ? titleOf(other) : QString(); !title.isEmpty())
            return ShellText::tr("“%1” has this shortcut too.").arg(title);
    }
    return {};
}

} // namespace orvane

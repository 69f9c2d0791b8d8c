#include "KeyboardShortcuts/Recorder/RecorderSpeech.h"

#include "KeyboardShortcuts/KeyboardShortcutsText.h"
#include "KeyboardShortcuts/Shortcut/Key.h"
#include "OrvaneCore/Base/TextSource.h"
#include "Platform/EventFlags.h"

#include <QStringList>

#include <array>

namespace orvane::KeyboardShortcuts {

namespace {

struct SpokenKey {
    Key key;
    TextSource text;
};

constexpr std::array spokenKeys = {
    SpokenKey{Key::return_, TextSource("KeyboardShortcutsText", "Return")},
    SpokenKey{Key::delete_, TextSource("KeyboardShortcutsText", "Delete")},
    SpokenKey{Key::deleteForward, TextSource("KeyboardShortcutsText", "Forward Delete")},
    SpokenKey{Key::end, TextSource("KeyboardShortcutsText", "End")},
    SpokenKey{Key::escape, TextSource("KeyboardShortcutsText", "Escape")},
    SpokenKey{Key::help, TextSource("KeyboardShortcutsText", "Help")},
    SpokenKey{Key::home, TextSource("KeyboardShortcutsText", "Home")},
    SpokenKey{Key::space, TextSource("KeyboardShortcutsText", "Space")},
    SpokenKey{Key::tab, TextSource("KeyboardShortcutsText", "Tab")},
    SpokenKey{Key::pageUp, TextSource("KeyboardShortcutsText", "Page Up")},
    SpokenKey{Key::pageDown, TextSource("KeyboardShortcutsText", "Page Down")},
    SpokenKey{Key::upArrow, TextSource("KeyboardShortcutsText", "Up")},
    SpokenKey{Key::rightArrow, TextSource("KeyboardShortcutsText", "Right")},
    SpokenKey{Key::downArrow, TextSource("KeyboardShortcutsText", "Down")},
    SpokenKey{Key::leftArrow, TextSource("KeyboardShortcutsText", "Left")},
    SpokenKey{Key::keypadClear, TextSource("KeyboardShortcutsText", "Clear")},
    SpokenKey{Key::keypadEnter, TextSource("KeyboardShortcutsText", "Enter")},
};

struct SpokenModifier {
    EventFlags flag;
    TextSource text;
};

// The modifiers are in the order in which they are written.
constexpr std::array spokenModifiers = {
    SpokenModifier{eventFlag::control, TextSource("KeyboardShortcutsText", "Control")},
    SpokenModifier{eventFlag::option, TextSource("KeyboardShortcutsText", "Option")},
    SpokenModifier{eventFlag::shift, TextSource("KeyboardShortcutsText", "Shift")},
    SpokenModifier{eventFlag::command, TextSource("KeyboardShortcutsText", "Command")},
};

// A digit of the keypad is printed in a keycap.
constexpr QChar enclosingKeycap = u'\u20E3';

QString spokenKey(const Shortcut& shortcut)
{
    if (const auto name = shortcut.keyName())
        return *name;
    QString printed = shortcut.printedKey().value_or(QString());
    const bool onKeypad = printed.endsWith(enclosingKeycap);
    if (onKeypad)
        printed.chop(1);
    else if (printed.isEmpty())
        return KeyboardShortcutsText::tr("Key %1").arg(shortcut.carbonKeyCode);
    for (const SpokenKey& key : spokenKeys) {
        if (rawValue(key.key) == shortcut.carbonKeyCode)
            printed = key.text.translated();
    }
    return onKeypad ? KeyboardShortcutsText::tr("Keypad %1").arg(printed) : printed;
}

} // namespace

QString spokenDescription(const Shortcut& shortcut)
{
    QStringList words;
    for (const SpokenModifier& modifier : spokenModifiers) {
        if ((shortcut.modifiers() & modifier.flag) != 0)
            words.append(modifier.text.translated());
    }
    words.append(spokenKey(shortcut));
    return words.join(u' ');
}

} // namespace orvane::KeyboardShortcuts

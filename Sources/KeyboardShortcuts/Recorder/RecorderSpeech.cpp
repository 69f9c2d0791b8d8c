#include "KeyboardShortcuts/Recorder/RecorderSpeech.h"

#include "KeyboardShortcuts/Shortcut/Key.h"
#include "Platform/EventFlags.h"

#include <QStringList>

#include <array>

namespace orvane::KeyboardShortcuts {

namespace {

struct SpokenKey {
    Key key;
    QLatin1String text;
};

constexpr std::array spokenKeys = {
    SpokenKey{Key::return_, QLatin1String("key_return")},
    SpokenKey{Key::delete_, QLatin1String("key_delete")},
    SpokenKey{Key::deleteForward, QLatin1String("key_delete_forward")},
    SpokenKey{Key::end, QLatin1String("key_end")},
    SpokenKey{Key::escape, QLatin1String("key_escape")},
    SpokenKey{Key::help, QLatin1String("key_help")},
    SpokenKey{Key::home, QLatin1String("key_home")},
    SpokenKey{Key::space, QLatin1String("key_space")},
    SpokenKey{Key::tab, QLatin1String("key_tab")},
    SpokenKey{Key::pageUp, QLatin1String("key_page_up")},
    SpokenKey{Key::pageDown, QLatin1String("key_page_down")},
    SpokenKey{Key::upArrow, QLatin1String("key_up")},
    SpokenKey{Key::rightArrow, QLatin1String("key_right")},
    SpokenKey{Key::downArrow, QLatin1String("key_down")},
    SpokenKey{Key::leftArrow, QLatin1String("key_left")},
    SpokenKey{Key::keypadClear, QLatin1String("key_clear")},
    SpokenKey{Key::keypadEnter, QLatin1String("key_enter")},
};

struct SpokenModifier {
    EventFlags flag;
    QLatin1String text;
};

// The modifiers are in the order in which they are written.
constexpr std::array spokenModifiers = {
    SpokenModifier{eventFlag::control, QLatin1String("spoken_control")},
    SpokenModifier{eventFlag::option, QLatin1String("spoken_option")},
    SpokenModifier{eventFlag::shift, QLatin1String("spoken_shift")},
    SpokenModifier{eventFlag::command, QLatin1String("spoken_command")},
};

constexpr QChar enclosingKeycap = u'\u20E3';

QString spokenKey(const Shortcut& shortcut, const ResourceBundle& texts)
{
    if (const auto name = shortcut.keyName())
        return *name;
    QString printed = Shortcut(shortcut.carbonKeyCode, 0).description();
    const bool onKeypad = printed.endsWith(enclosingKeycap);
    if (onKeypad)
        printed.chop(1);
    else if (printed == QStringLiteral("\uFFFD"))
        return texts.localizedString(QStringLiteral("spoken_unknown")).arg(shortcut.carbonKeyCode);
    for (const SpokenKey& key : spokenKeys) {
        if (rawValue(key.key) == shortcut.carbonKeyCode)
            printed = texts.localizedString(key.text);
    }
    return onKeypad ? texts.localizedString(QStringLiteral("spoken_keypad")).arg(printed) : printed;
}

} // namespace

QString spokenDescription(const Shortcut& shortcut, const ResourceBundle& texts)
{
    QStringList words;
    for (const SpokenModifier& modifier : spokenModifiers) {
        if ((shortcut.modifiers() & modifier.flag) != 0)
            words.append(texts.localizedString(modifier.text));
    }
    words.append(spokenKey(shortcut, texts));
    return words.join(u' ');
}

} // namespace orvane::KeyboardShortcuts

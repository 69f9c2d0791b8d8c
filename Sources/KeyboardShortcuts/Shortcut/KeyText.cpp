#include "KeyboardShortcuts/Shortcut/KeyText.h"

#include "KeyboardShortcuts/Shortcut/Key.h"
#include "OrvaneCore/Base/TextSource.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QTextBoundaryFinder>

#include <array>

namespace orvane::KeyboardShortcuts {

namespace {

struct Row {
    Key key;
    QStringView text;
};

constexpr std::array characters{
    Row{Key::return_, u"↩"},
    Row{Key::delete_, u"⌫"},
    Row{Key::deleteForward, u"⌦"},
    Row{Key::end, u"↘"},
    Row{Key::escape, u"⎋"},
    Row{Key::help, u"?\u20DD"},
    Row{Key::home, u"↖"},
    Row{Key::space, u"Space"},
    Row{Key::tab, u"⇥"},
    Row{Key::pageUp, u"⇞"},
    Row{Key::pageDown, u"⇟"},
    Row{Key::upArrow, u"↑"},
    Row{Key::rightArrow, u"→"},
    Row{Key::downArrow, u"↓"},
    Row{Key::leftArrow, u"←"},
    Row{Key::f1, u"F1"},
    Row{Key::f2, u"F2"},
    Row{Key::f3, u"F3"},
    Row{Key::f4, u"F4"},
    Row{Key::f5, u"F5"},
    Row{Key::f6, u"F6"},
    Row{Key::f7, u"F7"},
    Row{Key::f8, u"F8"},
    Row{Key::f9, u"F9"},
    Row{Key::f10, u"F10"},
    Row{Key::f11, u"F11"},
    Row{Key::f12, u"F12"},
    Row{Key::f13, u"F13"},
    Row{Key::f14, u"F14"},
    Row{Key::f15, u"F15"},
    Row{Key::f16, u"F16"},
    Row{Key::f17, u"F17"},
    Row{Key::f18, u"F18"},
    Row{Key::f19, u"F19"},
    Row{Key::f20, u"F20"},
    // A digit in a combining keycap, U+20E3.
    Row{Key::keypad0, u"0\u20E3"},
    Row{Key::keypad1, u"1\u20E3"},
    Row{Key::keypad2, u"2\u20E3"},
    Row{Key::keypad3, u"3\u20E3"},
    Row{Key::keypad4, u"4\u20E3"},
    Row{Key::keypad5, u"5\u20E3"},
    Row{Key::keypad6, u"6\u20E3"},
    Row{Key::keypad7, u"7\u20E3"},
    Row{Key::keypad8, u"8\u20E3"},
    Row{Key::keypad9, u"9\u20E3"},
    Row{Key::keypadClear, u"☒\u20E3"},
    Row{Key::keypadDecimal, u".\u20E3"},
    Row{Key::keypadDivide, u"/\u20E3"},
    Row{Key::keypadEnter, u"↩\u20E3"},
    Row{Key::keypadEquals, u"=\u20E3"},
    Row{Key::keypadMinus, u"-\u20E3"},
    Row{Key::keypadMultiply, u"*\u20E3"},
    Row{Key::keypadPlus, u"+\u20E3"},
};

// The texts for which a desktop may have a word; the others are what the keys print.
constexpr std::array worded{
    TextSource("KeyText", "↩"), TextSource("KeyText", "⌫"),     TextSource("KeyText", "⌦"),
    TextSource("KeyText", "↘"), TextSource("KeyText", "⎋"),     TextSource("KeyText", "?⃝"),
    TextSource("KeyText", "↖"), TextSource("KeyText", "Space"), TextSource("KeyText", "⇥"),
    TextSource("KeyText", "⇞"), TextSource("KeyText", "⇟"),     TextSource("KeyText", "↑"),
    TextSource("KeyText", "→"), TextSource("KeyText", "↓"),     TextSource("KeyText", "←"),
    TextSource("KeyText", "☒"),
};

constexpr QChar enclosingKeycap = u'\u20E3';

// The characters of the function keys are the private ones that menus know.
constexpr std::array keyEquivalents{
    Row{Key::space, u" "},    Row{Key::f1, u"\uF704"},  Row{Key::f2, u"\uF705"},  Row{Key::f3, u"\uF706"},
    Row{Key::f4, u"\uF707"},  Row{Key::f5, u"\uF708"},  Row{Key::f6, u"\uF709"},  Row{Key::f7, u"\uF70A"},
    Row{Key::f8, u"\uF70B"},  Row{Key::f9, u"\uF70C"},  Row{Key::f10, u"\uF70D"}, Row{Key::f11, u"\uF70E"},
    Row{Key::f12, u"\uF70F"}, Row{Key::f13, u"\uF710"}, Row{Key::f14, u"\uF711"}, Row{Key::f15, u"\uF712"},
    Row{Key::f16, u"\uF713"}, Row{Key::f17, u"\uF714"}, Row{Key::f18, u"\uF715"}, Row{Key::f19, u"\uF716"},
    Row{Key::f20, u"\uF717"},
};

template <std::size_t count>
std::optional<QStringView> find(const std::array<Row, count>& table, std::int64_t keyCode)
{
    for (const Row& row : table) {
        if (rawValue(row.key) == keyCode)
            return row.text;
    }
    return std::nullopt;
}

} // namespace

std::optional<QStringView> keyToCharacterMapping(std::int64_t keyCode)
{
    return find(characters, keyCode);
}

std::optional<QStringView> keyToKeyEquivalentString(std::int64_t keyCode)
{
    return find(keyEquivalents, keyCode);
}

QString wordForKey(const QString& text)
{
    if (text.size() > 1 && text.endsWith(enclosingKeycap))
        return QCoreApplication::translate("KeyText", "%1⃣", "a key of the keypad")
            .arg(wordForKey(text.chopped(1)));
    for (const TextSource& word : worded) {
        if (text == word.source())
            return word.translated();
    }
    return text;
}

QString capitalized(QStringView text)
{
    QString result;
    bool insideWord = false;
    for (const char32_t character : text.toUcs4()) {
        const bool isLetter = QChar::isLetter(character);
        const char32_t changed = insideWord ? QChar::toLower(character) : QChar::toTitleCase(character);
        result += QChar::fromUcs4(changed);
        insideWord = isLetter || (insideWord && QChar::isMark(character));
    }
    return result;
}

qsizetype characterCount(const QString& text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() != -1)
        ++count;
    return count;
}

} // namespace orvane::KeyboardShortcuts

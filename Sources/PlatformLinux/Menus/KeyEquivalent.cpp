#include "PlatformLinux/Menus/KeyEquivalent.h"

namespace orvane {

namespace {

constexpr char16_t firstFunctionKey = 0xF704;
constexpr char16_t lastFunctionKey = 0xF726;

/// Characters that stand for keys which print nothing.
Qt::Key namedKey(char16_t character)
{
    if (character >= firstFunctionKey && character <= lastFunctionKey)
        return static_cast<Qt::Key>(Qt::Key_F1 + (character - firstFunctionKey));
    switch (character) {
    case 0x03:
        return Qt::Key_Enter;
    case 0x08:
    case 0x7F:
        return Qt::Key_Backspace;
    case u'\t':
        return Qt::Key_Tab;
    case u'\r':
    case u'\n':
        return Qt::Key_Return;
    case 0x1B:
        return Qt::Key_Escape;
    case 0xF700:
        return Qt::Key_Up;
    case 0xF701:
        return Qt::Key_Down;
    case 0xF702:
        return Qt::Key_Left;
    case 0xF703:
        return Qt::Key_Right;
    case 0xF728:
        return Qt::Key_Delete;
    case 0xF729:
        return Qt::Key_Home;
    case 0xF72B:
        return Qt::Key_End;
    case 0xF72C:
        return Qt::Key_PageUp;
    case 0xF72D:
        return Qt::Key_PageDown;
    default:
        return Qt::Key_unknown;
    }
}

Qt::Key keyOf(QChar character)
{
    const Qt::Key named = namedKey(character.unicode());
    if (named != Qt::Key_unknown)
        return named;
    const QChar upper = character.toUpper();
    return upper.isPrint() ? static_cast<Qt::Key>(upper.unicode()) : Qt::Key_unknown;
}

Qt::KeyboardModifiers modifiersOf(const MenuItem& item)
{
    const EventFlags mask = menuModifiers(item.keyEquivalentModifierMask);
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ControlModifier, (mask & eventFlag::control) != 0);
    modifiers.setFlag(Qt::MetaModifier, (mask & eventFlag::command) != 0);
    modifiers.setFlag(Qt::AltModifier, (mask & eventFlag::option) != 0);
    modifiers.setFlag(Qt::ShiftModifier,
                      (mask & eventFlag::shift) != 0 || item.keyEquivalent.front().isUpper());
    return modifiers;
}

} // namespace

EventFlags menuModifiers(EventFlags pressed)
{
    EventFlags modifiers = pressed & ~(eventFlag::control | eventFlag::command);
    if ((pressed & eventFlag::control) != 0)
        modifiers |= eventFlag::command;
    if ((pressed & eventFlag::command) != 0)
        modifiers |= eventFlag::control;
    return modifiers;
}

std::optional<QKeyCombination> keyCombination(const MenuItem& item)
{
    if (item.keyEquivalent.size() != 1)
        return std::nullopt;
    const Qt::Key key = keyOf(item.keyEquivalent.front());
    if (key == Qt::Key_unknown)
        return std::nullopt;
    return QKeyCombination(modifiersOf(item), key);
}

QString keyEquivalentText(const MenuItem& item)
{
    const auto combination = keyCombination(item);
    return combination ? QKeySequence(*combination).toString(QKeySequence::NativeText) : QString();
}

bool isKeyEquivalent(const MenuItem& item, QKeyCombination pressed)
{
    const auto wanted = keyCombination(item);
    if (!wanted || pressed.key() != wanted->key())
        return false;
    Qt::KeyboardModifiers held =
        pressed.keyboardModifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
    // The layout decides which signs need Shift.
    const QChar sign = item.keyEquivalent.front();
    if (sign.isPrint() && !sign.isLetter() && !sign.isSpace())
        held.setFlag(Qt::ShiftModifier, wanted->keyboardModifiers().testFlag(Qt::ShiftModifier));
    return held == wanted->keyboardModifiers();
}

} // namespace orvane

#include "KeyboardShortcuts/Shortcut/Shortcut.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Shortcut/KeyText.h"
#include "KeyboardShortcuts/Shortcut/ModifierFlags.h"
#include "Platform/InputSources.h"
#include "Platform/Menu.h"
#include "Platform/Platform.h"

namespace orvane::KeyboardShortcuts {

namespace {

struct MenuSearch {
    std::optional<QString> character;
    EventFlags modifiers;
};

bool matches(const MenuSearch& search, const MenuItem& item)
{
    QString keyEquivalent = item.keyEquivalent;
    EventFlags mask = item.keyEquivalentModifierMask;
    if ((search.modifiers & eventFlag::shift) != 0) {
        const QString lower = keyEquivalent.toLower();
        if (lower != keyEquivalent) {
            keyEquivalent = lower;
            mask |= eventFlag::shift;
        }
    }
    return search.character && *search.character == keyEquivalent && search.modifiers == mask;
}

const MenuItem* firstMatch(const MenuSearch& search, const Menu& menu)
{
    for (const MenuItem& item : menu.items) {
        if (matches(search, item))
            return &item;
        if (!item.submenu)
            continue;
        if (const MenuItem* found = firstMatch(search, *item.submenu))
            return found;
    }
    return nullptr;
}

} // namespace

Shortcut::Shortcut(Key key, EventFlags modifiers) : Shortcut(rawValue(key), toCarbonModifiers(modifiers)) {}

std::optional<Shortcut> Shortcut::fromEvent(const Event& event)
{
    if (event.type != EventType::keyDown && event.type != EventType::keyUp)
        return std::nullopt;
    return Shortcut(event.keycode, toCarbonModifiers(event.flags));
}

std::optional<Shortcut> Shortcut::fromName(const Name& name)
{
    return getShortcut(name);
}

EventFlags Shortcut::modifiers() const
{
    return toEventFlags(carbonModifiers);
}

std::optional<QString> Shortcut::keyName() const
{
    return platform().inputSources.keyName(carbonKeyCode);
}

std::optional<QString> Shortcut::printedKey() const
{
    const auto character = keyToCharacter();
    return character ? std::optional(capitalized(*character)) : std::nullopt;
}

QString Shortcut::description() const
{
    const QString flags = KeyboardShortcuts::description(modifiers());
    if (const auto name = keyName())
        return flags + *name;
    const auto printed = printedKey();
    return flags + (printed ? wordForKey(*printed) : QStringLiteral("\uFFFD"));
}

QString Shortcut::keyEquivalent() const
{
    QString character = keyToCharacter().value_or(QString());
    if (characterCount(character) < 2)
        return character;
    return keyToKeyEquivalentString(carbonKeyCode).value_or(QStringView()).toString();
}

const MenuItem* Shortcut::menuItemWithMatchingShortcut(const Menu& menu) const
{
    return firstMatch({keyToCharacter(), modifiers()}, menu);
}

std::optional<QString> Shortcut::keyToCharacter() const
{
    if (keyName())
        return std::nullopt;
    if (const auto fixed = keyToCharacterMapping(carbonKeyCode))
        return fixed->toString();
    const auto layout = platform().inputSources.currentASCIICapableKeyboardLayout();
    return layout ? layout->keyTranslate(carbonKeyCode) : std::nullopt;
}

} // namespace orvane::KeyboardShortcuts

// A key with modifiers: a value with its text and its form in menus. The present layout is asked at each call
// what a key prints; main thread.
#pragma once

#include "KeyboardShortcuts/Shortcut/Key.h"
#include "Platform/Event.h"
#include "Platform/EventFlags.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

namespace orvane {
struct Menu;
struct MenuItem;
} // namespace orvane

namespace orvane::KeyboardShortcuts {

class Name;

struct Shortcut {
    /// Stores both numbers unchanged.
    constexpr Shortcut(std::int64_t keyCode, std::int64_t modifierBits)
        : carbonKeyCode(keyCode), carbonModifiers(modifierBits)
    {
    }
    explicit Shortcut(Key key, EventFlags modifiers = 0);

    /// Nothing unless the event is a key going down or up.
    static std::optional<Shortcut> fromEvent(const Event& event);
    static std::optional<Shortcut> fromName(const Name& name);

    [[nodiscard]] std::optional<Key> key() const { return Key{carbonKeyCode}; }
    [[nodiscard]] EventFlags modifiers() const;

    /// Returns the name of a key that this system calls otherwise than its code says, or that has no virtual
    /// code.
    [[nodiscard]] std::optional<QString> keyName() const;
    /// Returns what the key prints, or the symbol that stands for it, in no language; nothing for a key that
    /// prints nothing or has a name.
    [[nodiscard]] std::optional<QString> printedKey() const;
    /// Returns the text that a person reads, such as "⌃⌥Space", in the words and the order of this desktop;
    /// it ends in U+FFFD for a key that prints nothing and has no name.
    [[nodiscard]] QString description() const;
    /// Returns the character that a menu item with this shortcut has, or an empty text where there is none.
    [[nodiscard]] QString keyEquivalent() const;
    /// Returns the first item with this shortcut, depth first, or null. The item belongs to `menu`.
    [[nodiscard]] const MenuItem* menuItemWithMatchingShortcut(const Menu& menu) const;

    friend constexpr bool operator==(const Shortcut&, const Shortcut&) = default;

    /// A virtual key code.
    std::int64_t carbonKeyCode;
    std::int64_t carbonModifiers;

private:
    [[nodiscard]] std::optional<QString> keyToCharacter() const;
};

} // namespace orvane::KeyboardShortcuts

template <>
struct std::hash<orvane::KeyboardShortcuts::Shortcut> {
    std::size_t operator()(const orvane::KeyboardShortcuts::Shortcut& shortcut) const noexcept
    {
        const std::hash<std::int64_t> field;
        return field(shortcut.carbonKeyCode) ^ (field(shortcut.carbonModifiers) << 8);
    }
};

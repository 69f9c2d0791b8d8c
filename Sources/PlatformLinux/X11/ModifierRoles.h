// The modifier keys of the present layout, and their kinds. Pure; any thread.
#pragma once

#include "Platform/EventFlags.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <span>

namespace orvane {

/// A set of X key codes.
using KeySet = std::bitset<256>;

enum class ModifierRole : std::uint8_t { none, shift, control, option, command, levelThree, capsLock };

/// Returns the flag that a held key of this role puts into events; 0 for a role without one. The flag of Caps
/// Lock shows its state and not its key, so it isn't among these.
EventFlags flagOf(ModifierRole role);

class ModifierRoles {
public:
    /// No key is a modifier.
    ModifierRoles() = default;

    /// Reads the server's keyboard mapping: `perKey` symbols for each key from `firstKey` on, of which the
    /// first is the key's meaning without modifiers.
    static ModifierRoles fromKeysyms(std::uint8_t firstKey, unsigned perKey,
                                     std::span<const std::uint32_t> keysyms);

    [[nodiscard]] ModifierRole roleOf(std::uint8_t key) const { return m_roles[key]; }
    /// True if events of this key are changes of flags, and not key-downs and key-ups.
    [[nodiscard]] bool isModifier(std::uint8_t key) const { return m_roles[key] != ModifierRole::none; }
    /// Returns the keys with which a chord is made: all modifiers except Caps Lock, which is a switch.
    [[nodiscard]] const KeySet& chordKeys() const { return m_chordKeys; }
    /// Returns the key that is pressed for a role when none of its keys is held, the left one of two; 0 when
    /// the layout has none.
    [[nodiscard]] std::uint8_t representative(ModifierRole role) const
    {
        return m_representatives[static_cast<std::size_t>(role)];
    }

private:
    static constexpr std::size_t roleCount = 7;

    std::array<ModifierRole, 256> m_roles{};
    std::array<std::uint8_t, roleCount> m_representatives{};
    KeySet m_chordKeys;
};

} // namespace orvane

// The bits of X's modifier state that our modifiers have on this server at present. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orvane {

class ModifierMasks {
public:
    /// Knows only Shift and Control, which X itself names.
    ModifierMasks() = default;

    /// Reads the server's keyboard mapping, `symbolsPerKey` symbols for each key from `firstKey` on, and its
    /// modifier mapping, `keysPerModifier` keys for each of the eight modifiers, 0 for none.
    static ModifierMasks fromMappings(std::uint8_t firstKey, unsigned symbolsPerKey,
                                      std::span<const std::uint32_t> keysyms, unsigned keysPerModifier,
                                      std::span<const std::uint8_t> modifierKeys);

    /// Returns the state for modifiers in carbon bits, of which only the four count. Absent when the keyboard
    /// lacks one of them.
    [[nodiscard]] std::optional<std::uint16_t> stateOf(std::uint32_t carbonModifiers) const;
    /// Returns the state with each combination of the modifiers that aren't ours. Any of them can be locked,
    /// by Caps Lock, Num Lock, Scroll Lock or a lock of a level, and that must not matter for a hot key.
    [[nodiscard]] std::vector<std::uint16_t> withLocks(std::uint16_t state) const;
    /// Returns the part of an event's state by which a hot key is found.
    [[nodiscard]] std::uint16_t withoutLocks(std::uint16_t state) const;

    friend bool operator==(const ModifierMasks&, const ModifierMasks&) = default;

private:
    [[nodiscard]] std::uint16_t ours() const;

    std::uint16_t m_option = 0;
    std::uint16_t m_command = 0;
};

} // namespace orvane

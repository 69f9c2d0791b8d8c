// Which bit of X's modifier state each of our modifiers has on this server at present. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orvane {

class ModifierMasks {
public:
    /// Shift and Control, which X itself names, and no other.
    ModifierMasks() = default;

    /// From the server's keyboard mapping, `symbolsPerKey` symbols for each key from `firstKey` on, and its
    /// modifier mapping, `keysPerModifier` keys for each of the eight modifiers, 0 for none.
    static ModifierMasks fromMappings(std::uint8_t firstKey, unsigned symbolsPerKey,
                                      std::span<const std::uint32_t> keysyms, unsigned keysPerModifier,
                                      std::span<const std::uint8_t> modifierKeys);

    /// The state behind modifiers in carbon bits, of which only the four count. Absent when the keyboard
    /// lacks one of them.
    std::optional<std::uint16_t> stateOf(std::uint32_t carbonModifiers) const;
    /// The state with each combination of the locks, which nobody means when he presses a hot key.
    std::vector<std::uint16_t> withLocks(std::uint16_t state) const;
    /// Of an event's state, what a hot key is told by.
    std::uint16_t withoutLocks(std::uint16_t state) const;

    friend bool operator==(const ModifierMasks&, const ModifierMasks&) = default;

private:
    std::uint16_t m_option = 0;
    std::uint16_t m_command = 0;
    std::uint16_t m_numLock = 0;
};

} // namespace orvane

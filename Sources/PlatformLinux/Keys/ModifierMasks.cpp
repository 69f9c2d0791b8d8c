#include "PlatformLinux/Keys/ModifierMasks.h"

#include "Platform/HotKeys.h"
#include "PlatformLinux/X11/ModifierRoles.h"

#include <xcb/xproto.h>

namespace orvane {

namespace {

constexpr unsigned modifierCount = 8;
/// Mod1: the five before it always have the same meaning.
constexpr unsigned firstFreeModifier = 3;
constexpr std::uint16_t allModifiers = 0xFF;

/// Returns the lowest free modifier that one of the keys sets; 0 for none.
std::uint16_t maskOf(const KeySet& keys, unsigned perModifier, std::span<const std::uint8_t> modifierKeys)
{
    for (unsigned modifier = firstFreeModifier; modifier < modifierCount; ++modifier) {
        for (unsigned i = 0; i < perModifier; ++i) {
            const std::size_t at = std::size_t{modifier} * perModifier + i;
            if (at < modifierKeys.size() && modifierKeys[at] != 0 && keys.test(modifierKeys[at]))
                return static_cast<std::uint16_t>(1u << modifier);
        }
    }
    return 0;
}

} // namespace

ModifierMasks ModifierMasks::fromMappings(std::uint8_t firstKey, unsigned symbolsPerKey,
                                          std::span<const std::uint32_t> keysyms, unsigned keysPerModifier,
                                          std::span<const std::uint8_t> modifierKeys)
{
    const auto roles = ModifierRoles::fromKeysyms(firstKey, symbolsPerKey, keysyms);
    // A role may be on several bits, as when Alt and Meta are two. The key that people press decides.
    const auto maskOfRole = [&](ModifierRole role) {
        KeySet keys;
        keys.set(roles.representative(role));
        if (const std::uint16_t mask = maskOf(keys, keysPerModifier, modifierKeys))
            return mask;
        for (std::size_t key = 0; key < keys.size(); ++key)
            keys.set(key, roles.roleOf(static_cast<std::uint8_t>(key)) == role);
        return maskOf(keys, keysPerModifier, modifierKeys);
    };
    ModifierMasks made;
    made.m_option = maskOfRole(ModifierRole::option);
    made.m_command = maskOfRole(ModifierRole::command);
    return made;
}

std::optional<std::uint16_t> ModifierMasks::stateOf(std::uint32_t carbonModifiers) const
{
    struct Pair {
        std::uint32_t carbon;
        std::uint16_t mask;
    };
    const Pair pairs[] = {{carbonModifier::shift, XCB_MOD_MASK_SHIFT},
                          {carbonModifier::control, XCB_MOD_MASK_CONTROL},
                          {carbonModifier::option, m_option},
                          {carbonModifier::command, m_command}};
    std::uint16_t state = 0;
    for (const auto& [carbon, mask] : pairs) {
        if ((carbonModifiers & carbon) == 0)
            continue;
        if (mask == 0)
            return std::nullopt;
        state |= mask;
    }
    return state;
}

std::uint16_t ModifierMasks::ours() const
{
    return static_cast<std::uint16_t>(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | m_option | m_command);
}

std::vector<std::uint16_t> ModifierMasks::withLocks(std::uint16_t state) const
{
    const std::uint16_t others = static_cast<std::uint16_t>(allModifiers & ~ours());
    std::vector<std::uint16_t> states;
    for (std::uint16_t locks = 0; locks <= allModifiers; ++locks) {
        if ((locks & ~others) == 0)
            states.push_back(static_cast<std::uint16_t>(state | locks));
    }
    return states;
}

std::uint16_t ModifierMasks::withoutLocks(std::uint16_t state) const
{
    return static_cast<std::uint16_t>(state & ours());
}

} // namespace orvane

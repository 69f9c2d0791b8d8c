#include "PlatformLinux/Keys/ModifierMasks.h"

#include "Platform/HotKeys.h"
#include "PlatformLinux/X11/ModifierRoles.h"

#include <algorithm>

#include <X11/keysym.h>
#include <xcb/xproto.h>

namespace orvane {

namespace {

constexpr unsigned modifierCount = 8;
/// Mod1: the five before it always have the same meaning.
constexpr unsigned firstFreeModifier = 3;
constexpr std::uint16_t allModifiers = 0xFF;

KeySet keysWith(std::uint32_t keysym, std::uint8_t firstKey, unsigned perKey,
                std::span<const std::uint32_t> keysyms)
{
    KeySet keys;
    for (std::size_t i = 0; perKey > 0 && i < keysyms.size(); ++i) {
        const std::size_t key = firstKey + i / perKey;
        if (keysyms[i] == keysym && key < keys.size())
            keys.set(key);
    }
    return keys;
}

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
    made.m_numLock =
        maskOf(keysWith(XK_Num_Lock, firstKey, symbolsPerKey, keysyms), keysPerModifier, modifierKeys);
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

std::vector<std::uint16_t> ModifierMasks::withLocks(std::uint16_t state) const
{
    std::vector<std::uint16_t> states;
    for (const std::uint16_t num : {std::uint16_t{0}, m_numLock}) {
        for (const std::uint16_t caps : {std::uint16_t{0}, std::uint16_t{XCB_MOD_MASK_LOCK}}) {
            const auto variant = static_cast<std::uint16_t>(state | num | caps);
            if (std::ranges::find(states, variant) == states.end())
                states.push_back(variant);
        }
    }
    return states;
}

std::uint16_t ModifierMasks::withoutLocks(std::uint16_t state) const
{
    return static_cast<std::uint16_t>(state & allModifiers & ~(XCB_MOD_MASK_LOCK | m_numLock));
}

} // namespace orvane

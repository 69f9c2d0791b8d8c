// The server's keyboard and modifier mappings, in the form of the protocol.
#pragma once

#include "PlatformLinux/X11/ModifierRoles.h"
#include "PlatformLinux/X11/XExchange.h"

#include <cstdint>
#include <vector>

namespace orvane {

struct KeyboardMapping {
    std::uint8_t firstKey = 0;
    unsigned symbolsPerKey = 0;
    std::vector<std::uint32_t> keysyms;
    unsigned keysPerModifier = 0;
    /// The keys of each of the eight modifiers in turn; 0 for no key.
    std::vector<std::uint8_t> modifierKeys;

    /// One round trip. Empty when the server doesn't answer in time.
    [[nodiscard]] static KeyboardMapping read(XExchange& exchange);
    [[nodiscard]] ModifierRoles roles() const
    {
        return ModifierRoles::fromKeysyms(firstKey, symbolsPerKey, keysyms);
    }
};

/// Returns the keys that are down, on whichever keyboard. `cookie` comes from xcb_query_keymap().
[[nodiscard]] KeySet keysDown(XExchange& exchange, xcb_query_keymap_cookie_t cookie);

} // namespace orvane

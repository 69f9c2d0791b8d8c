// Key codes in the events of the Linux layer: a key without a virtual code gets a code above all of these, so
// that it passes through and comes back. Pure; any thread.
#pragma once

#include "PlatformLinux/Keys/VirtualKeyCodes.h"

#include <cstdint>
#include <optional>

namespace orvane {

constexpr std::int64_t keyCodeBeyondVirtual = 0x1000;

inline std::int64_t eventKeyCode(std::uint8_t xKey)
{
    if (const auto code = virtualKeyCode(xKey))
        return *code;
    return keyCodeBeyondVirtual + xKey;
}

/// Absent for a code that belongs to no key.
inline std::optional<std::uint8_t> xKeyOfEvent(std::int64_t keycode)
{
    if (keycode > keyCodeBeyondVirtual && keycode <= keyCodeBeyondVirtual + 0xFF)
        return static_cast<std::uint8_t>(keycode - keyCodeBeyondVirtual);
    if (keycode < 0 || keycode >= keyCodeBeyondVirtual)
        return std::nullopt;
    const auto key = xKeyCode(static_cast<int>(keycode));
    if (!key)
        return std::nullopt;
    return static_cast<std::uint8_t>(*key);
}

} // namespace orvane

#include "PlatformLinux/Keys/KeyFlags.h"

#include <algorithm>
#include <array>

namespace orvane {

namespace {

constexpr auto keypad = std::to_array<std::uint8_t>({
    0x52, 0x53, 0x54, 0x55, 0x56, 0x57, 0x58, 0x59, 0x5B, 0x5C, // 0 to 9
    0x41, 0x43, 0x45, 0x47, 0x4B, 0x4C, 0x4E, 0x51, 0x5F,       // . * + Num Lock / Enter - = and the comma
});
constexpr auto arrows = std::to_array<std::uint8_t>({0x7B, 0x7C, 0x7D, 0x7E});
constexpr auto reachedByFn = std::to_array<std::uint8_t>({
    0x72, 0x73, 0x74, 0x75, 0x77, 0x79, // Insert, Home, Page Up, Delete, End, Page Down
    0x7A, 0x78, 0x63, 0x76, 0x60, 0x61, 0x62, 0x64, 0x65, 0x6D, // F1 to F10
    0x67, 0x6F, 0x69, 0x6B, 0x71, 0x6A, 0x40, 0x4F, 0x50, 0x5A, // F11 to F20
});

} // namespace

EventFlags flagsOfKeyItself(std::int64_t keycode)
{
    if (std::ranges::find(keypad, keycode) != keypad.end())
        return eventFlag::numericPad;
    if (std::ranges::find(arrows, keycode) != arrows.end())
        return eventFlag::numericPad | eventFlag::secondaryFn;
    if (std::ranges::find(reachedByFn, keycode) != reachedByFn.end())
        return eventFlag::secondaryFn;
    return 0;
}

} // namespace orvane

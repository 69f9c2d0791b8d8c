#include "PlatformLinux/Keys/VirtualKeyCodes.h"

#include "PlatformLinux/Keys/VirtualKeyCodeTable.h"

#include <cstddef>
#include <cstdint>

namespace orvane {

namespace {

constexpr std::int16_t noKey = -1;
constexpr std::size_t virtualKeyCodeCount = 0x80;
constexpr std::size_t xKeyCodeCount = 0x100;

struct Lookup {
    std::array<std::int16_t, virtualKeyCodeCount> xOfVirtual{};
    std::array<std::int16_t, xKeyCodeCount> virtualOfX{};
};

constexpr Lookup lookup = [] {
    Lookup made;
    made.xOfVirtual.fill(noKey);
    made.virtualOfX.fill(noKey);
    for (const KeyPosition& key : keyPositions) {
        const int x = key.kernelKeyCode + xKeyCodeOffset;
        made.xOfVirtual.at(static_cast<std::size_t>(key.virtualKeyCode)) = static_cast<std::int16_t>(x);
        made.virtualOfX.at(static_cast<std::size_t>(x)) = static_cast<std::int16_t>(key.virtualKeyCode);
    }
    return made;
}();

template <std::size_t size>
std::optional<int> entry(const std::array<std::int16_t, size>& table, int code)
{
    if (code < 0 || static_cast<std::size_t>(code) >= size)
        return std::nullopt;
    const std::int16_t found = table[static_cast<std::size_t>(code)];
    return found == noKey ? std::nullopt : std::optional<int>(found);
}

} // namespace

std::optional<int> virtualKeyCode(int xKeyCode)
{
    return entry(lookup.virtualOfX, xKeyCode);
}

std::optional<int> xKeyCode(int virtualKeyCode)
{
    return entry(lookup.xOfVirtual, virtualKeyCode);
}

} // namespace orvane

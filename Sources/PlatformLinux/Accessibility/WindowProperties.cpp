#include "PlatformLinux/Accessibility/WindowProperties.h"

#include <algorithm>

namespace orvane {

namespace {

/// Greater margins than this are no decoration but an error of the program that set them.
constexpr std::uint32_t greatestMargin = 4096;
/// The protocol has 16 bits for a size, and window managers treat them as signed.
constexpr std::uint32_t greatestSize = 0x7FFF;

int sizeOf(std::uint32_t number)
{
    return static_cast<int>(std::min(number, greatestSize));
}

/// The indices of the numbers in WM_NORMAL_HINTS.
enum HintIndex : std::size_t {
    flags = 0,
    least = 5,
    greatest = 7,
    step = 9,
    base = 15,
    windowGravity = 17,
};

enum HintFlag : std::uint32_t {
    hasLeast = 1U << 4,
    hasGreatest = 1U << 5,
    hasStep = 1U << 6,
    hasBase = 1U << 8,
    hasGravity = 1U << 9,
};

} // namespace

std::optional<PixelMargins> frameExtents(const PropertyNumbers& numbers)
{
    if (numbers.size() < 4 || std::any_of(numbers.begin(), numbers.begin() + 4,
                                          [](std::uint32_t margin) { return margin > greatestMargin; }))
        return std::nullopt;
    const auto margin = [&numbers](std::size_t at) { return static_cast<int>(numbers[at]); };
    return PixelMargins{.left = margin(0), .top = margin(2), .right = margin(1), .bottom = margin(3)};
}

ManagedState managedState(const PropertyNumbers& numbers)
{
    if (numbers.empty())
        return ManagedState::withdrawn;
    switch (numbers[0]) {
    case 1:
        return ManagedState::normal;
    case 3:
        return ManagedState::iconic;
    default:
        return ManagedState::withdrawn;
    }
}

SizeHints::SizeHints(const PropertyNumbers& numbers)
{
    const std::uint32_t given = numbers.empty() ? 0 : numbers[flags];
    const auto has = [&](std::uint32_t flag, std::size_t lastIndex) {
        return (given & flag) && numbers.size() > lastIndex;
    };
    const auto readInto = [&](int Range::*member, HintIndex at) {
        m_width.*member = sizeOf(numbers[at]);
        m_height.*member = sizeOf(numbers[at + 1]);
    };
    // Where only one of the least and the base size is given, it serves as the other too.
    if (has(hasLeast, least + 1))
        readInto(&Range::least, least);
    else if (has(hasBase, base + 1))
        readInto(&Range::least, base);
    if (has(hasBase, base + 1))
        readInto(&Range::base, base);
    else if (has(hasLeast, least + 1))
        readInto(&Range::base, least);
    if (has(hasGreatest, greatest + 1))
        readInto(&Range::greatest, greatest);
    if (has(hasStep, step + 1))
        readInto(&Range::step, step);
    if (has(hasGravity, windowGravity) && numbers[windowGravity] >= 1 && numbers[windowGravity] <= 10)
        m_gravity = static_cast<Gravity>(numbers[windowGravity]);
}

int SizeHints::Range::nearest(int value) const
{
    const int atLeast = std::max(least, 1);
    const int atMost = greatest > 0 ? std::max(greatest, atLeast) : 0x7FFF;
    int allowed = std::clamp(value, atLeast, atMost);
    if (step > 1 && allowed >= base) {
        allowed = base + (allowed - base) / step * step;
        if (allowed < atLeast)
            allowed += step;
    }
    return allowed;
}

SizeHints::PixelSize SizeHints::nearest(PixelSize size) const
{
    return {m_width.nearest(size.width), m_height.nearest(size.height)};
}

PixelPoint requestedOrigin(const PixelEdges& outer, const PixelMargins& decoration, Gravity gravity)
{
    PixelPoint origin{outer.left, outer.top};
    if (gravity == Gravity::fixed)
        return {outer.left + decoration.left, outer.top + decoration.top};
    // The reference point keeps its share of the decoration: none at the near side, all at the far side.
    const int column = (static_cast<int>(gravity) - 1) % 3;
    const int row = (static_cast<int>(gravity) - 1) / 3;
    origin.x += decoration.width() * column / 2;
    origin.y += decoration.height() * row / 2;
    return origin;
}

MotifFunctions motifFunctions(const PropertyNumbers& numbers)
{
    constexpr std::uint32_t saysFunctions = 1;
    constexpr std::uint32_t allButTheNamed = 1;
    constexpr std::uint32_t maximize = 1U << 4;
    constexpr std::uint32_t close = 1U << 5;
    if (numbers.size() < 2 || !(numbers[0] & saysFunctions))
        return {};
    const bool namesTheAllowed = !(numbers[1] & allButTheNamed);
    const auto isAllowed = [&](std::uint32_t function) {
        return bool(numbers[1] & function) == namesTheAllowed;
    };
    return {.canClose = isAllowed(close), .canMaximize = isAllowed(maximize)};
}

} // namespace orvane

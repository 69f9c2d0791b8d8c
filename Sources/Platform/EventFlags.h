// Modifier flags of input events, by the bits that they have in an event's flags field.
#pragma once

#include <cstdint>

namespace orvane {

using EventFlags = std::uint64_t;

namespace eventFlag {
inline constexpr EventFlags alphaShift = 0x10000; // Caps Lock
inline constexpr EventFlags shift = 0x20000;
inline constexpr EventFlags control = 0x40000;
inline constexpr EventFlags option = 0x80000;
inline constexpr EventFlags command = 0x100000;
inline constexpr EventFlags numericPad = 0x200000;
inline constexpr EventFlags help = 0x400000;
inline constexpr EventFlags secondaryFn = 0x800000;
} // namespace eventFlag

} // namespace orvane

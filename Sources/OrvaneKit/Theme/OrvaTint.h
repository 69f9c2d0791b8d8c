// The opacities with which a colour tints the ground behind texts and symbols. The contrast of what stands on
// them depends on them.
#pragma once

namespace orvane::OrvaTint {

// In the primary colour.
inline constexpr double chip = 0.06;
inline constexpr double hoveredChip = 0.09;
inline constexpr double pressedChip = 0.13;
inline constexpr double pressedButton = 0.08;
inline constexpr double hoveredRow = 0.06; // in a list

// In their own colour.
inline constexpr double badge = 0.16;
inline constexpr double banner = 0.12;

// From the upper to the lower edge of a tile.
inline constexpr double tileTop = 0.95;
inline constexpr double tileBottom = 0.78;

} // namespace orvane::OrvaTint

// The keys that mean the command modifier in a program. Terminals keep Control for the programs that run in
// them and use Control+Shift for their own commands. Pure; any thread.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace orvane {

enum class CommandKeys : std::uint8_t { control, controlShift };

/// Returns the keys by bundle identifier; Control for a program that has none.
CommandKeys commandKeys(const std::optional<QString>& bundleIdentifier);

} // namespace orvane

// The names of keys that print nothing and that virtual key codes call otherwise or don't know. Pure; any
// thread.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace orvane {

/// Returns the name of a key at whose place another keyboard has another key: Insert for Help, Num Lock for
/// Clear. Absent for all others.
[[nodiscard]] std::optional<QString> nameOfVirtualKey(std::int64_t virtualKeyCode);

/// Returns the name of a key by its symbol. Absent for a symbol that prints something, for a modifier and for
/// none.
[[nodiscard]] std::optional<QString> nameOfKeysym(std::uint32_t keysym);

} // namespace orvane

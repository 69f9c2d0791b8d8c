// The text that a key symbol is shown as. Pure; any thread.
#pragma once

#include <QString>

#include <cstdint>

namespace orvane {

/// A dead key gives its accent. Empty for a symbol that prints nothing.
QString keysymText(std::uint32_t keysym);

} // namespace orvane

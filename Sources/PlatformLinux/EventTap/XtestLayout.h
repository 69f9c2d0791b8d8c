// The layout of the XTEST keyboard, on which this program types for the user. The server makes that keyboard
// with a default layout, and it keeps it where the user's keyboards have theirs from the server's own
// configuration and nobody sets one for all.
#pragma once

#include "PlatformLinux/X11/InputConnection.h"

#include <string>

namespace orvane {

/// Gives the XTEST keyboard the keymap of the user's keyboards. Where these differ, the one that was typed on
/// last decides; where that isn't known, most of them do, unless one of them agrees with XTEST's already.
/// Returns an empty text, or why it failed. Round trips.
[[nodiscard]] std::string bringXtestIntoTheUsersLayout(InputConnection& connection);

} // namespace orvane

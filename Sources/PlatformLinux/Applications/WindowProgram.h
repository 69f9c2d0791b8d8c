// The program behind a window. One round trip to the server and a look into /proc.
#pragma once

#include "Platform/RunningApplication.h"
#include "PlatformLinux/X11/XExchange.h"

#include <QLatin1StringView>

#include <optional>

namespace orvane {

class DesktopEntries;

/// The bundle identifier of this program itself.
inline constexpr QLatin1StringView ownBundleIdentifier("net.lindenrow.orvane");

/// Absent when the window is gone, or the exchange is late. The process identifier is 0 for a window of
/// another machine.
[[nodiscard]] std::optional<RunningApplication> programOfWindow(XExchange& exchange, xcb_window_t window,
                                                                DesktopEntries& entries);

/// Returns the process on this machine that made the window; 0 when the server doesn't know it or it is on
/// another machine.
[[nodiscard]] std::int64_t processOfWindow(XExchange& exchange, xcb_window_t window);

} // namespace orvane

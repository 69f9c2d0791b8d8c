// The program behind a window. Main thread; a few round trips to the server and a look into /proc.
#pragma once

#include "Platform/RunningApplication.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <optional>

namespace orvane {

class DesktopEntries;

/// The bundle identifier of this program itself.
inline constexpr QLatin1StringView ownBundleIdentifier("net.lindenrow.orvane");

/// Absent when the window is gone. The process identifier is 0 for a window of another machine.
std::optional<RunningApplication> programOfWindow(const X11Connection& x, xcb_window_t window,
                                                  DesktopEntries& entries);

/// Returns the process on this machine that made the window; 0 when the server doesn't know it or it is on
/// another machine.
std::int64_t processOfWindow(const X11Connection& x, xcb_window_t window);

} // namespace orvane

// Replaces this process by a new one.
#pragma once

namespace orvane::AppRelaunch {

/// Starts a new instance and then ends this one, whether or not the start worked: the user has been told that
/// the program quits. A failed start is logged.
void relaunch();

} // namespace orvane::AppRelaunch

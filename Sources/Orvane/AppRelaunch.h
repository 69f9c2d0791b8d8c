// Ends this process in favour of a new one.
#pragma once

namespace orvane::AppRelaunch {

/// Starts a new instance and then terminates this one, whether or not the start worked.
void relaunch();

} // namespace orvane::AppRelaunch

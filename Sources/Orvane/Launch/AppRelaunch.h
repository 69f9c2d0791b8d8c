// Ends this process in favour of a new one.
#pragma once

namespace orvane::AppRelaunch {

/// Starts a new instance and then terminates this one, whether or not the start worked: whoever asks for it
/// has been told that the program quits. A failed start is logged.
void relaunch();

} // namespace orvane::AppRelaunch

// The login item as the suite sees it: on or off. Main thread.
#pragma once

namespace orvane::LaunchAtLogin {

/// True for the status `enabled` alone; one that waits for approval reads as false.
bool isEnabled();

/// Setting the state that it already has does nothing. Throws PlatformError when the system refuses.
void set(bool enabled);

} // namespace orvane::LaunchAtLogin

// The login item in two states: on or off. Main thread.
#pragma once

namespace orvane::LaunchAtLogin {

/// True for the status `enabled` alone; one that waits for approval reads as false.
bool isEnabled();

/// To set the state that it already has does nothing. Throws PlatformError when the system refuses.
void set(bool enabled);

} // namespace orvane::LaunchAtLogin

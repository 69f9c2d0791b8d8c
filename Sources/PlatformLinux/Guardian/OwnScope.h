// The guardian's place in the system's tree of processes. One thread.
#pragma once

namespace orvane {

/// Asks the user's systemd to move this process out of the control group of the program, which the desktop
/// may kill or freeze as a whole, into a scope of its own. Returns at once; where there is no such systemd,
/// nothing happens. To be called once.
void moveIntoOwnScope();

} // namespace orvane

// The X server's news about keyboards: those that come and go, and how they are set.
#pragma once

#include "PlatformLinux/X11/InputConnection.h"

#include <vector>

#include <xcb/xinput.h>

namespace orvane {

/// Asks to hear of a new layout, repeat rate or state of the locks.
void selectKeyboardSettings(InputConnection& connection);
/// The devices that can give no more keys since an event of the hierarchy.
std::vector<DeviceId> devicesGone(const xcb_input_hierarchy_event_t& event);

} // namespace orvane

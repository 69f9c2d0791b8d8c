// The X server's announcements about keyboards: those that come and go, and their settings.
#pragma once

#include "PlatformLinux/X11/InputConnection.h"

#include <vector>

#include <xcb/xinput.h>

namespace orvane {

/// Asks for announcements of a new layout or repeat rate, of other controls, and of the state of locks and
/// latches.
void selectKeyboardSettings(InputConnection& connection);
/// Returns the devices that give no more keys after an event of the hierarchy.
std::vector<DeviceId> devicesGone(const xcb_input_hierarchy_event_t& event);

} // namespace orvane

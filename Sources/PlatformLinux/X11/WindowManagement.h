// Requests to the window manager for windows of ours. Main thread. Without a window manager, or on another
// platform plugin, nothing happens.
#pragma once

#include <QWindow>

namespace orvane {

/// Asks to be the active window, as a user's own choice, which isn't delayed by protections of the focus.
void requestActivation(const QWindow& window);

} // namespace orvane

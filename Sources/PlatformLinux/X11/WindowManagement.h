// Requests to the window manager for windows of ours. Main thread. Without a window manager, or on another
// platform plugin, nothing happens.
#pragma once

#include <QWindow>

namespace orvane {

enum class TaskBarEntry { shown, hidden };

/// Sets the entry in the task bar and in the pager of a window that is not mapped yet.
void setInitialTaskBarEntry(const QWindow& window, TaskBarEntry entry);

/// Asks for the entry of a mapped window.
void requestTaskBarEntry(const QWindow& window, TaskBarEntry entry);

/// Asks to be the active window, as a user's own choice, which isn't delayed by protections of the focus.
void requestActivation(const QWindow& window);

} // namespace orvane

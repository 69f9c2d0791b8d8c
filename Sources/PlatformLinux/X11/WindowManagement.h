// What we ask of the window manager for windows of ours. Main thread. Without one, or on another platform
// plugin, nothing happens.
#pragma once

#include <QWindow>

namespace orvane {

enum class TaskBarEntry { shown, hidden };

/// An entry in the task bar and in the pager, for a window that is not mapped yet.
void setInitialTaskBarEntry(const QWindow& window, TaskBarEntry entry);

/// For one that is.
void requestTaskBarEntry(const QWindow& window, TaskBarEntry entry);

/// To be the active window, as somebody's own choice: not held up by what guards the focus against programs.
void requestActivation(const QWindow& window);

} // namespace orvane

// Whether a window of ours has an entry in the task bar and in the pager. Main thread.
#pragma once

#include <QWindow>

namespace orvane {

enum class TaskBarEntry { shown, hidden };

/// For a window that is not mapped yet.
void setInitialTaskBarEntry(const QWindow& window, TaskBarEntry entry);

/// For one that is: asks the window manager. Without one, or on another platform plugin, nothing happens.
void requestTaskBarEntry(const QWindow& window, TaskBarEntry entry);

} // namespace orvane

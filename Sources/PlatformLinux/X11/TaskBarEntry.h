// Whether a mapped window of ours has an entry in the task bar and in the pager. Main thread.
#pragma once

#include <QWindow>

namespace orvane {

enum class TaskBarEntry { shown, hidden };

/// Asks the window manager; without one, or on another platform plugin, nothing happens.
void requestTaskBarEntry(const QWindow& window, TaskBarEntry entry);

} // namespace orvane

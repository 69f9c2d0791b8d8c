// The rows of the history's list for assistive technology: each has a name and can be pressed. Main thread.
#pragma once

namespace orvane {

class HistoryListView;

/// Takes effect once in a process; further calls do nothing.
void installHistoryAccessibility();

// Tells assistive technology of the change, where any is listening.
void announceHistoryRowsChanged(HistoryListView& list);
void announceHistoryRowFocused(HistoryListView& list, int row);

} // namespace orvane

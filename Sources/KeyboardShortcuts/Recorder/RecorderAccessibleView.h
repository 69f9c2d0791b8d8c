// The interface of recorders for assistive technology.
#pragma once

namespace orvane::KeyboardShortcuts {

/// Takes effect once in a process; further calls do nothing. Main thread.
void describeRecorders();

} // namespace orvane::KeyboardShortcuts

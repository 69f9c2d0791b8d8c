// The interface of recorders for assistive technology.
#pragma once

namespace orvane::KeyboardShortcuts {

/// Once for the process; again it does nothing. Main thread.
void describeRecorders();

} // namespace orvane::KeyboardShortcuts

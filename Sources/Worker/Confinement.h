// Takes from this process everything that the decoding of a file doesn't need.
#pragma once

namespace orvane::Confinement {

/// Limits what the process may take, and closes every descriptor but the standard ones and the first `kept`.
void limitResources(int firstToClose);

/// From now on nothing can be opened, started, connected or sent elsewhere: the process has the descriptors
/// that it's handed. All libraries have to be loaded before. False when the system has no such filter.
[[nodiscard]] bool enter();

} // namespace orvane::Confinement

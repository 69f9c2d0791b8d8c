// What the worker does with pictures. Every function throws a std::exception when it can't.
#pragma once

#include "Platform/WorkerProtocol.h"

namespace orvane::PictureWork {

[[nodiscard]] WorkerProtocol::PictureSize measure(int source);
/// Writes the resized first frame to an empty file.
[[nodiscard]] WorkerProtocol::Written resize(int source, int target, const WorkerProtocol::Resize& order);
[[nodiscard]] WorkerProtocol::PictureSize writePixels(int source, int target,
                                                      const WorkerProtocol::Pixels& order);

} // namespace orvane::PictureWork

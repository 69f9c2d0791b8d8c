// What the worker does with pictures. Every function throws a std::exception when it can't.
#pragma once

#include "Platform/Protocols/WorkerProtocol.h"

namespace orvane::PictureWork {

[[nodiscard]] WorkerProtocol::PictureSize measure(int source);
/// Writes the resized first frame to an empty file.
[[nodiscard]] WorkerProtocol::Written resize(int source, int target, const WorkerProtocol::Resize& order);
[[nodiscard]] WorkerProtocol::PictureSize writePixels(int source, int target,
                                                      const WorkerProtocol::Pixels& order);
[[nodiscard]] WorkerProtocol::PictureSize writeCachedPixels(int source, int target,
                                                            const WorkerProtocol::CachedPixels& order);
/// Writes the first frame as PNG to an empty file.
[[nodiscard]] WorkerProtocol::Written convert(int source, int target,
                                              const WorkerProtocol::Conversion& order);

} // namespace orvane::PictureWork

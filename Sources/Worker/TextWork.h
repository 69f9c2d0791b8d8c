// What the worker does to read text. Every function throws a std::exception when it can't. One thread.
//
// The models of the last request's languages stay loaded, so that a request for the same ones begins at once.
#pragma once

#include "Platform/Protocols/WorkerProtocol.h"

#include <span>

namespace orvane::TextWork {

/// Loads the models, of which there is one for each language and in the same order.
void prepare(std::span<const int> models, const WorkerProtocol::Languages& languages);
/// Replaces the pixels in `memory` by the text. The lines come in reading order.
[[nodiscard]] WorkerProtocol::Written read(int memory, std::span<const int> models,
                                           const WorkerProtocol::ReadText& order);

} // namespace orvane::TextWork

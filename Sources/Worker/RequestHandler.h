// Answers requests. Whatever the bytes are, there is an answer and no exception.
#pragma once

#include "Platform/Protocols/WorkerProtocol.h"

#include <span>
#include <vector>

namespace orvane::RequestHandler {

/// Returns the message that answers `request`. `descriptors` came with it and stay the caller's.
[[nodiscard]] std::vector<std::byte> answer(std::span<const std::byte> request,
                                            std::span<const int> descriptors);

} // namespace orvane::RequestHandler

// Memory that is handed to a worker and read when it has answered. Any thread.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <QByteArray>

#include <cstddef>
#include <optional>

namespace orvane::PixelMemory {

/// Makes a memory file of a size that nobody can change any more. Empty when there is no memory for it.
[[nodiscard]] FileDescriptor make(std::size_t size);
/// Both begin at the start of the file and do all or nothing.
[[nodiscard]] std::optional<QByteArray> read(int memory, qsizetype size);
[[nodiscard]] bool write(int memory, const QByteArray& bytes);

} // namespace orvane::PixelMemory

// Reads a whole file that may be of any kind. Blocks; any thread.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace orvane::PlainFile {

/// Returns nothing unless it's a regular file, links followed, that can be read to its end.
std::optional<QByteArray> content(const QString& path);

} // namespace orvane::PlainFile

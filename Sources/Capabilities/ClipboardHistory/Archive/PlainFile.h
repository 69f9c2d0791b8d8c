// Reading of a whole file that may be anything. Blocks; any thread.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace orvane::PlainFile {

/// Nothing unless it's a regular file, links followed, that can be read to its end.
std::optional<QByteArray> content(const QString& path);

} // namespace orvane::PlainFile

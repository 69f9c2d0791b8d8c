// Where the desktop's shared thumbnail cache keeps the picture of a file. Values; any thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace orvane::ThumbnailCache {

/// Returns the address by which the desktop's programs know a file.
[[nodiscard]] QByteArray uriOf(const QString& path);

/// Returns the entries that can hold a picture with at least that many pixels on its longer side, the
/// smallest first. `folder` is the cache of all programs, "~/.cache".
[[nodiscard]] QStringList entries(const QString& folder, const QString& path, int leastSide);

/// Returns the name of the size that is to be asked for: "normal", "large", "x-large", "xx-large".
[[nodiscard]] QString flavour(int leastSide);

} // namespace orvane::ThumbnailCache

// Reads PNG pictures of any origin. Slow; any thread.
#pragma once

#include <QByteArray>
#include <QImage>

#include <functional>
#include <optional>

namespace orvane::Picture {

/// Asked again and again during the work, which ends with nothing once it's true.
using IsOver = std::function<bool()>;
/// True ten seconds after this call.
[[nodiscard]] IsOver defaultEnd();

/// Returns nothing for data that can't be read, or would take more memory or time than a picture may.
std::optional<QImage> image(const QByteArray& bytes, const IsOver& isOver = defaultEnd());

/// True if the beginning is that of a PNG with a size; further on it may be damaged.
[[nodiscard]] bool isReadable(const QByteArray& bytes);

} // namespace orvane::Picture

// Reads PNG and TIFF pictures of any origin. Slow; any thread.
#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

namespace orvane::Picture {

/// Returns nothing for data that can't be read, or would take more memory than a picture may.
std::optional<QImage> image(const QByteArray& bytes);

/// Returns the picture as PNG. One that is a PNG already is returned unchanged, even if it is damaged further
/// on.
std::optional<QByteArray> png(const QByteArray& bytes);

} // namespace orvane::Picture

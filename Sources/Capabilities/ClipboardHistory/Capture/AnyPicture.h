// Pictures of the formats that a copy or an archive can hold. Slow; any thread but the main one.
#pragma once

#include <QByteArray>

#include <optional>

namespace orvane::AnyPicture {

/// Returns a picture as PNG. One that is a PNG already is returned unchanged, even if it is damaged further
/// on; a TIFF is converted by the platform. Nothing for data that can't be read or is too large.
[[nodiscard]] std::optional<QByteArray> asPng(const QByteArray& bytes);

} // namespace orvane::AnyPicture

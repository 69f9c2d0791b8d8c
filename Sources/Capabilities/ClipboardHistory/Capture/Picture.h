// Reading of pictures, PNG and TIFF, whoever made them. Takes its time; any thread.
#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

namespace orvane::Picture {

/// Nothing for what can't be read, or would take more memory than a picture may.
std::optional<QImage> image(const QByteArray& bytes);

/// The picture as PNG. One that is a PNG already comes back as it stands, also when it is damaged further on.
std::optional<QByteArray> png(const QByteArray& bytes);

} // namespace orvane::Picture

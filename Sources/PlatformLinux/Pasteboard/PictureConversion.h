// The conversion of pictures that other programs offer in another format than PNG. Slow; any thread.
#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

namespace orvane {

/// A picture in a format that is to be converted.
struct ForeignPicture {
    QByteArray bytes;
    /// "bmp" or "jpeg". Bytes of another format aren't read, because some readers open further files.
    const char* format;
};

/// Returns the picture as PNG; nothing when it can't be decoded, is too large, or isn't converted when
/// `isOver` becomes true, which is asked again and again.
std::optional<QByteArray> convertToPng(const ForeignPicture& picture, const std::function<bool()>& isOver);

} // namespace orvane

// Small pictures in the format that hosts of menus take.
#pragma once

#include <QByteArray>
#include <QImage>

namespace orvane {

/// Returns a PNG file of eight bits a channel. The toolkit's writer would load every installed plugin for
/// pictures, with its libraries, to ask each whether it writes PNG.
[[nodiscard]] QByteArray pngPicture(const QImage& image);

} // namespace orvane

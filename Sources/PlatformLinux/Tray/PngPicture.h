// Small pictures in the form that hosts of menus take.
#pragma once

#include <QByteArray>
#include <QImage>

namespace orvane {

/// A PNG file of eight bits a channel. The toolkit's writer would load every plugin for pictures that is
/// installed, and the libraries behind them, to ask each whether PNG is its job.
[[nodiscard]] QByteArray pngPicture(const QImage& image);

} // namespace orvane

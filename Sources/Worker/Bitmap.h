// Reads BMP files: 1, 4, 8, 16, 24 and 32 bits for a pixel, with a palette, bit fields or run lengths. Throws
// std::runtime_error for a file that is damaged or of another kind.
#pragma once

#include "Platform/Protocols/WorkerProtocol.h"

#include <vips/vips8>

namespace orvane::Bitmap {

[[nodiscard]] WorkerProtocol::PictureSize size(int descriptor);
/// Returns three bands, or four when the file has an alpha channel that isn't empty.
[[nodiscard]] vips::VImage load(int descriptor);

} // namespace orvane::Bitmap

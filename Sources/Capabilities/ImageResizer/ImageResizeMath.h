// Fits a picture into a box.
#pragma once

#include <QSizeF>

namespace orvane::ImageResizeMath {

enum class Enlarging { no, yes };

/// Returns the largest size with the aspect ratio of `original` that fits into the box but for rounding, and
/// is at least 1 in both directions. Where a length isn't positive, it is `original`.
[[nodiscard]] QSizeF fittedSize(QSizeF original, double maxWidth, double maxHeight, Enlarging enlarging);

} // namespace orvane::ImageResizeMath

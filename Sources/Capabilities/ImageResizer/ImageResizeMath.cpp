#include "Capabilities/ImageResizer/ImageResizeMath.h"

#include <algorithm>
#include <cmath>

namespace orvane {

QSizeF ImageResizeMath::fittedSize(QSizeF original, double maxWidth, double maxHeight, Enlarging enlarging)
{
    const bool isPositive = original.width() > 0 && original.height() > 0 && maxWidth > 0 && maxHeight > 0;
    if (!isPositive)
        return original;
    double scale = std::min(maxWidth / original.width(), maxHeight / original.height());
    if (enlarging == Enlarging::no)
        scale = std::min(scale, 1.0);
    const auto scaled = [scale](double length) { return std::max(std::round(length * scale), 1.0); };
    return {scaled(original.width()), scaled(original.height())};
}

} // namespace orvane

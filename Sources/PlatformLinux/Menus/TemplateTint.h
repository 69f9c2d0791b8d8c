// Gives template images their colour, in pixels. Only paints; any thread that may paint images.
#pragma once

#include "Platform/TemplateImage.h"

#include <QColor>
#include <QImage>

namespace orvane {

/// The colour for pictures in the status area. Unless the background itself has been seen, pictures get a
/// contour of the opposite tone: not every panel reports its colour, some report an outdated one, and the
/// contour can't be seen where the colour is right.
struct TrayTint {
    enum class Contour { none, opposite };

    QColor colour = Qt::black;
    Contour contour = Contour::opposite;

    bool operator==(const TrayTint&) const = default;
};

/// Returns the picture in one colour, in the middle of `pixels`, with its shape kept. An image that draws
/// nothing gives a transparent one.
QImage tinted(const TemplateImage& image, QSize pixels, const QColor& colour);

/// Does the same for the status area, where an image of 22 points fills a square of any size and a smaller
/// one leaves the same part of it empty.
QImage tintedForTray(const TemplateImage& image, QSize pixels, const TrayTint& tint);

/// Returns black or white, whichever can be read on `background`.
QColor legibleOn(const QColor& background);

} // namespace orvane

#include "PlatformLinux/Menus/TemplateTint.h"

#include <QPainter>

#include <algorithm>

namespace orvane {

namespace {

constexpr double barHeight = 22;

QRectF fitted(QSizeF shape, QSize pixels, double fullSize)
{
    if (shape.isEmpty())
        shape = QSizeF(barHeight, barHeight);
    const double scale = std::min(pixels.width() / std::max(fullSize, shape.width()),
                                  pixels.height() / std::max(fullSize, shape.height()));
    const QSizeF size = shape * scale;
    return {(pixels.width() - size.width()) / 2, (pixels.height() - size.height()) / 2, size.width(),
            size.height()};
}

QImage coverage(const TemplateImage& image, QSize pixels, const QRectF& place)
{
    QImage picture(pixels.expandedTo({1, 1}), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    if (!image.draw)
        return picture;
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    image.draw(painter, place);
    return picture;
}

void colourIn(QImage& picture, const QColor& colour)
{
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), colour);
}

QImage contoured(const QImage& picture, const QColor& colour)
{
    QImage shadow = picture;
    colourIn(shadow, colour);
    QImage whole(picture.size(), picture.format());
    whole.fill(Qt::transparent);
    QPainter painter(&whole);
    painter.setOpacity(0.65);
    for (const QPoint offset : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)})
        painter.drawImage(offset, shadow);
    painter.setOpacity(1);
    painter.drawImage(0, 0, picture);
    return whole;
}

} // namespace

QImage tinted(const TemplateImage& image, QSize pixels, const QColor& colour)
{
    QImage picture = coverage(image, pixels, fitted(image.size, pixels, 1));
    colourIn(picture, colour);
    return picture;
}

QImage tintedForTray(const TemplateImage& image, QSize pixels, const TrayTint& tint)
{
    QImage picture = coverage(image, pixels, fitted(image.size, pixels, barHeight));
    colourIn(picture, tint.colour);
    if (tint.contour == TrayTint::Contour::opposite)
        return contoured(picture, legibleOn(tint.colour));
    return picture;
}

QColor legibleOn(const QColor& background)
{
    const double luma = 0.299 * background.redF() + 0.587 * background.greenF() + 0.114 * background.blueF();
    return luma > 0.5 ? Qt::black : Qt::white;
}

} // namespace orvane

// A picture of text as a screen shows it.
#pragma once

#include "Platform/TextRecognition.h"

#include <QImage>
#include <QPainter>
#include <QStringList>

namespace orvane::tests {

[[nodiscard]] inline TextRecognition::Image renderedText(const QStringList& lines, int pixelSize = 20)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    const QFontMetrics metrics(font);
    int width = 1;
    for (const QString& line : lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    constexpr int margin = 12;
    QImage image(width + 2 * margin, std::max(1, int(lines.size())) * metrics.lineSpacing() + 2 * margin,
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    for (int index = 0; index < lines.size(); ++index)
        painter.drawText(margin, margin + metrics.ascent() + index * metrics.lineSpacing(), lines.at(index));
    painter.end();
    return {image.width(), image.height(),
            QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes())};
}

} // namespace orvane::tests

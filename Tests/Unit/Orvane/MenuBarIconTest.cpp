// The status picture, pixel by pixel.
#include "Orvane/Menus/MenuBarIcon.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

using namespace orvane;

namespace {

constexpr double side = 18;

/// True if a point of the picture's 18 by 18 lies in one of the four squares. Computed from the numbers and
/// not with the code that draws them.
bool isInside(double x, double y)
{
    const double w = 15;
    const double gap = 0.18 * w;
    const double c = (w - gap) / 2;
    const double radius = 0.3 * c;
    for (const double left : {1.5, 1.5 + gap + c}) {
        for (const double top : {1.5, 1.5 + gap + c}) {
            // The nearest point of the square without its rounded rim.
            const double dx = x - std::clamp(x, left + radius, left + c - radius);
            const double dy = y - std::clamp(y, top + radius, top + c - radius);
            if (std::hypot(dx, dy) <= radius)
                return true;
        }
    }
    return false;
}

/// Returns the covered part of a pixel, from 0 to 1.
double coverage(int column, int row, int scale)
{
    constexpr int samples = 16;
    int hits = 0;
    for (int i = 0; i < samples; ++i) {
        for (int j = 0; j < samples; ++j)
            hits += isInside((column + (i + 0.5) / samples) / scale, (row + (j + 0.5) / samples) / scale);
    }
    return hits / static_cast<double>(samples * samples);
}

QImage drawn(int scale)
{
    const int pixels = static_cast<int>(side) * scale;
    QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    MenuBarIcon::statusImage().draw(painter, picture.rect());
    return picture;
}

} // namespace

TEST(MenuBarIcon, FourCellsByTheNumbers)
{
    const MenuBarIcon::Shape shape = MenuBarIcon::shape(QRectF(0, 0, 18, 18));
    const double width = 15;
    const double cell = (width - 0.18 * width) / 2;
    const double step = 0.18 * width + cell;
    const std::array expected{QRectF(1.5, 1.5, cell, cell), QRectF(1.5, 1.5 + step, cell, cell),
                              QRectF(1.5 + step, 1.5, cell, cell),
                              QRectF(1.5 + step, 1.5 + step, cell, cell)};
    EXPECT_EQ(shape.cells, expected);
    EXPECT_DOUBLE_EQ(shape.cornerRadius, 0.3 * cell);
    EXPECT_EQ(MenuBarIcon::statusImage().size, QSizeF(18, 18));
}

TEST(MenuBarIcon, EveryPixelIsCoveredByTheNumbersAtEachScale)
{
    constexpr double tolerance = 0.12; // the painter draws small arcs as chords
    constexpr double inkTolerance = 0.02;
    for (const int scale : {1, 2, 3}) {
        const QImage picture = drawn(scale);
        double ink = 0;
        double expectedInk = 0;
        for (int row = 0; row < picture.height(); ++row) {
            for (int column = 0; column < picture.width(); ++column) {
                const QColor pixel = picture.pixelColor(column, row);
                const double expected = coverage(column, row, scale);
                EXPECT_NEAR(pixel.alphaF(), expected, tolerance)
                    << column << ", " << row << " at scale " << scale;
                ink += pixel.alphaF();
                expectedInk += expected;
                EXPECT_EQ(pixel.lightness(), 0) << "black, for others to colour";
            }
        }
        EXPECT_NEAR(ink / expectedInk, 1, inkTolerance) << scale;
    }
}

TEST(MenuBarIcon, ThePainterIsLeftAsItWas)
{
    QImage picture(18, 18, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    painter.setPen(Qt::red);
    MenuBarIcon::statusImage().draw(painter, picture.rect());
    EXPECT_EQ(painter.pen().color(), QColor(Qt::red));
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}

#include "PlatformLinux/Menus/TemplateTint.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace orvane {
namespace {

TemplateImage square(QSizeF size)
{
    TemplateImage image;
    image.size = size;
    image.draw = [](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, Qt::black); };
    return image;
}

QRect covered(const QImage& image)
{
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() == 255)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

constexpr auto noContour = TrayTint::Contour::none;

TEST(TemplateTint, OnlyTheCoverageOfThePictureCounts)
{
    const QImage image = tinted(square({10, 10}), {20, 20}, QColor(10, 200, 30));
    EXPECT_EQ(image.pixelColor(10, 10), QColor(10, 200, 30));
    EXPECT_EQ(covered(image), QRect(0, 0, 20, 20));
}

TEST(TemplateTint, ThePictureKeepsItsShapeInTheMiddle)
{
    EXPECT_EQ(covered(tinted(square({20, 10}), {40, 40}, Qt::red)), QRect(0, 10, 40, 20));
}

TEST(TemplateTint, InTheTrayASmallerPictureLeavesTheSamePartEmptyAtAnyScale)
{
    EXPECT_EQ(covered(tintedForTray(square({18, 18}), {22, 22}, {Qt::red, noContour})), QRect(2, 2, 18, 18));
    EXPECT_EQ(covered(tintedForTray(square({18, 18}), {44, 44}, {Qt::red, noContour})), QRect(4, 4, 36, 36));
    EXPECT_EQ(covered(tintedForTray(square({44, 44}), {22, 22}, {Qt::red, noContour})), QRect(0, 0, 22, 22));
}

TEST(TemplateTint, TheContourIsOfTheOppositeToneAndStaysOutsideThePicture)
{
    const QImage dark = tintedForTray(square({18, 18}), {22, 22}, {Qt::black, TrayTint::Contour::opposite});
    EXPECT_EQ(dark.pixelColor(11, 11), QColor(Qt::black));
    EXPECT_GT(dark.pixelColor(1, 11).alpha(), 100);
    EXPECT_GT(dark.pixelColor(1, 11).lightness(), 200);
    EXPECT_EQ(dark.pixelColor(0, 11).alpha(), 0);
    const QImage light = tintedForTray(square({18, 18}), {22, 22}, {Qt::white, TrayTint::Contour::opposite});
    EXPECT_LT(light.pixelColor(1, 11).lightness(), 50);
}

TEST(TemplateTint, AnImageThatDrawsNothingIsTransparentAndHarmless)
{
    EXPECT_EQ(covered(tinted({}, {20, 20}, Qt::red)), QRect());
    EXPECT_EQ(covered(tinted(square({0, 0}), {0, 0}, Qt::red)), QRect());
}

} // namespace
} // namespace orvane

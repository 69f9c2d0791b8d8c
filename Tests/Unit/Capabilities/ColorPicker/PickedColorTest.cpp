#include "Capabilities/ColorPicker/PickedColor.h"
#include "Capabilities/ColorPicker/PickArea.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace orvane {
namespace {

using enum ColorFormat;

/// Values from tables of named colours.
struct Named {
    std::uint32_t pixel;
    const char* hex;
    const char* rgb;
    const char* hsl;
};

class NamedColors : public testing::TestWithParam<Named> {};

TEST_P(NamedColors, ReadAsInTheTable)
{
    const auto color = PickedColor::fromPixel(GetParam().pixel);
    EXPECT_EQ(color.string(hex).toStdString(), GetParam().hex);
    EXPECT_EQ(color.string(rgb).toStdString(), GetParam().rgb);
    EXPECT_EQ(color.string(hsl).toStdString(), GetParam().hsl);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NamedColors,
    testing::Values(Named{0x000000, "#000000", "rgb(0, 0, 0)", "hsl(0, 0%, 0%)"},
                    Named{0xFFFFFF, "#FFFFFF", "rgb(255, 255, 255)", "hsl(0, 0%, 100%)"},
                    Named{0x808080, "#808080", "rgb(128, 128, 128)", "hsl(0, 0%, 50%)"},
                    Named{0xFF0000, "#FF0000", "rgb(255, 0, 0)", "hsl(0, 100%, 50%)"},
                    Named{0x00FF00, "#00FF00", "rgb(0, 255, 0)", "hsl(120, 100%, 50%)"},
                    Named{0x0000FF, "#0000FF", "rgb(0, 0, 255)", "hsl(240, 100%, 50%)"},
                    Named{0xFFFF00, "#FFFF00", "rgb(255, 255, 0)", "hsl(60, 100%, 50%)"},
                    Named{0xFF00FF, "#FF00FF", "rgb(255, 0, 255)", "hsl(300, 100%, 50%)"},
                    // Names of web pages: steelblue, rebeccapurple, salmon, olive, tomato, mediumseagreen.
                    Named{0x4682B4, "#4682B4", "rgb(70, 130, 180)", "hsl(207, 44%, 49%)"},
                    Named{0x663399, "#663399", "rgb(102, 51, 153)", "hsl(270, 50%, 40%)"},
                    Named{0xFA8072, "#FA8072", "rgb(250, 128, 114)", "hsl(6, 93%, 71%)"},
                    Named{0x808000, "#808000", "rgb(128, 128, 0)", "hsl(60, 100%, 25%)"},
                    Named{0xFF6347, "#FF6347", "rgb(255, 99, 71)", "hsl(9, 100%, 64%)"},
                    Named{0x3CB371, "#3CB371", "rgb(60, 179, 113)", "hsl(147, 50%, 47%)"},
                    // The example of the menu.
                    Named{0x1A2B3C, "#1A2B3C", "rgb(26, 43, 60)", "hsl(210, 40%, 17%)"},
                    // A hue just below a full turn is rounded up to it.
                    Named{0xFF0001, "#FF0001", "rgb(255, 0, 1)", "hsl(360, 100%, 50%)"}));

TEST(PickedColor, EveryByteComesBack)
{
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        const auto color = PickedColor::fromPixel(byte << 16 | byte << 8 | byte);
        EXPECT_EQ(color.string(rgb).toStdString(), "rgb(" + std::to_string(byte) + ", " +
                                                       std::to_string(byte) + ", " + std::to_string(byte) +
                                                       ")");
    }
}

TEST(PickedColor, HalvesAreRoundedAwayFromZero)
{
    EXPECT_EQ((PickedColor{0.5 / 255, 1.5 / 255, 2.5 / 255}).string(rgb).toStdString(), "rgb(1, 2, 3)");
}

TEST(PickedColor, TheUnusedByteDoesNotCount)
{
    EXPECT_EQ(PickedColor::fromPixel(0xFF123456), PickedColor::fromPixel(0x123456));
}

/// Back from hue, saturation and lightness, by the definition of the space as a double cone.
std::vector<long> bytesFromHsl(const PickedColor::Hsl& value)
{
    const double chroma = (1 - std::abs(2 * value.lightness - 1)) * value.saturation;
    const auto channel = [&](double shift) {
        const double place = std::fmod(shift + value.hue / 30, 12);
        const double ramp = std::max(-1.0, std::min({place - 3, 9 - place, 1.0}));
        return std::lround((value.lightness - chroma / 2 * ramp) * 255);
    };
    return {channel(0), channel(8), channel(4)};
}

TEST(PickedColor, HslNamesTheSameColour)
{
    for (std::uint32_t pixel = 0; pixel <= 0xFFFFFF; pixel += 4099) {
        const auto value = PickedColor::fromPixel(pixel).hsl();
        const std::vector<long> bytes{long(pixel >> 16), long(pixel >> 8 & 0xFF), long(pixel & 0xFF)};
        ASSERT_EQ(bytesFromHsl(value), bytes) << std::hex << pixel;
        ASSERT_TRUE(value.hue >= 0 && value.hue < 360) << std::hex << pixel;
    }
}

TEST(PickedColor, FormatsAreStoredAndShownByTheirNames)
{
    EXPECT_EQ(rawValue(hex), QLatin1StringView("hex"));
    EXPECT_EQ(rawValue(rgb), QLatin1StringView("rgb"));
    EXPECT_EQ(rawValue(hsl), QLatin1StringView("hsl"));
    EXPECT_EQ(title(hex).toStdString(), "HEX  (#1A2B3C)");
    EXPECT_EQ(title(rgb).toStdString(), "RGB  (rgb(26, 43, 60))");
    EXPECT_EQ(title(hsl).toStdString(), "HSL  (hsl(210, 40%, 17%))");
}

/// A second display to the right of the first one and reaching below it.
class PickAreaTest : public testing::TestWithParam<double> {
protected:
    PickAreaTest()
    {
        area.scale = GetParam();
        area.frame = {{1440, -100}, {1200 / area.scale, 900 / area.scale}};
        area.size = {1200, 900};
    }
    [[nodiscard]] Point pointOf(int x, int y) const
    {
        return {area.frame.minX() + x / area.scale, area.frame.maxY() - y / area.scale};
    }

    PickArea area;
};

TEST_P(PickAreaTest, EachPixelIsFoundFromItsPoint)
{
    for (int x = 0; x < 1200; ++x)
        ASSERT_EQ(area.pixelAt(pointOf(x, 7)), QPoint(x, 7));
    for (int y = 0; y < 900; ++y)
        ASSERT_EQ(area.pixelAt(pointOf(1199, y)), QPoint(1199, y));
}

TEST_P(PickAreaTest, APointBetweenPixelsBelongsToTheUpperLeftOne)
{
    const Point point = pointOf(10, 20);
    const double part = 0.7 / area.scale;
    EXPECT_EQ(area.pixelAt({point.x + part, point.y - part}), QPoint(10, 20));
}

TEST_P(PickAreaTest, OutsideThereIsNoPixel)
{
    EXPECT_FALSE(area.pixelAt(pointOf(-1, 5)));
    EXPECT_FALSE(area.pixelAt(pointOf(5, -1)));
    EXPECT_FALSE(area.pixelAt(pointOf(1200, 5)));
    EXPECT_FALSE(area.pixelAt(pointOf(5, 900)));
}

TEST_P(PickAreaTest, TheCropIsCentredAndPushedInwardAtTheEdges)
{
    EXPECT_EQ(area.cropAround({100, 200}), QRect(93, 193, 15, 15));
    EXPECT_EQ(area.cropAround({0, 0}), QRect(0, 0, 15, 15));
    EXPECT_EQ(area.cropAround({7, 8}), QRect(0, 1, 15, 15));
    EXPECT_EQ(area.cropAround({1199, 899}), QRect(1185, 885, 15, 15));
    EXPECT_EQ(area.cropAround({1192, 891}), QRect(1185, 884, 15, 15));
}

INSTANTIATE_TEST_SUITE_P(Scales, PickAreaTest, testing::Values(1.0, 1.25, 1.5, 1.75, 2.0, 3.0));

} // namespace
} // namespace orvane

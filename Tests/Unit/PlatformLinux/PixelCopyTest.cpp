#include "PlatformLinux/ScreenCapture/PixelCopy.h"

#include <gtest/gtest.h>

#include <vector>

namespace orvane {
namespace {

using Scaling = ScreenCapturer::Scaling;

/// Four by three pixels whose lower right neighbours differ in every colour, at (10, 20).
class PixelCopyTest : public testing::Test {
protected:
    static constexpr PixelRect place{10, 20, 4, 3};

    static std::uint32_t color(int x, int y)
    {
        return static_cast<std::uint32_t>(x * 0x301008 + y * 0x071122);
    }

    PixelCopyTest()
    {
        for (int y = 0; y < place.height; ++y) {
            for (int x = 0; x < place.width; ++x)
                words.push_back(color(x, y));
        }
    }

    [[nodiscard]] ReadPixels read(PixelMasks masks = {}) const
    {
        return {place, reinterpret_cast<const std::byte*>(words.data()), masks};
    }
    [[nodiscard]] ScreenImage scaled(const Rect& source, int width, int height,
                                     Scaling scaling = Scaling::nearest) const
    {
        return scaledImage(read(), source, width, height, scaling);
    }

    std::vector<std::uint32_t> words;
};

TEST_F(PixelCopyTest, PixelsAreCopiedAndMadeOpaque)
{
    const ScreenImage image = imageOf(read());
    ASSERT_EQ(image.width, 4);
    ASSERT_EQ(image.height, 3);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(image.pixel(x, y), 0xFF000000 | color(x, y)) << x << ' ' << y;
    }
}

TEST_F(PixelCopyTest, WhatTheServerLeavesInTheUnusedByteIsIgnored)
{
    words[0] = 0x7F123456;
    EXPECT_EQ(imageOf(read()).pixel(0, 0), 0xFF123456u);
}

TEST_F(PixelCopyTest, TenBitsForAColourBecomeEight)
{
    words[0] = 1023u << 20 | 512u << 10 | 2u;
    // 512 of 1023 is 127.6 of 255, and 2 is 0.499.
    EXPECT_EQ(imageOf(read({0x3FF00000, 0xFFC00, 0x3FF})).pixel(0, 0), 0xFFFF8000u);
}

TEST_F(PixelCopyTest, ColoursInTheOtherOrderAreSwapped)
{
    words[0] = 0x123456;
    EXPECT_EQ(imageOf(read({0xFF, 0xFF00, 0xFF0000})).pixel(0, 0), 0xFF563412u);
}

TEST_F(PixelCopyTest, NearestMakesEqualBlocks)
{
    const ScreenImage image = scaled({{11, 21}, {2, 2}}, 16, 16);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x)
            EXPECT_EQ(image.pixel(x, y), 0xFF000000 | color(1 + x / 8, 1 + y / 8)) << x << ' ' << y;
    }
}

TEST_F(PixelCopyTest, WhatWasNotReadIsBlackInBothWays)
{
    for (const Scaling scaling : {Scaling::nearest, Scaling::smooth}) {
        const ScreenImage image = scaled({{6, 16}, {4, 4}}, 8, 8, scaling);
        EXPECT_EQ(image.pixel(0, 0), 0xFF000000u);
        EXPECT_EQ(image.pixel(5, 6), 0xFF000000u);
    }
    EXPECT_EQ(scaled({{13, 22}, {2, 2}}, 2, 2).pixel(0, 0), 0xFF000000 | color(3, 2));
    EXPECT_EQ(scaled({{13, 22}, {2, 2}}, 2, 2).pixel(1, 1), 0xFF000000u);
}

TEST_F(PixelCopyTest, SmoothInItsOwnSizeChangesNothing)
{
    const ScreenImage image = scaled({{10, 20}, {4, 3}}, 4, 3, Scaling::smooth);
    EXPECT_EQ(image.pixels, imageOf(read()).pixels);
}

TEST_F(PixelCopyTest, SmoothMixesNeighboursByTheirDistance)
{
    words[0] = 0x000000;
    words[1] = 0x80FF40;
    // Twice as wide: the second pixel's middle is a quarter of the way from the first to the second.
    const ScreenImage image = scaled({{10, 20}, {4, 1}}, 8, 1, Scaling::smooth);
    EXPECT_EQ(image.pixel(1, 0), 0xFF203F10u);
    EXPECT_EQ(image.pixel(2, 0), 0xFF60BF30u);
}

TEST_F(PixelCopyTest, ThePixelsAroundARectangleAreThoseThatItTouches)
{
    EXPECT_EQ(PixelRect::around({{1.2, -0.5}, {2, 1}}), (PixelRect{1, -1, 3, 2}));
    EXPECT_EQ(PixelRect::around({{1, 2}, {3, 4}}), (PixelRect{1, 2, 3, 4}));
}

TEST_F(PixelCopyTest, RectanglesApartHaveNothingInCommon)
{
    EXPECT_TRUE((PixelRect{0, 0, 4, 4}).intersected({4, 0, 4, 4}).isEmpty());
    EXPECT_EQ((PixelRect{0, 0, 4, 4}).intersected({-2, 3, 4, 9}), (PixelRect{0, 3, 2, 1}));
}

} // namespace
} // namespace orvane

#include "PlatformLinux/Screens/ScreenSpace.h"
#include "Support/PrintGeometry.h"

#include <gmock/gmock.h>

#include <cmath>

namespace orvane {

namespace {

using Displays = std::vector<ScreenSpace::Display>;

constexpr ScreenSpace::Display primary{{{0, 0}, {1440, 900}}, 1};

struct FrameCase {
    const char* name;
    Displays displays;
    /// The frames of the displays, in their order.
    std::vector<Rect> frames;
};

class ScreenFrames : public testing::TestWithParam<FrameCase> {};

const FrameCase frameCases[] = {
    {"One", {primary}, {{{0, 0}, {1440, 900}}}},
    {"BesideAndTaller",
     {primary, {{{1440, 0}, {1280, 1000}}, 1}},
     {{{0, 0}, {1440, 900}}, {{1440, -100}, {1280, 1000}}}},
    {"ToTheLeftOfAPrimaryThatIsNotAtTheRoot",
     {{{{1280, 0}, {1440, 900}}, 1}, {{{0, 0}, {1280, 1000}}, 1}},
     {{{0, 0}, {1440, 900}}, {{-1280, -100}, {1280, 1000}}}},
    {"Above",
     {{{{0, 1000}, {1440, 900}}, 1}, {{{80, 0}, {1280, 1000}}, 1}},
     {{{0, 0}, {1440, 900}}, {{80, 900}, {1280, 1000}}}},
    {"Below", {primary, {{{0, 900}, {1280, 1000}}, 1}}, {{{0, 0}, {1440, 900}}, {{0, -1000}, {1280, 1000}}}},
    {"BothDense",
     {{{{0, 0}, {3840, 2160}}, 2}, {{{3840, 0}, {2560, 1440}}, 2}},
     {{{0, 0}, {1920, 1080}}, {{3840, 360}, {1280, 720}}}},
    {"ADensePrimaryAndAPlainOneAbove",
     {{{{0, 1000}, {2880, 1800}}, 2}, {{{0, 0}, {1280, 1000}}, 1}},
     {{{0, 0}, {1440, 900}}, {{0, 900}, {1280, 1000}}}},
};

INSTANTIATE_TEST_SUITE_P(Layouts, ScreenFrames, testing::ValuesIn(frameCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(ScreenFrames, HangOnThePrimaryDisplaysLowerLeftCorner)
{
    const ScreenSpace space(GetParam().displays);
    for (std::size_t i = 0; i < GetParam().displays.size(); ++i)
        EXPECT_EQ(space.cocoaFromNative(GetParam().displays[i].pixels), GetParam().frames[i]);
}

TEST_P(ScreenFrames, ARectangleOnAnyDisplayGoesThereAndBack)
{
    const ScreenSpace space(GetParam().displays);
    for (const ScreenSpace::Display& display : GetParam().displays) {
        const Rect native{{display.pixels.minX() + 100, display.pixels.minY() + 50}, {640, 480}};
        EXPECT_EQ(space.nativeFromAX(space.axFromNative(native)), native);
        EXPECT_EQ(space.axFromNative(native).width(), 640 / display.scale);
        const Rect cocoa = space.cocoaFromNative(native);
        EXPECT_EQ(space.cocoaFromToolkit(space.toolkitFromCocoa(cocoa)), cocoa);
    }
}

TEST_P(ScreenFrames, APointOnAnyDisplayGoesThereAndBack)
{
    const ScreenSpace space(GetParam().displays);
    for (const ScreenSpace::Display& display : GetParam().displays) {
        const Point corner = display.pixels.origin;
        const Point last{display.pixels.maxX() - 1, display.pixels.maxY() - 1};
        for (const Point native : {corner, last, Point{display.pixels.midX(), display.pixels.midY()}})
            EXPECT_EQ(space.nativeFromAX(space.axFromNative(native)), native);
    }
}

TEST_P(ScreenFrames, TheTwoSpacesOfPointsMirrorEachOther)
{
    const ScreenSpace space(GetParam().displays);
    const double height = GetParam().frames.front().height();
    for (const ScreenSpace::Display& display : GetParam().displays) {
        const Rect ax = space.axFromNative(display.pixels);
        const Rect cocoa = space.cocoaFromNative(display.pixels);
        EXPECT_EQ(cocoa, (Rect{{ax.minX(), height - ax.maxY()}, ax.size}));
        const Point axPoint = space.axFromNative(display.pixels.origin);
        EXPECT_EQ(space.cocoaFromNative(display.pixels.origin), (Point{axPoint.x, height - axPoint.y}));
    }
}

TEST(ScreenSpace, ADisplayAboveHasANegativeAccessibilityPlace)
{
    const ScreenSpace space({{{{0, 1000}, {1440, 900}}, 1}, {{{0, 0}, {1280, 1000}}, 1}});
    EXPECT_EQ(space.axFromNative(Point{10, 20}), (Point{10, -980}));
    EXPECT_EQ(space.axFromNative(Point{10, 1020}), (Point{10, 20}));
}

TEST(ScreenSpace, OnADenseDisplayPointsCountFromItsOwnCorner)
{
    const ScreenSpace space({{{{0, 0}, {3840, 2160}}, 2}, {{{3840, 0}, {2560, 1440}}, 2}});
    EXPECT_EQ(space.toolkitFromNative({3839, 100}), (Point{1919.5, 50}));
    EXPECT_EQ(space.toolkitFromNative({3840, 100}), (Point{3840, 50}));
    EXPECT_EQ(space.scaleAtNative({3840, 100}), 2);
    EXPECT_EQ(space.scaleAtAX({1919, 50}), 2);
}

TEST(ScreenSpace, AWindowOverTwoDisplaysBelongsToThatOfItsMiddle)
{
    const ScreenSpace space({primary, {{{1440, 0}, {2560, 1800}}, 2}});
    EXPECT_EQ(space.axFromNative(Rect{{1240, 0}, {300, 100}}), (Rect{{1240, 0}, {300, 100}}));
    EXPECT_EQ(space.axFromNative(Rect{{1400, 0}, {400, 100}}), (Rect{{1420, 0}, {200, 50}}));
}

TEST(ScreenSpace, WhatIsOnNoDisplayBelongsToTheNearestOne)
{
    const ScreenSpace space({primary, {{{1440, 0}, {2560, 1800}}, 2}});
    EXPECT_EQ(space.axFromNative(Point{1440 + 3000, 200}), (Point{1440 + 1500, 100}));
    EXPECT_EQ(space.axFromNative(Point{-10, 950}), (Point{-10, 950}));
}

TEST_P(ScreenFrames, ThePointerIsInsideTheFrameOfTheDisplayThatItIsOn)
{
    const ScreenSpace space(GetParam().displays);
    for (const ScreenSpace::Display& display : GetParam().displays) {
        const Rect frame = space.cocoaFromNative(display.pixels);
        const Point last{display.pixels.maxX() - 1, display.pixels.maxY() - 1};
        for (const Point native : {display.pixels.origin, last}) {
            const Point pointer = space.cocoaOfPointer(space.toolkitFromNative(native));
            EXPECT_TRUE(frame.contains(pointer)) << testing::PrintToString(pointer);
        }
        const Point middle{display.pixels.midX(), display.pixels.midY()};
        EXPECT_EQ(space.cocoaOfPointer(space.toolkitFromNative(middle)), space.cocoaFromNative(middle));
    }
}

TEST_P(ScreenFrames, EachRowAndColumnIsFoundFromThePointer)
{
    const ScreenSpace space(GetParam().displays);
    constexpr double trifle = 1e-6;
    for (const ScreenSpace::Display& display : GetParam().displays) {
        const Rect frame = space.cocoaFromNative(display.pixels);
        for (const double pixel : {0.0, 1.0, 2.0, 37.0, 511.0}) {
            const Point native{display.pixels.minX() + pixel, display.pixels.minY() + pixel};
            const Point pointer = space.cocoaOfPointer(space.toolkitFromNative(native));
            EXPECT_EQ(std::floor((frame.maxY() - pointer.y) * display.scale + trifle), pixel);
            EXPECT_EQ(std::floor((pointer.x - frame.minX()) * display.scale + trifle), pixel);
        }
    }
}

TEST(ScreenSpace, WithoutADisplayPixelsArePoints)
{
    const ScreenSpace space;
    EXPECT_EQ(space.axFromNative(Point{3, 4}), (Point{3, 4}));
    EXPECT_EQ(space.nativeFromAX(Rect{{1, 2}, {3, 4}}), (Rect{{1, 2}, {3, 4}}));
    EXPECT_EQ(space.scaleAtAX({0, 0}), 1);
}

} // namespace
} // namespace orvane

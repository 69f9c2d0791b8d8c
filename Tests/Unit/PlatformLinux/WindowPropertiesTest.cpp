#include "PlatformLinux/Accessibility/WindowProperties.h"

#include <gtest/gtest.h>

#include <ostream>

namespace orvane {

void PrintTo(const SizeHints::PixelSize& size, std::ostream* out)
{
    *out << size.width << " x " << size.height;
}

void PrintTo(const PixelPoint& point, std::ostream* out)
{
    *out << '(' << point.x << ", " << point.y << ')';
}

} // namespace orvane

namespace orvane::tests {

namespace {

using PixelSize = SizeHints::PixelSize;

enum HintFlag : std::uint32_t { least = 16, greatest = 32, step = 64, base = 256, gravity = 512 };

struct Hints {
    PixelSize least, greatest, step, base;
    std::uint32_t gravity = 0;
};

PropertyNumbers numbersOf(std::uint32_t flags, const Hints& hints)
{
    const auto of = [](int number) { return static_cast<std::uint32_t>(number); };
    return {flags,
            0,
            0,
            0,
            0,
            of(hints.least.width),
            of(hints.least.height),
            of(hints.greatest.width),
            of(hints.greatest.height),
            of(hints.step.width),
            of(hints.step.height),
            0,
            0,
            0,
            0,
            of(hints.base.width),
            of(hints.base.height),
            hints.gravity};
}

/// A terminal with letters of 6 by 13.
const SizeHints terminal(numbersOf(least | step | base, {{10, 17}, {}, {6, 13}, {4, 4}}));

} // namespace

TEST(FrameExtents, ComeAsLeftRightTopBottom)
{
    EXPECT_EQ(frameExtents({1, 2, 3, 4}), (PixelMargins{.left = 1, .top = 3, .right = 2, .bottom = 4}));
    EXPECT_EQ(frameExtents({1, 2, 3, 4, 5}), (PixelMargins{.left = 1, .top = 3, .right = 2, .bottom = 4}));
}

TEST(FrameExtents, AreAbsentWhenTheyCanNotBeSuch)
{
    EXPECT_EQ(frameExtents({}), std::nullopt);
    EXPECT_EQ(frameExtents({1, 2, 3}), std::nullopt);
    EXPECT_EQ(frameExtents({1, 2, 3, 0xFFFFFFFF}), std::nullopt);
    EXPECT_EQ(frameExtents({0x80000000, 0, 0, 0}), std::nullopt);
}

TEST(ManagedState, IsWithdrawnUnlessItSaysOtherwise)
{
    EXPECT_EQ(managedState({}), ManagedState::withdrawn);
    EXPECT_EQ(managedState({0, 0}), ManagedState::withdrawn);
    EXPECT_EQ(managedState({1, 0}), ManagedState::normal);
    EXPECT_EQ(managedState({3}), ManagedState::iconic);
    EXPECT_EQ(managedState({77}), ManagedState::withdrawn);
}

TEST(SizeHints, AllowEverySizeWhenThereAreNone)
{
    EXPECT_EQ(SizeHints().nearest({401, 303}), (PixelSize{401, 303}));
    EXPECT_EQ(SizeHints(PropertyNumbers()).nearest({1, 1}), (PixelSize{1, 1}));
    EXPECT_EQ(SizeHints(numbersOf(0, {{100, 100}, {200, 200}, {7, 7}, {3, 3}})).nearest({333, 5}),
              (PixelSize{333, 5}));
}

TEST(SizeHints, NeverAllowLessThanAPixel)
{
    EXPECT_EQ(SizeHints().nearest({0, -20}), (PixelSize{1, 1}));
}

TEST(SizeHints, KeepTheLeastAndTheGreatestSize)
{
    const SizeHints hints(numbersOf(least | greatest, {{200, 100}, {640, 480}, {}, {}}));
    EXPECT_EQ(hints.nearest({10, 10}), (PixelSize{200, 100}));
    EXPECT_EQ(hints.nearest({1000, 479}), (PixelSize{640, 479}));
}

TEST(SizeHints, TakeTheNearestStepBelow)
{
    EXPECT_EQ(terminal.nearest({4 + 6 * 80, 4 + 13 * 24}), (PixelSize{484, 316}));
    EXPECT_EQ(terminal.nearest({4 + 6 * 80 + 5, 4 + 13 * 24 + 12}), (PixelSize{484, 316}));
    EXPECT_EQ(terminal.nearest({4 + 6 * 80 - 1, 4 + 13 * 24 - 1}), (PixelSize{478, 303}));
}

TEST(SizeHints, DoNotStepBelowTheLeastSize)
{
    EXPECT_EQ(terminal.nearest({0, 0}), (PixelSize{10, 17}));
    const SizeHints uneven(numbersOf(least | step | base, {{50, 50}, {}, {20, 20}, {5, 5}}));
    EXPECT_EQ(uneven.nearest({55, 64}), (PixelSize{65, 65}));
}

TEST(SizeHints, CountStepsFromTheLeastSizeWhenThereIsNoBase)
{
    const SizeHints hints(numbersOf(least | step, {{50, 50}, {}, {20, 20}, {}}));
    EXPECT_EQ(hints.nearest({99, 111}), (PixelSize{90, 110}));
}

TEST(SizeHints, TakeTheBaseForTheLeastSizeWhenThereIsNone)
{
    const SizeHints hints(numbersOf(base, {{}, {}, {}, {120, 80}}));
    EXPECT_EQ(hints.nearest({5, 5}), (PixelSize{120, 80}));
}

TEST(SizeHints, BearNonsense)
{
    const SizeHints contradictory(numbersOf(least | greatest | step, {{300, 300}, {200, 0}, {0, -1}, {}}));
    EXPECT_EQ(contradictory.nearest({250, 350}), (PixelSize{300, 300}));
    const SizeHints huge(PropertyNumbers(18, 0xFFFFFFFF));
    EXPECT_EQ(huge.nearest({250, 350}), (PixelSize{0x7FFF, 0x7FFF}));
    PropertyNumbers cutOff = numbersOf(least | greatest | step | base | gravity, {{300, 300}, {}, {}, {}, 6});
    cutOff.resize(6);
    EXPECT_EQ(SizeHints(cutOff).nearest({5, 5}), (PixelSize{5, 5}));
}

TEST(SizeHints, TellTheGravity)
{
    EXPECT_EQ(SizeHints(numbersOf(gravity, {{}, {}, {}, {}, 10})).gravity(), Gravity::fixed);
    EXPECT_EQ(SizeHints(numbersOf(gravity, {{}, {}, {}, {}, 5})).gravity(), Gravity::center);
    EXPECT_EQ(SizeHints(numbersOf(gravity, {{}, {}, {}, {}, 0})).gravity(), Gravity::northWest);
    EXPECT_EQ(SizeHints(numbersOf(gravity, {{}, {}, {}, {}, 11})).gravity(), Gravity::northWest);
    EXPECT_EQ(SizeHints(numbersOf(0, {{}, {}, {}, {}, 5})).gravity(), Gravity::northWest);
}

TEST(RequestedOrigin, KeepsTheReferencePointOfTheGravity)
{
    const PixelEdges outer{100, 200, 510, 534};
    const PixelMargins decoration{4, 30, 6, 4};
    struct Row {
        Gravity gravity;
        PixelPoint origin;
    };
    for (const Row& row : {
             Row{Gravity::northWest, {100, 200}},
             Row{Gravity::north, {105, 200}},
             Row{Gravity::northEast, {110, 200}},
             Row{Gravity::west, {100, 217}},
             Row{Gravity::center, {105, 217}},
             Row{Gravity::east, {110, 217}},
             Row{Gravity::southWest, {100, 234}},
             Row{Gravity::south, {105, 234}},
             Row{Gravity::southEast, {110, 234}},
             Row{Gravity::fixed, {104, 230}},
         })
        EXPECT_EQ(requestedOrigin(outer, decoration, row.gravity), row.origin)
            << static_cast<int>(row.gravity);
}

TEST(MotifFunctions, AreAllThereUnlessTheWindowNamesThem)
{
    struct Row {
        PropertyNumbers numbers;
        bool canClose;
        bool canMaximize;
    };
    const std::vector<Row> table{
        {{}, true, true},
        {{1}, true, true},
        {{2, 0, 0, 0, 0}, true, true},      // concerns the decorations alone
        {{1, 0x01, 0, 0, 0}, true, true},   // all
        {{1, 0x21, 0, 0, 0}, false, true},  // all but closing
        {{1, 0x11, 0, 0, 0}, true, false},  // all but maximizing
        {{1, 0x24, 0, 0, 0}, true, false},  // moving and closing
        {{1, 0x16, 0, 0, 0}, false, true},  // resizing, moving and maximizing
        {{1, 0x00, 0, 0, 0}, false, false}, // none
    };
    for (const Row& row : table) {
        const MotifFunctions functions = motifFunctions(row.numbers);
        const std::uint32_t named = row.numbers.size() > 1 ? row.numbers[1] : 0;
        EXPECT_EQ(functions.canClose, row.canClose) << named;
        EXPECT_EQ(functions.canMaximize, row.canMaximize) << named;
    }
}

} // namespace orvane::tests

#include "PlatformLinux/Accessibility/WindowFrame.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>

namespace orvane {

void PrintTo(const PixelEdges& edges, std::ostream* out)
{
    *out << edges.left << ".." << edges.right << " x " << edges.top << ".." << edges.bottom;
}

} // namespace orvane

namespace orvane::tests {

namespace {

/// 400 by 300 at (100, 200).
constexpr PixelEdges client{100, 200, 500, 500};

} // namespace

TEST(VisibleFrame, IsTheFrameThatTheWindowManagerPutsAround)
{
    const WindowPlace place{.client = client,
                            .outer = {95, 171, 505, 505},
                            .isRolledUp = false,
                            .decoration = PixelMargins{5, 29, 5, 5},
                            .invisible = {}};
    EXPECT_EQ(visibleFrame(place), (PixelEdges{95, 171, 505, 505}));
}

TEST(VisibleFrame, LeavesOutTheShadowsOfAProgramThatDecoratesItself)
{
    const WindowPlace place{.client = client,
                            .outer = client,
                            .isRolledUp = false,
                            .decoration = PixelMargins(),
                            .invisible = {26, 23, 26, 29}};
    EXPECT_EQ(visibleFrame(place), (PixelEdges{126, 223, 474, 471}));
}

TEST(VisibleFrame, LeavesOutAnInvisibleBorderOfTheFrame)
{
    const WindowPlace place{.client = client,
                            .outer = {90, 170, 510, 510},
                            .isRolledUp = false,
                            .decoration = PixelMargins{1, 25, 1, 1},
                            .invisible = {}};
    EXPECT_EQ(visibleFrame(place), (PixelEdges{99, 175, 501, 501}));
}

TEST(VisibleFrame, OfARolledUpWindowIsItsTitleBar)
{
    const WindowPlace place{.client = client,
                            .outer = {95, 171, 505, 200},
                            .isRolledUp = true,
                            .decoration = PixelMargins{5, 29, 5, 5},
                            .invisible = {}};
    EXPECT_EQ(visibleFrame(place), (PixelEdges{95, 171, 505, 200}));
}

TEST(VisibleFrame, HasItsDecorationAlsoWhenTheFrameWindowWasAskedAboutAMomentLater)
{
    for (const PixelEdges& outer : {PixelEdges{815, 171, 1225, 505}, PixelEdges{0, 0, 410, 334},
                                    PixelEdges{95, 171, 300, 300}, PixelEdges{95, 171, 1000, 900}}) {
        const WindowPlace place{.client = client,
                                .outer = outer,
                                .isRolledUp = false,
                                .decoration = PixelMargins{5, 29, 5, 5},
                                .invisible = {}};
        EXPECT_EQ(visibleFrame(place), (PixelEdges{95, 171, 505, 505}));
    }
}

TEST(VisibleFrame, IsTheFrameWindowWhenTheWindowManagerTellsNothing)
{
    const WindowPlace place{.client = client,
                            .outer = {95, 171, 505, 505},
                            .isRolledUp = false,
                            .decoration = {},
                            .invisible = {}};
    EXPECT_EQ(visibleFrame(place), (PixelEdges{95, 171, 505, 505}));
}

TEST(VisibleFrame, HasTheBorderThatTheServerDraws)
{
    const WindowPlace place{.client = client,
                            .outer = {98, 198, 502, 502},
                            .isRolledUp = false,
                            .decoration = {},
                            .invisible = {}};
    EXPECT_EQ(visibleFrame(place), (PixelEdges{98, 198, 502, 502}));
}

TEST(VisibleFrame, HasADecorationThatIsDrawnWithoutAFrameWindow)
{
    const WindowPlace place{.client = client,
                            .outer = client,
                            .isRolledUp = false,
                            .decoration = PixelMargins{2, 20, 2, 2},
                            .invisible = {}};
    EXPECT_EQ(visibleFrame(place), (PixelEdges{98, 180, 502, 502}));
}

TEST(PixelEdges, ShrinkBackToWhatTheyWereGrownFrom)
{
    const PixelMargins margins{1, 20, -3, 5};
    EXPECT_EQ(grown(client, margins), (PixelEdges{99, 180, 497, 505}));
    EXPECT_EQ(shrunk(grown(client, margins), margins), client);
}

TEST(RoundedEdges, ArePixelsThatNeighboursShare)
{
    const Rect left{{0, 0.5}, {402.5, 300}};
    const Rect right{{402.5, 0.5}, {402.5, 300}};
    EXPECT_EQ(rounded(left), (PixelEdges{0, 1, 403, 301}));
    EXPECT_EQ(rounded(right), (PixelEdges{403, 1, 805, 301}));
}

TEST(RoundedEdges, RoundAlikeOnBothSidesOfTheOrigin)
{
    EXPECT_EQ(rounded({{-1.5, -0.5}, {1, 1}}), (PixelEdges{-1, 0, 0, 1}));
    EXPECT_EQ(rounded({{0.5, 1.5}, {1, 1}}), (PixelEdges{1, 2, 2, 3}));
}

TEST(RoundedEdges, AreTheSameForTwoReckoningsOfOneEdge)
{
    const double edge = 402.5;
    const double reckonedOtherwise = std::nextafter(edge, 0);
    EXPECT_EQ(rounded({{0, 0}, {edge, 1}}).right, rounded({{reckonedOtherwise, 0}, {1, 1}}).left);
}

TEST(RoundedEdges, OfHalvesAlwaysMeet)
{
    std::mt19937 random(4711);
    std::uniform_real_distribution<double> place(-3000, 3000);
    std::uniform_real_distribution<double> extent(1, 5000);
    for (int i = 0; i < 1000; ++i) {
        const double x = place(random);
        const double half = extent(random) * 0.5;
        ASSERT_EQ(rounded({{x, 0}, {half, 1}}).right, rounded({{x + half, 0}, {half, 1}}).left)
            << x << ' ' << half;
    }
}

} // namespace orvane::tests

#include "Capabilities/SnapZones/Geometry/EdgeDetector.h"
#include "Capabilities/SnapZones/Geometry/SnapZoneCalculator.h"
#include "SnapZonesFixture.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace orvane::tests {

namespace {

/// A screen of 1440 by 900 with a bar of 24 at the top and a dock of 70 at the bottom.
constexpr Rect visibleFrame{{0, 70}, {1440, 806}};

Rect frame(SnapZone zone, const Rect& area, SnapGaps gaps = SnapGaps::zero)
{
    return SnapZoneCalculator::frame(zone, area, gaps);
}

std::optional<SnapZone> zoneAt(double x, double y, double threshold = 8, double cornerSize = 80)
{
    return EdgeDetector::zone({x, y}, {{0, 0}, {1000, 800}}, threshold, cornerSize);
}

double area(const Rect& rect)
{
    return rect.width() * rect.height();
}

double overlap(const Rect& a, const Rect& b)
{
    const double width = std::min(a.maxX(), b.maxX()) - std::max(a.minX(), b.minX());
    const double height = std::min(a.maxY(), b.maxY()) - std::max(a.minY(), b.minY());
    return std::max(width, 0.0) * std::max(height, 0.0);
}

/// Areas and gaps in quarters of a point, whose sums and halves a double holds exactly.
class Draw {
public:
    double number(int low, int high)
    {
        return std::uniform_int_distribution(low * 4, high * 4)(m_engine) / 4.0;
    }
    Rect area() { return {{number(-3000, 3000), number(-3000, 3000)}, {number(0, 4000), number(0, 3000)}}; }
    SnapGaps gaps() { return {number(0, 40), number(0, 40)}; }

private:
    std::mt19937 m_engine{20260601};
};

constexpr int draws = 2000;

} // namespace

TEST(SnapZone, HasItsNamesTitlesAndSymbolsInOrder)
{
    const QList<QStringList> expected{
        {QStringLiteral("leftHalf"), QStringLiteral("Left Half"),
         QStringLiteral("rectangle.lefthalf.filled")},
        {QStringLiteral("rightHalf"), QStringLiteral("Right Half"),
         QStringLiteral("rectangle.righthalf.filled")},
        {QStringLiteral("topHalf"), QStringLiteral("Top Half"), QStringLiteral("rectangle.tophalf.filled")},
        {QStringLiteral("bottomHalf"), QStringLiteral("Bottom Half"),
         QStringLiteral("rectangle.bottomhalf.filled")},
        {QStringLiteral("topLeft"), QStringLiteral("Top Left"),
         QStringLiteral("rectangle.inset.topleft.filled")},
        {QStringLiteral("topRight"), QStringLiteral("Top Right"),
         QStringLiteral("rectangle.inset.topright.filled")},
        {QStringLiteral("bottomLeft"), QStringLiteral("Bottom Left"),
         QStringLiteral("rectangle.inset.bottomleft.filled")},
        {QStringLiteral("bottomRight"), QStringLiteral("Bottom Right"),
         QStringLiteral("rectangle.inset.bottomright.filled")},
        {QStringLiteral("maximize"), QStringLiteral("Maximize"), QStringLiteral("rectangle.fill")},
        {QStringLiteral("center"), QStringLiteral("Center"), QStringLiteral("rectangle.center.inset.filled")},
    };
    QList<QStringList> actual;
    for (const SnapZone zone : allCases<SnapZone>())
        actual.append({rawValue(zone), title(zone), symbol(zone)});
    EXPECT_EQ(actual, expected);
}

TEST(SnapGaps, AreEqualFieldByField)
{
    EXPECT_EQ(SnapGaps::zero, (SnapGaps{.outer = 0, .inner = 0}));
    EXPECT_NE((SnapGaps{.outer = 1, .inner = 2}), (SnapGaps{.outer = 1, .inner = 3}));
    EXPECT_NE((SnapGaps{.outer = 1, .inner = 2}), (SnapGaps{.outer = 3, .inner = 2}));
}

TEST(SnapZoneCalculator, PlacesEveryZoneWithGaps)
{
    const SnapGaps gaps{.outer = 8, .inner = 10};
    const std::pair<SnapZone, Rect> expected[]{
        {SnapZone::leftHalf, {{8, 78}, {707, 790}}},   {SnapZone::rightHalf, {{725, 78}, {707, 790}}},
        {SnapZone::topHalf, {{8, 478}, {1424, 390}}},  {SnapZone::bottomHalf, {{8, 78}, {1424, 390}}},
        {SnapZone::topLeft, {{8, 478}, {707, 390}}},   {SnapZone::topRight, {{725, 478}, {707, 390}}},
        {SnapZone::bottomLeft, {{8, 78}, {707, 390}}}, {SnapZone::bottomRight, {{725, 78}, {707, 390}}},
        {SnapZone::maximize, {{8, 78}, {1424, 790}}},
    };
    for (const auto& [zone, rect] : expected)
        EXPECT_EQ(frame(zone, visibleFrame, gaps), rect) << title(zone).toStdString();
    const Rect center = frame(SnapZone::center, visibleFrame, gaps);
    EXPECT_DOUBLE_EQ(center.width(), 854.4);
    EXPECT_DOUBLE_EQ(center.height(), 553);
    EXPECT_DOUBLE_EQ(center.midX(), 720);
    EXPECT_DOUBLE_EQ(center.midY(), 473);
}

TEST(SnapZoneCalculator, CentresSixtyBySeventyPercent)
{
    EXPECT_EQ(frame(SnapZone::center, {{0, 0}, {1000, 1000}}), (Rect{{200, 150}, {600, 700}}));
    EXPECT_EQ(frame(SnapZone::center, {{0, 0}, {1000, 1000}}, {.outer = 0, .inner = 40}),
              (Rect{{200, 150}, {600, 700}}));
}

TEST(SnapZoneCalculator, WithoutGapsTheHalvesMeet)
{
    const Rect left = frame(SnapZone::leftHalf, visibleFrame);
    const Rect right = frame(SnapZone::rightHalf, visibleFrame);
    EXPECT_EQ(left.maxX(), right.minX());
    EXPECT_EQ(left.minX(), visibleFrame.minX());
    EXPECT_EQ(right.maxX(), visibleFrame.maxX());
    EXPECT_EQ(left.height(), visibleFrame.height());
    EXPECT_EQ(frame(SnapZone::maximize, visibleFrame), visibleFrame);
}

TEST(SnapZoneCalculator, GapsThatLeaveNoRoomGiveNoSize)
{
    const SnapGaps gaps{.outer = 60, .inner = 10};
    const Rect small{{0, 0}, {100, 100}};
    for (const SnapZone zone : allCases<SnapZone>())
        EXPECT_EQ(frame(zone, small, gaps).size, Size()) << title(zone).toStdString();
    EXPECT_EQ(frame(SnapZone::bottomLeft, small, gaps).origin, (Point{60, 60}));
    EXPECT_EQ(frame(SnapZone::topRight, small, gaps).origin, (Point{70, 70}));
    // There is room for the outer gap alone: the halves have no width, the whole screen still has.
    EXPECT_EQ(frame(SnapZone::leftHalf, small, {.outer = 0, .inner = 120}), (Rect{{0, 0}, {0, 100}}));
}

TEST(SnapZoneCalculator, ZonesTileTheUsableArea)
{
    using enum SnapZone;
    Draw draw;
    for (int round = 0; round < draws; ++round) {
        const Rect area_ = draw.area();
        for (const auto& tiles : {std::vector{leftHalf, rightHalf}, std::vector{topHalf, bottomHalf},
                                  std::vector{topLeft, topRight, bottomLeft, bottomRight}}) {
            double covered = 0;
            for (std::size_t one = 0; one < tiles.size(); ++one) {
                const Rect tile = frame(tiles[one], area_);
                covered += area(tile);
                for (std::size_t other = 0; other < one; ++other)
                    ASSERT_EQ(overlap(tile, frame(tiles[other], area_)), 0);
            }
            ASSERT_DOUBLE_EQ(covered, area(area_));
        }
    }
}

TEST(SnapZoneCalculator, ZonesWithGapsStayInsideAndApart)
{
    using enum SnapZone;
    Draw draw;
    for (int round = 0; round < draws; ++round) {
        const Rect area_ = draw.area();
        const SnapGaps gaps = draw.gaps();
        if (area_.width() < 2 * gaps.outer + gaps.inner || area_.height() < 2 * gaps.outer + gaps.inner)
            continue;
        for (const SnapZone zone : allCases<SnapZone>()) {
            const Rect tile = frame(zone, area_, gaps);
            ASSERT_GE(tile.minX() - area_.minX(), gaps.outer - 1e-9) << title(zone).toStdString();
            ASSERT_GE(tile.minY() - area_.minY(), gaps.outer - 1e-9) << title(zone).toStdString();
            ASSERT_GE(area_.maxX() - tile.maxX(), gaps.outer - 1e-9) << title(zone).toStdString();
            ASSERT_GE(area_.maxY() - tile.maxY(), gaps.outer - 1e-9) << title(zone).toStdString();
        }
        for (const auto& [left, right] :
             {std::pair{leftHalf, rightHalf}, {topLeft, topRight}, {bottomLeft, bottomRight}})
            ASSERT_NEAR(frame(right, area_, gaps).minX() - frame(left, area_, gaps).maxX(), gaps.inner, 1e-9);
        for (const auto& [lower, upper] :
             {std::pair{bottomHalf, topHalf}, {bottomLeft, topLeft}, {bottomRight, topRight}})
            ASSERT_NEAR(frame(upper, area_, gaps).minY() - frame(lower, area_, gaps).maxY(), gaps.inner,
                        1e-9);
    }
}

TEST(SnapZoneCalculator, OppositeZonesMirrorEachOther)
{
    using enum SnapZone;
    const std::pair<SnapZone, SnapZone> sideways[]{{leftHalf, rightHalf},
                                                   {topLeft, topRight},
                                                   {bottomLeft, bottomRight},
                                                   {topHalf, topHalf},
                                                   {center, center}};
    const std::pair<SnapZone, SnapZone> upright[]{{topHalf, bottomHalf},
                                                  {topLeft, bottomLeft},
                                                  {topRight, bottomRight},
                                                  {leftHalf, leftHalf},
                                                  {maximize, maximize}};
    Draw draw;
    for (int round = 0; round < draws; ++round) {
        const Rect area_ = draw.area();
        const SnapGaps gaps = draw.gaps();
        // Where there is no room, the right and upper zones begin at a gap that doesn't exist.
        if (area_.width() < 2 * gaps.outer + gaps.inner || area_.height() < 2 * gaps.outer + gaps.inner)
            continue;
        for (const auto& [one, other] : sideways) {
            const Rect a = frame(one, area_, gaps);
            const Rect b = frame(other, area_, gaps);
            ASSERT_NEAR(a.minX() - area_.minX(), area_.maxX() - b.maxX(), 1e-9);
            ASSERT_EQ(a.size, b.size);
            ASSERT_EQ(a.minY(), b.minY());
        }
        for (const auto& [one, other] : upright) {
            const Rect a = frame(one, area_, gaps);
            const Rect b = frame(other, area_, gaps);
            ASSERT_NEAR(a.minY() - area_.minY(), area_.maxY() - b.maxY(), 1e-9);
            ASSERT_EQ(a.size, b.size);
            ASSERT_EQ(a.minX(), b.minX());
        }
    }
}

TEST(EdgeDetector, FindsTheZonesOfAScreen)
{
    EXPECT_EQ(zoneAt(5, 760), SnapZone::topLeft);
    EXPECT_EQ(zoneAt(70, 795), SnapZone::topLeft);
    EXPECT_EQ(zoneAt(995, 760), SnapZone::topRight);
    EXPECT_EQ(zoneAt(930, 795), SnapZone::topRight);
    EXPECT_EQ(zoneAt(5, 40), SnapZone::bottomLeft);
    EXPECT_EQ(zoneAt(70, 5), SnapZone::bottomLeft);
    EXPECT_EQ(zoneAt(995, 5), SnapZone::bottomRight);
    EXPECT_EQ(zoneAt(930, 5), SnapZone::bottomRight);
    EXPECT_EQ(zoneAt(100, 795), SnapZone::maximize);
    EXPECT_EQ(zoneAt(5, 400), SnapZone::leftHalf);
    EXPECT_EQ(zoneAt(995, 400), SnapZone::rightHalf);
    EXPECT_EQ(zoneAt(500, 5), SnapZone::bottomHalf);
    EXPECT_EQ(zoneAt(500, 400), std::nullopt);
    // The place is in the box of the corner, but at neither of its edges.
    EXPECT_EQ(zoneAt(40, 760), std::nullopt);
}

TEST(EdgeDetector, EveryLimitIsInclusive)
{
    EXPECT_EQ(zoneAt(500, 792), SnapZone::maximize);
    EXPECT_EQ(zoneAt(500, 791.5), std::nullopt);
    EXPECT_EQ(zoneAt(8, 400), SnapZone::leftHalf);
    EXPECT_EQ(zoneAt(8.5, 400), std::nullopt);
    EXPECT_EQ(zoneAt(992, 400), SnapZone::rightHalf);
    EXPECT_EQ(zoneAt(991.5, 400), std::nullopt);
    EXPECT_EQ(zoneAt(500, 8), SnapZone::bottomHalf);
    EXPECT_EQ(zoneAt(500, 8.5), std::nullopt);
    EXPECT_EQ(zoneAt(80, 800), SnapZone::topLeft);
    EXPECT_EQ(zoneAt(80.5, 800), SnapZone::maximize);
    EXPECT_EQ(zoneAt(0, 720), SnapZone::topLeft);
    EXPECT_EQ(zoneAt(0, 719.5), SnapZone::leftHalf);
    EXPECT_EQ(zoneAt(920, 0), SnapZone::bottomRight);
    EXPECT_EQ(zoneAt(919.5, 0), SnapZone::bottomHalf);
    EXPECT_EQ(zoneAt(1000, 80), SnapZone::bottomRight);
    EXPECT_EQ(zoneAt(1000, 80.5), SnapZone::rightHalf);
}

TEST(EdgeDetector, ACornerSmallerThanTheEdgeLeavesTheRulesInOrder)
{
    EXPECT_EQ(zoneAt(3, 797, 20, 5), SnapZone::topLeft);
    EXPECT_EQ(zoneAt(10, 797, 20, 5), SnapZone::maximize);
    EXPECT_EQ(zoneAt(3, 785, 20, 5), SnapZone::maximize);
    EXPECT_EQ(zoneAt(3, 10, 20, 5), SnapZone::leftHalf);
    EXPECT_EQ(zoneAt(10, 10, 20, 5), SnapZone::leftHalf);
    EXPECT_EQ(zoneAt(990, 10, 20, 5), SnapZone::rightHalf);
}

TEST(EdgeDetector, APlaceBeyondAnEdgeIsAtThatEdge)
{
    EXPECT_EQ(zoneAt(-50, 400), SnapZone::leftHalf);
    EXPECT_EQ(zoneAt(1200, 400), SnapZone::rightHalf);
    EXPECT_EQ(zoneAt(500, 900), SnapZone::maximize);
    EXPECT_EQ(zoneAt(500, -1), SnapZone::bottomHalf);
    EXPECT_EQ(zoneAt(-50, 900), SnapZone::topLeft);
}

TEST(EdgeDetector, NeverGivesTheUpperHalfOrTheCentre)
{
    Draw draw;
    for (int round = 0; round < draws; ++round) {
        const auto zone = EdgeDetector::zone({draw.number(-100, 1100), draw.number(-100, 900)},
                                             {{0, 0}, {1000, 800}}, draw.number(2, 30), draw.number(40, 160));
        ASSERT_NE(zone, SnapZone::topHalf);
        ASSERT_NE(zone, SnapZone::center);
    }
}

TEST(EdgeDetector, WorksOnAScreenThatIsNotAtTheOrigin)
{
    const Rect screen{{-1920, 900}, {1920, 1080}};
    EXPECT_EQ(EdgeDetector::zone({-1919, 1400}, screen, 8, 80), SnapZone::leftHalf);
    EXPECT_EQ(EdgeDetector::zone({-1000, 1975}, screen, 8, 80), SnapZone::maximize);
    EXPECT_EQ(EdgeDetector::zone({-5, 905}, screen, 8, 80), SnapZone::bottomRight);
}

} // namespace orvane::tests

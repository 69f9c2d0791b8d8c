#include "PlatformLinux/Screens/Struts.h"
#include "Support/PrintGeometry.h"

#include <gmock/gmock.h>

namespace orvane {

namespace {

using Values = std::vector<std::uint32_t>;

enum class Edge { left, right, top, bottom };

/// Returns a strut as a panel writes it.
Strut partial(Edge edge, std::uint32_t depth, std::uint32_t first, std::uint32_t last)
{
    Values values(12);
    values[static_cast<std::size_t>(edge)] = depth;
    values[4 + 2 * static_cast<std::size_t>(edge)] = first;
    values[5 + 2 * static_cast<std::size_t>(edge)] = last;
    return strutOf(values, {}).value();
}

constexpr Rect left{{0, 0}, {1440, 900}};
constexpr Rect rightAndTaller{{1440, 0}, {1280, 1000}};
constexpr Size beside{2720, 1000};
constexpr Rect upper{{0, 0}, {1280, 1000}};
constexpr Rect lower{{0, 1000}, {1440, 900}};
constexpr Size stacked{1440, 1900};

struct Case {
    const char* name;
    Size root;
    std::vector<Strut> struts;
    std::vector<std::pair<Rect, Rect>> displays;
};

class VisiblePart : public testing::TestWithParam<Case> {};

const Case cases[] = {
    {"ABarAndADockOnOneDisplay",
     {1440, 900},
     {partial(Edge::top, 27, 0, 1439), partial(Edge::bottom, 62, 400, 1000)},
     {{left, {{0, 27}, {1440, 811}}}}},
    {"PanelsOnEveryEdge",
     {1440, 900},
     {partial(Edge::top, 27, 0, 1439), partial(Edge::bottom, 62, 0, 1439), partial(Edge::left, 40, 0, 899),
      partial(Edge::right, 50, 0, 899)},
     {{left, {{40, 27}, {1350, 811}}}}},
    {"TheDeeperOfTwoOnOneEdge",
     {1440, 900},
     {partial(Edge::top, 27, 0, 700), partial(Edge::top, 40, 701, 1439)},
     {{left, {{0, 40}, {1440, 860}}}}},
    {"ABarOfOneDisplayBesideAnother",
     beside,
     {partial(Edge::top, 27, 0, 1439)},
     {{left, {{0, 27}, {1440, 873}}}, {rightAndTaller, rightAndTaller}}},
    {"ADockInsideTheRootMeasuredFromItsEdge",
     beside,
     {partial(Edge::bottom, 162, 400, 1000)},
     {{left, {{0, 0}, {1440, 838}}}, {rightAndTaller, rightAndTaller}}},
    {"APanelBetweenTwoDisplaysOnTheLeftOne",
     beside,
     {partial(Edge::right, 1280 + 50, 0, 899)},
     {{left, {{0, 0}, {1390, 900}}}, {rightAndTaller, rightAndTaller}}},
    {"APanelBetweenTwoDisplaysOnTheRightOne",
     beside,
     {partial(Edge::left, 1440 + 50, 0, 999)},
     {{left, left}, {rightAndTaller, {{1490, 0}, {1230, 1000}}}}},
    {"ABarBetweenDisplaysOneAboveTheOther",
     stacked,
     {partial(Edge::top, 1027, 0, 1439), partial(Edge::bottom, 962, 200, 800)},
     {{upper, {{0, 0}, {1280, 938}}}, {lower, {{0, 1027}, {1440, 873}}}}},
    {"ARangeThatEndsAPixelTooLate",
     beside,
     {partial(Edge::top, 27, 0, 1440)},
     {{left, {{0, 27}, {1440, 873}}}, {rightAndTaller, rightAndTaller}}},
    {"ARangeThatIsTurnedRound",
     beside,
     {partial(Edge::top, 27, 1439, 0)},
     {{left, left}, {rightAndTaller, rightAndTaller}}},
    {"AnOldStrutKeepsAWholeEdge",
     beside,
     {strutOf({}, Values{0, 0, 30, 0}).value()},
     {{left, {{0, 30}, {1440, 870}}}, {rightAndTaller, {{1440, 30}, {1280, 970}}}}},
    {"AsDeepAsADisplayIsMeantForAnother",
     stacked,
     {partial(Edge::top, 1000, 0, 1279)},
     {{upper, upper}, {lower, lower}}},
    {"PanelsThatMeetAreAMistake",
     {1440, 900},
     {partial(Edge::top, 500, 0, 1439), partial(Edge::bottom, 500, 0, 1439)},
     {{left, left}}},
    {"None", beside, {}, {{left, left}, {rightAndTaller, rightAndTaller}}},
};

INSTANTIATE_TEST_SUITE_P(Struts, VisiblePart, testing::ValuesIn(cases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(VisiblePart, IsWhatTheDisplaysOwnPanelsLeave)
{
    for (const auto& [display, visible] : GetParam().displays)
        EXPECT_EQ(visiblePart(display, GetParam().root, GetParam().struts), visible);
}

TEST(Struts, ThePartialOneCountsBeforeTheOldOne)
{
    const auto strut = strutOf(Values{0, 0, 27, 0, 0, 0, 0, 0, 5, 700, 0, 0}, Values{0, 0, 99, 0});
    ASSERT_TRUE(strut);
    EXPECT_EQ(strut->top, (Strut::Strip{27, 5, 700}));
}

TEST(Struts, ZerosAndValuesThatAreTooFewKeepNothing)
{
    EXPECT_EQ(strutOf(Values(12), {}), std::nullopt);
    EXPECT_EQ(strutOf(Values{}, Values{}), std::nullopt);
    EXPECT_EQ(strutOf(Values(3, 20), Values(3, 20)), std::nullopt);
}

} // namespace
} // namespace orvane

// The panel's place for every place of the pointer.
#include "Capabilities/ClipboardHistory/Panel/HistoryPanelPlacement.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using namespace orvane;

Screen screen(Rect frame, Rect visibleFrame)
{
    return {.frame = frame, .visibleFrame = visibleFrame, .localizedName = {}, .deviceDescription = {}};
}

// One screen of 1440 by 900 with a menu bar of 24 above and a dock of 70 below; at its right one of 1280 by
// 1000, 100 higher.
const Screen left = screen({{0, 0}, {1440, 900}}, {{0, 70}, {1440, 806}});
const Screen right = screen({{1440, 100}, {1280, 1000}}, {{1440, 100}, {1280, 976}});
// The screen is smaller than the panel with its margins.
const Screen tiny = screen({{0, 0}, {300, 400}}, {{0, 0}, {300, 400}});

struct Case {
    const char* name;
    Point mouse;
    QList<Screen> screens;
    std::optional<Screen> main;
    Point origin;
};

void PrintTo(const Case& test, std::ostream* out)
{
    *out << test.name;
}

class HistoryPanelPlacementTest : public testing::TestWithParam<Case> {};

TEST_P(HistoryPanelPlacementTest, ThePanelStandsThere)
{
    const Case& test = GetParam();
    const Rect frame = HistoryPanelPlacement::frame(test.mouse, test.screens, test.main);
    EXPECT_EQ(frame.size, (Size{360, 420}));
    EXPECT_DOUBLE_EQ(frame.origin.x, test.origin.x);
    EXPECT_DOUBLE_EQ(frame.origin.y, test.origin.y);
}

INSTANTIATE_TEST_SUITE_P(
    Places, HistoryPanelPlacementTest,
    testing::Values(
        Case{"UpperLeftCornerAtThePointer", {500, 700}, {left, right}, left, {500, 280}},
        Case{"FractionsAreKept", {500.5, 700.25}, {left, right}, left, {500.5, 280.25}},
        Case{"PushedUpNearTheBottom", {500, 200}, {left, right}, left, {500, 78}},
        Case{"JustAboveTheBottomMargin", {500, 498}, {left, right}, left, {500, 78}},
        Case{"OneMoreThanTheBottomMargin", {500, 499}, {left, right}, left, {500, 79}},
        Case{"PushedLeftNearTheRightEdge", {1400, 700}, {left, right}, left, {1072, 280}},
        Case{"PushedRightAtTheLeftEdge", {0, 700}, {left, right}, left, {8, 280}},
        Case{"PushedDownUnderTheMenuBar", {500, 899}, {left, right}, left, {500, 448}},
        Case{"BothInALowerRightCorner", {1439, 0}, {left, right}, left, {1072, 78}},
        Case{"BothInAnUpperLeftCorner", {0, 899}, {left, right}, left, {8, 448}},
        Case{"TheScreenOfThePointerCountsAndNotTheMainOne", {1500, 1000}, {left, right}, left, {1500, 580}},
        Case{"TheSecondScreensRightEdge", {2700, 1000}, {left, right}, left, {2352, 580}},
        Case{"TheSecondScreensBottom", {1500, 120}, {left, right}, left, {1500, 108}},
        Case{"TheSharedEdgeBelongsToTheScreenBehindIt", {1440, 700}, {left, right}, left, {1448, 280}},
        Case{"TheFirstOfTwoThatShowTheSame",
             {500, 200},
             {left, screen(left.frame, left.frame)},
             left,
             {500, 78}},
        Case{"OnNoScreenTheMainOneClamps", {1500, 50}, {left, right}, left, {1072, 78}},
        Case{"OnNoScreenWithAnotherMainOne", {1500, 50}, {left, right}, right, {1500, 108}},
        Case{"FarOffOnNoScreen", {-5000, 9000}, {left, right}, left, {8, 448}},
        Case{"NoScreenAtAll", {-5000, 9000}, {}, std::nullopt, {-5000, 8580}},
        Case{"ATooSmallScreenKeepsTheRightAndTheUpperEdge", {10, 390}, {tiny}, tiny, {-68, -28}}),
    [](const auto& one) { return std::string(one.param.name); });

} // namespace

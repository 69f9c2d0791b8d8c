#include "Capabilities/MouseTools/DoubleControl.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace std::chrono_literals;

TEST(DoubleControlTest, OnlyARisingEdgeIsANewPress)
{
    DoubleControl control;
    EXPECT_TRUE(control.isNewPress(eventFlag::control));
    EXPECT_FALSE(control.isNewPress(eventFlag::control)) << "the other Control key";
    EXPECT_FALSE(control.isNewPress(eventFlag::control | eventFlag::shift));
    EXPECT_FALSE(control.isNewPress(eventFlag::shift));
    EXPECT_FALSE(control.isNewPress(0));
    EXPECT_TRUE(control.isNewPress(eventFlag::control | eventFlag::option));
}

TEST(DoubleControlTest, TheTimeFromPressToPressDecides)
{
    DoubleControl control;
    EXPECT_FALSE(control.completesPair(10s));
    EXPECT_TRUE(control.completesPair(10s + 399ms));

    DoubleControl late;
    EXPECT_FALSE(late.completesPair(10s));
    EXPECT_FALSE(late.completesPair(10s + 400ms)) << "it is the first of a new pair";
    EXPECT_TRUE(late.completesPair(10s + 799ms));
}

TEST(DoubleControlTest, ThePairEndsOneNanosecondBeforeTheLimit)
{
    DoubleControl control;
    EXPECT_FALSE(control.completesPair(10s));
    EXPECT_TRUE(control.completesPair(10s + 399'999'999ns));
}

TEST(DoubleControlTest, AThirdQuickPressStartsANewPair)
{
    DoubleControl control;
    EXPECT_FALSE(control.completesPair(1s));
    EXPECT_TRUE(control.completesPair(1s + 100ms));
    EXPECT_FALSE(control.completesPair(1s + 200ms));
    EXPECT_TRUE(control.completesPair(1s + 300ms));
}

TEST(DoubleControlTest, APressAtTheStartOfTheClockCounts)
{
    DoubleControl control;
    EXPECT_FALSE(control.completesPair(0s));
    EXPECT_TRUE(control.completesPair(1ns));
}

} // namespace
} // namespace orvane

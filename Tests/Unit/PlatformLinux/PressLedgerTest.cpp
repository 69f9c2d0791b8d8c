#include "PlatformLinux/EventMonitors/PressLedger.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

constexpr auto ours = [] { return PressLedger::Owner::ourselves; };
constexpr auto theirs = [] { return PressLedger::Owner::others; };
constexpr std::uint32_t left = 1, middle = 2, wheelUp = 4, right = 3, back = 8;

TEST(PressLedger, APressOnAnotherProgramIsToldWithItsDragAndItsRelease)
{
    PressLedger ledger;
    EXPECT_EQ(ledger.press(left, theirs), EventType::leftMouseDown);
    EXPECT_EQ(ledger.motion(theirs), EventType::leftMouseDragged);
    EXPECT_EQ(ledger.release(left), EventType::leftMouseUp);
    EXPECT_EQ(ledger.motion(theirs), EventType::mouseMoved);
}

TEST(PressLedger, ADragThatBeganElsewhereGoesOnOverOurWindows)
{
    PressLedger ledger;
    ledger.press(left, theirs);
    EXPECT_EQ(ledger.motion(ours), EventType::leftMouseDragged);
    EXPECT_EQ(ledger.press(right, ours), EventType::rightMouseDown) << "it goes where the held button went";
    EXPECT_EQ(ledger.release(right), EventType::rightMouseUp);
    EXPECT_EQ(ledger.release(left), EventType::leftMouseUp);
    EXPECT_EQ(ledger.motion(ours), EventType::null);
}

TEST(PressLedger, ADragOfOursIsNotToldAnywhere)
{
    PressLedger ledger;
    EXPECT_EQ(ledger.press(left, ours), EventType::null);
    EXPECT_EQ(ledger.motion(theirs), EventType::null);
    EXPECT_EQ(ledger.motionToExpect(), EventType::null);
    EXPECT_EQ(ledger.press(wheelUp, theirs), EventType::null);
    EXPECT_EQ(ledger.press(right, theirs), EventType::null);
    EXPECT_EQ(ledger.release(left), EventType::null);
    EXPECT_EQ(ledger.motion(theirs), EventType::null) << "the right one is held still";
    EXPECT_EQ(ledger.release(right), EventType::null);
    EXPECT_EQ(ledger.motion(theirs), EventType::mouseMoved);
}

TEST(PressLedger, TheWheelTurnsAndHoldsNothing)
{
    PressLedger ledger;
    EXPECT_EQ(ledger.press(wheelUp, theirs), EventType::scrollWheel);
    EXPECT_EQ(ledger.release(wheelUp), EventType::null);
    EXPECT_EQ(ledger.motion(theirs), EventType::mouseMoved);
    EXPECT_EQ(ledger.press(wheelUp, ours), EventType::null);
}

TEST(PressLedger, TheOtherButtonsAreTheMiddleOneAndThoseBeyondTheWheel)
{
    for (const std::uint32_t button : {middle, back, back + 1}) {
        PressLedger ledger;
        EXPECT_EQ(ledger.press(button, theirs), EventType::otherMouseDown);
        EXPECT_EQ(ledger.motion(theirs), EventType::otherMouseDragged);
        EXPECT_EQ(ledger.release(button), EventType::otherMouseUp);
    }
}

TEST(PressLedger, AReleaseWithoutAPressIsNone)
{
    PressLedger ledger;
    EXPECT_EQ(ledger.release(left), EventType::null);
}

TEST(PressLedger, WhatIsHeldAtTheStartIsTakenOver)
{
    PressLedger ledger;
    ledger.start(buttonBit(left), PressLedger::Owner::others);
    EXPECT_EQ(ledger.motionToExpect(), EventType::leftMouseDragged);
    EXPECT_EQ(ledger.release(left), EventType::leftMouseUp);
}

} // namespace
} // namespace orvane

#include "PlatformLinux/Keys/KeyFlags.h"

#include "PlatformLinux/Keys/VirtualKeyCodes.h"

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace eventFlag;

TEST(KeyFlags, LettersDigitsAndModifiersBringNone)
{
    for (const int keycode : {0x00, 0x08, 0x12, 0x24, 0x30, 0x31, 0x33, 0x35, 0x37, 0x38, 0x39, 0x3F})
        EXPECT_EQ(flagsOfKeyItself(keycode), 0u) << keycode;
}

TEST(KeyFlags, ArrowsCountAsKeypadAndAsFunctionKeys)
{
    for (const int keycode : {0x7B, 0x7C, 0x7D, 0x7E})
        EXPECT_EQ(flagsOfKeyItself(keycode), numericPad | secondaryFn) << keycode;
}

TEST(KeyFlags, TheKeypadAndTheKeysAroundTheArrowsHaveOneEach)
{
    EXPECT_EQ(flagsOfKeyItself(0x53), numericPad);
    EXPECT_EQ(flagsOfKeyItself(0x4C), numericPad);
    EXPECT_EQ(flagsOfKeyItself(0x75), secondaryFn);
    EXPECT_EQ(flagsOfKeyItself(0x73), secondaryFn);
    EXPECT_EQ(flagsOfKeyItself(0x7A), secondaryFn);
    EXPECT_EQ(flagsOfKeyItself(0x5A), secondaryFn);
}

TEST(KeyFlags, AKeyWithoutAVirtualCodeBringsNone)
{
    EXPECT_EQ(flagsOfKeyItself(0x1000 + 78), 0u);
    EXPECT_EQ(flagsOfKeyItself(-1), 0u);
}

TEST(KeyFlags, WhatHasAFlagIsAKey)
{
    for (int keycode = 0; keycode < 0x80; ++keycode) {
        EXPECT_TRUE(flagsOfKeyItself(keycode) == 0 || xKeyCode(keycode)) << keycode;
    }
}

} // namespace
} // namespace orvane

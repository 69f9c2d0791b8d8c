#include "PlatformLinux/Keys/VirtualKeyCodes.h"
#include "PlatformLinux/Keys/VirtualKeyCodeTable.h"

#include <gmock/gmock.h>

#include <array>
#include <set>

namespace orvane::tests {

namespace {

/// The key codes that shortcuts may name.
constexpr std::array namedKeys = std::to_array<int>({
    0,  11,  8,   2,  14, 3,  5,   4,   34, 38,  40, 37, 46, 45,  31,  35,  12,  15,  1,   17,  32,  9,   13,
    7,  16,  6,   29, 18, 19, 20,  21,  23, 22,  26, 28, 25, 57,  56,  63,  59,  58,  55,  54,  61,  62,  60,
    36, 42,  50,  43, 24, 27, 47,  39,  41, 44,  49, 48, 33, 30,  116, 121, 115, 119, 126, 124, 125, 123, 53,
    51, 117, 114, 74, 72, 73, 122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111, 105, 107, 113, 106, 64,
    79, 80,  90,  82, 83, 84, 85,  86,  87, 88,  89, 91, 92, 71,  65,  75,  76,  81,  78,  67,  69,
});

constexpr int xOf(int kernelKeyCode)
{
    return kernelKeyCode + xKeyCodeOffset;
}

} // namespace

TEST(VirtualKeyCodes, EveryNamedKeyHasAnXKeyCode)
{
    for (const int code : namedKeys)
        EXPECT_TRUE(xKeyCode(code)) << code;
}

TEST(VirtualKeyCodes, EveryPairIsFoundFromBothSides)
{
    for (const KeyPosition& key : keyPositions) {
        EXPECT_EQ(xKeyCode(key.virtualKeyCode), xOf(key.kernelKeyCode)) << key.virtualKeyCode;
        EXPECT_EQ(virtualKeyCode(xOf(key.kernelKeyCode)), key.virtualKeyCode) << key.kernelKeyCode;
    }
}

TEST(VirtualKeyCodes, NoTwoKeysShareACodeOnEitherSide)
{
    std::set<int> virtualCodes;
    std::set<int> kernelCodes;
    for (const KeyPosition& key : keyPositions) {
        EXPECT_TRUE(virtualCodes.insert(key.virtualKeyCode).second) << key.virtualKeyCode;
        EXPECT_TRUE(kernelCodes.insert(key.kernelKeyCode).second) << key.kernelKeyCode;
    }
}

TEST(VirtualKeyCodes, KeysAreMatchedByPosition)
{
    EXPECT_EQ(virtualKeyCode(54), 8);    // C
    EXPECT_EQ(virtualKeyCode(38), 0);    // A, which a French keyboard prints as Q
    EXPECT_EQ(virtualKeyCode(52), 6);    // Z, which a German keyboard prints as Y
    EXPECT_EQ(virtualKeyCode(49), 0x32); // left of 1
    EXPECT_EQ(virtualKeyCode(94), 0x0A); // right of left Shift, on European keyboards
    EXPECT_EQ(virtualKeyCode(xOf(KEY_INSERT)), 0x72);
    EXPECT_EQ(virtualKeyCode(xOf(KEY_NUMLOCK)), 0x47);
}

TEST(VirtualKeyCodes, ModifiersOfBothSidesAreKeptApart)
{
    EXPECT_EQ(virtualKeyCode(xOf(KEY_LEFTCTRL)), 0x3B);
    EXPECT_EQ(virtualKeyCode(xOf(KEY_RIGHTCTRL)), 0x3E);
    EXPECT_EQ(virtualKeyCode(xOf(KEY_LEFTALT)), 0x3A);
    EXPECT_EQ(virtualKeyCode(xOf(KEY_RIGHTALT)), 0x3D);
    EXPECT_EQ(virtualKeyCode(xOf(KEY_LEFTMETA)), 0x37);
    EXPECT_EQ(virtualKeyCode(xOf(KEY_RIGHTMETA)), 0x36);
    EXPECT_EQ(virtualKeyCode(xOf(KEY_LEFTSHIFT)), 0x38);
    EXPECT_EQ(virtualKeyCode(xOf(KEY_RIGHTSHIFT)), 0x3C);
}

TEST(VirtualKeyCodes, EveryXKeyCodeCanBeAnEventsKeyCode)
{
    for (const KeyPosition& key : keyPositions) {
        EXPECT_GE(xOf(key.kernelKeyCode), 8);
        EXPECT_LE(xOf(key.kernelKeyCode), 255);
    }
}

TEST(VirtualKeyCodes, KeysWithoutACodeAreAbsent)
{
    for (const int code :
         {xOf(KEY_SCROLLLOCK), xOf(KEY_SYSRQ), xOf(KEY_PAUSE), xOf(KEY_PLAYPAUSE), 0, 7, -1, 256})
        EXPECT_EQ(virtualKeyCode(code), std::nullopt) << code;
    for (const int code : {0x34, 0x7F, 0x80, -1, 0x1000})
        EXPECT_EQ(xKeyCode(code), std::nullopt) << code;
}

} // namespace orvane::tests

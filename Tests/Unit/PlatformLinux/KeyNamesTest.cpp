#include "PlatformLinux/Keys/KeyNames.h"

#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvane::tests {

TEST(KeyNamesTest, KeysAtThePlaceOfOthersHaveTheirOwnNames)
{
    EXPECT_EQ(nameOfVirtualKey(0x72), u"Insert"_qs);
    EXPECT_EQ(nameOfVirtualKey(0x47), u"Num Lock"_qs);
    for (const std::int64_t code : {0x00, 0x24, 0x7A, 0x38, 0x7F, -1}) // A, Return, F1, Shift, none
        EXPECT_EQ(nameOfVirtualKey(code), std::nullopt) << code;
}

TEST(KeyNamesTest, AKeyIsCalledWhatPeopleCallIt)
{
    EXPECT_EQ(nameOfKeysym(XKB_KEY_Print), u"Print Screen"_qs);
    EXPECT_EQ(nameOfKeysym(XKB_KEY_Pause), u"Pause"_qs);
    EXPECT_EQ(nameOfKeysym(XKB_KEY_Scroll_Lock), u"Scroll Lock"_qs);
    EXPECT_EQ(nameOfKeysym(XKB_KEY_XF86AudioPlay), u"Play"_qs);
    EXPECT_EQ(nameOfKeysym(XKB_KEY_XF86HomePage), u"Home Page"_qs);
    EXPECT_EQ(nameOfKeysym(XKB_KEY_F24), u"F24"_qs);
}

TEST(KeyNamesTest, WhatPrintsAndWhatIsAModifierHasNone)
{
    for (const std::uint32_t keysym : {XKB_KEY_NoSymbol, XKB_KEY_a, XKB_KEY_dead_acute, XKB_KEY_parenleft,
                                       XKB_KEY_Super_L, XKB_KEY_ISO_Level3_Shift, XKB_KEY_Mode_switch})
        EXPECT_EQ(nameOfKeysym(keysym), std::nullopt) << keysym;
}

} // namespace orvane::tests

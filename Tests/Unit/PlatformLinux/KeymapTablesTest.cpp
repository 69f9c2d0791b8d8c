#include "PlatformLinux/Keys/KeymapTables.h"
#include "PlatformLinux/Keys/KeysymText.h"

#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace orvane::tests {
namespace {

// Virtual key codes, by what American keyboards print.
constexpr int keyA = 0, keyQ = 12, keyOne = 18, keyEqual = 24, keyLeftBracket = 33, keyGrave = 50,
              keyTab = 48, keyKeypad7 = 89, keyKeypadEnter = 76;

KeymapTables tables(const char* layouts, const char* variants = "", std::uint32_t group = 0)
{
    xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names{"evdev", "pc105", layouts, variants, ""};
    xkb_keymap* keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    EXPECT_TRUE(keymap) << layouts;
    KeymapTables made = keymap ? KeymapTables::of(keymap, group) : KeymapTables();
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return made;
}

using Level = KeymapTables::Place::Level;

} // namespace

TEST(KeymapTables, GivesWhatKeysPrintWithoutModifiers)
{
    const auto american = tables("us");
    EXPECT_EQ(american.text(keyA), u"a"_qs);
    EXPECT_EQ(american.text(keyOne), u"1"_qs);
    EXPECT_EQ(american.text(keyKeypad7), u"7"_qs) << "and not that it goes home";
    EXPECT_EQ(american.text(keyTab), std::nullopt);
    EXPECT_EQ(american.text(keyKeypadEnter), std::nullopt);
    const auto french = tables("fr");
    EXPECT_EQ(french.text(keyOne), u"&"_qs);
    EXPECT_EQ(french.text(keyQ), u"a"_qs);
}

TEST(KeymapTables, AKeyWithoutAVirtualCodeHasANameAndAPlace)
{
    constexpr int beyond = 0x1000, keyPrint = beyond + 107, keyPlay = beyond + 172, keyUnused = beyond + 93;
    const auto american = tables("us");
    EXPECT_EQ(american.name(keyPrint), u"Print Screen"_qs);
    EXPECT_EQ(american.name(keyPlay), u"Play"_qs);
    EXPECT_EQ(american.name(keyUnused), std::nullopt);
    EXPECT_EQ(american.name(keyA), std::nullopt);
    EXPECT_EQ(american.placeOf(XKB_KEY_Print), (KeymapTables::Place{keyPrint, Level::plain}));
    EXPECT_EQ(american.placeOf(XKB_KEY_Return), (KeymapTables::Place{36, Level::plain}));
}

TEST(KeymapTables, ADeadKeyGivesItsAccent)
{
    const auto german = tables("de");
    EXPECT_EQ(german.text(keyGrave), u"^"_qs);
    EXPECT_EQ(german.text(keyEqual), u"´"_qs);
    EXPECT_EQ(tables("fr").text(keyLeftBracket), u"^"_qs);
}

TEST(KeymapTables, TheLayoutInUseCounts)
{
    EXPECT_EQ(tables("us,fr", ",", 1).text(keyQ), u"a"_qs);
    EXPECT_EQ(tables("us,fr", ",", 0).text(keyQ), u"q"_qs);
}

TEST(KeymapTables, WithoutLatinLettersTheFirstLayoutThatHasThemCounts)
{
    for (const char* script : {"ru", "gr", "il", "ara", "ua"}) {
        const std::string layouts = std::string(script) + ",fr,us";
        EXPECT_EQ(tables(layouts.c_str()).text(keyQ), u"a"_qs) << script;
    }
    EXPECT_EQ(tables("us,ru", ",", 1).text(keyQ), u"q"_qs);
    EXPECT_EQ(tables("ru").text(keyQ), u"й"_qs) << "there is no other";
}

TEST(KeymapTables, LatinLayoutsOfOtherAlphabetsAreLatin)
{
    // These layouts lack some of the 26 letters.
    EXPECT_EQ(tables("epo,us").text(keyQ), u"ŝ"_qs);
    EXPECT_EQ(tables("tr,us").text(keyQ), u"q"_qs);
    EXPECT_EQ(tables("us,fr", "dvorak,").text(keyQ), u"'"_qs);
}

TEST(KeymapTables, FindsTheKeyOfASymbol)
{
    const auto german = tables("de,us");
    EXPECT_EQ(german.placeOf(XKB_KEY_y), (KeymapTables::Place{6, Level::plain}));
    EXPECT_EQ(german.placeOf(XKB_KEY_exclam), (KeymapTables::Place{keyOne, Level::shifted}));
    EXPECT_EQ(german.placeOf(XKB_KEY_bracketleft), (KeymapTables::Place{keyLeftBracket, Level::plain}))
        << "of another layout, as the present one has it on no plain key";
    EXPECT_EQ(german.placeOf(XKB_KEY_KP_7), (KeymapTables::Place{keyKeypad7, Level::plain}));
    EXPECT_EQ(german.placeOf(XKB_KEY_Cyrillic_a), std::nullopt);
}

TEST(KeysymText, WhatPrintsNothingIsEmpty)
{
    for (const std::uint32_t keysym : {XKB_KEY_NoSymbol, XKB_KEY_Return, XKB_KEY_Escape, XKB_KEY_Delete,
                                       XKB_KEY_F1, XKB_KEY_Shift_L, XKB_KEY_Multi_key})
        EXPECT_TRUE(keysymText(keysym).isEmpty()) << keysym;
    EXPECT_EQ(keysymText(XKB_KEY_space), u" "_qs);
    EXPECT_EQ(keysymText(XKB_KEY_adiaeresis), u"ä"_qs);
    EXPECT_EQ(keysymText(XKB_KEY_dead_diaeresis), u"¨"_qs);
}

} // namespace orvane::tests

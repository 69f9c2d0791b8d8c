#include "PlatformLinux/Keys/ModifierMasks.h"
#include "Platform/HotKeys.h"

#include <gmock/gmock.h>

#include <X11/keysym.h>
#include <xcb/xproto.h>

#include <array>
#include <set>
#include <vector>

namespace orvane::tests {
namespace {

using namespace carbonModifier;

constexpr std::uint8_t firstKey = 8, keyAlt = 8, keySuper = 9, keyNum = 10, keyMeta = 11;

/// Returns masks of keys with one symbol each, and one key for each modifier.
ModifierMasks masks(std::array<std::uint8_t, 8> modifierKeys,
                    std::vector<std::uint32_t> keysyms = {XK_Alt_L, XK_Super_L, XK_Num_Lock, XK_Meta_L,
                                                          XK_Hyper_L})
{
    return ModifierMasks::fromMappings(firstKey, 1, keysyms, 1, modifierKeys);
}

} // namespace

TEST(ModifierMasks, FindsTheBitsOfTheUsualKeyboard)
{
    const auto usual = masks({0, 0, 0, keyAlt, keyNum, 0, keySuper, 0});
    EXPECT_EQ(usual.stateOf(0), 0);
    EXPECT_EQ(usual.stateOf(control | shift), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(usual.stateOf(option), XCB_MOD_MASK_1);
    EXPECT_EQ(usual.stateOf(command), XCB_MOD_MASK_4);
    EXPECT_EQ(usual.stateOf(command | option | control | shift),
              XCB_MOD_MASK_4 | XCB_MOD_MASK_1 | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT);
}

TEST(ModifierMasks, BitsThatAreNoneOfTheFourDontCount)
{
    const auto usual = masks({0, 0, 0, keyAlt, keyNum, 0, keySuper, 0});
    EXPECT_EQ(usual.stateOf(control | 0x20000 | 0x400), XCB_MOD_MASK_CONTROL);
}

TEST(ModifierMasks, TheKeyThatPeoplePressDecidesBetweenSeveralBits)
{
    // Meta is on a lower bit than Alt.
    const auto split = masks({0, 0, 0, keyMeta, keyNum, keyAlt, keySuper, 0});
    EXPECT_EQ(split.stateOf(option), XCB_MOD_MASK_3);
}

TEST(ModifierMasks, WhereThatKeyIsNoModifierAnotherOfItsKindIs)
{
    const auto metaOnly = masks({0, 0, 0, keyMeta, keyNum, 0, keySuper, 0});
    EXPECT_EQ(metaOnly.stateOf(option), XCB_MOD_MASK_1);
}

TEST(ModifierMasks, AModifierThatTheKeyboardLacksHasNoState)
{
    const auto poor = masks({0, 0, 0, keyAlt, 0, 0, 0, 0});
    EXPECT_EQ(poor.stateOf(command), std::nullopt);
    EXPECT_EQ(poor.stateOf(command | option), std::nullopt);
    EXPECT_EQ(poor.stateOf(option), XCB_MOD_MASK_1);
    EXPECT_EQ(ModifierMasks().stateOf(option), std::nullopt);
}

TEST(ModifierMasks, AHotKeyHasAStateForEachCombinationOfTheOtherModifiers)
{
    // Lock, Mod2, Mod3 and Mod5 carry none of the four.
    const auto usual = masks({0, 0, 0, keyAlt, keyNum, 0, keySuper, 0});
    const auto states = usual.withLocks(XCB_MOD_MASK_1);
    EXPECT_THAT(states, ::testing::SizeIs(16));
    EXPECT_THAT(std::set(states.begin(), states.end()), ::testing::SizeIs(16));
    constexpr int others = XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_3 | XCB_MOD_MASK_5;
    for (const std::uint16_t state : states)
        EXPECT_EQ(state & ~others, XCB_MOD_MASK_1);
    for (const int lock : {0, int{XCB_MOD_MASK_LOCK}, int{XCB_MOD_MASK_3}, int{XCB_MOD_MASK_5}, others})
        EXPECT_THAT(states, ::testing::Contains(XCB_MOD_MASK_1 | lock));
}

TEST(ModifierMasks, AHotKeyIsFoundByTheFourModifiersAlone)
{
    const auto usual = masks({0, 0, 0, keyAlt, keyNum, 0, keySuper, 0});
    EXPECT_EQ(usual.withoutLocks(XCB_MOD_MASK_1 | XCB_MOD_MASK_2 | XCB_MOD_MASK_3 | XCB_MOD_MASK_5 |
                                 XCB_MOD_MASK_LOCK | 0x2000),
              XCB_MOD_MASK_1)
        << "the bits of the group aren't modifiers";
    constexpr int ours = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
    EXPECT_EQ(usual.withoutLocks(ours), ours);
}

TEST(ModifierMasks, ABitOfAModifierThatTheKeyboardLacksDoesntCount)
{
    const auto poor = masks({0, 0, 0, keyAlt, 0, 0, 0, 0});
    EXPECT_THAT(poor.withLocks(0), ::testing::SizeIs(32)) << "Lock and Mod2 to Mod5";
    EXPECT_EQ(poor.withoutLocks(XCB_MOD_MASK_4 | XCB_MOD_MASK_1), XCB_MOD_MASK_1);
}

TEST(ModifierMasks, BrokenMappingsGiveNothing)
{
    EXPECT_EQ(ModifierMasks::fromMappings(8, 0, {}, 0, {}), ModifierMasks());
    const std::vector<std::uint8_t> tooFew{keyAlt, keyAlt};
    const std::vector<std::uint32_t> keysyms{XK_Alt_L};
    EXPECT_EQ(ModifierMasks::fromMappings(8, 1, keysyms, 4, tooFew), ModifierMasks());
}

} // namespace orvane::tests

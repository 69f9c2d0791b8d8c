#include "PlatformLinux/Keys/DeliveredModifiers.h"

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

using namespace eventFlag;

TEST(DeliveredModifiersTest, UnchangedFlagsAreDeliveredAsTheyCameInTerminalsToo)
{
    const DeliveredModifiers delivered;
    for (const CommandKeys keys : {CommandKeys::control, CommandKeys::controlShift}) {
        EXPECT_EQ(delivered.of({command | option, command | option}, keys), command | option);
        EXPECT_EQ(delivered.of({control, control}, keys), control);
    }
}

TEST(DeliveredModifiersTest, ARewrittenCommandIsTheCommandModifierOfTheApplication)
{
    const DeliveredModifiers delivered;
    EXPECT_EQ(delivered.of({control, command}, CommandKeys::control), control);
    EXPECT_EQ(delivered.of({control, command}, CommandKeys::controlShift), control | shift);
    EXPECT_EQ(delivered.of({control | option, command | option}, CommandKeys::control), control | option);
}

TEST(DeliveredModifiersTest, UnderAKeyThatActsAsSuperARewrittenCommandIsSuper)
{
    DeliveredModifiers delivered;
    delivered.noteModifier({control, command});
    EXPECT_EQ(delivered.of({control, command}, CommandKeys::controlShift), command);
    EXPECT_EQ(delivered.of({control | option, command | option}, CommandKeys::control), command | option);
}

TEST(DeliveredModifiersTest, AnUnchangedModifierEndsTheActing)
{
    DeliveredModifiers delivered;
    delivered.noteModifier({control, command});
    delivered.noteModifier({control, control});
    EXPECT_FALSE(delivered.acting());
    EXPECT_EQ(delivered.of({control, command}, CommandKeys::control), control);
}

TEST(DeliveredModifiersTest, AKeyThatActsAsControlLeavesCommandToTheApplication)
{
    DeliveredModifiers delivered;
    delivered.noteModifier({command, control});
    EXPECT_EQ(delivered.of({command, control}, CommandKeys::controlShift), control);
    EXPECT_EQ(delivered.of({option, command}, CommandKeys::controlShift), control | shift);
}

TEST(DeliveredModifiersTest, APostedCommandIsNeverSuper)
{
    EXPECT_EQ(DeliveredModifiers::ofPosted(command, CommandKeys::control), control);
    EXPECT_EQ(DeliveredModifiers::ofPosted(command | option, CommandKeys::controlShift),
              control | shift | option);
    EXPECT_EQ(DeliveredModifiers::ofPosted(control | alphaShift, CommandKeys::controlShift), control);
}

} // namespace
} // namespace orvane::tests

#include "PlatformLinux/Pasteboard/PasteboardState.h"

#include <gtest/gtest.h>

namespace orvane::tests {

TEST(PasteboardState, AClaimCountsOnceHoweverOftenTheServerIsHeard)
{
    PasteboardState state;
    EXPECT_EQ(state.claim(), 1);
    EXPECT_EQ(state.claim(), 2);
    state.claimTold();
    state.claimTold();
    EXPECT_EQ(state.changeCount(), 2);
}

TEST(PasteboardState, ACopyThatAClaimOnItsWayReplacesDoesNotCount)
{
    PasteboardState state;
    state.claim();
    state.add(pasteboardType::string, "own");
    EXPECT_FALSE(state.foreignCopyTold());
    EXPECT_EQ(state.changeCount(), 1);
    ASSERT_TRUE(state.ownContents());
    EXPECT_EQ(state.ownContents()->stringForType(pasteboardType::string), QStringLiteral("own"));
    state.claimTold();
    EXPECT_TRUE(state.foreignCopyTold());
    EXPECT_EQ(state.changeCount(), 2);
    EXPECT_FALSE(state.ownContents());
}

TEST(PasteboardState, EachClaimOnItsWayIsWaitedFor)
{
    PasteboardState state;
    state.claim();
    state.claim();
    state.claimTold();
    EXPECT_FALSE(state.foreignCopyTold()) << "it came between the two";
    state.claimTold();
    EXPECT_TRUE(state.foreignCopyTold());
}

TEST(PasteboardState, NothingIsAddedToTheCopyOfAnother)
{
    PasteboardState state;
    EXPECT_FALSE(state.add(pasteboardType::string, "text"));
    state.claim();
    state.claimTold();
    EXPECT_TRUE(state.add(pasteboardType::string, "text"));
    state.foreignCopyTold();
    EXPECT_FALSE(state.add(pasteboardType::string, "text"));
    EXPECT_FALSE(state.addFiles({QUrl(QStringLiteral("file:///a"))}));
}

TEST(PasteboardState, TheEndOfAnEarlierTurnDoesNotFinishALaterClaim)
{
    PasteboardState state;
    state.claim();
    const auto first = state.generation();
    state.claim();
    state.finishWriting(first);
    EXPECT_TRUE(state.isBeingWritten());
    state.finishWriting(state.generation());
    EXPECT_FALSE(state.isBeingWritten());
}

} // namespace orvane::tests

// Ctrl Shortcuts with two keyboards, which count as one.
#include "Desktop/KeySwapFixture.h"

namespace orvane::tests {
namespace {

class TwoKeyboardsDesktopTest : public KeySwapFixture {
protected:
    Hardware m_second{"testkbd2"};
};

} // namespace

TEST_F(TwoKeyboardsDesktopTest, AChordMayBePressedAcrossBoth)
{
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_hardware.tap("a");
    m_second.tap("b");
    ASSERT_TRUE(peer.tells(QStringLiteral("text:ab")));
    m_hardware.press("Super_L");
    m_second.tap("a");
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:ab")));
    m_hardware.release("Super_L");
    m_second.press("Shift_L");
    m_hardware.tap("c");
    m_second.release("Shift_L");
    EXPECT_TRUE(peer.tells(QStringLiteral("text:C")));
}

TEST_F(TwoKeyboardsDesktopTest, AKeyHeldOnBothComesUpWithTheLastOfThem)
{
    start("commonShortcuts");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_hardware.press("Shift_L");
    m_second.press("Shift_L");
    m_hardware.release("Shift_L");
    m_hardware.tap("a");
    EXPECT_TRUE(peer.tells(QStringLiteral("text:A")));
    m_second.release("Shift_L");
    m_hardware.tap("a");
    EXPECT_TRUE(peer.tells(QStringLiteral("text:Aa")));
}

TEST_F(TwoKeyboardsDesktopTest, OneThatIsPulledOutTakesItsKeysAlongAndTheOtherTypesOn)
{
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    OtherClient other;
    m_second.press("Shift_L");
    m_hardware.tap("a");
    ASSERT_TRUE(peer.tells(QStringLiteral("text:A")));
    other.setDeviceEnabled("testkbd2", false);
    ASSERT_TRUE(eventually(10s, [&] { return other.keysDown().isEmpty(); }));
    m_hardware.tap("b");
    EXPECT_TRUE(peer.tells(QStringLiteral("text:Ab")));
    chord("Super_L", "a");
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:Ab")));
    other.setDeviceEnabled("testkbd2", true);
    EXPECT_TRUE(eventually(10s, [&] { return other.isFloating("testkbd2"); }));
    m_second.release("Shift_L");
}

TEST_F(TwoKeyboardsDesktopTest, TheOneThatAnotherProgramHasIsLeftToIt)
{
    OtherClient rival;
    ASSERT_TRUE(rival.grabDevice("testkbd2"));
    start("fullSwap");
    EXPECT_TRUE(m_program->log().join(u'\n').contains(
        QStringLiteral("The keyboard \"testkbd2\" is left alone: another program has grabbed it")));
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_second.tap("x");
    m_hardware.tap("a");
    ASSERT_TRUE(peer.tells(QStringLiteral("text:a")));
    chord("Super_L", "a");
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:a")));
}

TEST_F(TwoKeyboardsDesktopTest, TheOneThatAnotherProgramHadIsTappedWithItsNextKey)
{
    auto rival = std::make_unique<OtherClient>();
    ASSERT_TRUE(rival->grabDevice("testkbd2"));
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_second.tap("x"); // in vain: the other program has it still
    rival.reset();
    OtherClient other;
    ASSERT_TRUE(eventually(10s, [&] { return !other.isFloating("testkbd2"); }));
    m_hardware.tap("a");
    ASSERT_TRUE(peer.tells(QStringLiteral("text:a")));
    m_second.press("Super_L");
    EXPECT_TRUE(eventually(10s, [&] { return other.isFloating("testkbd2"); }));
    m_second.tap("a");
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:a"))) << "the modifier that was held first counts";
    m_second.release("Super_L");
}

TEST_F(TwoKeyboardsDesktopTest, WhereAnotherProgramHasBothATapComesOnceTheyAreFree)
{
    auto rival = std::make_unique<OtherClient>();
    ASSERT_TRUE(rival->grabDevice("testkbd"));
    ASSERT_TRUE(rival->grabDevice("testkbd2"));
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    rival.reset();
    OtherClient other;
    ASSERT_TRUE(eventually(10s, [&] { return other.isFloating("testkbd"); }));
    m_hardware.tap("a");
    ASSERT_TRUE(peer.tells(QStringLiteral("text:a")));
    chord("Super_L", "a");
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:a")));
}

} // namespace orvane::tests

// The history's panel with two monitors side by side: 1440 by 900, and 1280 by 1000 to the right of it.
#include "Desktop/Support/ClipboardFixture.h"
#include "Desktop/Support/Peer.h"
#include "Support/Eventually.h"

namespace orvane::tests {
namespace {

constexpr int margin = 8;
constexpr QRect left(0, 0, 1440, 900);
constexpr QRect right(1440, 0, 1280, 1000);

class ClipboardTwoMonitorsTest : public ClipboardFixture {
protected:
    /// Returns where the panel opens when the pointer is there.
    QRect frameAt(QPoint pointer)
    {
        m_hardware.movePointer(pointer);
        EXPECT_TRUE(openPanel());
        return panelFrame().value_or(QRect());
    }
    /// Returns the part of a monitor that panels leave free, without the margin.
    [[nodiscard]] QRect room(QRect monitor) const
    {
        return m_windows.workArea(monitor).adjusted(margin, margin, -margin, -margin);
    }
};

} // namespace

TEST_F(ClipboardTwoMonitorsTest, ItOpensAtThePointerOnTheFirst)
{
    startHistory();
    EXPECT_EQ(frameAt({500, 300}).topLeft(), QPoint(500, 300));
}

TEST_F(ClipboardTwoMonitorsTest, ItOpensAtThePointerOnTheSecond)
{
    startHistory();
    EXPECT_EQ(frameAt({1700, 300}).topLeft(), QPoint(1700, 300));
}

TEST_F(ClipboardTwoMonitorsTest, AtTheBorderBetweenThemItStaysOnThePointersMonitor)
{
    startHistory();
    const QRect frame = frameAt({1430, 300});
    EXPECT_EQ(frame.right(), room(left).right());
    EXPECT_EQ(frame.top(), 300);
}

TEST_F(ClipboardTwoMonitorsTest, BehindTheBorderItKeepsItsDistance)
{
    startHistory();
    EXPECT_EQ(frameAt({1441, 300}).left(), room(right).left());
}

TEST_F(ClipboardTwoMonitorsTest, InTheSecondsLastCornerItIsPushedUpAndLeft)
{
    startHistory();
    const QRect frame = frameAt({2719, 999});
    EXPECT_EQ(frame.bottomRight(), room(right).bottomRight());
}

TEST_F(ClipboardTwoMonitorsTest, ChoosingOnTheSecondWorks)
{
    startHistory();
    copy({QStringLiteral("alpha"), QStringLiteral("beta")});
    (void)frameAt({1700, 300});
    ASSERT_TRUE(clickOn(QStringLiteral("alpha"), QStringLiteral("list item")));
    EXPECT_TRUE(panelCloses());
    EXPECT_TRUE(eventually(10s, [] { return clipboardText() == QStringLiteral("alpha"); }));
}

} // namespace orvane::tests

// Snapping while monitors come and go and programs hang, and together with the other features.
#include "Desktop/Support/Monitors.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/SnapZonesFixture.h"
#include "Support/Eventually.h"

#include <QElapsedTimer>

#include <csignal>

namespace orvane::tests {
namespace {

/// Stops a program until the object's end, so that it doesn't answer.
class Hung {
public:
    explicit Hung(const Peer& peer) : m_pid(static_cast<pid_t>(peer.pid())) { kill(m_pid, SIGSTOP); }
    ~Hung() { kill(m_pid, SIGCONT); }
    Hung(const Hung&) = delete;
    Hung& operator=(const Hung&) = delete;

private:
    pid_t m_pid;
};

class SnapFaultsDesktopTest : public SnapZonesDesktopTest {
protected:
    void type(const char* letters)
    {
        for (const char* letter = letters; *letter; ++letter) {
            const char name[2]{*letter, 0};
            m_hardware.tap(name);
        }
    }
    /// Returns how long the main thread takes to answer.
    std::chrono::milliseconds answerTime()
    {
        QElapsedTimer clock;
        clock.start();
        settle();
        return std::chrono::milliseconds(clock.elapsed());
    }
};

} // namespace

TEST_F(SnapFaultsDesktopTest, AMonitorUnpluggedInTheMiddleOfADragIsSurvived)
{
    SecondMonitor monitor;
    startSnapping();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    {
        WindowDrag hand = drag(target);
        ASSERT_TRUE(hand.begin());
        const Look before = look(target);
        ASSERT_TRUE(hand.moveTo({second.right(), second.center().y()}));
        ASSERT_TRUE(previewCovers(placeOf(Zone::rightHalf, second), before, target));
        monitor.unplug();
        hand.release();
        EXPECT_TRUE(eventually(5s, [&] { return shown().isEmpty(); })) << "the preview stays";
    }
    ASSERT_TRUE(program().isRunning());
    ASSERT_TRUE(eventually(5s, [&] { return primary.intersects(m_windows.frame(target.window)); }));
    pressShortcut(Zone::leftHalf);
    EXPECT_TRUE(comesToFill(target, placeOf(Zone::leftHalf, m_windows.workArea(primary))));

    // The monitor is back, and a drag goes there as before.
    monitor.plug(SecondMonitor::Side::right);
    WindowDrag hand = drag(target);
    ASSERT_TRUE(hand.begin());
    ASSERT_TRUE(hand.moveTo({second.right(), second.center().y()}));
    hand.release();
    EXPECT_TRUE(comesToFill(target, placeOf(Zone::rightHalf, second)));
}

TEST_F(SnapFaultsDesktopTest, AHungWindowCostsTheMainThreadNoMoreThanTheTimeOutsAllow)
{
    startSnapping();
    const Target target = open(WindowKind::gtkHeaderBar, initial);
    ASSERT_NE(target.window, 0u);
    constexpr auto timeOuts = 3 * 500ms;
    {
        const Hung hung(*target.peer);
        pressShortcut(Zone::leftHalf);
        EXPECT_LT(answerTime(), timeOuts);
        pressLayoutsShortcut();
        EXPECT_LT(answerTime(), timeOuts);
        EXPECT_TRUE(eventually(5s, [&] { return !shown().isEmpty(); }));
        pressLayoutsShortcut();
        EXPECT_TRUE(eventually(5s, [&] { return shown().isEmpty(); }));
    }
    pressShortcut(Zone::rightHalf);
    EXPECT_TRUE(comesToFill(target, placeOf(Zone::rightHalf, m_windows.workArea(primary))));
}

TEST_F(SnapFaultsDesktopTest, KeysArriveWhileTheWindowThatIsSnappedHangs)
{
    startSnapping({.others = {QStringLiteral("keyswap")}});
    Peer edit(Peer::lineEdit());
    ASSERT_TRUE(edit.tells(QStringLiteral("focused")));
    const Target target = open(WindowKind::qt, {600, 400, 420, 260});
    ASSERT_NE(target.window, 0u);
    {
        const Hung hung(*target.peer);
        pressShortcut(Zone::rightHalf);
        type("xyz");
        EXPECT_TRUE(comesToFill(target, placeOf(Zone::rightHalf, m_windows.workArea(primary))))
            << "the window manager needs no answer of it";
        ASSERT_TRUE(OtherClient().activate("Line edit"));
        const WindowId editor = m_windows.find(QStringLiteral("Line edit")).value_or(0);
        ASSERT_TRUE(eventually(5s, [&] { return m_windows.active() == editor; }));
        type("abc");
        EXPECT_TRUE(edit.tells(QStringLiteral("text:abc"), 5s));
        chord({"Control_L", "a"});
        EXPECT_TRUE(edit.tells(QStringLiteral("marked:abc"), 5s));
    }
    EXPECT_TRUE(target.peer->tells(QStringLiteral("text:xyz"))) << "the keys of the hung window are lost";
    EXPECT_FALSE(program().log().join(u'\n').contains(QStringLiteral("Re-enabled a disabled event tap")));
}

TEST_F(SnapFaultsDesktopTest, WithEveryCapabilityOnKeysClipboardSnappingAndAwakeWork)
{
    startSnapping({.others = {QStringLiteral("keyswap"), QStringLiteral("awake"),
                              QStringLiteral("plainpaste"), QStringLiteral("clipboardhistory")},
                   .shortcuts = {{QStringLiteral("awake.toggle"), {49, 0x1000 | 0x800}}}});
    chord({"Control_L", "Alt_L", "space"});
    EXPECT_TRUE(becomesAwake());

    Peer edit(Peer::lineEdit());
    ASSERT_TRUE(edit.tells(QStringLiteral("focused")));
    type("word");
    ASSERT_TRUE(edit.tells(QStringLiteral("text:word")));
    chord({"Control_L", "a"});
    ASSERT_TRUE(edit.tells(QStringLiteral("marked:word")));
    chord({"Control_L", "c"});
    EXPECT_TRUE(eventually(5s, [] { return clipboardText() == QStringLiteral("word"); }));
    m_hardware.tap("End");
    chord({"Control_L", "v"});
    EXPECT_TRUE(edit.tells(QStringLiteral("text:wordword")));

    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    pressShortcut(Zone::leftHalf);
    EXPECT_TRUE(comesToFill(target, placeOf(Zone::leftHalf, m_windows.workArea(primary))));
    WindowDrag hand = drag(target);
    ASSERT_TRUE(hand.begin());
    ASSERT_TRUE(hand.moveTo({second.right(), second.center().y()}));
    hand.release();
    EXPECT_TRUE(comesToFill(target, placeOf(Zone::rightHalf, second)));
    chord({"Control_L", "Alt_L", "space"});
    EXPECT_TRUE(becomesAsleep());
}

} // namespace orvane::tests

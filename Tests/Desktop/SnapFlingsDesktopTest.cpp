// Windows that are flung to an edge: the button is released before anybody has had the time to look.
#include "Desktop/Support/SnapZonesFixture.h"
#include "Desktop/Support/WindowManager.h"
#include "Support/Eventually.h"

#include <QProcess>
#include <QTimer>

#include <csignal>
#include <thread>
#include <vector>

namespace orvane::tests {
namespace {

/// Keeps every core busy until its end.
class BusyCores {
public:
    BusyCores()
    {
        for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) {
            m_burners.push_back(std::make_unique<QProcess>());
            m_burners.back()->start(QStringLiteral("sh"),
                                    {QStringLiteral("-c"), QStringLiteral("while :; do :; done")});
            EXPECT_TRUE(m_burners.back()->waitForStarted());
        }
    }
    ~BusyCores()
    {
        for (const auto& burner : m_burners) {
            burner->kill();
            burner->waitForFinished();
        }
    }
    BusyCores(const BusyCores&) = delete;
    BusyCores& operator=(const BusyCores&) = delete;

private:
    std::vector<std::unique_ptr<QProcess>> m_burners;
};

/// Holds a program for a time that begins now or soon: none of its threads runs.
class Held {
public:
    Held(qint64 pid, std::chrono::milliseconds time, std::chrono::milliseconds beginning = 0ms)
        : m_pid(static_cast<pid_t>(pid))
    {
        if (beginning == 0ms)
            kill(m_pid, SIGSTOP);
        else
            after(m_begin, beginning, SIGSTOP);
        after(m_end, beginning + time, SIGCONT);
    }
    ~Held() { kill(m_pid, SIGCONT); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    void after(QTimer& timer, std::chrono::milliseconds time, int signal) const
    {
        timer.setTimerType(Qt::PreciseTimer);
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, [pid = m_pid, signal] { kill(pid, signal); });
        timer.start(time);
    }

    pid_t m_pid;
    QTimer m_begin;
    QTimer m_end;
};

class SnapFlingsDesktopTest : public SnapZonesDesktopTest {
protected:
    static constexpr int rounds = 4;
    static constexpr int mostRounds = 30;
    /// A window manager that comes later after a release gets no answer from the program.
    static constexpr std::chrono::milliseconds windowManagersTime{300};
    static constexpr Gaps gaps{.outer = 20, .inner = 12};
    static constexpr QPoint leftEdge{0, 450};
    static constexpr QPoint middle{720, 500};

    /// With gaps, so that a place is the program's and not one of the window manager's own.
    void startWithGaps()
    {
        startSnapping({.settings = {{QStringLiteral("outerGap"), gaps.outer},
                                    {QStringLiteral("innerGap"), gaps.inner}}});
    }
    [[nodiscard]] QRectF placeIn(Zone zone) const { return placeOf(zone, m_windows.workArea(primary), gaps); }
    void putInTheMiddle(const Target& target)
    {
        ASSERT_TRUE(eventually(5s, [&] { return m_windows.active() == target.window; }));
        settle();
        pressShortcut(Zone::center);
        ASSERT_TRUE(comesToFill(target, placeIn(Zone::center)));
    }
    QElapsedTimer fling(const Target& target, QPoint place, const WindowDrag::Fling& how = {})
    {
        return drag(target).fling(place, how);
    }
    /// True if the window manager moves the window. On a busy machine it may get to the press when all is
    /// over, and takes a drag for a click then.
    bool moves(const Target& target, const QRect& before)
    {
        return eventually(2s, [&] { return m_windows.frame(target.window) != before; });
    }
    /// Flings a window into a zone. False when the window manager hasn't moved it, or later than the program
    /// waits for that after the release, and the program hasn't snapped it: nothing is known then.
    bool flingDecides(const Target& target, QPoint place, Zone zone, const WindowDrag::Fling& how = {})
    {
        const QRect before = m_windows.frame(target.window);
        const QElapsedTimer sinceRelease = fling(target, place, how);
        const bool wasInTime = moves(target, before) && sinceRelease.elapsed() < windowManagersTime.count();
        const testing::AssertionResult snaps = comesToFill(target, placeIn(zone));
        if (!snaps && !wasInTime)
            return false;
        EXPECT_TRUE(snaps) << nameOf(zone).toStdString();
        return true;
    }
    /// Flings a window to the left edge again and again; each time it has to be snapped.
    void expectSnaps(const WindowDrag::Fling& how = {})
    {
        const Target target = open(WindowKind::qt, initial);
        ASSERT_NE(target.window, 0u);
        int decided = 0;
        for (int round = 0; round < mostRounds && decided < rounds; ++round) {
            SCOPED_TRACE(round);
            putInTheMiddle(target);
            decided += flingDecides(target, leftEdge, Zone::leftHalf, how) ? 1 : 0;
        }
        EXPECT_EQ(decided, rounds) << "the window manager is too slow to tell";
    }
};

} // namespace

TEST_F(SnapFlingsDesktopTest, ADragThatEscapeHasCancelledLeavesTheWindowWhereItWas)
{
    startWithGaps();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    putInTheMiddle(target);
    const QRect before = m_windows.frame(target.window);
    {
        WindowDrag dragged = drag(target);
        ASSERT_TRUE(dragged.begin());
        ASSERT_TRUE(dragged.moveTo(leftEdge));
        ASSERT_TRUE(eventually(10s, [&] { return !shown().isEmpty(); })) << "the preview";
        m_hardware.tap("Escape");
        ASSERT_TRUE(eventually(10s, [&] { return m_windows.frame(target.window) == before; }));
        EXPECT_TRUE(eventually(10s, [&] { return shown().isEmpty(); }));
        dragged.movePointer(leftEdge + QPoint(0, 10));
        dragged.release();
    }
    settle();
    ASSERT_TRUE(settleWindowManager());
    EXPECT_EQ(m_windows.frame(target.window), before);
    EXPECT_TRUE(nothingIsShown());

    // On marco the first drag after an Escape moves nothing, and the one after that does.
    const auto another = [&] {
        std::unique_ptr<WindowDrag> next(new WindowDrag(drag(target)));
        return next->begin() && next->moveTo(leftEdge) ? std::move(next) : nullptr;
    };
    auto next = another();
    if (!next)
        next = another();
    ASSERT_TRUE(next) << "the window manager doesn't move the window";
    ASSERT_TRUE(eventually(10s, [&] { return !shown().isEmpty(); }));
    next->release();
    EXPECT_TRUE(comesToFill(target, placeIn(Zone::leftHalf))) << "the next drag is one again";
}

TEST_F(SnapFlingsDesktopTest, AWindowFlungToAnEdgeIsSnapped)
{
    startWithGaps();
    expectSnaps();
}

TEST_F(SnapFlingsDesktopTest, AWindowFlungToAnEdgeIsSnappedThoughAllCoresAreBusy)
{
    startWithGaps();
    const BusyCores busy;
    expectSnaps();
}

TEST_F(SnapFlingsDesktopTest, AWindowIsSnappedThoughTheProgramWasHeldFromThePress)
{
    startWithGaps();
    std::unique_ptr<Held> held;
    expectSnaps({.pressed = [&] { held = std::make_unique<Held>(program().pid(), 55ms); }});
}

TEST_F(SnapFlingsDesktopTest, AWindowIsSnappedThoughTheProgramWasHeldBeyondTheRelease)
{
    startWithGaps();
    std::unique_ptr<Held> held;
    expectSnaps({.pressed = [&] { held = std::make_unique<Held>(program().pid(), 150ms); }});
}

TEST_F(SnapFlingsDesktopTest, TheReleaseCountsAndNotWhereThePointerGoesAfterwards)
{
    startWithGaps();
    std::unique_ptr<Held> held;
    expectSnaps(
        {.goesOnTo = middle, .pressed = [&] { held = std::make_unique<Held>(program().pid(), 100ms); }});
}

TEST_F(SnapFlingsDesktopTest, APointerThatGoesToAnEdgeAfterTheReleaseSnapsNothing)
{
    startWithGaps();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    std::unique_ptr<Held> held;
    int decided = 0;
    for (int round = 0; round < mostRounds && decided < rounds; ++round) {
        putInTheMiddle(target);
        const QRect before = m_windows.frame(target.window);
        // Held from the middle of the drag, it knows of motions that it hasn't read.
        fling(target, WindowDrag::handle(m_windows, target.window) + QPoint(-100, 60),
              {.goesOnTo = leftEdge,
               .pressed = [&] { held = std::make_unique<Held>(program().pid(), 100ms, 30ms); }});
        if (!moves(target, before))
            continue;
        ++decided;
        settle();
        ASSERT_TRUE(settleWindowManager());
        EXPECT_FALSE(fills(m_windows.frame(target.window), placeIn(Zone::leftHalf))) << "in round " << round;
        EXPECT_TRUE(nothingIsShownSoon());
    }
    EXPECT_EQ(decided, rounds) << "the window manager is too slow to tell";
}

TEST_F(SnapFlingsDesktopTest, TheDraggedWindowIsSnappedAndNotTheOneThatHadTheFocus)
{
    startWithGaps();
    const Target first = open(WindowKind::qt, {100, 320, 300, 200});
    const Target other = open(WindowKind::qt, {900, 320, 300, 200});
    ASSERT_TRUE(first.window != 0 && other.window != 0);
    const BusyCores busy;
    const auto flingBehind = [&](const Target& behind, const Target& inFront, QPoint edge, Zone zone) {
        EXPECT_TRUE(eventually(5s, [&] { return m_windows.active() == inFront.window; }));
        settle();
        const QRect place = m_windows.frame(inFront.window);
        const bool isDecided = flingDecides(behind, edge, zone);
        EXPECT_EQ(m_windows.frame(inFront.window), place) << nameOf(zone).toStdString();
        return isDecided;
    };
    // In turn, as the one that was flung is in front then; each goes to the other side the next time.
    int decided = 0;
    for (int round = 0; round < mostRounds && decided < 2; ++round) {
        SCOPED_TRACE(round);
        const bool isFirst = round % 2 == 0, goesLeft = isFirst == (round % 4 < 2);
        decided += flingBehind(isFirst ? first : other, isFirst ? other : first,
                               goesLeft ? leftEdge : QPoint(primary.right(), 450),
                               goesLeft ? Zone::leftHalf : Zone::rightHalf)
                       ? 1
                       : 0;
    }
    EXPECT_EQ(decided, 2) << "the window manager is too slow to tell";
}

} // namespace orvane::tests

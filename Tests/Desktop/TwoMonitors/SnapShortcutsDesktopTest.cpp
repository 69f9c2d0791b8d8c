// Shortcuts and the layout panel, on the window's monitor.
#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/Monitors.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/SnapZonesFixture.h"
#include "Support/Eventually.h"

namespace orvane::tests {
namespace {

const QString openOrvane = QStringLiteral("app.openOrvane");
constexpr StoredShortcut controlOptionK{40, 0x1000 | 0x800};

class SnapShortcutsDesktopTest : public SnapZonesDesktopTest {
protected:
    void expectShortcutsToSnap(const Target& target, QRect monitor)
    {
        for (const Zone zone : allZones) {
            pressShortcut(zone);
            EXPECT_TRUE(comesToFill(target, placeOf(zone, m_windows.workArea(monitor))))
                << nameOf(zone).toStdString();
        }
    }
    bool layoutsAreShown()
    {
        return eventually(5s, [&] { return !shown().isEmpty(); });
    }
    bool layoutsGo()
    {
        return eventually(5s, [&] { return shown().isEmpty(); });
    }
    static void setState(const Target& target, const char* change)
    {
        const QString id = QStringLiteral("0x%1").arg(target.window, 0, 16);
        ASSERT_EQ(QProcess::execute(QStringLiteral("wmctrl"), {QStringLiteral("-i"), QStringLiteral("-r"), id,
                                                               QStringLiteral("-b"), QLatin1String(change)}),
                  0);
    }
};

class SnapShortcutsOfAKind : public SnapShortcutsDesktopTest,
                             public testing::WithParamInterface<WindowKind> {};

} // namespace

TEST_P(SnapShortcutsOfAKind, SnapTheFocusedWindowOnItsOwnMonitor)
{
    startSnapping();
    const Target first = open(GetParam(), initial);
    ASSERT_NE(first.window, 0u);
    expectShortcutsToSnap(first, primary);
    const Target other = open(GetParam(), initial.translated(second.topLeft()));
    ASSERT_NE(other.window, 0u);
    ASSERT_TRUE(second.contains(m_windows.frame(other.window))) << "it was put elsewhere";
    expectShortcutsToSnap(other, second);
    EXPECT_TRUE(comesToFill(first, placeOf(Zone::center, m_windows.workArea(primary))));
}

INSTANTIATE_TEST_SUITE_P(Windows, SnapShortcutsOfAKind,
                         testing::Values(WindowKind::qt, WindowKind::gtkHeaderBar, WindowKind::terminal));

TEST_F(SnapShortcutsDesktopTest, WorkWithOneMonitorAboveTheOtherAndWithOtherSizes)
{
    SecondMonitor monitor;
    monitor.plug(SecondMonitor::Side::above);
    startSnapping();
    const QRect lower{0, 1000, 1440, 900}, upper{0, 0, 1280, 1000};
    const Target below = open(WindowKind::qt, initial.translated(lower.topLeft()));
    ASSERT_NE(below.window, 0u);
    expectShortcutsToSnap(below, lower);
    const Target above = open(WindowKind::qt, initial);
    ASSERT_NE(above.window, 0u);
    expectShortcutsToSnap(above, upper);

    monitor.plug(SecondMonitor::Side::right, "1024x768");
    const QRect small{1440, 0, 1024, 768};
    ASSERT_TRUE(eventually(10s, [&] { return m_windows.workArea(primary).top() > 0; }));
    const Target right = open(WindowKind::qt, {1600, 200, 400, 300});
    ASSERT_NE(right.window, 0u);
    expectShortcutsToSnap(right, small);
}

TEST_F(SnapShortcutsDesktopTest, AMaximizedWindowIsRestoredFirst)
{
    startSnapping();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    setState(target, "add,maximized_vert,maximized_horz");
    ASSERT_TRUE(
        eventually(5s, [&] { return m_windows.hasState(target.window, "_NET_WM_STATE_MAXIMIZED_HORZ"); }));
    pressShortcut(Zone::rightHalf);
    EXPECT_TRUE(comesToFill(target, placeOf(Zone::rightHalf, m_windows.workArea(primary))));
    EXPECT_TRUE(eventually(5s, [&] {
        return !m_windows.hasState(target.window, "_NET_WM_STATE_MAXIMIZED_HORZ") &&
               !m_windows.hasState(target.window, "_NET_WM_STATE_MAXIMIZED_VERT");
    }));
}

TEST_F(SnapShortcutsDesktopTest, AFullScreenWindowIsLeftAlone)
{
    startSnapping();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    setState(target, "add,fullscreen");
    ASSERT_TRUE(eventually(5s, [&] { return m_windows.geometry(target.window) == primary; }));
    pressShortcut(Zone::leftHalf);
    settle();
    EXPECT_EQ(m_windows.geometry(target.window), primary);
    setState(target, "remove,fullscreen");
    ASSERT_TRUE(eventually(5s, [&] { return m_windows.geometry(target.window) != primary; }));
    pressShortcut(Zone::leftHalf);
    EXPECT_TRUE(comesToFill(target, placeOf(Zone::leftHalf, m_windows.workArea(primary))));
}

TEST_F(SnapShortcutsDesktopTest, WithNoWindowInFrontNothingHappens)
{
    startSnapping();
    const Target hidden = open(WindowKind::qt, initial);
    ASSERT_NE(hidden.window, 0u);
    m_windows.iconify(hidden.window);
    ASSERT_TRUE(eventually(5s, [&] {
        return m_windows.hasState(hidden.window, "_NET_WM_STATE_HIDDEN") &&
               m_windows.active() != hidden.window;
    }));
    const QList<QRect> before = m_windows.frames();
    ASSERT_TRUE(before.contains(m_windows.frame(hidden.window)));
    pressShortcut(Zone::leftHalf);
    settle();
    EXPECT_EQ(m_windows.frames(), before);
    EXPECT_TRUE(program().isRunning());
    EXPECT_TRUE(nothingIsShown());

    // The same shortcut works as soon as the window is in front again.
    const QString id = QStringLiteral("0x%1").arg(hidden.window, 0, 16);
    ASSERT_EQ(QProcess::execute(QStringLiteral("wmctrl"), {QStringLiteral("-i"), QStringLiteral("-a"), id}),
              0);
    ASSERT_TRUE(eventually(5s, [&] { return m_windows.active() == hidden.window; }));
    pressShortcut(Zone::leftHalf);
    EXPECT_TRUE(comesToFill(hidden, placeOf(Zone::leftHalf, m_windows.workArea(primary))));
}

TEST_F(SnapShortcutsDesktopTest, TheLayoutsShortcutTogglesThePanel)
{
    startSnapping();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    const QRect frame = m_windows.frame(target.window);
    for (int round = 0; round < 2; ++round) {
        pressLayoutsShortcut();
        ASSERT_TRUE(layoutsAreShown());
        EXPECT_EQ(m_windows.active(), target.window) << "it takes the focus";
        pressLayoutsShortcut();
        EXPECT_TRUE(layoutsGo());
    }
    EXPECT_EQ(m_windows.frame(target.window), frame);
}

TEST_F(SnapShortcutsDesktopTest, AClickOnALayoutSnapsTheWindowThatWasInFront)
{
    startSnapping();
    const Target target = open(WindowKind::gtkHeaderBar, initial);
    ASSERT_NE(target.window, 0u);
    const std::pair<const char*, Zone> cells[] = {
        {"Left Half", Zone::leftHalf},     {"Right Half", Zone::rightHalf},     {"Maximize", Zone::maximize},
        {"Top Left", Zone::topLeft},       {"Top Right", Zone::topRight},       {"Center", Zone::center},
        {"Bottom Left", Zone::bottomLeft}, {"Bottom Right", Zone::bottomRight}, {"Top Half", Zone::topHalf}};
    for (const auto& [name, zone] : cells) {
        pressLayoutsShortcut();
        ASSERT_TRUE(layoutsAreShown());
        ASSERT_TRUE(clickOn(QLatin1String(name), QStringLiteral("push button")));
        EXPECT_TRUE(layoutsGo());
        EXPECT_TRUE(comesToFill(target, placeOf(zone, m_windows.workArea(primary)))) << name;
        EXPECT_TRUE(eventually(5s, [&] { return m_windows.active() == target.window; }));
    }
}

TEST_F(SnapShortcutsDesktopTest, AClickOutsideClosesTheLayoutsAndGoesWhereItWent)
{
    startSnapping();
    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    for (const Button button : {Button::left, Button::right}) {
        pressLayoutsShortcut();
        ASSERT_TRUE(layoutsAreShown());
        settle();
        m_hardware.click(m_windows.frame(target.window).bottomLeft() + QPoint(30, -30), button);
        EXPECT_TRUE(layoutsGo());
    }
}

TEST_F(SnapShortcutsDesktopTest, EscapeClosesTheLayoutsWhileTheProgramHasTheKeyboard)
{
    startSnapping({.shortcuts = {{openOrvane, controlOptionK}}});
    chord({"Control_L", "Alt_L", "k"});
    ASSERT_TRUE(eventually(10s, [&] { return homeIsShown() && shown().size() == 1; }));
    const WindowId home = m_windows.find(QStringLiteral("Orvane")).value_or(0);
    ASSERT_TRUE(eventually(5s, [&] { return m_windows.active() == home; }));
    pressLayoutsShortcut();
    ASSERT_TRUE(eventually(5s, [&] { return shown().size() == 2; }));
    m_hardware.tap("Escape");
    EXPECT_TRUE(eventually(5s, [&] { return shown().size() == 1; }));
    EXPECT_TRUE(homeIsShown());
}

} // namespace orvane::tests

// A desktop without a status area: the program stays in sight all the same.
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/Tray.h"
#include "Desktop/Support/Windows.h"
#include "Support/Eventually.h"

#include <QProcess>

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

const QByteArray onboarded = R"({"hasOnboarded": true})";

class WayBackTest : public testing::Test {
protected:
    bool isOpen(const Program& program)
    {
        return m_screen.window(program.pid(), QStringLiteral("Orvane")).has_value();
    }
    bool isInTheTaskBarAlone()
    {
        const auto window = m_windows.find(QStringLiteral("Orvane"));
        return window && m_windows.hasState(*window, "_NET_WM_STATE_HIDDEN") &&
               !m_windows.hasState(*window, "_NET_WM_STATE_SKIP_TASKBAR");
    }

    Screen m_screen;
    Windows m_windows;
    Hardware m_hardware;
};

} // namespace

TEST_F(WayBackTest, APersonWhoStartsItSeesTheWindowAndFindsItInTheTaskBarAfterClosingIt)
{
    Program program({.defaults = onboarded});
    ASSERT_TRUE(program.waitUntilReady());
    ASSERT_TRUE(eventually(10s, [&] { return isOpen(program); }));
    const auto window = m_windows.find(QStringLiteral("Orvane"));
    ASSERT_TRUE(window);
    ASSERT_TRUE(eventually(10s, [&] { return m_windows.active() == *window; }));
    m_hardware.press("Alt_L");
    m_hardware.tap("F4");
    m_hardware.release("Alt_L");
    EXPECT_TRUE(eventually(10s, [&] { return isInTheTaskBarAlone(); }));

    Program second({.home = program.home()});
    ASSERT_TRUE(second.wait());
    EXPECT_TRUE(eventually(10s, [&] { return isOpen(program); }));
}

TEST_F(WayBackTest, AStartAtLoginIsInTheTaskBarUntilAStatusAreaComes)
{
    Program program({.defaults = onboarded, .arguments = {QStringLiteral("--at-login")}});
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_TRUE(eventually(30s, [&] { return isInTheTaskBarAlone(); }));
    EXPECT_FALSE(isOpen(program));

    QProcess panel;
    panel.start(QStringLiteral("xfce4-panel"), {});
    ASSERT_TRUE(panel.waitForStarted());
    const Tray tray;
    EXPECT_TRUE(eventually(20s, [&] { return tray.itemsOf(program.pid()).size() == 1; }));
    EXPECT_TRUE(eventually(10s, [&] { return !m_windows.find(QStringLiteral("Orvane")); }));
    panel.terminate();
    panel.waitForFinished();
}

} // namespace orvane::tests

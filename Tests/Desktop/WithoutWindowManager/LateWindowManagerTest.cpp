// A program that was started before the window manager, as a session may do it at login.
#include "Desktop/Support/SnapZonesFixture.h"
#include "Support/Eventually.h"

#include <QProcess>

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

class LateWindowManagerTest : public SnapZonesDesktopTest {
protected:
    bool isOn() { return statusMenu().labels().contains(QStringLiteral("Snap Zones")); }

    ~LateWindowManagerTest() override
    {
        m_windowManager.terminate();
        m_windowManager.waitForFinished();
    }

    void startWindowManager()
    {
        m_windowManager.start(QStringLiteral("xfwm4"), {QStringLiteral("--compositor=on")});
        ASSERT_TRUE(m_windowManager.waitForStarted());
    }

    QProcess m_windowManager;
};

} // namespace

TEST_F(LateWindowManagerTest, SnapZonesWorksOnceItIsThereWithoutAClick)
{
    constexpr int controlOption = 0x1000 | 0x800;
    constexpr int digitOne = 18;
    start({.enabled = {QStringLiteral("snapzones")},
           .shortcuts = {{QStringLiteral("snapzones.leftHalf"), {digitOne, controlOption}}}});
    ASSERT_TRUE(eventually(
        10s, [&] { return statusMenu().labels().contains(QStringLiteral("No features are on")); }));
    startWindowManager();
    ASSERT_TRUE(eventually(20s, [&] { return isOn(); }));
    EXPECT_FALSE(homeIsShown());

    const Target target = open(WindowKind::qt, initial);
    ASSERT_NE(target.window, 0u);
    chord({"Control_L", "Alt_L", "1"});
    EXPECT_TRUE(comesToFill(target, placeOf(Zone::leftHalf, m_windows.workArea(primary))));
}

} // namespace orvane::tests

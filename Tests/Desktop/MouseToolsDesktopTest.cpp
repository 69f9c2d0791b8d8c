// The spotlight and the crosshairs, on the hardware's keys.
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/ShellFixture.h"
#include "Support/Eventually.h"

namespace orvane::tests {
namespace {

constexpr auto deadline = 30s;
constexpr StoredShortcut controlOptionX{7, 0x1800};

class MouseToolsDesktopTest : public ShellDesktopTest {
protected:
    void startTools()
    {
        start({.enabled = {QStringLiteral("mousetools")},
               .shortcuts = {{QStringLiteral("mousetools.crosshairs"), controlOptionX}}});
        ASSERT_TRUE(eventually(
            deadline, [this] { return statusMenu().labels().contains(QStringLiteral("Mouse Tools")); }));
    }
    [[nodiscard]] bool isUp() const
    {
        for (const ScreenWindow& window : m_screen.windowsOf(m_program->pid())) {
            if (window.geometry.width() > 1000)
                return true;
        }
        return false;
    }
    [[nodiscard]] bool goes() const
    {
        return eventually(deadline, [this] { return !isUp(); });
    }

    OtherClient m_other;
};

} // namespace

TEST_F(MouseToolsDesktopTest, ADoublePressOfControlShowsTheSpotlightForAMoment)
{
    startTools();
    // On a busy machine two presses may be heard too late after each other.
    ASSERT_TRUE(eventually(deadline, [this] {
        if (isUp())
            return true;
        m_hardware.tap("Control_L");
        m_hardware.tap("Control_L");
        return false;
    }));
    EXPECT_TRUE(goes());
    EXPECT_TRUE(eventually(deadline, [this] { return !m_other.isKeyboardGrabbed(); }));
}

TEST_F(MouseToolsDesktopTest, TheShortcutTogglesTheCrosshairsAndNothingIsGrabbed)
{
    startTools();
    m_hardware.movePointer({640, 480});
    chord({"Control_L", "Alt_L", "x"});
    ASSERT_TRUE(eventually(deadline, [this] { return isUp(); }));
    EXPECT_TRUE(eventually(deadline, [this] { return !m_other.isKeyboardGrabbed(); }));
    // Pressed soon after the first time, its Control key is the second of a double press.
    EXPECT_TRUE(eventually(deadline, [this] {
        if (!isUp())
            return true;
        chord({"Control_L", "Alt_L", "x"});
        return false;
    }));
}

} // namespace orvane::tests

// Global shortcuts while Ctrl Shortcuts rewrites the keys: keys of the hardware, with and without an open
// menu.
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/ScreenSaver.h"
#include "Desktop/Support/ShellFixture.h"
#include "Support/Eventually.h"

#include <utility>
#include <vector>

namespace orvane::tests {

namespace {

constexpr int commandModifier = 0x100, optionModifier = 0x800, controlModifier = 0x1000;
constexpr StoredShortcut f9{101, 0};
constexpr StoredShortcut controlOptionR{15, controlModifier | optionModifier};
constexpr StoredShortcut commandOptionR{15, commandModifier | optionModifier};
constexpr StoredShortcut controlOptionSpace{49, controlModifier | optionModifier};

/// A shortcut of Awake and the keys that it is pressed with in a mode.
struct Case {
    const char* mode;
    StoredShortcut shortcut;
    std::vector<const char*> keys;
};

class KeySwapShortcutsDesktopTest : public ShellDesktopTest {
protected:
    void startWith(const char* mode, StoredShortcut shortcut)
    {
        start({.enabled = {QStringLiteral("awake"), QStringLiteral("keyswap")},
               .shortcuts = {{QStringLiteral("awake.toggle"), shortcut}},
               .more = {{QStringLiteral("net.lindenrow.orvane.keyswap.mode"), QLatin1String(mode)}}});
        ASSERT_TRUE(eventually(10s, [&] { return statusMenu().labels().contains(QStringLiteral("Awake")); }));
        ASSERT_TRUE(program().waitForLog(QRegularExpression(QStringLiteral("Keyboard remapping active"))));
    }
    void type(const std::vector<const char*>& keys)
    {
        for (const char* key : keys)
            m_hardware.press(key);
        for (auto key = keys.rbegin(); key != keys.rend(); ++key)
            m_hardware.release(*key);
    }
    /// Presses the keys until the program knows of the menu, as a person would.
    bool firesInTheMenu(const std::vector<const char*>& keys)
    {
        return eventually(10s, [&] {
            type(keys);
            return eventually(1s, [] { return !heldLocks().isEmpty(); });
        });
    }
    qsizetype timesSwitchedOn() { return program().log().filter(QStringLiteral("Awake on (")).size(); }
};

} // namespace

TEST_F(KeySwapShortcutsDesktopTest, AShortcutActsWhenItIsLetGoInEachMode)
{
    for (const Case& each : {Case{"commonShortcuts", controlOptionSpace, {"Control_L", "Alt_L", "space"}},
                             Case{"fullSwap", controlOptionSpace, {"Super_L", "Alt_L", "space"}}}) {
        startWith(each.mode, each.shortcut);
        for (const char* key : each.keys)
            m_hardware.press(key);
        EXPECT_TRUE(statusMenu().find({QStringLiteral("Awake"), QStringLiteral("Keep Awake")})) << each.mode;
        for (auto key = each.keys.rbegin(); key != each.keys.rend(); ++key)
            m_hardware.release(*key);
        EXPECT_TRUE(becomesAwake()) << each.mode;
        type(each.keys);
        EXPECT_TRUE(becomesAsleep()) << each.mode;
        EXPECT_EQ(timesSwitchedOn(), 1) << each.mode;
        m_program.reset();
    }
}

TEST_F(KeySwapShortcutsDesktopTest, WhileThePanelShowsTheMenuAShortcutFiresByTheKeysThatItHasOtherwise)
{
    // Of the common letters, R is one: its chords with Control are rewritten in both modes.
    for (const Case& each : {Case{"commonShortcuts", controlOptionR, {"Control_L", "Alt_L", "r"}},
                             Case{"fullSwap", controlOptionR, {"Super_L", "Alt_L", "r"}},
                             Case{"fullSwap", commandOptionR, {"Control_L", "Alt_L", "r"}}}) {
        startWith(each.mode, each.shortcut);
        type(each.keys);
        EXPECT_TRUE(becomesAwake()) << each.mode;
        type(each.keys);
        EXPECT_TRUE(becomesAsleep()) << each.mode;
        ASSERT_TRUE(openStatusMenu());
        EXPECT_TRUE(firesInTheMenu(each.keys)) << each.mode << " " << each.shortcut.modifiers;
        EXPECT_TRUE(menuIsOpen()) << each.mode;
        m_hardware.tap("Escape");
        EXPECT_TRUE(menusClose());
        m_program.reset();
    }
}

TEST_F(KeySwapShortcutsDesktopTest, AKeyWithoutModifiersFiresWhileThePanelShowsTheMenu)
{
    startWith("commonShortcuts", f9);
    ASSERT_TRUE(openStatusMenu());
    EXPECT_TRUE(firesInTheMenu({"F9"}));
    EXPECT_TRUE(menuIsOpen());
    ASSERT_TRUE(chooseInOpenMenu(m_screen, m_hardware, statusItem().menu().layout().value_or(MenuNode()),
                                 {QStringLiteral("Open Orvane…")}));
    EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(); }));
}

} // namespace orvane::tests

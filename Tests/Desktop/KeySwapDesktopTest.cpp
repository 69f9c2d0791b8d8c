// Ctrl Shortcuts as a person uses them: keys of the hardware, in real programs.
#include "Desktop/KeySwapFixture.h"
#include "Desktop/Support/Terminal.h"

#include <QTemporaryDir>

#include <algorithm>

namespace orvane::tests {
namespace {

class KeySwapDesktopTest : public KeySwapFixture {};

} // namespace

TEST_F(KeySwapDesktopTest, WithTheFullSwapSuperSelectsCopiesAndPastesInQt)
{
    start("fullSwap");
    copyAndPaste(Peer::lineEdit(), "Super_L");
}

TEST_F(KeySwapDesktopTest, WithTheFullSwapSuperSelectsCopiesAndPastesInGtk)
{
    start("fullSwap");
    copyAndPaste(Peer::gtkEntry(), "Super_L");
}

TEST_F(KeySwapDesktopTest, InTheCommonModeControlStillCopiesInAnEditor)
{
    start("commonShortcuts");
    copyAndPaste(Peer::lineEdit(), "Control_L");
}

TEST_F(KeySwapDesktopTest, InTheCommonModeControlCStillInterruptsInATerminal)
{
    start("commonShortcuts");
    QTemporaryDir folder;
    const QString mark = folder.filePath(QStringLiteral("mark"));
    const auto terminal = interruptibleTerminal(mark);
    ASSERT_TRUE(eventually(15s, [&] { return contentOf(mark) == "ready\n"; }));
    EXPECT_TRUE(eventually(15s, [&] {
        chord("Control_L", "c"); // until the window has the keyboard
        return contentOf(mark).contains("interrupted");
    }));
}

TEST_F(KeySwapDesktopTest, InTheCommonModeControlVPastesInATerminalThatIsNoException)
{
    start("commonShortcuts", Exceptions::none);
    setClipboardText(QStringLiteral("pasted"));
    const Terminal terminal;
    ASSERT_TRUE(terminal.getsKeys(m_hardware));
    EXPECT_TRUE(eventually(15s, [&] {
        chord("Control_L", "v"); // until the program knows what is in front
        return terminal.typed().contains("pasted");
    })) << terminal.typed().toStdString();
}

TEST_F(KeySwapDesktopTest, InTheCommonModeControlVIsTypedInATerminalThatIsAnException)
{
    start("commonShortcuts");
    setClipboardText(QStringLiteral("pasted"));
    const Terminal terminal;
    ASSERT_TRUE(terminal.getsKeys(m_hardware));
    EXPECT_TRUE(eventually(15s, [&] {
        chord("Control_L", "v");
        return terminal.typed().endsWith("\x16\x16\x16");
    })) << terminal.typed().toStdString();
}

TEST_F(KeySwapDesktopTest, TheKeyThatActsAsSuperReachesTheWindowManagerAloneInEachMode)
{
    struct Case {
        const char* mode;
        const char* pressed;
    };
    for (const auto& [mode, pressed] : {Case{"commonShortcuts", "Super_L"}, Case{"fullSwap", "Control_L"}}) {
        start(mode);
        const int superKey = m_hardware.key("Super_L");
        OtherClient windowManager;
        windowManager.grabKey(superKey);
        m_hardware.tap(pressed);
        QList<int> seen;
        EXPECT_TRUE(eventually(10s, [&] {
            seen += windowManager.grabbedKeys();
            return seen.contains(superKey) && seen.contains(-superKey);
        })) << mode;
        EXPECT_TRUE(eventually(10s, [] { return OtherClient().keysDown().isEmpty(); }));
        m_program.reset();
    }
}

TEST_F(KeySwapDesktopTest, WithTheFullSwapALoneSuperIsALoneControl)
{
    start("fullSwap");
    const int superKey = m_hardware.key("Super_L");
    const int controlKey = m_hardware.key("Control_L");
    OtherClient windowManager;
    windowManager.grabKey(superKey);
    windowManager.grabKey(controlKey);
    m_hardware.tap("Super_L");
    QList<int> seen;
    EXPECT_TRUE(eventually(10s, [&] {
        seen += windowManager.grabbedKeys();
        return seen.contains(-controlKey);
    }));
    EXPECT_FALSE(seen.contains(superKey));
}

TEST_F(KeySwapDesktopTest, WithTheFullSwapTheDesktopsShortcutsWithSuperAreReachedByControl)
{
    start("fullSwap");
    const int key = m_hardware.key("e");
    OtherClient desktop;
    desktop.grabKey(key, OtherClient::superModifier);
    chord("Control_L", "e");
    QList<int> seen;
    EXPECT_TRUE(eventually(10s, [&] {
        seen += desktop.grabbedKeys();
        return seen.contains(key) && seen.contains(-key);
    }));
}

TEST_F(KeySwapDesktopTest, AChangeOfTheFrontmostProgramHoldsForTheNextKeys)
{
    start("fullSwap");
    Peer editor(Peer::lineEdit());
    ASSERT_TRUE(editor.tells(QStringLiteral("focused")));
    type("here");
    chord("Super_L", "a");
    ASSERT_TRUE(editor.tells(QStringLiteral("marked:here")));

    // A terminal is on the list of exceptions: there Control is Control again.
    QTemporaryDir folder;
    const QString mark = folder.filePath(QStringLiteral("mark"));
    const auto terminal = interruptibleTerminal(mark);
    ASSERT_TRUE(eventually(15s, [&] { return contentOf(mark) == "ready\n"; }));
    EXPECT_TRUE(eventually(15s, [&] {
        chord("Control_L", "c"); // until the window has the keyboard
        return contentOf(mark).contains("interrupted");
    }));

    // Back in the editor, Super is Control again. (Qt doesn't report a focus that was away for only a
    // moment.)
    ASSERT_TRUE(OtherClient().activate("Line edit"));
    ASSERT_TRUE(eventually(10s, [&] {
        m_hardware.tap("End");
        return editor.lines().last() == QStringLiteral("marked:");
    }));
    // A chord that came before the terminal had the keyboard was Super+C, which types in Qt.
    const QString text = editor.text();
    ASSERT_FALSE(text.isEmpty());
    EXPECT_TRUE(eventually(10s, [&] {
        chord("Super_L", "a"); // typed until the program knows of the change
        return editor.lines().last().startsWith(QStringLiteral("marked:") + text);
    }));
}

TEST_F(KeySwapDesktopTest, AltTabStillSwitchesWindows)
{
    start("fullSwap");
    Peer first(Peer::lineEdit());
    ASSERT_TRUE(first.tells(QStringLiteral("focused")));
    Peer second(Peer::gtkEntry());
    ASSERT_TRUE(second.tells(QStringLiteral("focused")));
    ASSERT_TRUE(
        eventually(10s, [&] { return m_screen.window(second.pid(), QStringLiteral("Entry")).has_value(); }));
    // The chord is held until the switcher, a further window of the window manager, has come up; a person
    // does the same.
    QList<std::uint32_t> known;
    for (const ScreenWindow& window : m_screen.windows())
        known.append(window.id);
    // The switcher may miss the end of a chord that is over before it has the keyboard; a person would try
    // again.
    bool hasSwitched = false;
    for (int attempt = 0; attempt < 4 && !hasSwitched; ++attempt) {
        m_hardware.press("Alt_L");
        m_hardware.tap("Tab");
        EXPECT_TRUE(eventually(10s, [&] {
            const auto windows = m_screen.windows();
            return std::ranges::any_of(windows, [&](const ScreenWindow& window) {
                return !known.contains(window.id) && window.pid != first.pid() && window.pid != second.pid();
            });
        }));
        m_hardware.release("Alt_L");
        hasSwitched = first.tells(QStringLiteral("focused"), 3s);
    }
    EXPECT_TRUE(hasSwitched);
    type("here");
    EXPECT_TRUE(first.tells(QStringLiteral("text:here")));
    EXPECT_TRUE(second.text().isEmpty());
}

TEST_F(KeySwapDesktopTest, TypingFastArrivesWholeAndInOrder)
{
    start("commonShortcuts");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    QByteArray text;
    for (int i = 0; i < 100; ++i)
        text += "abcdefghij";
    type(text.constData());
    EXPECT_TRUE(peer.tells(QStringLiteral("text:") + QString::fromLatin1(text), 30s))
        << peer.text().size() << " letters arrived";
}

} // namespace orvane::tests

// Ctrl Shortcuts as a person meets them: keys of the hardware, in real programs.
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Support/Eventually.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>

#include <sys/ptrace.h>
#include <sys/wait.h>

#include <gmock/gmock.h>

#include <X11/Xlib.h>

namespace orvane::tests {
namespace {

QByteArray defaults(const char* mode)
{
    const QVariantMap all{
        {QStringLiteral("hasOnboarded"), true},
        {QStringLiteral("Orvane.enabledCapabilities"),
         QVariantMap{{QStringLiteral("net.lindenrow.orvane.keyswap"), true}}},
        {QStringLiteral("net.lindenrow.orvane.keyswap.mode"), QLatin1String(mode)},
    };
    return QJsonDocument(QJsonObject::fromVariantMap(all)).toJson();
}

/// The number of keys that the server holds to be down, on any device.
int keysDown()
{
    Display* display = XOpenDisplay(nullptr);
    char keys[32];
    XQueryKeymap(display, keys);
    int count = 0;
    for (const char byte : keys)
        count += __builtin_popcount(static_cast<unsigned char>(byte));
    XCloseDisplay(display);
    return count;
}

/// Holds one thread of a program still, as a hang does; the others run on.
class StoppedThread {
public:
    explicit StoppedThread(qint64 thread) : m_thread(static_cast<pid_t>(thread))
    {
        if (ptrace(PTRACE_SEIZE, m_thread, nullptr, nullptr) != 0 ||
            ptrace(PTRACE_INTERRUPT, m_thread, nullptr, nullptr) != 0)
            throw std::runtime_error(std::strerror(errno));
        waitpid(m_thread, nullptr, __WALL);
    }
    ~StoppedThread() { ptrace(PTRACE_DETACH, m_thread, nullptr, nullptr); }
    StoppedThread(const StoppedThread&) = delete;
    StoppedThread& operator=(const StoppedThread&) = delete;

private:
    pid_t m_thread;
};

class KeySwapDesktopTest : public testing::Test {
protected:
    void start(const char* mode)
    {
        m_program = std::make_unique<Program>(Program::Start{.defaults = defaults(mode)});
        ASSERT_TRUE(m_program->waitUntilReady());
        ASSERT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("Keyboard remapping active"))));
    }
    void TearDown() override
    {
        m_program.reset();
        EXPECT_TRUE(eventually(5s, [] { return keysDown() == 0; })) << "keys are left pressed";
    }

    void chord(const char* modifier, const char* key)
    {
        m_hardware.press(modifier);
        m_hardware.tap(key);
        m_hardware.release(modifier);
    }
    void type(const char* letters)
    {
        for (const char* letter = letters; *letter; ++letter) {
            const char name[2]{*letter, 0};
            m_hardware.tap(name);
        }
    }
    /// A terminal whose program writes "ready" into a file, and "interrupted" when it is.
    static std::unique_ptr<Peer> interruptibleTerminal(const QString& mark)
    {
        const QString script =
            QStringLiteral(
                "trap 'echo interrupted >> %1; exit' INT; echo ready >> %1; while :; do read x; done")
                .arg(mark);
        return std::make_unique<Peer>(QStringLiteral("xterm"),
                                      QStringList{QStringLiteral("-fa"), QStringLiteral("DejaVu Sans Mono"),
                                                  QStringLiteral("-e"), QStringLiteral("sh"),
                                                  QStringLiteral("-c"), script});
    }
    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Types, selects all, copies and pastes twice over with one modifier.
    void copyAndPaste(const QString& editor, const char* modifier)
    {
        setClipboardText(QStringLiteral("nothing of ours"));
        Peer peer(editor);
        ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
        type("copied");
        ASSERT_TRUE(peer.tells(QStringLiteral("text:copied"))) << peer.text().toStdString();
        chord(modifier, "a");
        ASSERT_TRUE(peer.tells(QStringLiteral("marked:copied")));
        chord(modifier, "c");
        EXPECT_TRUE(eventually(5s, [] { return clipboardText() == QStringLiteral("copied"); }))
            << clipboardText().toStdString();
        m_hardware.tap("End");
        chord(modifier, "v");
        EXPECT_TRUE(peer.tells(QStringLiteral("text:copiedcopied"))) << peer.text().toStdString();
    }

    Screen m_screen;
    Hardware m_hardware;
    std::unique_ptr<Program> m_program;
};

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

TEST_F(KeySwapDesktopTest, ALoneSuperStillReachesTheWindowManagerInEachMode)
{
    for (const char* mode : {"commonShortcuts", "fullSwap"}) {
        start(mode);
        const int superKey = m_hardware.key("Super_L");
        OtherClient windowManager;
        windowManager.grabKey(superKey);
        m_hardware.tap("Super_L");
        QList<int> seen;
        EXPECT_TRUE(eventually(5s, [&] {
            seen += windowManager.grabbedKeys();
            return seen.contains(superKey) && seen.contains(-superKey);
        })) << mode;
        EXPECT_EQ(keysDown(), 0);
        m_program.reset();
    }
}

TEST_F(KeySwapDesktopTest, AKeyboardThatIsDisabledUnderAHungProgramHarmsNothing)
{
    start("fullSwap");
    OtherClient other;
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    for (const char* letter : {"a", "b", "c"})
        m_hardware.press(letter);
    ASSERT_TRUE(peer.tells(QStringLiteral("text:abc")));
    {
        const StoppedThread mainThread(m_program->pid());
        other.setDeviceEnabled("testkbd", false);
        // Until the tap has given up, and let its devices go with one of them disabled.
        EXPECT_TRUE(eventually(10s, [&] { return other.keysDown().isEmpty(); }));
    }
    other.setDeviceEnabled("testkbd", true);
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("Re-enabled a disabled event tap"))));
    for (const char* letter : {"a", "b", "c"})
        m_hardware.release(letter);
    chord("Super_L", "a");
    EXPECT_TRUE(eventually(10s, [&] {
        chord("Super_L", "a");
        return peer.lines().last().startsWith(QStringLiteral("marked:abc"));
    })) << peer.lines().join(QLatin1Char('\n')).toStdString();
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

    // Back in the editor, Super is Control again. (Qt says nothing of a focus that was away for a moment
    // only.)
    ASSERT_TRUE(OtherClient().activate("Line edit"));
    ASSERT_TRUE(eventually(10s, [&] {
        m_hardware.tap("End");
        return editor.lines().last() == QStringLiteral("marked:");
    }));
    EXPECT_TRUE(eventually(10s, [&] {
        chord("Super_L", "a");
        return editor.lines().last() == QStringLiteral("marked:here");
    }));
}

TEST_F(KeySwapDesktopTest, TheWindowManagersDeathIsSurvived)
{
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    QProcess::execute(QStringLiteral("sh"),
                      {QStringLiteral("-c"),
                       QStringLiteral("xkill -id $(xprop -root _NET_SUPPORTING_WM_CHECK | sed 's/.*# //')")});
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("The window manager is gone"))));
    EXPECT_TRUE(m_program->isRunning());
    QProcess::startDetached(QStringLiteral("xfwm4"), {});
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("A window manager is there again"))));
    EXPECT_TRUE(m_program->isRunning());
}

TEST_F(KeySwapDesktopTest, AltTabStillSwitchesWindows)
{
    start("fullSwap");
    Peer first(Peer::lineEdit());
    ASSERT_TRUE(first.tells(QStringLiteral("focused")));
    Peer second(Peer::gtkEntry());
    ASSERT_TRUE(second.tells(QStringLiteral("focused")));
    ASSERT_TRUE(
        eventually(5s, [&] { return m_screen.window(second.pid(), QStringLiteral("Entry")).has_value(); }));
    // Held until the switcher has come up, as a hand does: a further window of whoever manages windows.
    QList<std::uint32_t> known;
    for (const ScreenWindow& window : m_screen.windows())
        known.append(window.id);
    // The switcher may miss the end of a chord that is over before it has the keyboard; a hand would try
    // again.
    bool hasSwitched = false;
    for (int attempt = 0; attempt < 4 && !hasSwitched; ++attempt) {
        m_hardware.press("Alt_L");
        m_hardware.tap("Tab");
        EXPECT_TRUE(eventually(5s, [&] {
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

TEST_F(KeySwapDesktopTest, AHungMainThreadCostsAtMostASecondOfKeysAndTheTapComesBackByItself)
{
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    std::chrono::milliseconds waited{};
    {
        const StoppedThread mainThread(m_program->pid());
        QElapsedTimer clock;
        clock.start();
        type("a");
        ASSERT_TRUE(peer.tells(QStringLiteral("text:a"), 10s)) << "a hung program takes the keyboard with it";
        waited = std::chrono::milliseconds(clock.elapsed());
        // From now on the keyboard is the user's again, as if there were no tap.
        type("b");
        ASSERT_TRUE(peer.tells(QStringLiteral("text:ab"), 10s));
        chord("Control_L", "a");
        ASSERT_TRUE(peer.tells(QStringLiteral("marked:ab"), 10s));
        m_hardware.tap("End");
        ASSERT_TRUE(peer.tells(QStringLiteral("marked:"), 10s));
    }
    EXPECT_GE(waited, 900ms) << "the tap was waited for at all";
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("Re-enabled a disabled event tap"))));
    chord("Super_L", "a");
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:ab"))) << "the tap is back";
}

TEST_F(KeySwapDesktopTest, TheDeathOfTheXServerEndsTheProgramInOrder)
{
    QTemporaryDir folder;
    const QString state = folder.filePath(QStringLiteral("state"));
    QProcess desktop;
    desktop.start(QStringLiteral(ORVANE_SESSION),
                  {QStringLiteral("--state"), state, QStringLiteral("--no-panel"),
                   QStringLiteral("--no-dock"), QStringLiteral("--no-desktop"),
                   QStringLiteral("--no-files")});
    const auto variable = [&](const char* name) {
        const QRegularExpression line(QStringLiteral("export %1=\"?([^\"\n]*)").arg(QLatin1String(name)));
        return line.match(QString::fromUtf8(contentOf(state + QStringLiteral("/env")))).captured(1);
    };
    ASSERT_TRUE(eventually(30s, [&] { return !variable("DBUS_SESSION_BUS_ADDRESS").isEmpty(); }));

    Program::Start options{.defaults = defaults("fullSwap")};
    for (const char* name : {"DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
        options.environment.insert(QLatin1String(name), variable(name));
    Program program(options);
    ASSERT_TRUE(program.waitForLog(QRegularExpression(QStringLiteral("Keyboard remapping active")), 20s));

    // Its configuration lies in the state directory, so its command line tells which one it is.
    QProcess search;
    search.start(QStringLiteral("pgrep"), {QStringLiteral("-f"), QStringLiteral("Xorg.*") + state});
    search.waitForFinished();
    const pid_t server = search.readAllStandardOutput().split('\n').first().toInt();
    ASSERT_GT(server, 0);
    kill(server, SIGKILL);
    EXPECT_TRUE(program.waitForLog(QRegularExpression(QStringLiteral("The X server is gone"))));
    const auto exit = program.wait();
    desktop.terminate();
    desktop.waitForFinished();
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->signal, 0);
    EXPECT_EQ(exit->code, 1);
}

TEST_F(KeySwapDesktopTest, KillingTheProgramWithAChordHeldLeavesNothingPressed)
{
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_hardware.press("Super_L");
    m_hardware.press("b");
    ASSERT_TRUE(eventually(5s, [] { return keysDown() > 0; }));
    m_program->kill9();
    ASSERT_TRUE(m_program->wait());
    m_hardware.release("b");
    m_hardware.release("Super_L");
    EXPECT_TRUE(eventually(5s, [] { return keysDown() == 0; }));
    type("free");
    EXPECT_TRUE(peer.tells(QStringLiteral("text:free"))) << peer.text().toStdString();
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

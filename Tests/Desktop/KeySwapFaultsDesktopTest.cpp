// What happens to the keyboard when the program, the window manager or the X server fails.
#include "Desktop/KeySwapFixture.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>

#include <sys/ptrace.h>
#include <sys/wait.h>

namespace orvane::tests {
namespace {

/// Stops one thread of a program, as a hang does; the others run on.
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

class KeySwapFaultsDesktopTest : public KeySwapFixture {};

} // namespace

TEST_F(KeySwapFaultsDesktopTest, AKeyboardThatIsDisabledUnderAHungProgramHarmsNothing)
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
        // Waits until the tap has given up, and has let its devices go while one of them is disabled.
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

TEST_F(KeySwapFaultsDesktopTest, TheWindowManagersDeathIsSurvived)
{
    start("fullSwap");
    auto peer = std::make_unique<Peer>(Peer::lineEdit());
    ASSERT_TRUE(peer->tells(QStringLiteral("focused")));
    QProcess::execute(QStringLiteral("sh"),
                      {QStringLiteral("-c"),
                       QStringLiteral("xkill -id $(xprop -root _NET_SUPPORTING_WM_CHECK | sed 's/.*# //')")});
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("The window manager is gone"))));
    EXPECT_TRUE(m_program->isRunning());
    // The old window manager must leave nothing that keeps the new one from starting.
    QProcess::startDetached(QStringLiteral("xfwm4"), {QStringLiteral("--replace")});
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("A window manager is there again"))));
    EXPECT_TRUE(m_program->isRunning());
    // A window manager may fail over a window that disappears while it starts, and the next test needs one.
    peer = std::make_unique<Peer>(Peer::lineEdit());
    EXPECT_TRUE(eventually(40s, [&] {
        if (peer->tells(QStringLiteral("focused"), 4s))
            return true;
        QProcess::startDetached(QStringLiteral("xfwm4"), {QStringLiteral("--replace")});
        return false;
    }));
}

TEST_F(KeySwapFaultsDesktopTest, AHungMainThreadCostsAtMostASecondOfKeysAndTheTapComesBackByItself)
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
        // From now on the keyboard works as if there were no tap.
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

TEST_F(KeySwapFaultsDesktopTest, TheDeathOfTheXServerEndsTheProgramInOrder)
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

    Program::Start options{.defaults = keySwapDefaults("fullSwap")};
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
    // Either the tap's thread reports it, or the toolkit, whose main thread ends the process: whichever sees
    // it first.
    EXPECT_TRUE(program.waitForLog(
        QRegularExpression(QStringLiteral("The X server is gone|The X11 connection broke"))));
    const auto exit = program.wait();
    desktop.terminate();
    desktop.waitForFinished();
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->signal, 0);
    EXPECT_EQ(exit->code, 1);
}

TEST_F(KeySwapFaultsDesktopTest, KillingTheProgramWithAChordHeldLeavesNothingPressed)
{
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_hardware.press("Super_L");
    m_hardware.press("b");
    ASSERT_TRUE(eventually(10s, [] { return !OtherClient().keysDown().isEmpty(); }));
    m_program->kill9();
    ASSERT_TRUE(m_program->wait());
    m_hardware.release("b");
    m_hardware.release("Super_L");
    EXPECT_TRUE(eventually(10s, [] { return OtherClient().keysDown().isEmpty(); }));
    type("free");
    EXPECT_TRUE(peer.tells(QStringLiteral("text:free"))) << peer.text().toStdString();
}

TEST_F(KeySwapFaultsDesktopTest, AStoppedProgramCostsAboutASecondOfKeysAndIsTappedAgainWhenItGoesOn)
{
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_program->signal(SIGSTOP);
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(eventually(10s, [&] {
        type("a"); // as a user does whose keyboard doesn't answer
        return !peer.text().isEmpty();
    }));
    EXPECT_LT(std::chrono::milliseconds(clock.elapsed()), 3s)
        << "a second, on a machine with nothing else to do";
    // The keyboard works as if there were no tap.
    chord("Control_L", "a");
    m_hardware.tap("x");
    ASSERT_TRUE(peer.tells(QStringLiteral("text:x"), 10s));

    m_program->signal(SIGCONT);
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("The program stood still"))));
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("Re-enabled a disabled event tap"))));
    chord("Super_L", "a");
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:x"))) << "the tap is back";
    EXPECT_FALSE(m_program->log().join(u'\n').contains(QStringLiteral("X server is gone")));
}

TEST_F(KeySwapFaultsDesktopTest, AProgramStoppedUnderAHeldChordLeavesNothingPressedAndModifiersCount)
{
    start("commonShortcuts");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_hardware.press("Shift_L");
    m_hardware.press("b");
    ASSERT_TRUE(peer.tells(QStringLiteral("text:B")));
    m_program->signal(SIGSTOP);
    m_hardware.release("b");
    EXPECT_TRUE(eventually(10s, [] {
        return OtherClient().keysDown("Virtual core XTEST keyboard").isEmpty();
    })) << "the letter would be repeated for ever";
    const QList<int> shift{m_hardware.key("Shift_L")};
    EXPECT_TRUE(eventually(10s, [&] { return OtherClient().keysDown() == shift; })) << "what is held counts";
    m_hardware.tap("c");
    EXPECT_TRUE(eventually(10s, [&] { return peer.text().endsWith(u'C'); })) << peer.text().toStdString();
    m_hardware.release("Shift_L");
    m_program->signal(SIGCONT);
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("Re-enabled a disabled event tap"))));
}

TEST_F(KeySwapFaultsDesktopTest, AProgramThatIsStoppedAndGoesOnAtOnceKeepsItsTap)
{
    start("fullSwap");
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_program->signal(SIGSTOP);
    type("ab");
    m_program->signal(SIGCONT);
    ASSERT_TRUE(peer.tells(QStringLiteral("text:ab")));
    chord("Super_L", "a");
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:ab")));
    EXPECT_FALSE(m_program->log().join(u'\n').contains(QStringLiteral("Re-enabled")));
}

TEST_F(KeySwapFaultsDesktopTest, AKeyboardThatAnotherProgramHasIsNamedInTheLogAndTheProgramRunsOn)
{
    {
        OtherClient rival;
        ASSERT_TRUE(rival.grabDevice("testkbd"));
        m_program = std::make_unique<Program>(Program::Start{.defaults = keySwapDefaults("fullSwap")});
        ASSERT_TRUE(m_program->waitUntilReady());
        EXPECT_TRUE(m_program->waitForLog(QRegularExpression(
            QStringLiteral("The keyboard \"testkbd\" is left alone: another program has "))));
        EXPECT_TRUE(m_program->isRunning());
    }
    // The next key on it is the occasion to try again.
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    type("a");
    ASSERT_TRUE(peer.tells(QStringLiteral("text:a")));
    chord("Super_L", "a");
    EXPECT_TRUE(peer.tells(QStringLiteral("marked:a")));
}

TEST_F(KeySwapFaultsDesktopTest, AServerThatDoesNotTrustTheProgramIsNamedInTheLogAndNothingIsTapped)
{
    QTemporaryDir folder;
    const QString cookie = folder.filePath(QStringLiteral("cookie"));
    ASSERT_EQ(
        QProcess::execute(QStringLiteral("xauth"),
                          {QStringLiteral("-q"), QStringLiteral("-f"), cookie, QStringLiteral("generate"),
                           qEnvironmentVariable("DISPLAY"), QStringLiteral("."), QStringLiteral("untrusted"),
                           QStringLiteral("timeout"), QStringLiteral("60")}),
        0);
    m_program = std::make_unique<Program>(Program::Start{
        .defaults = keySwapDefaults("fullSwap"), .environment = {{QStringLiteral("XAUTHORITY"), cookie}}});
    ASSERT_TRUE(m_program->waitUntilReady());
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(
        QStringLiteral("doesn't offer XInput and XTEST.*can neither see nor change keys"))));
    EXPECT_TRUE(
        m_program->waitForLog(QRegularExpression(QStringLiteral("refuses to let this program read the "))));
    EXPECT_FALSE(OtherClient().isFloating("testkbd"));
    EXPECT_FALSE(m_program->log().join(u'\n').contains(QStringLiteral("Keyboard remapping active")));
}

} // namespace orvane::tests

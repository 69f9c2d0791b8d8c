// The program as the session starts it at login, once or several times, and as a person does.
#include "Desktop/Support/Bus.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/Windows.h"
#include "Support/Eventually.h"

#include <QProcess>

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

const QByteArray onboarded = R"({"hasOnboarded": true})";
const QByteArray withoutIcon =
    R"({"hasOnboarded": true, "app.showMenuBarItem": false, "app.showDockIcon": true})";
const QStringList byAutostart{QStringLiteral("--at-login")};
const QStringList byRestoring{QStringLiteral("-session"), QStringLiteral("10123_456")};

/// The session manager of an older desktop, which restores the programs of the last session.
class SessionManager {
public:
    SessionManager()
    {
        m_process.start(QStringLiteral(ORVANE_SESSION_MANAGER_PEER), {});
        EXPECT_TRUE(m_process.waitForStarted());
    }
    ~SessionManager()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;

    /// Returns what follows the word in the first line that begins with it.
    QString told(const QString& word)
    {
        QString found;
        EXPECT_TRUE(eventually(20s, [&] {
            m_output += QString::fromLocal8Bit(m_process.readAllStandardOutput());
            for (const QString& line : m_output.split(u'\n')) {
                if (line.startsWith(word + u' '))
                    found = line.mid(word.size() + 1);
            }
            return !found.isEmpty();
        })) << m_output.toStdString();
        return found;
    }

private:
    QProcess m_process;
    QString m_output;
};

class LoginDesktopTest : public testing::Test {
protected:
    bool homeIsShown(const Program& program)
    {
        return m_screen.window(program.pid(), QStringLiteral("Orvane")).has_value();
    }
    /// Starts the program once more in the first one's home, and waits until that start has ended.
    static void startAgain(Program& first, const QStringList& arguments)
    {
        Program second({.arguments = arguments, .home = first.home()});
        const auto exit = second.wait();
        ASSERT_TRUE(exit) << "the second process stays";
        EXPECT_EQ(exit->code, 0);
    }
    /// True once there is an entry for the window in the task bar alone.
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

TEST_F(LoginDesktopTest, TwoStartsByTheSessionLeaveOneProgramWithoutAWindow)
{
    for (const QStringList& second : {byAutostart, byRestoring}) {
        Program program({.defaults = onboarded, .arguments = byAutostart});
        ASSERT_TRUE(program.waitUntilReady());
        startAgain(program, second);
        EXPECT_TRUE(program.isRunning());
        // A person's start is what opens the window, so a wish of the earlier one would have been carried
        // out.
        EXPECT_FALSE(homeIsShown(program));
        startAgain(program, {});
        EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(program); }));
    }
}

TEST_F(LoginDesktopTest, ASessionManagerIsToldNotToRestoreIt)
{
    SessionManager manager;
    const QString address = manager.told(QStringLiteral("at"));
    Program program({.defaults = onboarded, .environment = {{QStringLiteral("SESSION_MANAGER"), address}}});
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_EQ(manager.told(QStringLiteral("restart")), QStringLiteral("3")) << "never";
}

TEST_F(LoginDesktopTest, WithoutItsIconTheClosedWindowStaysInTheTaskBar)
{
    Program program({.defaults = withoutIcon});
    ASSERT_TRUE(program.waitUntilReady());
    ASSERT_TRUE(eventually(10s, [&] { return homeIsShown(program); })) << "a person has started it";
    const auto window = m_windows.find(QStringLiteral("Orvane"));
    ASSERT_TRUE(window);
    ASSERT_TRUE(eventually(10s, [&] { return m_windows.active() == *window; }));
    m_hardware.press("Alt_L");
    m_hardware.tap("F4");
    m_hardware.release("Alt_L");
    EXPECT_TRUE(eventually(10s, [&] { return isInTheTaskBarAlone(); }));
    startAgain(program, {});
    EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(program) && !isInTheTaskBarAlone(); }));
    program.signal(SIGTERM);
    EXPECT_TRUE(program.wait()) << "a window that doesn't go keeps it from ending";
}

TEST_F(LoginDesktopTest, WithoutItsIconAStartAtLoginIsSeenInTheTaskBar)
{
    Program program({.defaults = withoutIcon, .arguments = byAutostart});
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_TRUE(eventually(10s, [&] { return isInTheTaskBarAlone(); }));
    EXPECT_FALSE(homeIsShown(program));
}

} // namespace orvane::tests

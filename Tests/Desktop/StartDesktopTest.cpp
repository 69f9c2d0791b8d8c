// The start of the program, a second start, and starts with damaged or missing surroundings.
#include "Desktop/Support/Logind.h"
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/Tray.h"
#include "Support/Eventually.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <csignal>

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

const QByteArray awakeDefaults =
    R"({"hasOnboarded": true, "Orvane.enabledCapabilities": {"net.lindenrow.orvane.awake": true},)"
    R"( "net.lindenrow.orvane.awake.awakeOnLaunch": true})";

QRegularExpression containing(const char* text)
{
    return QRegularExpression(QRegularExpression::escape(QString::fromUtf8(text)));
}

bool isHeld()
{
    for (const Inhibitor& inhibitor : inhibitors().value_or(QList<Inhibitor>())) {
        if (inhibitor.why == QStringLiteral("Orvane Awake"))
            return true;
    }
    return false;
}

struct StartDesktopTest : testing::Test {
    bool homeIsShown(const Program& program)
    {
        return m_screen.window(program.pid(), QStringLiteral("Orvane")).has_value();
    }
    static std::uint32_t activeWindow()
    {
        QProcess xprop;
        xprop.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_ACTIVE_WINDOW")});
        xprop.waitForFinished();
        // The line is "_NET_ACTIVE_WINDOW(WINDOW): window id # 0x1200006", with or without a comma and a
        // further number.
        const QString text = QString::fromLatin1(xprop.readAllStandardOutput());
        const QString id = text.section(QStringLiteral("# "), 1).section(QLatin1Char(','), 0, 0).trimmed();
        return id.toUInt(nullptr, 16);
    }
    static QString besideDefaults(const Program& program, const char* pattern)
    {
        const QFileInfo file(program.defaultsFile());
        const QStringList names = file.dir().entryList({QLatin1String(pattern)}, QDir::AllEntries);
        return names.size() == 1 ? file.dir().filePath(names.first()) : QString();
    }

    Screen m_screen;
};

} // namespace

TEST_F(StartDesktopTest, AFirstStartShowsTheHomeWindowAndHoldsNothing)
{
    Program program({});
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(program); }));
    EXPECT_FALSE(isHeld());
}

TEST_F(StartDesktopTest, ASecondStartReachesTheFirstAndShowsItsHomeWindow)
{
    Program first({.defaults = awakeDefaults});
    ASSERT_TRUE(first.waitUntilReady());
    ASSERT_TRUE(eventually(10s, isHeld));
    EXPECT_FALSE(homeIsShown(first));

    Program second({.home = first.home()});
    const auto exit = second.wait();
    ASSERT_TRUE(exit) << "the second process stays";
    EXPECT_EQ(exit->code, 0);
    EXPECT_TRUE(eventually(10s, [&] { return homeIsShown(first); }));
    EXPECT_TRUE(first.isRunning());
}

TEST_F(StartDesktopTest, AFurtherStartBringsAHiddenAwayWindowToTheFront)
{
    Program first({});
    ASSERT_TRUE(first.waitUntilReady());
    ASSERT_TRUE(eventually(10s, [&] { return homeIsShown(first); }));
    Peer other(Peer::lineEdit());
    ASSERT_TRUE(other.tells(QStringLiteral("focused")));
    const auto home = m_screen.window(first.pid(), QStringLiteral("Orvane"));
    ASSERT_TRUE(home);
    // The window manager reports it after the window with the focus knows it.
    ASSERT_TRUE(eventually(10s, [&] { return activeWindow() != home->id; }));

    Program second({.home = first.home()});
    ASSERT_TRUE(second.wait());
    EXPECT_TRUE(eventually(10s, [&] { return activeWindow() == home->id; }));
}

TEST_F(StartDesktopTest, ASecondStartThatGetsNoAnswerSaysSoByItsExitStatus)
{
    Program first({.defaults = awakeDefaults});
    ASSERT_TRUE(first.waitUntilReady());
    first.signal(SIGSTOP);
    Program second({.home = first.home()});
    EXPECT_TRUE(second.waitForLog(containing("Orvane runs already but doesn't answer")));
    const auto exit = second.wait();
    first.signal(SIGCONT);
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->code, 1);
}

TEST_F(StartDesktopTest, ADamagedDefaultsFileIsSetAsideAndSaid)
{
    for (const QByteArray& damaged : {QByteArray("{\"hasOnboarded\": tr"), QByteArray(),
                                      QByteArray("\xff\xfe not text"), QByteArray("[1]")}) {
        Program program({.defaults = damaged});
        ASSERT_TRUE(program.waitUntilReady());
        EXPECT_TRUE(program.waitForLog(QRegularExpression(QStringLiteral("error \\[Defaults\\]"))));
        const QString aside = besideDefaults(program, "defaults.json.corrupt-*");
        ASSERT_FALSE(aside.isEmpty());
        QFile kept(aside);
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), damaged);
        EXPECT_TRUE(program.isRunning());
    }
}

TEST_F(StartDesktopTest, ADirectoryInPlaceOfTheFileIsSetAsideToo)
{
    Program::Start start;
    QDir(start.home->configDirectory()).mkpath(QStringLiteral("orvane/defaults.json/inside"));
    Program program(start);
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_TRUE(program.waitForLog(QRegularExpression(QStringLiteral("error \\[Defaults\\]"))));
    const QString aside = besideDefaults(program, "defaults.json.corrupt-*");
    EXPECT_TRUE(QFileInfo(aside + QStringLiteral("/inside")).isDir());
}

TEST_F(StartDesktopTest, WithoutLogindTheDisplayIsHeldAndTheLogSaysSo)
{
    Program program({.defaults = awakeDefaults,
                     .environment = {{QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"),
                                      QStringLiteral("unix:path=/nonexistent/bus")}}});
    ASSERT_TRUE(program.waitUntilReady());
    EXPECT_TRUE(program.waitForLog(containing(
        "logind can't hold the machine awake, so only the display is held: there is no system bus")));
    EXPECT_TRUE(program.waitForLog(containing("Awake on (indefinite, display=true)")));
}

TEST_F(StartDesktopTest, WithoutASessionBusTheRestWorks)
{
    Program program({.defaults = awakeDefaults,
                     .environment = {{QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                                      QStringLiteral("unix:path=/nonexistent/bus")}}});
    EXPECT_TRUE(program.waitForLog(containing("There is no session bus")));
    EXPECT_TRUE(program.waitForLog(containing("Awake on")));
    EXPECT_TRUE(eventually(10s, isHeld));
    EXPECT_TRUE(program.isRunning());
}

TEST_F(StartDesktopTest, WithoutADisplayItSaysSoAndEnds)
{
    Program program({.defaults = awakeDefaults,
                     .environment = {{QStringLiteral("DISPLAY"), QString()},
                                     {QStringLiteral("QT_QPA_PLATFORM"), QString()}}});
    EXPECT_TRUE(program.waitForLog(containing("There is no X display to run on")));
    const auto exit = program.wait();
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->code, 1);
    EXPECT_EQ(exit->signal, 0);
}

TEST_F(StartDesktopTest, EverySignalThatAsksForAnEndGetsAnOrderlyOne)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        Program program({.defaults = awakeDefaults});
        ASSERT_TRUE(program.waitUntilReady());
        program.signal(signal);
        const auto exit = program.wait();
        ASSERT_TRUE(exit);
        EXPECT_EQ(exit->code, 0);
        EXPECT_EQ(exit->signal, 0);
    }
}

} // namespace orvane::tests

// A main thread that hangs, a killed program, a killed guardian, and a broken connection.
#include "Contract/EventTapFixture.h"
#include "Contract/GuardianSearch.h"

#include <QCoreApplication>
#include <QProcess>

#include <csignal>
#include <utility>

namespace orvane::tests {
namespace {

constexpr const char* keyboard = "testkbd";
constexpr const char* xtestKeyboard = "Virtual core XTEST keyboard";

class EventTapFailureTest : public EventTapFixture, protected GuardianSearch {};

TEST_F(EventTapFailureTest, AHungMainThreadCostsTheUserASecondAndNoKey)
{
    bool hangs = true;
    bool keyPassed = false;
    LambdaTap tap(taps, [&](Event&) {
        if (std::exchange(hangs, false)) {
            keyPassed = window.waitFor(60s, [&] { return window.typed() == "a"; });
            // The keyboard is free: the following key arrives directly, before this callback returns.
            hardware.tap(key::b);
            keyPassed = keyPassed && window.waitFor(60s, [&] { return window.typed() == "ab"; });
        }
        return false; // too late
    });
    hardware.tap(key::a);
    ASSERT_TRUE(eventually(60s, [&] { return tap.timeouts() == 1; }));
    EXPECT_TRUE(keyPassed);
    EXPECT_FALSE(tap.tap()->isEnabled());
    EXPECT_FALSE(other.isFloating(keyboard));
    EXPECT_EQ(tap.seen().size(), 1u) << "the events after it weren't shown";
    EXPECT_EQ(log.messages().filter(QStringLiteral("more than a second")).size(), 1);
}

TEST_F(EventTapFailureTest, AModifierDoesNotWaitForABusyMainThread)
{
    bool isBusy = true;
    bool hasCome = false;
    LambdaTap tap(taps, [&](Event&) {
        if (std::exchange(isBusy, false)) {
            // The server takes a device's click before a client's request that waits at the same time. No
            // hand is that fast.
            hasCome =
                window.waitFor(60s, [&] { return other.keysDown(xtestKeyboard).contains(key::controlL); });
            hardware.click(KeyWindow::place());
            hasCome = hasCome && window.waitFor(60s, [&] {
                return window.keys().contains(QStringLiteral("b1/control"));
            });
        }
        return true;
    });
    hardware.press(key::controlL);
    EXPECT_TRUE(eventually(60s, [&] { return !tap.seen().empty(); }));
    hardware.release(key::controlL);
    EXPECT_TRUE(hasCome) << window.keys().join(u' ').toStdString();
    EXPECT_EQ(keysOnce(3), (QStringList{QStringLiteral("+37"), QStringLiteral("b1/control"),
                                        QStringLiteral("-37/control")}));
}

TEST_F(EventTapFailureTest, ATapThatTimedOutCanBeEnabledAgain)
{
    bool hangs = true;
    LambdaTap tap(taps, [&](Event&) {
        if (std::exchange(hangs, false))
            window.waitFor(60s, [&] { return window.typed() == "a"; });
        return true;
    });
    hardware.tap(key::a);
    ASSERT_TRUE(eventually(60s, [&] { return tap.timeouts() == 1; }));
    EXPECT_TRUE(tap.comesToBeEnabled());
    const auto seenBefore = tap.seen().size();
    hardware.tap(key::b);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "ab"; })) << window.typed().data();
    EXPECT_TRUE(eventually(10s, [&] { return tap.seen().size() == seenBefore + 2; }));
    EXPECT_EQ(tap.timeouts(), 1);
}

TEST_F(EventTapFailureTest, AWatchdogMayBeFasterThanTheNotice)
{
    bool hangs = true;
    LambdaTap tap(taps, [&](Event&) {
        if (std::exchange(hangs, false)) {
            window.waitFor(60s, [&] { return window.typed() == "a"; });
            window.waitFor(60s, [&] { return !tap.tap()->isEnabled(); });
            tap.tap()->enable(true);
        }
        return true;
    });
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(60s, [&] { return tap.timeouts() == 1; }));
    EXPECT_TRUE(tap.comesToBeEnabled());
    hardware.tap(key::b);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "ab"; })) << window.typed().data();
}

TEST_F(EventTapFailureTest, AKilledProgramLeavesNothingPressedAndNobodyBehind)
{
    QProcess program;
    program.start(QStringLiteral(ORVANE_EVENT_TAP_PEER), QStringList());
    ASSERT_TRUE(eventually(20s, [&] { return program.readAllStandardOutput().contains("ready"); }))
        << program.readAllStandardError().toStdString();
    const qint64 guardian = guardianOf(program.processId());
    ASSERT_NE(guardian, 0);
    hardware.press(key::shiftL);
    hardware.press(key::a);
    keysOnce(2);
    ASSERT_EQ(other.keysDown(xtestKeyboard), (QList<int>{key::a, key::shiftL}));

    ::kill(static_cast<pid_t>(program.processId()), SIGKILL);
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown(xtestKeyboard).isEmpty(); }));
    hardware.release(key::a);
    hardware.release(key::shiftL);
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown().isEmpty(); }));
    EXPECT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
    EXPECT_TRUE(eventually(10s, [&] { return !isAlive(guardian); }));
    EXPECT_TRUE(eventually(10s, [&] { return program.state() == QProcess::NotRunning; }));
}

TEST_F(EventTapFailureTest, AKilledProgramWhoseUserLetGoMeanwhileLeavesNothingPressed)
{
    QProcess program;
    program.start(QStringLiteral(ORVANE_EVENT_TAP_PEER), QStringList());
    ASSERT_TRUE(eventually(20s, [&] { return program.readAllStandardOutput().contains("ready"); }));
    hardware.press(key::controlL);
    hardware.press(key::x);
    keysOnce(2);
    // A stopped program can't pass the releases on; then it dies.
    ::kill(static_cast<pid_t>(program.processId()), SIGSTOP);
    hardware.release(key::x);
    hardware.release(key::controlL);
    ::kill(static_cast<pid_t>(program.processId()), SIGKILL);
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown().isEmpty(); }));
    EXPECT_TRUE(eventually(10s, [&] { return program.state() == QProcess::NotRunning; }));
}

TEST_F(EventTapFailureTest, AStoppedProgramsKeyboardIsFreedAndItsTapIsDisabledWhenItGoesOn)
{
    QProcess program;
    program.start(QStringLiteral(ORVANE_EVENT_TAP_PEER), QStringList());
    ASSERT_TRUE(eventually(20s, [&] { return program.readAllStandardOutput().contains("ready"); }));
    const qint64 guardian = guardianOf(program.processId());
    hardware.press(key::shiftL);
    hardware.press(key::a);
    keysOnce(2);
    ::kill(static_cast<pid_t>(program.processId()), SIGSTOP);
    hardware.release(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown(xtestKeyboard).isEmpty(); }));
    // A key that is still held counts as down, and a swallowed one as up.
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown() == QList<int>{key::shiftL}; }));
    hardware.tap(key::b);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed().endsWith("B"); })) << window.typed().data();
    hardware.release(key::shiftL);
    EXPECT_TRUE(eventually(10s, [&] { return !isAlive(guardian); }));

    ::kill(static_cast<pid_t>(program.processId()), SIGCONT);
    QByteArray said;
    EXPECT_TRUE(eventually(10s, [&] { return (said += program.readAllStandardError()).contains('\n'); }));
    EXPECT_EQ(said.split('\n').first(), "The program stood still while keys were typed, so its guardian has "
                                        "disabled the event tap and freed the keyboards.");
    program.kill();
    EXPECT_TRUE(eventually(10s, [&] { return program.state() == QProcess::NotRunning; }));
}

TEST_F(EventTapFailureTest, TheGuardianLivesAsLongAsTheTap)
{
    const qint64 self = QCoreApplication::applicationPid();
    EXPECT_TRUE(guardiansOf(self).isEmpty());
    {
        LambdaTap tap(taps);
        EXPECT_NE(guardianOf(self), 0);
    }
    EXPECT_TRUE(eventually(10s, [&] { return guardiansOf(self).isEmpty(); }));
}

TEST_F(EventTapFailureTest, AGuardianThatDiesIsReplacedEachTime)
{
    const qint64 self = QCoreApplication::applicationPid();
    LambdaTap tap(taps);
    QList<qint64> former{guardianOf(self)};
    for (int i = 0; i < 3; ++i) {
        ::kill(static_cast<pid_t>(former.last()), SIGKILL);
        qint64 next = 0;
        ASSERT_TRUE(eventually(20s,
                               [&] {
                                   next = guardiansOf(self).value(0);
                                   return next != 0 && !former.contains(next);
                               }))
            << "after " << i + 1;
        former.append(next);
    }
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "a"; }));
}

TEST_F(EventTapFailureTest, WhatIsDownOnTheXtestKeyboardWhenATapBeginsIsReleased)
{
    other.pressOnXtestKeyboard(key::shiftL);
    ASSERT_EQ(other.keysDown(xtestKeyboard), QList<int>{key::shiftL});
    LambdaTap tap(taps);
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown(xtestKeyboard).isEmpty(); }));
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "a"; })) << window.typed().data();
}

TEST_F(EventTapFailureTest, WhatEndsTheProgramDoesNotEndTheGuardianFirst)
{
    QProcess program;
    program.start(QStringLiteral(ORVANE_EVENT_TAP_PEER), QStringList());
    ASSERT_TRUE(eventually(20s, [&] { return program.readAllStandardOutput().contains("ready"); }));
    const qint64 guardian = guardianOf(program.processId());
    ASSERT_NE(guardian, 0);
    hardware.press(key::a);
    keysOnce(1);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        ::kill(static_cast<pid_t>(guardian), signal);
    ::kill(static_cast<pid_t>(program.processId()), SIGTERM);
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown(xtestKeyboard).isEmpty(); }));
    hardware.release(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return !isAlive(guardian); }));
    EXPECT_TRUE(eventually(10s, [&] { return program.state() == QProcess::NotRunning; }));
}

TEST_F(EventTapFailureTest, AKeyWrittenToALostConnectionDoesNotEndTheProgram)
{
    std::signal(SIGPIPE, SIG_DFL); // as it is when a program starts
    XInputEventTaps ownTaps(log, [] { return CommandKeys::control; });
    LambdaTap tap(ownTaps);
    // Such a write sends this signal, but only by chance before the loss is noticed.
    EXPECT_EQ(std::raise(SIGPIPE), 0);
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "a"; }));
}

TEST_F(EventTapFailureTest, ALostConnectionDisablesTheTapWithOneLineInTheLog)
{
    LambdaTap tap(taps);
    ASSERT_TRUE(other.killOwnerOf("Orvane event tap"));
    EXPECT_TRUE(eventually(10s, [&] { return !tap.tap()->isEnabled(); }));
    EXPECT_EQ(log.messages(),
              QStringList{QStringLiteral("The X server is gone; keyboard events can't be tapped any more.")});
    EXPECT_EQ(tap.timeouts(), 0);
    hardware.tap(key::a);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "a"; }));

    EXPECT_TRUE(tap.comesToBeEnabled());
    hardware.tap(key::b);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed() == "ab"; }));
}

} // namespace
} // namespace orvane::tests

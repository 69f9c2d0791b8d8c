// Ctrl Shortcuts while keys and modifiers go up and down at random and parts of the system fail. Whatever
// happens, nothing stays pressed, nothing stays grabbed, and the next word is typed correctly.
#include "Desktop/KeySwapFixture.h"

#include <csignal>
#include <random>
#include <set>

#include <X11/Xlib.h>
#undef None

namespace orvane::tests {
namespace {

constexpr const char* keyboard = "testkbd";

class KeySwapStormDesktopTest : public KeySwapFixture {
protected:
    ~KeySwapStormDesktopTest() override { setLayout("us"); }

    void startWithEditor(const char* mode)
    {
        start(mode);
        m_peer = std::make_unique<Peer>(Peer::lineEdit());
        ASSERT_TRUE(m_peer->tells(QStringLiteral("focused")));
    }
    void TearDown() override
    {
        releaseAll();
        m_peer.reset();
        KeySwapFixture::TearDown();
        EXPECT_TRUE(eventually(10s, [] { return !OtherClient().isFloating(keyboard); }))
            << "it stays grabbed";
    }

    /// Presses keys that are up and releases keys that are down, at random but the same in each run.
    void storm(int motions)
    {
        static constexpr std::array names{"a", "b", "c", "d", "Shift_L", "Control_L", "Super_L"};
        for (int i = 0; i < motions; ++i) {
            const char* name = names[m_random() % names.size()];
            if (m_held.erase(name) != 0) {
                m_hardware.release(name);
            } else {
                m_hardware.press(name);
                m_held.insert(name);
            }
        }
    }
    void releaseAll()
    {
        for (const std::string& name : m_held)
            m_hardware.release(name.c_str());
        m_held.clear();
    }
    /// Expects that everything is up, that a word is typed correctly, and that `modifier` with A marks it.
    void expectAWholeKeyboard(const char* modifier)
    {
        releaseAll();
        ASSERT_TRUE(eventually(10s, [] { return OtherClient().keysDown().isEmpty(); })) << keysDown();
        ASSERT_TRUE(
            eventually(10s, [&] { return OtherClient().keysDown("Virtual core XTEST keyboard").isEmpty(); }));
        m_hardware.tap("End");
        type("whole");
        ASSERT_TRUE(eventually(10s, [&] { return m_peer->text().endsWith(QStringLiteral("whole")); }))
            << m_peer->text().right(60).toStdString();
        const QString text = m_peer->text();
        chord(modifier, "a");
        EXPECT_TRUE(eventually(10s, [&] {
            return m_peer->lines().last() == QStringLiteral("marked:") + text;
        })) << m_peer->lines().last().right(60).toStdString();
        m_hardware.tap("BackSpace");
        EXPECT_TRUE(eventually(10s, [&] { return m_peer->text().isEmpty(); }));
    }
    /// Describes for a failure's text the keys that the server takes for pressed, all together and by device.
    static std::string keysDown()
    {
        OtherClient other;
        const auto text = [](const QList<int>& keys) {
            std::string result;
            for (const int key : keys)
                result += std::to_string(key) + ' ';
            return result;
        };
        return "together " + text(other.keysDown()) + "hardware " + text(other.keysDown(keyboard)) +
               "XTEST " + text(other.keysDown("Virtual core XTEST keyboard"));
    }
    static void setLayout(const char* layout)
    {
        QProcess::execute(QStringLiteral("setxkbmap"),
                          {QStringLiteral("-rules"), QStringLiteral("evdev"), QStringLiteral("-model"),
                           QStringLiteral("pc105"), QStringLiteral("-layout"), QLatin1String(layout)});
    }
    /// Returns the guardian of this program, or 0.
    [[nodiscard]] pid_t guardian() const
    {
        QProcess search;
        search.start(QStringLiteral("pgrep"), {QStringLiteral("-P"), QString::number(m_program->pid()),
                                               QStringLiteral("orvane-guardian")});
        search.waitForFinished();
        return search.readAllStandardOutput().trimmed().toInt();
    }

    std::mt19937 m_random{20};
    std::set<std::string> m_held;
    std::unique_ptr<Peer> m_peer;
};

/// A client that has the keyboard to itself, as a lock screen or an open menu does.
class KeyboardGrab {
public:
    KeyboardGrab() : m_display(XOpenDisplay(nullptr))
    {
        if (XGrabKeyboard(m_display, DefaultRootWindow(m_display), False, GrabModeAsync, GrabModeAsync,
                          CurrentTime) == GrabSuccess)
            m_hasIt = true;
        XSync(m_display, False);
    }
    ~KeyboardGrab() { XCloseDisplay(m_display); }
    KeyboardGrab(const KeyboardGrab&) = delete;
    KeyboardGrab& operator=(const KeyboardGrab&) = delete;

    [[nodiscard]] bool hasIt() const { return m_hasIt; }
    /// Returns the keys that came here since the last call: positive for a press.
    QList<int> keys()
    {
        QList<int> found;
        while (XPending(m_display) > 0) {
            XEvent event;
            XNextEvent(m_display, &event);
            if (event.type == KeyPress || event.type == KeyRelease)
                found.append(event.type == KeyPress ? int(event.xkey.keycode) : -int(event.xkey.keycode));
        }
        return found;
    }

private:
    Display* m_display;
    bool m_hasIt = false;
};

} // namespace

TEST_F(KeySwapStormDesktopTest, KeysWithoutOrderLeaveTheKeyboardWhole)
{
    for (const char* mode : {"fullSwap", "commonShortcuts"}) {
        startWithEditor(mode);
        storm(2000);
        expectAWholeKeyboard(mode == std::string("fullSwap") ? "Super_L" : "Control_L");
        m_peer.reset();
        m_program.reset();
    }
}

TEST_F(KeySwapStormDesktopTest, AProgramThatIsKilledWithKeysHeldLeavesTheKeyboardWhole)
{
    for (int round = 0; round < 4; ++round) {
        startWithEditor("fullSwap");
        storm(101 + round);
        m_program->kill9();
        storm(100);
        ASSERT_TRUE(m_program->wait());
        expectAWholeKeyboard("Control_L");
        m_peer.reset();
        m_program.reset();
    }
}

TEST_F(KeySwapStormDesktopTest, AProgramThatIsStoppedAndGoesOnAgainAndAgainKeepsTheKeyboardWhole)
{
    startWithEditor("fullSwap");
    for (int round = 0; round < 20; ++round) {
        storm(37);
        m_program->signal(SIGSTOP);
        storm(11);
        m_program->signal(SIGCONT);
    }
    // On a busy machine it may have stood still for too long.
    ASSERT_TRUE(eventually(10s, [] { return OtherClient().isFloating(keyboard); })) << "it isn't tapped";
    expectAWholeKeyboard("Super_L");
}

TEST_F(KeySwapStormDesktopTest, AStoppedProgramIsFreedOfTheKeyboardAmidKeysAndHasItAgainWhenItGoesOn)
{
    startWithEditor("fullSwap");
    for (int round = 0; round < 3; ++round) {
        storm(51);
        m_program->signal(SIGSTOP);
        EXPECT_TRUE(eventually(10s, [&] {
            storm(5);
            return !OtherClient().isFloating(keyboard);
        })) << "the keyboard isn't freed";
        releaseAll();
        EXPECT_TRUE(eventually(10s, [] { return OtherClient().keysDown().isEmpty(); })) << keysDown();
        storm(20);
        m_program->signal(SIGCONT);
        EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("Re-enabled a disabled"))));
    }
    expectAWholeKeyboard("Super_L");
}

TEST_F(KeySwapStormDesktopTest, AGuardianThatIsKilledWithKeysHeldIsReplacedAndGuardsOn)
{
    startWithEditor("fullSwap");
    storm(51);
    const pid_t first = guardian();
    ASSERT_GT(first, 0);
    ASSERT_EQ(kill(first, SIGKILL), 0);
    storm(50);
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("another one takes its place"))));
    ASSERT_TRUE(eventually(10s, [&] { return guardian() > 0 && guardian() != first; }));
    expectAWholeKeyboard("Super_L");
    storm(51);
    m_program->kill9();
    ASSERT_TRUE(m_program->wait());
    expectAWholeKeyboard("Control_L");
}

TEST_F(KeySwapStormDesktopTest, LayoutsThatAreSwitchedUnderHeldKeysLeaveTheKeyboardWhole)
{
    startWithEditor("fullSwap");
    for (int round = 0; round < 6; ++round) {
        storm(31);
        setLayout(round % 2 == 0 ? "de" : "us");
        storm(30);
    }
    expectAWholeKeyboard("Super_L");
}

TEST_F(KeySwapStormDesktopTest, AKeyboardThatIsUnpluggedUnderHeldKeysComesBackWhole)
{
    startWithEditor("fullSwap");
    OtherClient other;
    for (int round = 0; round < 4; ++round) {
        storm(41);
        other.setDeviceEnabled(keyboard, false);
        EXPECT_TRUE(eventually(10s, [&] { return other.keysDown().isEmpty(); })) << keysDown();
        other.setDeviceEnabled(keyboard, true);
        EXPECT_TRUE(eventually(10s, [&] { return other.isFloating(keyboard); })) << "it isn't tapped again";
    }
    expectAWholeKeyboard("Super_L");
}

TEST_F(KeySwapStormDesktopTest, ALockScreenGetsEveryKeyAndLeavesTheKeyboardWhole)
{
    startWithEditor("fullSwap");
    storm(41);
    expectAWholeKeyboard("Super_L"); // and nothing of the grab is still on its way
    {
        KeyboardGrab lock;
        ASSERT_TRUE(lock.hasIt());
        const int key = m_hardware.key("b");
        type("bb");
        QList<int> seen;
        EXPECT_TRUE(eventually(10s, [&] {
            seen += lock.keys();
            return seen == QList<int>{key, -key, key, -key};
        }));
        storm(41);
    }
    expectAWholeKeyboard("Super_L");
}

TEST_F(KeySwapStormDesktopTest, AProgramThatIsStoppedUnderALockScreenCostsItTheKeyboardForAMomentOnly)
{
    startWithEditor("fullSwap");
    {
        KeyboardGrab lock;
        ASSERT_TRUE(lock.hasIt());
        m_program->signal(SIGSTOP);
        const int key = m_hardware.key("b");
        EXPECT_TRUE(eventually(10s, [&] {
            type("b");
            return lock.keys().contains(key);
        })) << "the screen can't be unlocked";
    }
    m_program->signal(SIGCONT);
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("Re-enabled a disabled"))));
    expectAWholeKeyboard("Super_L");
}

TEST_F(KeySwapStormDesktopTest, ASecondStartAmidKeysLeavesTheTapWithTheFirst)
{
    startWithEditor("fullSwap");
    storm(51);
    const pid_t first = guardian();
    Program second(Program::Start{.home = m_program->home()});
    storm(50);
    const auto exit = second.wait();
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->code, 0);
    EXPECT_EQ(guardian(), first);
    releaseAll();
    ASSERT_TRUE(eventually(10s, [] { return OtherClient().keysDown().isEmpty(); })) << keysDown();
    // The first has come to the front.
    ASSERT_TRUE(OtherClient().activate("Line edit"));
    ASSERT_TRUE(eventually(10s, [&] {
        m_hardware.tap("z");
        return m_peer->text().contains(u'z');
    }));
    expectAWholeKeyboard("Super_L");
}

} // namespace orvane::tests

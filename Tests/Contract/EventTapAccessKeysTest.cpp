// Slow, Bounce, Sticky and Mouse Keys under a tap. They are those of the XTEST keyboard; the grabbed one has
// none.
#include "Contract/EventTapFixture.h"

#include <QProcess>

#include <csignal>

namespace orvane::tests {
namespace {

constexpr const char* keyboard = "testkbd";

class EventTapAccessKeysTest : public EventTapFixture {
protected:
    ~EventTapAccessKeysTest() override { other.setAccessKeys(0); }

    bool hasKey(const char* text)
    {
        return eventually(10s, [&] { return window.keys().contains(QLatin1String(text)); });
    }
    std::string keys() { return window.keys().join(u' ').toStdString(); }
};

TEST_F(EventTapAccessKeysTest, TheGrabbedKeyboardHasNoneUntilItIsLetGo)
{
    constexpr unsigned some = OtherClient::slowKeys | OtherClient::stickyKeys;
    other.setAccessKeys(some);
    {
        const LambdaTap tap(taps);
        EXPECT_EQ(other.accessKeys(keyboard), 0u);
        EXPECT_EQ(other.accessKeys("Virtual core XTEST keyboard"), some);
        other.setAccessKeys(OtherClient::bounceKeys);
        EXPECT_TRUE(eventually(10s, [&] { return other.accessKeys(keyboard) == 0; }));
    }
    EXPECT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
    EXPECT_TRUE(eventually(10s, [&] { return other.accessKeys(keyboard) == OtherClient::bounceKeys; }));
}

TEST_F(EventTapAccessKeysTest, AKilledProgramGivesThemBack)
{
    other.setAccessKeys(OtherClient::stickyKeys);
    QProcess program;
    program.start(QStringLiteral(ORVANE_EVENT_TAP_PEER), QStringList());
    ASSERT_TRUE(eventually(20s, [&] { return program.readAllStandardOutput().contains("ready"); }));
    ASSERT_EQ(other.accessKeys(keyboard), 0u);
    hardware.tap(key::a);
    keysOnce(2);
    ::kill(static_cast<pid_t>(program.processId()), SIGKILL);
    EXPECT_TRUE(eventually(10s, [&] { return other.accessKeys(keyboard) == OtherClient::stickyKeys; }));
    EXPECT_TRUE(eventually(10s, [&] { return program.state() == QProcess::NotRunning; }));
}

TEST_F(EventTapAccessKeysTest, ASlowKeyCountsWhenItIsHeld)
{
    other.setAccessKeys(OtherClient::slowKeys);
    const LambdaTap tap(taps);
    hardware.tap(key::b);
    hardware.press(key::a);
    EXPECT_TRUE(hasKey("+38")) << keys();
    hardware.release(key::a);
    EXPECT_FALSE(window.keys().contains(QStringLiteral("+56"))) << keys();
}

TEST_F(EventTapAccessKeysTest, ARewrittenChordHasItsModifierUnderSlowKeys)
{
    other.setAccessKeys(OtherClient::slowKeys);
    const LambdaTap tap(taps, superCIsControlC);
    hardware.press(key::superL);
    EXPECT_TRUE(hasKey("+133")) << keys();
    hardware.press(key::c);
    EXPECT_TRUE(hasKey("+54/control")) << keys();
    hardware.release(key::c);
    hardware.release(key::superL);
    EXPECT_TRUE(eventually(10s, [&] { return other.lockedModifiers() == 0; }));
}

TEST_F(EventTapAccessKeysTest, ABouncedKeyCountsOnce)
{
    other.setAccessKeys(OtherClient::bounceKeys);
    const LambdaTap tap(taps);
    hardware.tap(key::a);
    hardware.tap(key::a);
    hardware.tap(key::b);
    EXPECT_TRUE(hasKey("+56"));
    EXPECT_EQ(window.typed(), "ab");
}

TEST_F(EventTapAccessKeysTest, AStickySuperCountsForTheRewritingAndDoesNotComeAlong)
{
    other.setAccessKeys(OtherClient::stickyKeys);
    const LambdaTap tap(taps, superCIsControlC);
    hardware.tap(key::superL);
    EXPECT_TRUE(hasKey("-133/super")) << keys();
    hardware.tap(key::c);
    EXPECT_TRUE(hasKey("+54/control")) << keys();
    hardware.tap(key::a);
    EXPECT_TRUE(hasKey("+38")) << keys();
}

TEST_F(EventTapAccessKeysTest, AHeldSuperIsNotLeftStickyByTheRewriting)
{
    other.setAccessKeys(OtherClient::stickyKeys);
    const LambdaTap tap(taps, superCIsControlC);
    hardware.press(key::superL);
    hardware.tap(key::c);
    hardware.release(key::superL);
    EXPECT_TRUE(hasKey("+54/control")) << keys();
    hardware.tap(key::a);
    EXPECT_TRUE(hasKey("+38")) << keys();
}

TEST_F(EventTapAccessKeysTest, AStickyControlCountsForAClick)
{
    other.setAccessKeys(OtherClient::stickyKeys);
    const LambdaTap tap(taps);
    hardware.tap(key::controlL);
    EXPECT_TRUE(hasKey("-37/control"));
    hardware.click(KeyWindow::place());
    EXPECT_TRUE(hasKey("b1/control")) << keys();
}

TEST_F(EventTapAccessKeysTest, MouseKeysClick)
{
    hardware.movePointer(KeyWindow::place());
    other.setAccessKeys(OtherClient::mouseKeys);
    const LambdaTap tap(taps);
    constexpr std::uint8_t keypad5 = 84;
    hardware.tap(keypad5);
    EXPECT_TRUE(hasKey("b1")) << keys();
}

} // namespace
} // namespace orvane::tests

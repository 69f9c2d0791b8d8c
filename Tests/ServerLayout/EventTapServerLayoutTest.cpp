// The event tap on a server whose own configuration gives the keyboards their layout, which is German here:
// the XTEST keyboard has the server's default one, with other key codes, until somebody gives it another.
#include "Contract/EventTapFixture.h"
#include "PlatformLinux/EventTap/DeviceKeymap.h"

#include <QProcess>

namespace orvane::tests {
namespace {

constexpr const char* xtestKeyboard = "Virtual core XTEST keyboard";
/// The key that types Y on an American keyboard.
constexpr std::uint8_t germanZ = 29;
/// The key that types Z on an American keyboard.
constexpr std::uint8_t germanY = 52;

class EventTapServerLayoutTest : public EventTapFixture {
protected:
    bool types(const QByteArray& text)
    {
        return eventually(10s, [&] { return window.typed() == text; });
    }
    void expectGermanAtOnce()
    {
        hardware.tap(germanZ);
        EXPECT_TRUE(types("z")) << window.typed().data();
        hardware.tap(germanY);
        EXPECT_TRUE(types("zy")) << window.typed().data();
    }
    /// Gives one device a layout, as the server does with a device that appears.
    void setLayoutOf(const char* device, const char* layout)
    {
        QProcess program;
        program.start(QStringLiteral("setxkbmap"),
                      {QStringLiteral("-device"), QString::number(other.idOf(device)),
                       QStringLiteral("-rules"), QStringLiteral("evdev"), QStringLiteral("-layout"),
                       QLatin1String(layout)});
        ASSERT_TRUE(program.waitForFinished());
        ASSERT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    }
};

} // namespace

// This one comes first, since it needs a server on which nobody has typed yet.
TEST_F(EventTapServerLayoutTest, WithNothingTypedTheFirstKeyHasTheKeyboardsLayout)
{
    const auto present = InputConnection::open(within(10s)).connection->keyboards();
    ASSERT_NE(present.master, 0);
    ASSERT_EQ(present.lastUsed, present.master) << "somebody has typed already";
    LambdaTap tap(taps);
    ASSERT_TRUE(tap.tap()) << log.messages().join(u'\n').toStdString();
    expectGermanAtOnce();
    hardware.tap(key::superL);
    EXPECT_TRUE(eventually(10s, [&] { return tap.seen().size() == 6; }));
    EXPECT_EQ(tap.seen().back().type, EventType::flagsChanged) << "its modifiers are elsewhere";
}

TEST_F(EventTapServerLayoutTest, AKeyOfXtestThatCameLastDoesNotDecideTheLayout)
{
    setLayoutOf(xtestKeyboard, "us");
    other.pressOnXtestKeyboard(key::shiftL);
    other.releaseOnXtestKeyboard(key::shiftL);
    ASSERT_TRUE(eventually(10s, [&] { return !window.keys().isEmpty(); }));
    LambdaTap tap(taps);
    expectGermanAtOnce();
}

TEST_F(EventTapServerLayoutTest, AKeyOfTheUsersThatCameLastDecidesTheLayout)
{
    setLayoutOf(xtestKeyboard, "us");
    hardware.tap(key::a);
    ASSERT_TRUE(types("a"));
    LambdaTap tap(taps);
    hardware.tap(germanZ);
    EXPECT_TRUE(types("az")) << window.typed().data();
}

TEST_F(EventTapServerLayoutTest, ALayoutThatWasSetForAllHoldsThoughAnotherKeyboardCameLater)
{
    for (const char* device : {xtestKeyboard, "testkbd"})
        setLayoutOf(device, "us");
    other.pressOnXtestKeyboard(key::shiftL);
    other.releaseOnXtestKeyboard(key::shiftL);
    {
        LambdaTap tap(taps);
        hardware.tap(germanZ);
        EXPECT_TRUE(types("y")) << window.typed().data();
    }
    for (const char* device : {xtestKeyboard, "testkbd", "testkbd2"})
        setLayoutOf(device, "de");
}

TEST_F(EventTapServerLayoutTest, APostedKeyHasTheKeyboardsLayout)
{
    setLayoutOf(xtestKeyboard, "us");
    other.pressOnXtestKeyboard(key::shiftL);
    other.releaseOnXtestKeyboard(key::shiftL);
    Event event;
    event.type = EventType::keyDown;
    event.keycode = 16; // the key of the American Y
    taps.post(EventTaps::Location::hid, event);
    event.type = EventType::keyUp;
    taps.post(EventTaps::Location::hid, event);
    EXPECT_TRUE(types("z")) << window.typed().data();
}

TEST_F(EventTapServerLayoutTest, AKeymapThatCannotBeCopiedIsReported)
{
    const auto connection = InputConnection::open(within(10s)).connection;
    const DeviceKeymap keymap = DeviceKeymap::of(*connection, connection->keyboards().xtest);
    ASSERT_FALSE(keymap.isEmpty());
    EXPECT_EQ(keymap.applyTo(*connection, connection->keyboards().xtest), "");
    const auto pointer = static_cast<DeviceId>(other.idOf("testptr"));
    EXPECT_EQ(keymap.applyTo(*connection, pointer), "the X server doesn't say which keymap it has");
}

} // namespace orvane::tests

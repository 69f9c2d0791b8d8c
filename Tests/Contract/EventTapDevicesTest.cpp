// Keyboards that come and go, are taken by other programs, and change their layout.
#include "Contract/EventTapFixture.h"

#include <QProcess>

namespace orvane::tests {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* keyboard = "testkbd";

class EventTapDevicesTest : public EventTapFixture {
protected:
    static QByteArray output(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
        return process.readAllStandardOutput();
    }
    /// Returns the server's whole present keymap.
    static QByteArray keymap()
    {
        return output(QStringLiteral("xkbcomp"),
                      {QStringLiteral("-w0"), qEnvironmentVariable("DISPLAY"), QStringLiteral("-")});
    }
    static void setLayout(const char* layout)
    {
        output(QStringLiteral("setxkbmap"), {QStringLiteral("-rules"), QStringLiteral("evdev"),
                                             QStringLiteral("-layout"), QLatin1String(layout)});
    }
    bool typesOnce(const QByteArray& text)
    {
        return eventually(10s, [&] { return window.typed() == text; });
    }
};

TEST_F(EventTapDevicesTest, TheKeyboardIsGrabbedOnlyWhileATapIsEnabled)
{
    EXPECT_FALSE(other.isFloating(keyboard));
    {
        LambdaTap tap(taps);
        EXPECT_TRUE(other.isFloating(keyboard));
        tap.tap()->enable(false);
        EXPECT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
        EXPECT_TRUE(tap.comesToBeEnabled());
        EXPECT_TRUE(other.isFloating(keyboard));
        tap.tap()->removeFromMainRunLoop();
        EXPECT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
        tap.tap()->addToMainRunLoop();
        EXPECT_TRUE(tap.comesToBeEnabled());
        EXPECT_TRUE(other.isFloating(keyboard));
    }
    EXPECT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
}

TEST_F(EventTapDevicesTest, ThereIsAThreadOnlyWhileThereIsATap)
{
    const auto before = threadsSince();
    {
        const LambdaTap tap(taps);
        EXPECT_EQ(threadsSince(before).size(), 1);
    }
    EXPECT_TRUE(eventually(10s, [&] { return threadsSince(before).isEmpty(); }));
}

TEST_F(EventTapDevicesTest, AnUnpluggedKeyboardsKeysComeUpAndItIsTakenAgainWhenItReturns)
{
    LambdaTap tap(taps);
    hardware.press(key::shiftL);
    hardware.press(key::a);
    keysOnce(2);
    other.setDeviceEnabled(keyboard, false);
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown().isEmpty(); }));
    other.setDeviceEnabled(keyboard, true);
    EXPECT_TRUE(eventually(10s, [&] { return other.isFloating(keyboard); }));
    const auto seenBefore = tap.seen().size();
    hardware.tap(key::b);
    EXPECT_TRUE(typesOnce("Ab")) << window.typed().data();
    EXPECT_TRUE(eventually(10s, [&] { return tap.seen().size() == seenBefore + 2; }));
}

TEST_F(EventTapDevicesTest, WhereAnotherProgramHasTheKeyboardATapIsMadeButNotEnabled)
{
    OtherClient rival;
    ASSERT_TRUE(rival.grabDevice(keyboard));
    LambdaTap tap(taps, {}, keyboardMask, EventTaps::Options::defaultTap, EventTaps::Placement::headInsert,
                  LambdaTap::Enabling::once);
    ASSERT_TRUE(tap.tap()) << "it can be enabled later";
    EXPECT_FALSE(tap.tap()->isEnabled());
    EXPECT_THAT(log.messages().join(QLatin1Char('\n')).toStdString(),
                AllOf(HasSubstr("The keyboard \"testkbd\" is left alone: another program has grabbed it"),
                      HasSubstr("no keyboard could be grabbed")));
}

TEST_F(EventTapDevicesTest, ATapThatWasMadeMeanwhileCanBeEnabledOnceTheOtherProgramIsGone)
{
    auto rival = std::make_unique<OtherClient>();
    ASSERT_TRUE(rival->grabDevice(keyboard));
    LambdaTap tap(taps, {}, keyboardMask, EventTaps::Options::defaultTap, EventTaps::Placement::headInsert,
                  LambdaTap::Enabling::once);
    rival.reset();
    ASSERT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
    ASSERT_TRUE(tap.comesToBeEnabled());
    hardware.tap(key::a);
    EXPECT_TRUE(typesOnce("a"));
    EXPECT_TRUE(eventually(10s, [&] { return tap.seen().size() == 2; })) << tap.seen().size();
}

TEST_F(EventTapDevicesTest, AnEnabledTapWhoseKeyboardsAreLostToAnotherStaysDisabled)
{
    LambdaTap tap(taps);
    tap.tap()->enable(false);
    ASSERT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
    OtherClient rival;
    ASSERT_TRUE(rival.grabDevice(keyboard));
    tap.tap()->enable(true);
    EXPECT_FALSE(tap.tap()->isEnabled());
    // A tap that tries again and again logs the reason once.
    const auto lines = log.messages();
    tap.tap()->enable(true);
    EXPECT_EQ(log.messages(), lines);
}

TEST_F(EventTapDevicesTest, AMaskWithoutKeysIsUnsupported)
{
    LambdaTap tap(taps, {}, eventMaskBit(EventType::mouseMoved));
    EXPECT_EQ(tap.tap(), nullptr);
    EXPECT_THAT(log.messages().join(QLatin1Char('\n')).toStdString(), HasSubstr("can only see keys"));
}

TEST_F(EventTapDevicesTest, ALayoutChangedUnderATapAndBackLeavesNoTrace)
{
    hardware.tap(key::a); // the server's map is that of the keyboard typed on last
    ASSERT_TRUE(typesOnce("a"));
    const QByteArray before = keymap();
    {
        LambdaTap tap(taps);
        hardware.tap(key::a);
        ASSERT_TRUE(typesOnce("aa"));
        setLayout("de");
        hardware.tap(key::y);
        ASSERT_TRUE(typesOnce("aaz")) << window.typed().data();
        setLayout("us");
        hardware.tap(key::y);
        ASSERT_TRUE(typesOnce("aazy")) << window.typed().data();
    }
    ASSERT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
    hardware.tap(key::y);
    ASSERT_TRUE(typesOnce("aazyy")) << window.typed().data();
    EXPECT_EQ(keymap(), before);
}

TEST_F(EventTapDevicesTest, ALayoutChosenUnderATapStaysWhenTheTapIsGone)
{
    hardware.tap(key::a);
    ASSERT_TRUE(typesOnce("a"));
    const QByteArray before = keymap();
    {
        LambdaTap tap(taps);
        setLayout("de");
        hardware.tap(key::y);
        ASSERT_TRUE(typesOnce("az")) << window.typed().data();
    }
    ASSERT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
    hardware.tap(key::y);
    EXPECT_TRUE(typesOnce("azz")) << "the keyboard has brought its old layout back: "
                                  << window.typed().data();
    setLayout("us");
    hardware.tap(key::y);
    EXPECT_TRUE(typesOnce("azzy")) << window.typed().data();
    EXPECT_EQ(keymap(), before);
}

TEST_F(EventTapDevicesTest, ARepeatRateChosenUnderATapStaysWhenTheTapIsGone)
{
    const auto before = other.repeatRate();
    {
        LambdaTap tap(taps);
        hardware.tap(key::a);
        ASSERT_TRUE(typesOnce("a"));
        other.setRepeatRate({333, 44});
    }
    ASSERT_TRUE(eventually(10s, [&] { return !other.isFloating(keyboard); }));
    hardware.tap(key::a);
    ASSERT_TRUE(typesOnce("aa"));
    EXPECT_EQ(other.repeatRate(), (OtherClient::RepeatRate{333, 44}));
    other.setRepeatRate(before);
}

} // namespace
} // namespace orvane::tests

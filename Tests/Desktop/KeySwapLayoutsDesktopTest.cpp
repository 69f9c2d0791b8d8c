// Ctrl Shortcuts with other layouts, with locks, and with keyboards that come and go.
#include "Desktop/KeySwapFixture.h"

namespace orvane::tests {
namespace {

constexpr const char* keyboard = "testkbd";

class KeySwapLayoutsDesktopTest : public KeySwapFixture {
protected:
    ~KeySwapLayoutsDesktopTest() override { setLayout("us"); }

    static void setLayout(const char* layout)
    {
        QProcess::execute(QStringLiteral("setxkbmap"),
                          {QStringLiteral("-rules"), QStringLiteral("evdev"), QStringLiteral("-model"),
                           QStringLiteral("pc105"), QStringLiteral("-layout"), QLatin1String(layout)});
    }
    void startWithEditor(const char* mode)
    {
        start(mode);
        m_peer = std::make_unique<Peer>(Peer::lineEdit());
        ASSERT_TRUE(m_peer->tells(QStringLiteral("focused")));
    }
    void TearDown() override
    {
        m_peer.reset();
        KeySwapFixture::TearDown();
    }
    [[nodiscard]] bool types(const char16_t* text)
    {
        return m_peer->tells(QStringLiteral("text:") + QString::fromUtf16(text));
    }
    [[nodiscard]] bool marks(const char16_t* text)
    {
        return m_peer->tells(QStringLiteral("marked:") + QString::fromUtf16(text));
    }
    [[nodiscard]] bool locks(unsigned modifiers)
    {
        return eventually(10s, [&] { return OtherClient().lockedModifiers() == modifiers; });
    }

    static constexpr unsigned caps = 1 << 1, num = 1 << 4;
    // X key codes, named by what the keys have on a German layout.
    static constexpr std::uint8_t altGr = 108, letterQ = 24, letterE = 26, letterZ = 29, aUmlaut = 48,
                                  keypad1 = 87;
    std::unique_ptr<Peer> m_peer;
};

} // namespace

TEST_F(KeySwapLayoutsDesktopTest, TheThirdLevelOfAGermanLayoutIsTypedInEachMode)
{
    setLayout("de");
    for (const char* mode : {"commonShortcuts", "fullSwap"}) {
        startWithEditor(mode);
        m_hardware.press(altGr);
        m_hardware.tap(letterQ);
        m_hardware.tap(letterE);
        m_hardware.release(altGr);
        EXPECT_TRUE(types(u"@€")) << mode << ": " << m_peer->text().toStdString();
        m_hardware.tap(letterZ);
        EXPECT_TRUE(types(u"@€z")) << mode;
        m_peer.reset();
        m_program.reset();
    }
}

TEST_F(KeySwapLayoutsDesktopTest, ALayoutChosenWhileTheProgramRunsHoldsForTheNextKeyAndAfterItsEnd)
{
    startWithEditor("fullSwap");
    m_hardware.tap(letterZ);
    ASSERT_TRUE(types(u"y"));
    setLayout("de");
    m_hardware.tap(letterZ);
    EXPECT_TRUE(types(u"yz"));
    chord("Super_L", "a");
    EXPECT_TRUE(marks(u"yz"));
    m_program.reset();
    m_hardware.tap("End");
    m_hardware.tap(letterZ);
    EXPECT_TRUE(types(u"yzz"));
}

TEST_F(KeySwapLayoutsDesktopTest, CapsLockUnderAGermanLayoutHoldsForItsOwnLettersToo)
{
    setLayout("de");
    startWithEditor("fullSwap");
    m_hardware.tap("Caps_Lock");
    EXPECT_TRUE(locks(caps));
    m_hardware.tap(aUmlaut);
    m_hardware.tap(letterZ);
    EXPECT_TRUE(types(u"ÄZ")) << m_peer->text().toStdString();
    chord("Super_L", "a");
    EXPECT_TRUE(marks(u"ÄZ")) << "a lock is no modifier of a shortcut";
    m_hardware.tap("End");
    m_hardware.tap("Caps_Lock");
    EXPECT_TRUE(locks(0));
    m_hardware.tap(aUmlaut);
    EXPECT_TRUE(types(u"ÄZä"));
}

TEST_F(KeySwapLayoutsDesktopTest, NumLockChangesTheKeypadAndNoShortcut)
{
    startWithEditor("fullSwap");
    m_hardware.tap("Num_Lock");
    EXPECT_TRUE(locks(num));
    m_hardware.tap(keypad1);
    EXPECT_TRUE(types(u"1"));
    chord("Super_L", "a");
    EXPECT_TRUE(marks(u"1"));
    m_hardware.tap("Num_Lock");
    EXPECT_TRUE(locks(0));
    m_hardware.tap(keypad1); // End
    EXPECT_TRUE(marks(u""));
}

TEST_F(KeySwapLayoutsDesktopTest, LocksSurviveTheProgramsStartAndEnd)
{
    m_hardware.tap("Caps_Lock");
    m_hardware.tap("Num_Lock");
    ASSERT_TRUE(locks(caps | num));
    startWithEditor("commonShortcuts");
    m_hardware.tap("a");
    EXPECT_TRUE(types(u"A"));
    m_program.reset();
    m_hardware.tap(keypad1);
    EXPECT_TRUE(types(u"A1"));
    EXPECT_TRUE(locks(caps | num));
    m_hardware.tap("Caps_Lock");
    m_hardware.tap("Num_Lock");
    EXPECT_TRUE(locks(0));
}

TEST_F(KeySwapLayoutsDesktopTest, AKeyboardThatIsUnpluggedAndPluggedInAgainIsTappedAgain)
{
    startWithEditor("fullSwap");
    OtherClient other;
    m_hardware.press("Shift_L");
    m_hardware.press("a");
    ASSERT_TRUE(types(u"A"));
    other.setDeviceEnabled(keyboard, false);
    EXPECT_TRUE(eventually(10s, [&] { return other.keysDown().isEmpty(); })) << "its keys come up";
    other.setDeviceEnabled(keyboard, true);
    ASSERT_TRUE(eventually(10s, [&] { return other.isFloating(keyboard); })) << "it is grabbed again";
    m_hardware.release("a");
    m_hardware.release("Shift_L");
    const QString text = m_peer->text(); // it may have been repeated
    chord("Super_L", "a");
    EXPECT_TRUE(m_peer->tells(QStringLiteral("marked:") + text));
    m_hardware.tap("b");
    EXPECT_TRUE(types(u"b"));
    EXPECT_FALSE(m_program->log().join(u'\n').contains(QStringLiteral("disabled")));
}

} // namespace orvane::tests

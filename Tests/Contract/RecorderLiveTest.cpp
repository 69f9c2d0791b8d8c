// The recorder on the private desktop, used as a person does it.
#include "Contract/EventMonitorsFixture.h"
#include "Fakes/FakePlatform.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Recorder/RecorderAlertPanel.h"
#include "KeyboardShortcuts/Recorder/RecorderCocoaView.h"
#include "KeyboardShortcuts/Registration/CarbonKeyboardShortcuts.h"
#include "PlatformLinux/HotKeys/X11HotKeys.h"
#include "PlatformLinux/Keys/ServerKeymap.h"
#include "PlatformLinux/Keys/XkbInputSources.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "PlatformLinux/Shortcuts/DesktopShortcuts.h"

#include <QProcess>
#include <QPushButton>

namespace orvane::tests {
namespace {

using KeyboardShortcuts::getShortcut;
using KeyboardShortcuts::isPaused;
using KeyboardShortcuts::Name;
using KeyboardShortcuts::RecorderAlertPanel;
using KeyboardShortcuts::RecorderCocoa;
using KeyboardShortcuts::Shortcut;

const Shortcut controlOptionK(40, 0x1800);
const Shortcut optionTab(48, 0x800);

/// Monitors, hot keys and the run loop are those of the Linux layer.
class RecorderLiveTest : public EventMonitorsFixture {
protected:
    RecorderLiveTest()
    {
        auto* lines = new QVBoxLayout(&window);
        for (QWidget* widget : std::initializer_list<QWidget*>{&recorder, &button})
            lines->addWidget(widget);
        QObject::connect(&button, &QPushButton::clicked, [this] { ++clicks; });
        window.resize(300, 160);
        EXPECT_TRUE(settleWindowManager());
        window.show();
        window.activateWindow();
        // The recorder accepts the focus in the first turn after the window has come to the front.
        EXPECT_TRUE(
            eventually(deadline, [this] { return window.isActiveWindow() && recorder.canBecomeKeyView(); }));
        holdFocus(static_cast<std::uint32_t>(window.winId()));
        EXPECT_FALSE(recorder.isRecording());
    }
    ~RecorderLiveTest() override { EXPECT_FALSE(isPaused()); }

    void type(std::initializer_list<const char*> modifiers, const char* key)
    {
        // The program's requests to the server have to arrive before the keys, which take another way.
        QGuiApplication::sync();
        for (const char* modifier : modifiers)
            hardware.press(modifier);
        hardware.tap(key);
        for (const char* modifier : modifiers)
            hardware.release(modifier);
    }
    void click(const QWidget& widget)
    {
        const QPoint place = widget.mapToGlobal(widget.rect().center());
        hardware.click(place * widget.devicePixelRatio());
    }
    void startRecording()
    {
        click(recorder);
        ASSERT_TRUE(becomes([this] { return recorder.isRecording(); }));
    }
    static void setLayout(const QString& layout)
    {
        const QStringList arguments{QStringLiteral("-rules"), QStringLiteral("evdev"),
                                    QStringLiteral("-layout"), layout};
        ASSERT_EQ(QProcess::execute(QStringLiteral("setxkbmap"), arguments), 0);
    }
    bool becomes(const std::function<bool()>& condition) { return eventually(deadline, condition); }
    bool shows(const QString& text)
    {
        return becomes([&] { return recorder.stringValue() == text; });
    }
    bool ends()
    {
        return becomes([this] { return !recorder.isRecording(); });
    }
    /// True if the held key repeats, whichever program gets it.
    bool repeatsCome()
    {
        int repeats = 0;
        const auto monitor = monitors.addLocalMonitor(keyEvents, [&](const MonitoredEvent& event) {
            repeats += event.event.autorepeat != 0 ? 1 : 0;
            return Disposition::pass;
        });
        return becomes([&] { return repeats >= 3; });
    }
    [[nodiscard]] RecorderAlertPanel* alert() const { return window.findChild<RecorderAlertPanel*>(); }
    bool alertComes()
    {
        return becomes([this] { return alert() && alert()->isActiveWindow(); });
    }

    FakePlatform fake;
    ServerKeymap keymap;
    XkbInputSources inputSources{keymap, center};
    DesktopShortcuts desktopShortcuts{keymap};
    X11HotKeys hotKeys{log, desktopShortcuts};
    QtRunLoop runLoop;
    Platform live{.accessibility = fake.accessibility,
                  .application = fake.application,
                  .mainBundle = fake.bundle,
                  .clock = fake.clock,
                  .defaultNotificationCenter = fake.notificationCenter,
                  .desktopPicture = fake.desktopPicture,
                  .eventMonitors = monitors,
                  .eventTaps = fake.eventTaps,
                  .fileManager = fake.fileManager,
                  .generalPasteboard = fake.generalPasteboard,
                  .hotKeys = hotKeys,
                  .http = fake.http,
                  .inputSources = inputSources,
                  .loginItem = fake.loginItem,
                  .log = log,
                  .overlays = fake.overlays,
                  .panels = fake.panels,
                  .permissions = fake.permissions,
                  .pictures = fake.pictures,
                  .powerAssertions = fake.powerAssertions,
                  .mainRunLoop = runLoop,
                  .screenCapture = fake.screenCapture,
                  .screens = screens,
                  .sound = fake.sound,
                  .standardDefaults = fake.defaults,
                  .systemStatusBar = fake.statusBar,
                  .textRecognition = fake.textRecognition,
                  .thumbnails = fake.thumbnails,
                  .windowDrags = fake.windowDrags,
                  .sharedWorkspace = fake.workspace};
    PlatformScope scope{live};
    KeyboardShortcuts::StateScope state;
    int clicks = 0;
    int fired = 0;
    QWidget window;
    RecorderCocoa recorder{Name(QStringLiteral("recorded"))};
    QPushButton button;
};

TEST_F(RecorderLiveTest, RecordsWhatIsTyped)
{
    startRecording();
    EXPECT_TRUE(isPaused());
    type({"Control_L", "Alt_L"}, "k");
    EXPECT_TRUE(becomes([this] { return recorder.stringValue() == QStringLiteral("⌃⌥K"); }));
    EXPECT_EQ(getShortcut(Name(QStringLiteral("recorded"))), controlOptionK);
    EXPECT_FALSE(recorder.isRecording());
}

TEST_F(RecorderLiveTest, ShiftAloneBeepsAndCapsLockIsNoModifier)
{
    startRecording();
    type({"Shift_L"}, "a");
    EXPECT_TRUE(becomes([this] { return fake.sound.beeps == 1; }));
    type({}, "Caps_Lock");
    type({}, "a");
    EXPECT_TRUE(becomes([this] { return fake.sound.beeps == 2; }));
    type({"Alt_L"}, "a");
    type({}, "Caps_Lock");
    EXPECT_TRUE(shows(QStringLiteral("⌥A")));
    EXPECT_EQ(getShortcut(Name(QStringLiteral("recorded"))), Shortcut(0, 0x800));
    EXPECT_EQ(fake.sound.beeps, 2);
}

TEST_F(RecorderLiveTest, AFunctionKeyNeedsNoModifierAndShiftIsTakenWithIt)
{
    startRecording();
    type({}, "F5");
    EXPECT_TRUE(shows(QStringLiteral("F5")));
    EXPECT_TRUE(ends());
    startRecording();
    type({"Shift_L"}, "F5");
    EXPECT_TRUE(shows(QStringLiteral("⇧F5")));
}

TEST_F(RecorderLiveTest, PauseAndMediaKeysAreRecordedAloneAndFire)
{
    const Name name(QStringLiteral("recorded"));
    KeyboardShortcuts::onKeyUp(name, [this] { ++fired; });
    int expected = 0;
    for (const auto& [key, text] : {std::pair{"Pause", u"Pause"}, std::pair{"XF86AudioPlay", u"Play"},
                                    std::pair{"XF86AudioMute", u"Mute"}}) {
        startRecording();
        type({}, key);
        EXPECT_TRUE(shows(QString::fromUtf16(text))) << key;
        ASSERT_TRUE(ends());
        ASSERT_TRUE(becomes([] { return !QWidget::keyboardGrabber(); }));
        type({}, key);
        ++expected;
        EXPECT_TRUE(becomes([&] { return fired == expected; })) << key;
    }
    EXPECT_EQ(fake.sound.beeps, 0);
}

TEST_F(RecorderLiveTest, InsertIsCalledInsert)
{
    startRecording();
    type({"Control_L"}, "Insert");
    EXPECT_TRUE(shows(QStringLiteral("⌃Insert")));
    EXPECT_EQ(recorder.spokenValue(), QStringLiteral("Control Insert"));
}

TEST_F(RecorderLiveTest, AChordWithAltGrBeepsAndALockedThirdLevelDoesNotMatter)
{
    static constexpr std::uint8_t altGr = 108;
    setLayout(QStringLiteral("de"));
    startRecording();
    QGuiApplication::sync();
    hardware.press(altGr);
    hardware.press("Control_L");
    hardware.tap("k");
    hardware.release("Control_L");
    hardware.release(altGr);
    EXPECT_TRUE(becomes([this] { return fake.sound.beeps == 1; }));
    EXPECT_TRUE(recorder.isRecording());
    other.lockModifiers(OtherClient::thirdLevelModifier);
    type({"Control_L", "Alt_L"}, "k");
    EXPECT_TRUE(shows(QStringLiteral("⌃⌥K")));
    other.lockModifiers(0);
    setLayout(QStringLiteral("us"));
}

TEST_F(RecorderLiveTest, AnExistingShortcutIsRecordedAgainThoughThePointerIsOutside)
{
    const Name name(QStringLiteral("recorded"));
    KeyboardShortcuts::setShortcut(controlOptionK, name);
    KeyboardShortcuts::onKeyUp(name, [this] { ++fired; });
    int changes = 0;
    recorder.setOnChange([&](const std::optional<Shortcut>& shortcut) {
        EXPECT_EQ(shortcut, controlOptionK);
        ++changes;
    });
    startRecording();
    hardware.movePointer({5, 800});
    ASSERT_TRUE(becomes([] { return !QWidget::keyboardGrabber(); }));
    type({"Control_L", "Alt_L"}, "k");
    EXPECT_TRUE(becomes([&] { return changes == 1; }));
    EXPECT_TRUE(ends());
    type({"Control_L", "Alt_L"}, "k");
    EXPECT_TRUE(becomes([this] { return fired > 0; }));
    EXPECT_EQ(fired, 1) << "the recording itself fired";
}

TEST_F(RecorderLiveTest, AKeyThatNobodyKnowsBeeps)
{
    static constexpr std::uint8_t withoutSymbol = 93;
    startRecording();
    QGuiApplication::sync();
    hardware.tap(withoutSymbol);
    EXPECT_TRUE(becomes([this] { return fake.sound.beeps == 1; }));
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_EQ(recorder.stringValue(), QString());
    type({}, "Escape");
    EXPECT_TRUE(ends());
}

TEST_F(RecorderLiveTest, EscapeLeavesTheOldShortcutWhichFiresAgain)
{
    const Name name(QStringLiteral("recorded"));
    KeyboardShortcuts::setShortcut(controlOptionK, name);
    KeyboardShortcuts::onKeyUp(name, [this] { ++fired; });
    startRecording();
    type({}, "Escape");
    ASSERT_TRUE(ends());
    EXPECT_EQ(recorder.stringValue(), QStringLiteral("⌃⌥K"));
    type({"Control_L", "Alt_L"}, "k");
    EXPECT_TRUE(becomes([this] { return fired == 1; }));
}

TEST_F(RecorderLiveTest, DeleteClearsAndWithCommandItIsAKeyLikeAnother)
{
    for (const char* key : {"BackSpace", "Delete"}) {
        KeyboardShortcuts::setShortcut(controlOptionK, Name(QStringLiteral("recorded")));
        startRecording();
        type({}, key);
        EXPECT_TRUE(shows(QString())) << key;
        EXPECT_EQ(getShortcut(Name(QStringLiteral("recorded"))), std::nullopt);
        EXPECT_TRUE(recorder.isRecording());
        type({"Super_L"}, key);
        EXPECT_TRUE(becomes([this] { return !recorder.stringValue().isEmpty(); })) << key;
        EXPECT_TRUE(ends());
    }
    EXPECT_EQ(recorder.stringValue(), QStringLiteral("⌘⌦"));
    EXPECT_EQ(fake.sound.beeps, 0);
}

TEST_F(RecorderLiveTest, AClickOnItGoesOnRecording)
{
    startRecording();
    click(recorder);
    type({"Shift_L"}, "a");
    EXPECT_TRUE(becomes([this] { return fake.sound.beeps == 1; })) << "behind the click";
    EXPECT_TRUE(recorder.isRecording());
    type({}, "Escape");
    EXPECT_TRUE(ends());
}

TEST_F(RecorderLiveTest, AnotherRecorderOfTheNameShowsTheChangeAtOnce)
{
    RecorderCocoa twin{Name(QStringLiteral("recorded"))};
    startRecording();
    type({"Control_L", "Alt_L"}, "k");
    EXPECT_TRUE(shows(QStringLiteral("⌃⌥K")));
    EXPECT_EQ(twin.stringValue(), QStringLiteral("⌃⌥K"));
}

TEST_F(RecorderLiveTest, AMenuItemsShortcutIsRefusedAndRecordingGoesOn)
{
    MenuItem quit;
    quit.title = QStringLiteral("Quit");
    quit.keyEquivalent = QStringLiteral("k");
    fake.application.menu = std::make_shared<Menu>(Menu{{}, {quit}});
    startRecording();
    type({"Super_L"}, "k");
    ASSERT_TRUE(alertComes());
    EXPECT_TRUE(alert()->messageText().contains(QStringLiteral("“Quit”")));
    type({}, "Return");
    EXPECT_TRUE(becomes([this] { return recorder.isRecording(); }));
    type({"Control_L"}, "k");
    EXPECT_TRUE(shows(QStringLiteral("⌃K")));
}

TEST_F(RecorderLiveTest, AShortcutInForceThatIsHeldAtItsRecordingDoesNotFireEither)
{
    const Name inForce(QStringLiteral("in force"), controlOptionK);
    KeyboardShortcuts::onKeyDown(inForce, [this] { ++fired; });
    startRecording();
    QGuiApplication::sync();
    for (const char* key : {"Control_L", "Alt_L", "k"})
        hardware.press(key);
    ASSERT_TRUE(shows(QStringLiteral("⌃⌥K")));
    EXPECT_TRUE(repeatsCome());
    for (const char* key : {"k", "Alt_L", "Control_L"})
        hardware.release(key);
    ASSERT_TRUE(becomes([] { return !QWidget::keyboardGrabber(); }));
    EXPECT_EQ(fired, 0);
    type({"Control_L", "Alt_L"}, "k");
    EXPECT_TRUE(becomes([this] { return fired > 0; }));
    EXPECT_EQ(fired, 1);
}

TEST_F(RecorderLiveTest, TheRepeatsOfTheKeyThatEndsItAreNobodys)
{
    static constexpr int keyOfK = 45;
    other.grabKey(keyOfK);
    startRecording();
    QGuiApplication::sync();
    hardware.press("Alt_L");
    hardware.press(keyOfK);
    ASSERT_TRUE(shows(QStringLiteral("⌥K")));
    ASSERT_TRUE(ends());
    EXPECT_TRUE(repeatsCome());
    EXPECT_EQ(other.grabbedKeys(), QList<int>());
    hardware.release(keyOfK);
    hardware.release("Alt_L");
    ASSERT_TRUE(becomes([] { return !QWidget::keyboardGrabber(); }));
    QGuiApplication::sync();
    hardware.tap(keyOfK);
    EXPECT_TRUE(becomes([this] { return other.grabbedKeys().contains(keyOfK); })) << "from then on they are";
}

TEST_F(RecorderLiveTest, AShortcutInForceIsRecordedAndDoesNotFire)
{
    const Name inForce(QStringLiteral("in force"), controlOptionK);
    KeyboardShortcuts::onKeyUp(inForce, [this] { ++fired; });
    startRecording();
    type({"Control_L", "Alt_L"}, "k");
    EXPECT_TRUE(becomes([this] { return recorder.stringValue() == QStringLiteral("⌃⌥K"); }));
    EXPECT_EQ(fired, 0);
    type({"Control_L", "Alt_L"}, "k");
    EXPECT_TRUE(becomes([this] { return fired > 0; }));
    EXPECT_EQ(fired, 1);
}

TEST_F(RecorderLiveTest, ADesktopShortcutIsRefusedInsteadOfDoingItsWork)
{
    ASSERT_TRUE(
        becomes([] { return KeyboardShortcuts::CarbonKeyboardShortcuts::system().contains(optionTab); }));
    startRecording();
    type({"Alt_L"}, "Tab");
    ASSERT_TRUE(becomes([this] { return window.findChild<RecorderAlertPanel*>() != nullptr; }));
    const QPointer<RecorderAlertPanel> alert = window.findChild<RecorderAlertPanel*>();
    ASSERT_TRUE(becomes([&] { return alert && alert->isActiveWindow(); }));
    EXPECT_FALSE(isPaused());
    type({}, "Return");
    EXPECT_TRUE(becomes([this] { return recorder.isRecording(); }));
    EXPECT_FALSE(alert && alert->isVisible());
    type({}, "Escape");
    EXPECT_TRUE(becomes([this] { return !recorder.isRecording(); }));
    EXPECT_EQ(recorder.stringValue(), QString());
}

TEST_F(RecorderLiveTest, TheClickThatStartsItLetsThePointerGo)
{
    startRecording();
    type({}, "Escape");
    ASSERT_TRUE(becomes([this] { return !recorder.isRecording(); }));
    hardware.movePointer(button.mapToGlobal(button.rect().center()) * button.devicePixelRatio());
    EXPECT_TRUE(becomes([this] { return button.underMouse() && !recorder.underMouse(); }));
}

TEST_F(RecorderLiveTest, ItTakesTheKeyboardForItselfAsLongAsThePointerIsOnItsWindow)
{
    // A panel's menu doesn't open while a client has grabbed the whole keyboard.
    static constexpr int keyOfX = 53;
    other.grabKey(keyOfX);
    startRecording();
    EXPECT_EQ(QWidget::keyboardGrabber(), &recorder);
    hardware.movePointer({5, 800});
    ASSERT_TRUE(becomes([] { return !QWidget::keyboardGrabber(); }));
    type({}, "x");
    EXPECT_TRUE(becomes([this] { return other.grabbedKeys().contains(keyOfX); }));
    EXPECT_TRUE(recorder.isRecording());
    hardware.movePointer(window.mapToGlobal(QPoint(4, 4)) * window.devicePixelRatio());
    ASSERT_TRUE(becomes([this] { return QWidget::keyboardGrabber() == &recorder; }));
    EXPECT_EQ(fake.sound.beeps, 0);
    type({}, "x");
    EXPECT_TRUE(becomes([this] { return fake.sound.beeps == 1; })) << "which is no shortcut";
    type({}, "Escape");
    EXPECT_TRUE(becomes([this] { return !recorder.isRecording(); }));
    EXPECT_TRUE(becomes([] { return !QWidget::keyboardGrabber(); }));
}

TEST_F(RecorderLiveTest, AClickOnAnotherControlEndsItAndCounts)
{
    startRecording();
    click(button);
    EXPECT_TRUE(becomes([this] { return clicks == 1; }));
    EXPECT_FALSE(recorder.isRecording());
}

TEST_F(RecorderLiveTest, TabMovesOnToTheNextControl)
{
    startRecording();
    type({}, "Tab");
    EXPECT_TRUE(becomes([this] { return button.hasFocus(); }));
    EXPECT_FALSE(recorder.isRecording());
}

TEST_F(RecorderLiveTest, AnotherWindowInFrontEndsIt)
{
    startRecording();
    NotingWindow elsewhere;
    EXPECT_TRUE(becomes([this] { return !recorder.isRecording(); }));
    type({}, "x");
    EXPECT_TRUE(becomes([&] { return elsewhere.edit.text() == QStringLiteral("x"); }))
        << "the keyboard is free again";
}

} // namespace
} // namespace orvane::tests

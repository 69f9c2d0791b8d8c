// The time after a recording, while the key that has ended it is still held.
#include "KeyboardShortcuts/Recorder/RecorderCocoaView.h"
#include "Unit/KeyboardShortcuts/RecorderFixture.h"

namespace {

using namespace orvane;
using namespace orvane::tests;
using KeyboardShortcuts::isPaused;

namespace flag = orvane::eventFlag;

struct Ending {
    KeyboardShortcuts::Key key;
    EventFlags flags;
};

class RecorderHeldKeyTest : public RecorderFixture {
protected:
    RecorderHeldKeyTest()
    {
        addMenuItem("Quit", "q");
        fake.hotKeys.setSymbolicHotKeys({{118, 0x800}}); // the desktop closes windows with option-F4
        recorder = addRecorder("toggle");
        open();
        recorder->setFocus(Qt::TabFocusReason);
    }

    /// True if the desktop's shortcuts and the window have the keys again.
    [[nodiscard]] bool isLetGo() const { return isQuiet() && !QWidget::keyboardGrabber(); }

    QPointer<RecorderCocoa> recorder;
};

class RecorderEndings : public RecorderHeldKeyTest, public ::testing::WithParamInterface<Ending> {};

TEST_P(RecorderEndings, KeepTheirKeyFromEverybodyUntilItIsLetGo)
{
    const auto [code, flags] = GetParam();
    EXPECT_EQ(holdKey(code, flags), Disposition::swallow);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_FALSE(isPaused());
    EXPECT_EQ(QWidget::keyboardGrabber(), recorder);
    const auto told = changes.size();
    EXPECT_EQ(repeat(code, flags), Disposition::swallow);
    EXPECT_EQ(repeat(code, flags), Disposition::swallow);
    EXPECT_EQ(letGo(Key::a), Disposition::pass) << "of another key";
    EXPECT_EQ(QWidget::keyboardGrabber(), recorder);
    EXPECT_EQ(letGo(code, 0), Disposition::swallow) << "with or without its modifiers";
    EXPECT_TRUE(isLetGo());
    EXPECT_EQ(changes.size(), told);
    EXPECT_EQ(fake.sound.beeps, 0);
}

INSTANTIATE_TEST_SUITE_P(Keys, RecorderEndings,
                         ::testing::Values(Ending{KeyboardShortcuts::Key::w, flag::control}, // accepted
                                           Ending{KeyboardShortcuts::Key::escape, 0},
                                           Ending{KeyboardShortcuts::Key::q, flag::command},
                                           Ending{KeyboardShortcuts::Key::f4, flag::option}));

TEST_F(RecorderHeldKeyTest, APressOfTheKeyIsARepeatThoughItIsNotCalledSo)
{
    holdKey(Key::f4, flag::option);
    // The first repeat after a change of the focus looks like this.
    EXPECT_EQ(holdKey(Key::f4, flag::option), Disposition::swallow);
    EXPECT_EQ(QWidget::keyboardGrabber(), recorder);
    letGo(Key::f4);
    EXPECT_TRUE(isLetGo());
}

TEST_F(RecorderHeldKeyTest, ThePressOfAnotherKeyTellsThatTheReleaseWasMissed)
{
    holdKey(Key::k, flag::command);
    EXPECT_EQ(repeat(Key::a), Disposition::pass);
    EXPECT_FALSE(isLetGo());
    EXPECT_EQ(holdKey(Key::a), Disposition::pass);
    EXPECT_TRUE(isLetGo());
}

TEST_F(RecorderHeldKeyTest, TabIsTheNextControlsAtOnce)
{
    EXPECT_EQ(holdKey(Key::tab), Disposition::pass);
    EXPECT_TRUE(isLetGo());
}

TEST_F(RecorderHeldKeyTest, ANewRecordingHasTheKeyboardThoughTheKeyIsStillHeld)
{
    holdKey(Key::k, flag::command);
    recorder->makeFirstResponder();
    ASSERT_TRUE(recorder->isRecording());
    EXPECT_EQ(repeat(Key::k, flag::command), Disposition::swallow);
    EXPECT_EQ(changes.size(), 1U);
    letGo(Key::k, flag::command);
    EXPECT_EQ(QWidget::keyboardGrabber(), recorder);
    EXPECT_EQ(fake.eventMonitors.localCount(), 1U);
}

TEST_F(RecorderHeldKeyTest, EndsWithTheControlAndWhenItIsHidden)
{
    holdKey(Key::k, flag::command);
    recorder->hide();
    EXPECT_TRUE(isLetGo());

    recorder->show();
    fake.runLoop.drain();
    recorder->setFocus(Qt::TabFocusReason);
    holdKey(Key::k, flag::command);
    delete recorder;
    EXPECT_TRUE(isLetGo());
}

TEST_F(RecorderHeldKeyTest, TakesNoKeyboardThatTheRecordingHadGivenUp)
{
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&window, &leave);
    ASSERT_EQ(QWidget::keyboardGrabber(), nullptr);
    holdKey(Key::k, flag::command);
    EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
    EXPECT_EQ(repeat(Key::k, flag::command), Disposition::swallow);
    letGo(Key::k);
    EXPECT_TRUE(isLetGo());
}

TEST_F(RecorderHeldKeyTest, AHotKeyIsRecordedWhileThePointerIsOutsideAndItsReleaseDoesNothing)
{
    int released = 0;
    const Shortcut inForce(Key::j, flag::command);
    const KeyboardShortcuts::Name another(QStringLiteral("another"), inForce);
    KeyboardShortcuts::onKeyUp(another, [&] { ++released; });
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&window, &leave);
    const FakeHotKeys::Combination keys{static_cast<std::uint32_t>(inForce.carbonKeyCode),
                                        static_cast<std::uint32_t>(inForce.carbonModifiers)};
    fake.hotKeys.press(keys);
    EXPECT_EQ(recorder->stringValue(), inForce.description());
    EXPECT_FALSE(recorder->isRecording());
    fake.hotKeys.release(keys.keyCode);
    EXPECT_EQ(released, 0);
    EXPECT_TRUE(isLetGo());
    fake.hotKeys.tap(keys);
    EXPECT_EQ(released, 1);
}

TEST_F(RecorderHeldKeyTest, AHeldKeyThatIsRefusedBeepsOnce)
{
    holdKey(Key::a, flag::shift);
    repeat(Key::a, flag::shift);
    repeat(Key::a, flag::shift);
    EXPECT_EQ(fake.sound.beeps, 1);
    EXPECT_TRUE(recorder->isRecording());
}

} // namespace

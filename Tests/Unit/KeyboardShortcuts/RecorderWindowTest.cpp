// The recorder's control in its window: the focus and the alert.
#include "KeyboardShortcuts/Recorder/RecorderCocoaView.h"
#include "Unit/KeyboardShortcuts/RecorderFixture.h"

#include <QStackedWidget>

namespace {

using namespace orvane;
using namespace orvane::tests;
using KeyboardShortcuts::getShortcut;
using KeyboardShortcuts::isPaused;
using KeyboardShortcuts::Shortcut;

namespace flag = orvane::eventFlag;

constexpr Shortcut controlSpace(49, 0x1000);

class RecorderWindowTest : public RecorderFixture {
protected:
    void pressTab(Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWidget* receiver = window.focusWidget() ? window.focusWidget() : &window;
        const Qt::Key code = modifiers ? Qt::Key_Backtab : Qt::Key_Tab;
        QKeyEvent down(QEvent::KeyPress, code, modifiers);
        QApplication::sendEvent(receiver, &down);
    }
    /// Puts another window of the program in front.
    void leaveWindow()
    {
        showActive(elsewhere);
        fake.runLoop.drain();
    }
    void returnToWindow()
    {
        window.activateWindow();
        ASSERT_TRUE(waitUntil([this] { return window.isActiveWindow(); }));
        fake.runLoop.drain();
    }

    QWidget elsewhere;
};

TEST_F(RecorderWindowTest, AWindowThatOpensWithARecorderFirstDoesNotRecord)
{
    auto* recorder = addRecorder("toggle");
    addButton("after");
    showActive(window);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_FALSE(recorder->hasFocus());
    fake.runLoop.drain();
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderWindowTest, ItCanNotBecomeKeyUntilTheNextTurn)
{
    auto* recorder = addRecorder("toggle");
    EXPECT_TRUE(recorder->canBecomeKeyView());
    showActive(window);
    EXPECT_FALSE(recorder->canBecomeKeyView());
    EXPECT_FALSE(recorder->focusPolicy() & Qt::TabFocus);
    fake.runLoop.drain();
    EXPECT_TRUE(recorder->canBecomeKeyView());
    EXPECT_EQ(recorder->focusPolicy(), Qt::StrongFocus);
}

TEST_F(RecorderWindowTest, ATurnThatComesAfterItsEndDoesNothing)
{
    auto* recorder = addRecorder("toggle");
    showActive(window);
    delete recorder;
    fake.runLoop.drain();
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderWindowTest, TabReachesItAndTabLeavesItForTheNextControl)
{
    auto* before = addButton("before");
    auto* recorder = addRecorder("toggle");
    auto* after = addButton("after");
    open();
    before->setFocus(Qt::TabFocusReason);
    pressTab();
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(keyDown(Key::tab), Disposition::pass);
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(window.focusWidget(), nullptr);
    pressTab();
    EXPECT_TRUE(after->hasFocus());
    EXPECT_TRUE(isQuiet());
    pressTab(Qt::ShiftModifier);
    EXPECT_TRUE(recorder->isRecording()) << "back from the next control";
}

TEST_F(RecorderWindowTest, TabThatIsOnItsWayToTheControlMovesOnToo)
{
    auto* recorder = addRecorder("toggle");
    auto* after = addButton("after");
    open();
    record(recorder);
    keyDown(Key::tab);
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QApplication::sendEvent(recorder, &down);
    EXPECT_TRUE(after->hasFocus());
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderWindowTest, AfterEscapeTabGoesOnFromTheRecorder)
{
    addButton("before");
    auto* recorder = addRecorder("toggle");
    auto* after = addButton("after");
    open();
    record(recorder);
    keyDown(Key::escape);
    pressTab();
    EXPECT_TRUE(after->hasFocus());
}

TEST_F(RecorderWindowTest, AfterEscapeShiftTabGoesBackFromTheRecorder)
{
    auto* before = addButton("before");
    auto* recorder = addRecorder("toggle");
    addButton("after");
    open();
    record(recorder);
    keyDown(Key::escape);
    pressTab(Qt::ShiftModifier);
    EXPECT_TRUE(before->hasFocus());
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderWindowTest, AloneInItsWindowItIsLeftByTabAndReachedByTheNext)
{
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    keyDown(Key::tab);
    pressTab();
    EXPECT_TRUE(isQuiet());
    pressTab();
    EXPECT_TRUE(recorder->isRecording());
}

TEST_F(RecorderWindowTest, AClickStartsRecording)
{
    auto* recorder = addRecorder("toggle");
    open();
    mouse(*recorder, QEvent::MouseButtonPress, {20, 15});
    EXPECT_TRUE(recorder->isRecording());
    mouse(*recorder, QEvent::MouseButtonPress, {30, 15});
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(fake.eventMonitors.localCount(), 1U);
}

TEST_F(RecorderWindowTest, RecordingEndsWhenItsWindowIsLeft)
{
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    leaveWindow();
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(recorder->placeholder(), QStringLiteral("Record shortcut"));
}

TEST_F(RecorderWindowTest, ItDoesNotGoOnWhenItsWindowIsEnteredAgain)
{
    auto* recorder = addRecorder("toggle");
    addButton("after");
    open();
    record(recorder);
    leaveWindow();
    returnToWindow();
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(isQuiet());
    recorder->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(recorder->isRecording());
}

TEST_F(RecorderWindowTest, RecordingEndsWhenAnotherControlTakesTheFocus)
{
    auto* recorder = addRecorder("toggle");
    auto* other = addButton("other");
    open();
    record(recorder);
    other->setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderWindowTest, RecordingEndsWhenItsWindowClosesOrItsPageIsLeft)
{
    auto* pages = new QStackedWidget;
    lines->addWidget(pages);
    pages->addWidget(new QWidget);
    auto* recorder = new RecorderCocoa(named("toggle"));
    auto* page = new QWidget;
    (new QVBoxLayout(page))->addWidget(recorder);
    pages->addWidget(page);
    pages->setCurrentIndex(1);
    open();
    record(recorder);
    pages->setCurrentIndex(0);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(isQuiet());

    pages->setCurrentIndex(1);
    fake.runLoop.drain();
    EXPECT_TRUE(isQuiet());
    record(recorder);
    window.close();
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderWindowTest, FocusThatAPageGivesItsFirstControlDoesNotRecord)
{
    auto* recorder = addRecorder("toggle");
    open();
    recorder->hide();
    recorder->show();
    recorder->setFocus(Qt::OtherFocusReason);
    EXPECT_FALSE(recorder->hasFocus());
    EXPECT_TRUE(isQuiet());
    fake.runLoop.drain();
    recorder->setFocus(Qt::OtherFocusReason);
    EXPECT_TRUE(recorder->isRecording());
}

TEST_F(RecorderWindowTest, RecordingEndsWhenItIsDisabledOrMovedToAnotherWindow)
{
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    recorder->setEnabled(false);
    EXPECT_TRUE(isQuiet());

    recorder->setEnabled(true);
    record(recorder);
    recorder->setParent(&elsewhere);
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderWindowTest, AMenuItemsShortcutIsRefusedWithAnAlertThatNamesIt)
{
    auto* recorder = addRecorder("toggle");
    addMenuItem("Quit %1 Orvane", "q");
    open();
    record(recorder);
    EXPECT_EQ(keyDown(Key::q, flag::command), Disposition::swallow);
    ASSERT_TRUE(alert());
    EXPECT_EQ(alert()->messageText(),
              QStringLiteral("The menu item “Quit %1 Orvane” already has this shortcut."));
    EXPECT_EQ(alert()->informativeText(), QString());
    EXPECT_EQ(alert()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(alert()->parentWidget(), &window);
    EXPECT_TRUE(alert()->isVisible());
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(getShortcut(named("toggle")), std::nullopt);
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(fake.sound.beeps, 0);
}

TEST_F(RecorderWindowTest, TheKeysThatChooseAMenuItemHereAreRefusedToo)
{
    auto* recorder = addRecorder("toggle");
    addMenuItem("Quit", "q");
    fake.application.menuKeys = [](EventFlags pressed) {
        return pressed == flag::control ? flag::command : pressed;
    };
    open();
    record(recorder);
    keyDown(Key::q, flag::control);
    ASSERT_TRUE(alert());
    EXPECT_TRUE(alert()->messageText().contains(u"Quit"));
    EXPECT_EQ(getShortcut(named("toggle")), std::nullopt);
}

TEST_F(RecorderWindowTest, KeysThatOnlyTheMenusModelHasAreFree)
{
    auto* recorder = addRecorder("toggle");
    addMenuItem("Quit", "q");
    fake.application.menuKeys = [](EventFlags pressed) {
        return pressed == flag::command ? flag::control : pressed;
    };
    open();
    record(recorder);
    keyDown(Key::q, flag::command);
    EXPECT_FALSE(alert());
    EXPECT_NE(getShortcut(named("toggle")), std::nullopt);
}

TEST_F(RecorderWindowTest, ASystemShortcutIsRefusedWithAWordOnWhatToDo)
{
    auto* recorder = addRecorder("toggle");
    fake.hotKeys.setSymbolicHotKeys({{48, 0x800}});
    open();
    record(recorder);
    keyDown(Key::tab, flag::option);
    ASSERT_TRUE(alert());
    EXPECT_EQ(alert()->messageText(), QStringLiteral("The desktop already uses this shortcut."));
    EXPECT_EQ(alert()->informativeText(),
              QStringLiteral("Choose another one here, or change the desktop’s in its keyboard settings."));
    EXPECT_EQ(getShortcut(named("toggle")), std::nullopt);
    EXPECT_EQ(recorder->stringValue(), QString());
}

TEST_F(RecorderWindowTest, TheMenuIsAskedBeforeTheSystem)
{
    auto* recorder = addRecorder("toggle");
    addMenuItem("Quit", "q");
    fake.hotKeys.setSymbolicHotKeys({{12, 0x100}});
    open();
    record(recorder);
    keyDown(Key::q, flag::command);
    ASSERT_TRUE(alert());
    EXPECT_TRUE(alert()->messageText().contains(u"Quit"));
}

class RecorderAlertDismissal : public RecorderWindowTest, public ::testing::WithParamInterface<Qt::Key> {};

TEST_P(RecorderAlertDismissal, GoesBackToRecordingAndTheKeyIsNotRecorded)
{
    auto* recorder = addRecorder("toggle");
    fake.hotKeys.setSymbolicHotKeys({{48, 0x800}});
    open();
    record(recorder);
    keyDown(Key::tab, flag::option);
    ASSERT_TRUE(alert());
    const QPointer<RecorderAlertPanel> panel = alert();
    ASSERT_TRUE(waitUntil([&] { return panel->isActiveWindow(); }));
    ASSERT_TRUE(QApplication::focusWidget());
    tests::press(*QApplication::focusWidget(), GetParam());
    EXPECT_TRUE(waitUntil([&] { return recorder->isRecording(); }));
    EXPECT_TRUE(waitUntil([&] { return !panel; }));
    EXPECT_TRUE(isPaused());
    EXPECT_EQ(fake.eventMonitors.localCount(), 1U);
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(fake.sound.beeps, 0);
    keyDown(Key::space, flag::control);
    EXPECT_EQ(getShortcut(named("toggle")), controlSpace);
}

INSTANTIATE_TEST_SUITE_P(Keys, RecorderAlertDismissal,
                         ::testing::Values(Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Space));

TEST_F(RecorderWindowTest, ARecorderThatEndsUnderItsAlertLeavesNothingBehind)
{
    auto* recorder = addRecorder("toggle");
    fake.hotKeys.setSymbolicHotKeys({{48, 0x800}});
    open();
    record(recorder);
    keyDown(Key::tab, flag::option);
    const QPointer<RecorderAlertPanel> panel = alert();
    ASSERT_TRUE(panel);
    delete recorder;
    panel->reject();
    EXPECT_TRUE(waitUntil([&] { return !panel; }));
    EXPECT_TRUE(isQuiet());
}

} // namespace

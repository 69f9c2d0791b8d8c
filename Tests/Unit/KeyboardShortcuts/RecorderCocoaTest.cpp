// The recorder's control: what it shows, what it records, and what it restores.
#include "KeyboardShortcuts/Recorder/RecorderCocoaView.h"
#include "KeyboardShortcuts/Recorder/RecorderTextView.h"
#include "Unit/KeyboardShortcuts/RecorderFixture.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QFontMetricsF>

namespace {

using namespace orvane;
using namespace orvane::tests;
using KeyboardShortcuts::getShortcut;
using KeyboardShortcuts::isPaused;
using KeyboardShortcuts::onKeyUp;
using KeyboardShortcuts::setShortcut;
using KeyboardShortcuts::Shortcut;

namespace flag = orvane::eventFlag;

constexpr Shortcut controlSpace(49, 0x1000);
constexpr Shortcut commandK(40, 0x100);

class RecorderCocoaTest : public RecorderFixture {};

TEST_F(RecorderCocoaTest, ShowsTheShortcutOfItsName)
{
    store("toggle", controlSpace);
    EXPECT_EQ(addRecorder("toggle")->stringValue(), QStringLiteral("⌃Space"));
    EXPECT_EQ(addRecorder("other")->stringValue(), QString());
    EXPECT_EQ(addRecorder("other")->placeholder(), QStringLiteral("Record shortcut"));
}

TEST_F(RecorderCocoaTest, ShowsTheReplacementCharacterForAKeyThatPrintsNothing)
{
    store("toggle", Shortcut(200, 0x100));
    EXPECT_EQ(addRecorder("toggle")->stringValue(), QStringLiteral("⌘\uFFFD"));
}

TEST_F(RecorderCocoaTest, TheClearButtonIsThereOnlyWithText)
{
    auto* recorder = addRecorder("toggle");
    EXPECT_TRUE(cancelButton(recorder)->isHidden());
    setShortcut(controlSpace, named("toggle"));
    EXPECT_FALSE(cancelButton(recorder)->isHidden());
    setShortcut(std::nullopt, named("toggle"));
    EXPECT_TRUE(cancelButton(recorder)->isHidden());
}

TEST_F(RecorderCocoaTest, ANewNameIsReadAtOnce)
{
    store("second", commandK);
    auto* recorder = addRecorder("first");
    recorder->setShortcutName(named("second"));
    EXPECT_EQ(recorder->stringValue(), QStringLiteral("⌘K"));
    setShortcut(controlSpace, named("first"));
    EXPECT_EQ(recorder->stringValue(), QStringLiteral("⌘K"));
    setShortcut(controlSpace, named("second"));
    EXPECT_EQ(recorder->stringValue(), QStringLiteral("⌃Space"));
}

TEST_F(RecorderCocoaTest, FollowsTheKeyboardLayout)
{
    store("toggle", Shortcut(16, 0x100));
    auto* recorder = addRecorder("toggle");
    EXPECT_EQ(recorder->stringValue(), QStringLiteral("⌘Y"));
    auto german = FakeKeyboardLayout::american();
    german->texts[16] = QStringLiteral("z");
    fake.inputSources.select(german);
    EXPECT_EQ(recorder->stringValue(), QStringLiteral("⌘Z"));
}

TEST_F(RecorderCocoaTest, RecordingPausesAllShortcutsAndWatchesEvents)
{
    auto* recorder = addRecorder("toggle");
    open();
    EXPECT_TRUE(isQuiet());
    record(recorder);
    EXPECT_TRUE(isPaused());
    EXPECT_EQ(fake.eventMonitors.localCount(), 1U);
    EXPECT_EQ(recorder->placeholder(), QStringLiteral("Press keys…"));
    EXPECT_TRUE(cancelButton(recorder)->isHidden());
}

TEST_F(RecorderCocoaTest, TakesAShortcutStoresItTellsAndLeaves)
{
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    takeJournal();
    EXPECT_EQ(keyDown(Key::space, flag::control), Disposition::swallow);
    EXPECT_EQ(recorder->stringValue(), QStringLiteral("⌃Space"));
    EXPECT_FALSE(cancelButton(recorder)->isHidden());
    EXPECT_EQ(getShortcut(named("toggle")), controlSpace);
    EXPECT_EQ(changes, Changes{controlSpace});
    EXPECT_TRUE(isRegistered(controlSpace));
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_FALSE(recorder->hasFocus());
    EXPECT_EQ(recorder->placeholder(), QStringLiteral("Record shortcut"));
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(fake.sound.beeps, 0);
}

TEST_F(RecorderCocoaTest, ShowsTheTextBeforeItIsStoredAndIsStillPausedWhenItTells)
{
    auto* recorder = addRecorder("toggle");
    open();
    QStringList seen;
    const auto observer = fake.notificationCenter.addObserver(
        KeyboardShortcuts::shortcutByNameDidChangeNotification(),
        [&](const Notification&) { seen.append(QStringLiteral("stored ") + recorder->stringValue()); });
    recorder->setOnChange([&](const std::optional<Shortcut>& shortcut) {
        seen.append(QStringLiteral("told ") + shortcut->description());
        EXPECT_TRUE(isPaused());
        EXPECT_TRUE(recorder->isRecording());
    });
    record(recorder);
    keyDown(Key::k, flag::command);
    EXPECT_EQ(seen, list({"stored ⌘K", "told ⌘K"}));
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderCocoaTest, APressedShortcutIsRecordedAndDoesNotFire)
{
    store("first", controlSpace);
    onKeyUp(named("first"), note("first"));
    auto* recorder = addRecorder("second");
    open();
    record(recorder);
    tap(controlSpace);
    EXPECT_EQ(fired, QStringList());
    keyDown(Key::space, flag::control);
    EXPECT_EQ(getShortcut(named("second")), controlSpace);
    tap(controlSpace);
    EXPECT_EQ(fired, list({"first"}));
}

TEST_F(RecorderCocoaTest, EscapeLeavesTheOldShortcutWhichFiresAgain)
{
    store("toggle", controlSpace);
    onKeyUp(named("toggle"), note("toggle"));
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    tap(controlSpace);
    EXPECT_EQ(keyDown(Key::escape), Disposition::swallow);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_EQ(recorder->stringValue(), QStringLiteral("⌃Space"));
    EXPECT_EQ(getShortcut(named("toggle")), controlSpace);
    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(fired, QStringList());
    tap(controlSpace);
    EXPECT_EQ(fired, list({"toggle"}));
}

TEST_F(RecorderCocoaTest, RefusesWithABeepAndGoesOn)
{
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    EXPECT_EQ(keyDown(Key::a, flag::shift), Disposition::swallow);
    EXPECT_EQ(keyDown(Key::a, flag::alphaShift), Disposition::swallow);
    EXPECT_EQ(keyDown(Key::a), Disposition::swallow);
    EXPECT_EQ(fake.sound.beeps, 3);
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_TRUE(changes.empty());
    keyDown(Key::a, flag::option);
    EXPECT_EQ(recorder->stringValue(), QStringLiteral("⌥A"));
}

TEST_F(RecorderCocoaTest, DeleteClearsAndTheRecordingGoesOn)
{
    store("toggle", controlSpace);
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    EXPECT_EQ(keyDown(Key::delete_), Disposition::swallow);
    EXPECT_EQ(recorder->stringValue(), QString());
    EXPECT_EQ(getShortcut(named("toggle")), std::nullopt);
    EXPECT_EQ(changes, Changes{std::nullopt});
    EXPECT_TRUE(cancelButton(recorder)->isHidden());
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_TRUE(isPaused());
    keyDown(Key::f5);
    EXPECT_EQ(recorder->stringValue(), QStringLiteral("F5"));
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderCocoaTest, DeleteWithNothingToClearIsSwallowedInSilence)
{
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    EXPECT_EQ(keyDown(Key::deleteForward), Disposition::swallow);
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(fake.sound.beeps, 0);
    EXPECT_TRUE(recorder->isRecording());
}

TEST_F(RecorderCocoaTest, AClickOnTheClearButtonClearsAndStartsRecording)
{
    store("toggle", controlSpace);
    auto* recorder = addRecorder("toggle");
    open();
    mouse(*cancelButton(recorder), QEvent::MouseButtonPress, {11, 11});
    EXPECT_EQ(changes, Changes{std::nullopt});
    EXPECT_EQ(getShortcut(named("toggle")), std::nullopt);
    EXPECT_TRUE(recorder->isRecording());
}

TEST_F(RecorderCocoaTest, ClearingANameWithADefaultRemembersIt)
{
    const KeyboardShortcuts::Name name(QStringLiteral("toggle"), commandK);
    auto recorder = std::make_unique<RecorderCocoa>(name);
    ASSERT_EQ(recorder->stringValue(), QStringLiteral("⌘K"));
    cancelButton(recorder.get())->click();
    EXPECT_EQ(fake.defaults.stored.value(key("toggle")), QVariant(false));
}

TEST_F(RecorderCocoaTest, AClickInsideGoesOnAndOneOutsideEndsItAndCounts)
{
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    // The toolkit gets these events, and through it the control.
    EXPECT_EQ(mouseUp(recorder, {0, 0}), Disposition::pass);
    EXPECT_EQ(mouseUp(recorder, {-2.5, -2.5}, EventType::rightMouseUp), Disposition::pass);
    EXPECT_TRUE(recorder->isRecording());
    QMouseEvent up(QEvent::MouseButtonRelease, QPointF(20, 15), QPointF(20, 15), Qt::LeftButton, Qt::NoButton,
                   Qt::NoModifier);
    QApplication::sendEvent(recorder, &up);
    EXPECT_TRUE(up.isAccepted());
    EXPECT_EQ(mouseUp(recorder, {-4, 0}), Disposition::pass);
    EXPECT_FALSE(recorder->isRecording());
    EXPECT_TRUE(isQuiet());

    record(recorder);
    EXPECT_EQ(mouseUp(recorder, {0, -4}, EventType::rightMouseUp), Disposition::pass);
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderCocoaTest, TwoRecordersOfOneNameAgree)
{
    auto* first = addRecorder("toggle");
    auto* second = addRecorder("toggle");
    auto* other = addRecorder("other");
    open();
    record(first);
    keyDown(Key::k, flag::command);
    EXPECT_EQ(second->stringValue(), QStringLiteral("⌘K"));
    EXPECT_EQ(other->stringValue(), QString());
    cancelButton(second)->click();
    EXPECT_EQ(first->stringValue(), QString());
    EXPECT_TRUE(cancelButton(first)->isHidden());
}

TEST_F(RecorderCocoaTest, OneRecorderAtATimeRecords)
{
    auto* first = addRecorder("first");
    auto* second = addRecorder("second");
    open();
    record(first);
    record(second);
    EXPECT_FALSE(first->isRecording());
    EXPECT_TRUE(isPaused());
    EXPECT_EQ(fake.eventMonitors.localCount(), 1U);
    delete first;
    EXPECT_TRUE(isPaused()) << "the other one still records";
    keyDown(Key::k, flag::command);
    EXPECT_EQ(getShortcut(named("second")), commandK);
    EXPECT_EQ(getShortcut(named("first")), std::nullopt);
}

TEST_F(RecorderCocoaTest, ARecorderThatEndsWhileItRecordsLeavesNothingBehind)
{
    QPointer<RecorderCocoa> recorder = addRecorder("toggle");
    open();
    record(recorder);
    delete recorder;
    EXPECT_TRUE(isQuiet());
}

TEST_F(RecorderCocoaTest, WhoeverIsToldMayEndTheRecorder)
{
    store("toggle", controlSpace);
    for (const bool clears : {false, true}) {
        QPointer<RecorderCocoa> recorder = addRecorder("toggle");
        recorder->setOnChange([&](const std::optional<Shortcut>&) { delete recorder; });
        open();
        record(recorder);
        EXPECT_EQ(clears ? keyDown(Key::delete_) : keyDown(Key::k, flag::command), Disposition::swallow);
        EXPECT_FALSE(recorder);
        EXPECT_TRUE(isQuiet());
    }
}

TEST_F(RecorderCocoaTest, AnObserverOfTheChangeMayEndTheRecorder)
{
    QPointer<RecorderCocoa> recorder = addRecorder("toggle");
    const auto observer =
        fake.notificationCenter.addObserver(KeyboardShortcuts::shortcutByNameDidChangeNotification(),
                                            [&](const Notification&) { delete recorder; });
    open();
    record(recorder);
    keyDown(Key::k, flag::command);
    EXPECT_FALSE(recorder);
    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(getShortcut(named("toggle")), commandK);
}

TEST_F(RecorderCocoaTest, KeepsItsLeastWidthAndGrowsWithItsText)
{
    auto* recorder = addRecorder("toggle");
    const auto box = [&] { return recorder->sizeHint().width() - 2 * orvaRingMargin; };
    EXPECT_GE(box(), 130);
    store("long", Shortcut(200, 0x1B00));
    setShortcut(Shortcut(KeyboardShortcuts::Key::space, flag::control), named("toggle"));
    EXPECT_GE(box(), 130);
    auto layout = FakeKeyboardLayout::american();
    layout->texts[40] = QStringLiteral("WWWWWWWWWWWWWWWW");
    fake.inputSources.select(layout);
    setShortcut(commandK, named("toggle"));
    const double text = QFontMetricsF(recorder->font()).horizontalAdvance(recorder->stringValue());
    EXPECT_GE(box(), text + cancelButton(recorder)->width());
    EXPECT_EQ(recorder->minimumSizeHint(), recorder->sizeHint());
}

TEST_F(RecorderCocoaTest, DrawsTheKeycapOfAKeypadsKeyItself)
{
    store("digit", Shortcut(26, 0x100));
    store("keypad", Shortcut(89, 0x100));
    auto* digit = addRecorder("digit");
    auto* keypad = addRecorder("keypad");
    open();
    ASSERT_EQ(keypad->stringValue(), QStringLiteral("⌘7\u20E3"));
    const KeyboardShortcuts::RecorderText plain(digit->stringValue(), digit->font());
    const KeyboardShortcuts::RecorderText enclosed(keypad->stringValue(), keypad->font());
    EXPECT_GT(enclosed.width(), plain.width()) << "with room for the keycap's sides";
    EXPECT_LT(enclosed.width(), plain.width() + 20) << "and nothing in place of a sign that the font lacks";
    EXPECT_NE(digit->grab().toImage(), keypad->grab().toImage());
}

TEST_F(RecorderCocoaTest, IsNoTextField)
{
    auto* recorder = addRecorder("toggle");
    open();
    record(recorder);
    EXPECT_FALSE(recorder->testAttribute(Qt::WA_InputMethodEnabled));
    EXPECT_EQ(recorder->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(recorder->contextMenuPolicy(), Qt::PreventContextMenu);
}

TEST_F(RecorderCocoaTest, NoButtonOrMenuTakesAKeyThatIsToBeRecorded)
{
    auto* recorder = addRecorder("toggle");
    open();
    const auto isClaimed = [&] {
        QKeyEvent wish(QEvent::ShortcutOverride, Qt::Key_Q, Qt::ControlModifier);
        wish.ignore();
        QApplication::sendEvent(recorder, &wish);
        return wish.isAccepted();
    };
    EXPECT_FALSE(isClaimed());
    record(recorder);
    EXPECT_TRUE(isClaimed());
}

TEST_F(RecorderCocoaTest, TellsItsValueToAssistiveTechnology)
{
    RecorderCocoa recorder(named("toggle"), {}, QStringLiteral("Open Orvane"));
    const auto* accessible = QAccessible::queryAccessibleInterface(&recorder);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Open Orvane"));
    EXPECT_EQ(accessible->text(QAccessible::Value), QStringLiteral("Record shortcut"));
    EXPECT_FALSE(accessible->text(QAccessible::Help).isEmpty());
    EXPECT_TRUE(accessible->state().focusable);
    setShortcut(Shortcut(49, 0x1800), named("toggle"));
    EXPECT_EQ(accessible->text(QAccessible::Value), QStringLiteral("Control Option Space"));
    EXPECT_EQ(accessible->text(QAccessible::Description), QStringLiteral("Control Option Space"));
    const auto* clear = QAccessible::queryAccessibleInterface(cancelButton(&recorder));
    EXPECT_EQ(clear->role(), QAccessible::Button);
    EXPECT_EQ(clear->text(QAccessible::Name), QStringLiteral("Clear shortcut"));

    RecorderCocoa unnamed(named("toggle"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&unnamed)->text(QAccessible::Name),
              QStringLiteral("Shortcut"));
}

TEST_F(RecorderCocoaTest, AssistiveTechnologyMayStartTheRecording)
{
    auto* recorder = addRecorder("toggle");
    open();
    auto* accessible = QAccessible::queryAccessibleInterface(recorder);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(recorder->isRecording());
    EXPECT_EQ(accessible->text(QAccessible::Value), QStringLiteral("Press keys…"));
}

} // namespace

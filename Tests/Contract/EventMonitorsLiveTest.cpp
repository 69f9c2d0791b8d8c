#include "Contract/EventMonitorsFixture.h"

#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/XcbReply.h"

#include <QProcess>
#include <QShortcut>

#include <span>
#include <vector>

#include <xcb/xinput.h>

namespace orvane::tests {
namespace {

using ::testing::ElementsAre;
using namespace eventFlag;

constexpr std::uint8_t menuKey = 135;
constexpr std::int64_t virtualX = 7;
constexpr std::int64_t virtualC = 8;

/// True if the program is told of the keys that go to other programs.
bool hearsKeysOfOthers()
{
    constexpr std::uint32_t rawKeys =
        XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    const auto x = ApplicationLink::get();
    const XcbReply<xcb_input_xi_get_selected_events_reply_t> selected(xcb_input_xi_get_selected_events_reply(
        x->xcb(), xcb_input_xi_get_selected_events(x->xcb(), x->root()), nullptr));
    if (!selected)
        return false;
    for (auto masks = xcb_input_xi_get_selected_events_masks_iterator(selected.get()); masks.rem > 0;
         xcb_input_event_mask_next(&masks)) {
        const std::span words(xcb_input_event_mask_mask(masks.data), masks.data->mask_len);
        if (!words.empty() && (words[0] & rawKeys) != 0)
            return true;
    }
    return false;
}

class EventMonitorsLiveTest : public EventMonitorsFixture {
protected:
    auto note(EventMask mask, Disposition disposition = Disposition::pass)
    {
        return monitors.addLocalMonitor(mask, [this, disposition](const MonitoredEvent& event) {
            seen.push_back(event);
            return disposition;
        });
    }

    bool hasSeen(std::size_t count)
    {
        return eventually(deadline, [&] { return seen.size() >= count; });
    }

    [[nodiscard]] bool told(EventType type, QPoint where) const
    {
        return std::any_of(seen.begin(), seen.end(), [&](const MonitoredEvent& event) {
            return event.event.type == type && event.location.toPoint() == where;
        });
    }

    std::vector<MonitoredEvent> seen;
    NotingWindow window;
};

TEST_F(EventMonitorsLiveTest, ASwallowedKeyTriggersNeitherAShortcutNorText)
{
    QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_B), &window);
    int activations = 0;
    QObject::connect(&shortcut, &QShortcut::activated, [&] { ++activations; });
    {
        const auto monitor = note(eventMaskBit(EventType::keyDown), Disposition::swallow);
        hardware.press("Control_L");
        hardware.tap("b");
        hardware.release("Control_L");
        hardware.tap("c");
        ASSERT_TRUE(hasSeen(2));
    }
    hardware.tap("x");
    EXPECT_TRUE(eventually(deadline, [&] { return window.edit.text() == QStringLiteral("x"); }));
    EXPECT_EQ(activations, 0);
    EXPECT_EQ(seen.size(), 2u);
    hardware.press("Control_L");
    hardware.tap("b");
    hardware.release("Control_L");
    EXPECT_TRUE(eventually(deadline, [&] { return activations == 1; }));
}

TEST_F(EventMonitorsLiveTest, APassedShortcutIsSeenOnceAndFires)
{
    QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_B), &window);
    int activations = 0;
    QObject::connect(&shortcut, &QShortcut::activated, [&] { ++activations; });
    const auto monitor = note(eventMaskBit(EventType::keyDown));
    hardware.press("Control_L");
    hardware.tap("b");
    hardware.release("Control_L");
    EXPECT_TRUE(eventually(deadline, [&] { return activations == 1; }));
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].event.flags, control);
}

TEST_F(EventMonitorsLiveTest, ModifiersComeAsChangesOfFlagsAndInTheFlagsOfKeys)
{
    const auto monitor = note(keyEvents | eventMaskBit(EventType::flagsChanged));
    hardware.press("Shift_L");
    hardware.press("Alt_L");
    hardware.tap("c");
    hardware.release("Alt_L");
    hardware.release("Shift_L");
    ASSERT_TRUE(hasSeen(6));
    std::vector<std::pair<EventType, EventFlags>> told;
    for (const MonitoredEvent& event : seen)
        told.emplace_back(event.event.type, event.event.flags);
    EXPECT_THAT(told, ElementsAre(std::pair(EventType::flagsChanged, shift),
                                  std::pair(EventType::flagsChanged, shift | option),
                                  std::pair(EventType::keyDown, shift | option),
                                  std::pair(EventType::keyUp, shift | option),
                                  std::pair(EventType::flagsChanged, shift),
                                  std::pair(EventType::flagsChanged, EventFlags{0})));
}

TEST_F(EventMonitorsLiveTest, OneOfTwoShiftsThatStaysHeldKeepsTheFlag)
{
    const auto monitor = note(eventMaskBit(EventType::flagsChanged));
    hardware.press("Shift_L");
    hardware.press("Shift_R");
    hardware.release("Shift_L");
    hardware.release("Shift_R");
    ASSERT_TRUE(hasSeen(4));
    EXPECT_EQ(seen[2].event.flags, shift);
    EXPECT_EQ(seen[3].event.flags, 0u);
}

TEST_F(EventMonitorsLiveTest, CapsLockIsAFlagAndKeepsOneUntilItIsPressedAgain)
{
    const auto monitor = note(keyEvents | eventMaskBit(EventType::flagsChanged));
    hardware.tap("Caps_Lock");
    hardware.tap("c");
    hardware.tap("Caps_Lock");
    ASSERT_TRUE(hasSeen(6));
    EXPECT_EQ(seen[0].event.flags, alphaShift);
    EXPECT_EQ(seen[2].event.flags, alphaShift);
    EXPECT_EQ(seen[2].event.type, EventType::keyDown);
    EXPECT_EQ(seen[5].event.flags, 0u);
    EXPECT_TRUE(eventually(deadline, [this] { return other.lockedModifiers() == 0; }));
}

TEST_F(EventMonitorsLiveTest, AKeyThatBecomesAModifierIsOneFromThenOn)
{
    const auto setOption = [](const QString& option) {
        return QProcess::execute(QStringLiteral("setxkbmap"),
                                 {QStringLiteral("-rules"), QStringLiteral("evdev"),
                                  QStringLiteral("-layout"), QStringLiteral("us"), QStringLiteral("-option"),
                                  QString(), QStringLiteral("-option"), option}) == 0;
    };
    const auto monitor = note(keyEvents | eventMaskBit(EventType::flagsChanged));
    ASSERT_TRUE(setOption(QStringLiteral("altwin:menu_win")));
    EXPECT_TRUE(eventually(deadline, [this] {
        seen.clear();
        hardware.tap(menuKey);
        return hasSeen(2) && seen[0].event.type == EventType::flagsChanged;
    }));
    EXPECT_EQ(seen[0].event.flags, command);
    EXPECT_EQ(seen[1].event.flags, 0u);
    ASSERT_TRUE(setOption(QString()));
    EXPECT_TRUE(eventually(deadline, [this] {
        seen.clear();
        hardware.tap(menuKey);
        return hasSeen(2) && seen[0].event.type == EventType::keyDown;
    }));
}

TEST_F(EventMonitorsLiveTest, ArrowsFunctionKeysAndTheKeypadCarryTheirFlags)
{
    const auto monitor = note(eventMaskBit(EventType::keyDown));
    for (const char* key : {"Left", "F5", "KP_Add", "Delete", "BackSpace"})
        hardware.tap(key);
    ASSERT_TRUE(hasSeen(5));
    std::vector<std::pair<std::int64_t, EventFlags>> told;
    for (const MonitoredEvent& event : seen)
        told.emplace_back(event.event.keycode, event.event.flags);
    EXPECT_THAT(told, ElementsAre(std::pair(0x7B, numericPad | secondaryFn), std::pair(0x60, secondaryFn),
                                  std::pair(0x45, numericPad), std::pair(0x75, secondaryFn),
                                  std::pair(0x33, EventFlags{0})));
}

TEST_F(EventMonitorsLiveTest, AHeldKeyRepeatsAndIsReleasedOnce)
{
    const auto rate = other.repeatRate();
    other.setRepeatRate({100, 20});
    {
        const auto monitor = note(keyEvents);
        hardware.press("c");
        EXPECT_TRUE(hasSeen(4));
        hardware.release("c");
        EXPECT_TRUE(eventually(deadline, [this] { return seen.back().event.type == EventType::keyUp; }));
        hardware.tap("x");
        const std::size_t count = seen.size();
        ASSERT_TRUE(hasSeen(count + 2));
        EXPECT_EQ(seen.front().event.autorepeat, 0);
        for (std::size_t i = 1; i + 1 < count; ++i) {
            EXPECT_EQ(seen[i].event.type, EventType::keyDown);
            EXPECT_EQ(seen[i].event.autorepeat, 1);
        }
        EXPECT_EQ(seen[count].event.autorepeat, 0);
        EXPECT_EQ(seen[count + 1].event.type, EventType::keyUp);
    }
    other.setRepeatRate(rate);
}

TEST_F(EventMonitorsLiveTest, RepeatsThatAreReadAfterTheReleaseAreStillRepeats)
{
    const auto rate = other.repeatRate();
    other.setRepeatRate({100, 20});
    {
        const auto monitor = note(keyEvents);
        hardware.press("c");
        EXPECT_TRUE(hasSeen(4));
        // The main thread is held, by the server's clock, while the key goes on repeating and is let go.
        const auto x = ApplicationLink::get();
        for (const auto begin = x->serverTime(); x->serverTime() - begin < 200;)
            ASSERT_FALSE(x->link().isLost());
        hardware.release("c");
        ASSERT_TRUE(other.keysDown().isEmpty());
        hardware.tap("x");
        ASSERT_TRUE(eventually(deadline, [this] {
            return seen.back().event.keycode == virtualX && seen.back().event.type == EventType::keyUp;
        }));
        const std::size_t repeats = seen.size() - 4; // without the first press, the release and the tap
        EXPECT_GT(repeats, 3U);
        for (std::size_t i = 1; i <= repeats; ++i) {
            EXPECT_EQ(seen[i].event.type, EventType::keyDown) << i;
            EXPECT_EQ(seen[i].event.autorepeat, 1) << i;
        }
        EXPECT_EQ(seen[repeats + 1].event.type, EventType::keyUp);
        EXPECT_EQ(seen[repeats + 1].event.keycode, virtualC);
        EXPECT_EQ(seen[repeats + 2].event.keycode, virtualX);
        EXPECT_EQ(seen[repeats + 2].event.autorepeat, 0);
    }
    other.setRepeatRate(rate);
}

TEST_F(EventMonitorsLiveTest, AHeldKeyWhosePressIsSwallowedTypesNothing)
{
    const auto rate = other.repeatRate();
    other.setRepeatRate({100, 20});
    {
        const auto monitor = note(keyEvents, Disposition::swallow);
        hardware.press("c");
        EXPECT_TRUE(hasSeen(4));
        hardware.release("c");
        // All its repeats were read before; they would be typed once the monitor is gone.
        EXPECT_TRUE(eventually(deadline, [this] { return seen.back().event.type == EventType::keyUp; }));
    }
    hardware.tap("x");
    EXPECT_TRUE(eventually(deadline, [this] { return window.edit.text() == QStringLiteral("x"); }))
        << window.edit.text().toStdString();
    other.setRepeatRate(rate);
}

TEST_F(EventMonitorsLiveTest, QuickTapsOfOneKeyAreAsManyPressesAndReleases)
{
    const auto monitor = note(keyEvents);
    constexpr int count = 20;
    for (int i = 0; i < count; ++i)
        hardware.tap("c");
    ASSERT_TRUE(hasSeen(2 * count));
    EXPECT_EQ(seen.size(), 2u * count);
    for (std::size_t i = 0; i < seen.size(); ++i) {
        EXPECT_EQ(seen[i].event.type, i % 2 == 0 ? EventType::keyDown : EventType::keyUp);
        EXPECT_EQ(seen[i].event.autorepeat, 0);
    }
    EXPECT_TRUE(eventually(deadline, [this] { return window.edit.text().size() == count; }));
}

TEST_F(EventMonitorsLiveTest, MouseButtonsMotionAndWheelComeWithTheirPlace)
{
    const QPoint place = window.edit.mapToGlobal(QPoint(20, 10));
    hardware.movePointer(place - QPoint(0, 2));
    constexpr EventMask mouse =
        eventMaskBit(EventType::leftMouseDown) | eventMaskBit(EventType::leftMouseUp) |
        eventMaskBit(EventType::rightMouseDown) | eventMaskBit(EventType::rightMouseUp) |
        eventMaskBit(EventType::otherMouseDown) | eventMaskBit(EventType::otherMouseUp) |
        eventMaskBit(EventType::mouseMoved) | eventMaskBit(EventType::leftMouseDragged) |
        eventMaskBit(EventType::scrollWheel);
    const auto monitor = note(mouse);
    hardware.movePointer(place);
    EXPECT_TRUE(eventually(deadline, [&] { return told(EventType::mouseMoved, place); }));
    hardware.press(Button::left);
    EXPECT_TRUE(eventually(deadline, [&] { return told(EventType::leftMouseDown, place); }));
    const QPoint further = place + QPoint(8, 0);
    hardware.movePointer(further);
    EXPECT_TRUE(eventually(deadline, [&] { return told(EventType::leftMouseDragged, further); }));
    hardware.release(Button::left);
    EXPECT_TRUE(eventually(deadline, [&] { return told(EventType::leftMouseUp, further); }));

    hardware.click(Button::wheelDown);
    EXPECT_TRUE(eventually(deadline, [&] { return told(EventType::scrollWheel, further); }));
}

TEST_F(EventMonitorsLiveTest, ASwallowedClickDoesNotReachTheWindow)
{
    const QPoint place = window.edit.mapToGlobal(QPoint(133, 10));
    const auto monitor = monitors.addLocalMonitor(
        eventMaskBit(EventType::leftMouseDown) | eventMaskBit(EventType::leftMouseUp),
        [&](const MonitoredEvent& event) {
            seen.push_back(event);
            return event.location.toPoint() == place ? Disposition::swallow : Disposition::pass;
        });
    hardware.click(place);
    ASSERT_TRUE(eventually(deadline, [&] { return told(EventType::leftMouseUp, place); }));
    EXPECT_TRUE(told(EventType::leftMouseDown, place));
    // The click is at another place, so that it isn't the second half of a double click.
    hardware.click(window.edit.mapToGlobal(QPoint(200, 10)));
    const QStringList& noted = window.edit.noted;
    const qsizetype before = noted.size();
    EXPECT_TRUE(eventually(deadline, [&] { return noted.size() >= before + 2; }));
    EXPECT_TRUE(noted.filter(QStringLiteral("133")).isEmpty()) << qPrintable(noted.join(u','));
}

TEST_F(EventMonitorsLiveTest, KeysOfOtherProgramsAreHeardOnlyForAMonitorOfKeys)
{
    const auto mouse = note(eventMaskBit(EventType::leftMouseDown) | eventMaskBit(EventType::mouseMoved));
    EXPECT_FALSE(hearsKeysOfOthers());
    auto keys = note(keyEvents);
    EXPECT_TRUE(hearsKeysOfOthers());
    keys.reset();
    EXPECT_FALSE(hearsKeysOfOthers());
    EXPECT_TRUE(monitors.isListening());
}

TEST_F(EventMonitorsLiveTest, NothingIsFilteredWithoutAMonitor)
{
    EXPECT_FALSE(monitors.isListening());
    auto local = note(keyEvents);
    EXPECT_TRUE(monitors.isListening());
    local.reset();
    EXPECT_FALSE(monitors.isListening());
    const auto menu =
        monitors.addMenuTrackingMonitor(keyEvents, [](const MonitoredEvent&) { return Disposition::pass; });
    EXPECT_FALSE(monitors.isListening());
    EXPECT_FALSE(monitors.isTapping());
}

} // namespace
} // namespace orvane::tests

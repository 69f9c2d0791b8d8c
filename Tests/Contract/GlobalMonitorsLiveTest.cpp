// The mouse on other programs' windows, as only a real X server moves it.
#include "Contract/EventMonitorsFixture.h"
#include "Contract/Support/ForeignProgram.h"
#include "Contract/Support/UnmanagedWindow.h"
#include "Desktop/Support/Screen.h"
#include "PlatformLinux/X11/ApplicationLink.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <vector>

namespace orvane::tests {
namespace {

using ::testing::ElementsAre;
using MonitoredEvent = EventMonitors::MonitoredEvent;

template <typename... Types>
constexpr EventMask maskOf(Types... types)
{
    return (eventMaskBit(types) | ...);
}

constexpr EventMask leftButton =
    maskOf(EventType::leftMouseDown, EventType::leftMouseUp, EventType::leftMouseDragged);
constexpr EventMask presses =
    maskOf(EventType::leftMouseDown, EventType::rightMouseDown, EventType::otherMouseDown);

class GlobalMonitorsLiveTest : public EventMonitorsFixture {
protected:
    auto note(EventMask mask)
    {
        return monitors.addGlobalMonitor(mask,
                                         [this](const MonitoredEvent& event) { seen.push_back(event); });
    }

    bool hasSeen(std::size_t count)
    {
        return eventually(deadline, [&] { return seen.size() >= count; });
    }

    bool hasSeen(EventType type)
    {
        return eventually(deadline, [&] { return std::ranges::count(types(), type) > 0; });
    }

    [[nodiscard]] std::vector<EventType> types() const
    {
        std::vector<EventType> list;
        for (const MonitoredEvent& event : seen)
            list.push_back(event.event.type);
        return list;
    }

    /// Clicks there and waits for the report: what happened before is reported by then, or never.
    void clickToEnd(QPoint place)
    {
        hardware.click(place);
        EXPECT_TRUE(hasSeen(EventType::leftMouseUp));
    }

    /// Returns the places of the events of a type, in pixels.
    [[nodiscard]] std::vector<QPoint> placesOf(EventType type) const
    {
        std::vector<QPoint> places;
        for (const MonitoredEvent& event : seen) {
            if (event.event.type == type)
                places.push_back(event.location.toPoint());
        }
        return places;
    }

    /// Lets the server's clock, which counts milliseconds, go on. No event is handled meanwhile.
    static void letTheServersClockGoOn()
    {
        const auto now = ApplicationLink::get()->serverTime();
        const QDeadlineTimer limit(deadline);
        while (ApplicationLink::get()->serverTime() < now + 2 && !limit.hasExpired()) {
        }
    }

    std::vector<MonitoredEvent> seen;
    Screen screen;
    UnmanagedWindow theirs{QRect(900, 500, 300, 200)};
};

} // namespace

TEST_F(GlobalMonitorsLiveTest, AWheelNotchThatNobodyAskedForSendsNoRequest)
{
    const auto monitor = note(presses);
    const auto link = ApplicationLink::get();
    const auto requestsSoFar = [&] {
        const auto question = xcb_get_input_focus(link->xcb());
        EXPECT_TRUE(link->exchange().reply<xcb_get_input_focus_reply_t>(question));
        return question.sequence;
    };
    constexpr std::uint8_t up = 4;
    constexpr std::uint8_t down = 5;
    const auto notch = [&](std::uint8_t wheel) {
        const auto eventsBefore = monitors.pointerEventsRead();
        theirs.fakeButton(wheel, true);
        theirs.fakeButton(wheel, false);
        EXPECT_TRUE(eventually(deadline, [&] { return monitors.pointerEventsRead() >= eventsBefore + 2; }));
    };
    notch(up); // what is asked once is asked now
    const unsigned before = requestsSoFar();
    notch(up);
    notch(down);
    EXPECT_EQ(requestsSoFar(), before + 1) << "only this test's own question";
    EXPECT_TRUE(seen.empty());
}

TEST_F(GlobalMonitorsLiveTest, WithoutAMonitorNothingIsRead)
{
    hardware.click(theirs.middle());
    auto monitor = note(leftButton);
    monitor.reset();
    hardware.click(theirs.middle());
    EXPECT_EQ(monitors.pointerEventsRead(), 0u);
    monitor = note(leftButton);
    clickToEnd(theirs.middle());
    EXPECT_GE(monitors.pointerEventsRead(), 2u);
}

TEST_F(GlobalMonitorsLiveTest, APointerThatOnlyMovesWakesNobody)
{
    const auto monitor = note(leftButton);
    for (int x = 0; x < 200; ++x)
        hardware.movePointer(QPoint(200 + x, 300));
    clickToEnd(theirs.middle());
    constexpr std::uint64_t aClickAndWhatTheServerAdds = 4;
    EXPECT_LE(monitors.pointerEventsRead(), aClickAndWhatTheServerAdds);
    for (int x = 0; x < 200; ++x)
        hardware.movePointer(QPoint(200 + x, 300));
    seen.clear();
    clickToEnd(theirs.middle());
    EXPECT_LE(monitors.pointerEventsRead(), 2 * aClickAndWhatTheServerAdds);
}

TEST_F(GlobalMonitorsLiveTest, ADragOfAButtonThatNobodyAskedForWakesNobody)
{
    const auto monitor = note(leftButton | eventMaskBit(EventType::rightMouseUp));
    hardware.movePointer(theirs.middle());
    hardware.press(Button::right);
    for (int x = 0; x < 50; ++x)
        hardware.movePointer(theirs.middle() + QPoint(x, 0));
    hardware.release(Button::right);
    ASSERT_TRUE(hasSeen(EventType::rightMouseUp));
    EXPECT_LT(monitors.pointerEventsRead(), 10u);
}

TEST_F(GlobalMonitorsLiveTest, OfSeveralMotionsThatWaitTheLastIsTold)
{
    const auto monitor = note(leftButton);
    hardware.movePointer(theirs.middle());
    hardware.press(Button::left);
    ASSERT_TRUE(hasSeen(EventType::leftMouseDown));
    constexpr int steps = 300;
    for (int x = 1; x <= steps; ++x)
        hardware.movePointer(theirs.middle() - QPoint(x, 0));
    const QPoint last = theirs.middle() - QPoint(steps, 0);
    EXPECT_TRUE(eventually(deadline, [&] { return seen.back().location.toPoint() == last; }));
    hardware.release(Button::left);
    ASSERT_TRUE(hasSeen(EventType::leftMouseUp));
    EXPECT_LT(std::ranges::count(types(), EventType::leftMouseDragged), steps / 3);
}

TEST_F(GlobalMonitorsLiveTest, ADragBelongsToWhereItsPressWent)
{
    NotingWindow ours;
    const QPoint place = ours.edit.mapToGlobal(QPoint(30, 10));
    const auto monitor = note(leftButton);
    hardware.movePointer(place);
    hardware.press(Button::left);
    EXPECT_TRUE(eventually(deadline, [&] { return !ours.edit.noted.filter(u"mouse down"_qs).isEmpty(); }));
    hardware.movePointer(theirs.middle());
    hardware.release(Button::left);
    EXPECT_TRUE(eventually(deadline, [&] { return !ours.edit.noted.filter(u"mouse up"_qs).isEmpty(); }));
    EXPECT_TRUE(seen.empty());

    hardware.press(Button::left);
    ASSERT_TRUE(hasSeen(1));
    hardware.movePointer(place);
    EXPECT_TRUE(eventually(deadline, [&] { return seen.back().location.toPoint() == place; }));
    hardware.release(Button::left);
    ASSERT_TRUE(hasSeen(EventType::leftMouseUp));
    EXPECT_EQ(seen.front().event.type, EventType::leftMouseDown);
    EXPECT_EQ(std::ranges::count(types(), EventType::leftMouseDown), 1);
}

TEST_F(GlobalMonitorsLiveTest, APressIsJudgedByWhereThePointerWasThen)
{
    NotingWindow ours;
    const QPoint place = ours.edit.mapToGlobal(QPoint(30, 10));
    const auto monitor = note(eventMaskBit(EventType::leftMouseDown));
    hardware.movePointer(theirs.middle());
    hardware.press(Button::left);
    letTheServersClockGoOn();
    hardware.movePointer(place);
    ASSERT_TRUE(hasSeen(1));
    EXPECT_EQ(seen[0].location.toPoint(), theirs.middle());
    hardware.release(Button::left);
}

TEST_F(GlobalMonitorsLiveTest, ADragThatIsReadWhenItIsOverIsToldAtItsReleasesPlace)
{
    const auto monitor = note(leftButton);
    const QPoint end = theirs.middle() + QPoint(80, 30);
    hardware.movePointer(theirs.middle());
    hardware.press(Button::left);
    letTheServersClockGoOn();
    hardware.movePointer(end);
    hardware.release(Button::left);
    letTheServersClockGoOn();
    hardware.movePointer(QPoint(300, 300));
    ASSERT_TRUE(hasSeen(EventType::leftMouseUp));
    EXPECT_THAT(types(),
                ElementsAre(EventType::leftMouseDown, EventType::leftMouseDragged, EventType::leftMouseUp));
    EXPECT_THAT(placesOf(EventType::leftMouseDown), ElementsAre(theirs.middle()));
    EXPECT_THAT(placesOf(EventType::leftMouseDragged), ElementsAre(end));
    EXPECT_THAT(placesOf(EventType::leftMouseUp), ElementsAre(end));
}

TEST_F(GlobalMonitorsLiveTest, NoMotionOfADragIsToldFromBeyondItsRelease)
{
    const auto monitor = note(leftButton);
    hardware.movePointer(theirs.middle());
    hardware.press(Button::left);
    ASSERT_TRUE(hasSeen(EventType::leftMouseDown));
    const QPoint end = theirs.middle() + QPoint(80, 30);
    hardware.movePointer(end - QPoint(10, 0));
    hardware.movePointer(end);
    hardware.release(Button::left);
    letTheServersClockGoOn();
    hardware.movePointer(QPoint(300, 300));
    ASSERT_TRUE(hasSeen(EventType::leftMouseUp));
    EXPECT_THAT(placesOf(EventType::leftMouseDragged), ElementsAre(end));
    EXPECT_THAT(placesOf(EventType::leftMouseUp), ElementsAre(end));
}

TEST_F(GlobalMonitorsLiveTest, AClickHasNoMotion)
{
    const auto monitor = note(leftButton);
    clickToEnd(theirs.middle());
    EXPECT_THAT(types(), ElementsAre(EventType::leftMouseDown, EventType::leftMouseUp));
}

TEST_F(GlobalMonitorsLiveTest, APointerThatAnotherProgramHoldsIsSeen)
{
    ASSERT_TRUE(theirs.grabPointer());
    const auto monitor = note(leftButton);
    hardware.movePointer(QPoint(300, 300));
    hardware.press(Button::left);
    ASSERT_TRUE(hasSeen(1));
    hardware.movePointer(QPoint(340, 300));
    ASSERT_TRUE(hasSeen(EventType::leftMouseDragged));
    hardware.release(Button::left);
    EXPECT_TRUE(hasSeen(EventType::leftMouseUp));
}

TEST_F(GlobalMonitorsLiveTest, AWindowThatTheWindowManagerMovesIsSeenToBeDragged)
{
    const ForeignProgram terminal(
        u"xterm"_qs, {u"-geometry"_qs, u"60x12+200+200"_qs, u"-fa"_qs, u"monospace"_qs, u"-e"_qs, u"cat"_qs});
    QRect before;
    ASSERT_TRUE(eventually(deadline, [&] {
        const QList<ScreenWindow> windows = screen.windowsOf(terminal.pid());
        before = windows.isEmpty() ? QRect() : windows.first().geometry;
        return before.isValid();
    }));
    const auto monitor = note(leftButton);
    const QPoint titleBar(before.center().x(), before.top() - 8);
    hardware.movePointer(titleBar);
    hardware.press(Button::left);
    ASSERT_TRUE(hasSeen(EventType::leftMouseDown));
    // The window manager takes the pointer only after the first steps.
    int step = 0;
    EXPECT_TRUE(eventually(deadline, [&] {
        hardware.movePointer(titleBar + QPoint(++step % 2 ? 60 : 70, 40));
        const QList<ScreenWindow> windows = screen.windowsOf(terminal.pid());
        return !windows.isEmpty() && windows.first().geometry.topLeft() != before.topLeft();
    }));
    seen.clear();
    hardware.movePointer(titleBar + QPoint(100, 80));
    EXPECT_TRUE(eventually(deadline, [&] {
        return !seen.empty() && seen.back().event.type == EventType::leftMouseDragged &&
               seen.back().location.toPoint() == titleBar + QPoint(100, 80);
    }));
    hardware.release(Button::left);
    EXPECT_TRUE(hasSeen(EventType::leftMouseUp));
}

TEST_F(GlobalMonitorsLiveTest, TheWheelIsNoButton)
{
    const auto monitor = note(presses | maskOf(EventType::scrollWheel, EventType::leftMouseUp));
    hardware.movePointer(theirs.middle());
    constexpr std::uint8_t up = 4;
    constexpr std::uint8_t right = 7;
    for (const std::uint8_t wheel : {up, right}) {
        theirs.fakeButton(wheel, true);
        theirs.fakeButton(wheel, false);
    }
    clickToEnd(theirs.middle());
    EXPECT_THAT(types(), ElementsAre(EventType::scrollWheel, EventType::scrollWheel, EventType::leftMouseDown,
                                     EventType::leftMouseUp));
}

TEST_F(GlobalMonitorsLiveTest, ALeftHandedMouseHasItsButtonsTheOtherWayRound)
{
    const auto monitor = note(presses);
    theirs.mapButtons(3, 2, 1);
    hardware.click(theirs.middle(), Button::left);
    EXPECT_TRUE(hasSeen(1));
    theirs.mapButtons(1, 2, 3);
    hardware.click(theirs.middle(), Button::left);
    ASSERT_TRUE(hasSeen(2));
    EXPECT_THAT(types(), ElementsAre(EventType::rightMouseDown, EventType::leftMouseDown));
}

TEST_F(GlobalMonitorsLiveTest, WhatAProgramClicksByTheTestExtensionCountsToo)
{
    const auto monitor = note(maskOf(EventType::leftMouseDown, EventType::leftMouseUp));
    hardware.movePointer(theirs.middle());
    theirs.fakeButton(1, true);
    theirs.fakeButton(1, false);
    ASSERT_TRUE(hasSeen(2));
    EXPECT_THAT(types(), ElementsAre(EventType::leftMouseDown, EventType::leftMouseUp));
}

TEST_F(GlobalMonitorsLiveTest, TheModifiersThatAreHeldAreInTheEvent)
{
    EventFlags inTheCall = 0;
    const auto monitor =
        monitors.addGlobalMonitor(eventMaskBit(EventType::leftMouseDown), [&](const MonitoredEvent& event) {
            seen.push_back(event);
            inTheCall = monitors.modifierFlags();
        });
    hardware.press("Shift_L");
    EXPECT_EQ(monitors.modifierFlags(), eventFlag::shift);
    hardware.click(theirs.middle());
    ASSERT_TRUE(hasSeen(1));
    hardware.release("Shift_L");
    EXPECT_EQ(seen[0].event.flags, eventFlag::shift);
    EXPECT_EQ(inTheCall, eventFlag::shift);
    EXPECT_EQ(monitors.modifierFlags(), EventFlags{0});
}

TEST_F(GlobalMonitorsLiveTest, MotionWithoutAButtonIsToldToWhoeverAsksForIt)
{
    NotingWindow ours;
    const auto monitor = note(maskOf(EventType::mouseMoved, EventType::leftMouseUp));
    hardware.movePointer(theirs.middle());
    ASSERT_TRUE(hasSeen(EventType::mouseMoved));
    EXPECT_TRUE(eventually(deadline, [&] { return seen.back().location.toPoint() == theirs.middle(); }));
    const QPoint place = ours.edit.mapToGlobal(QPoint(30, 10));
    for (int x = 0; x < 20; ++x)
        hardware.movePointer(place + QPoint(x, 0));
    clickToEnd(theirs.middle());
    EXPECT_TRUE(std::ranges::none_of(seen, [&](const MonitoredEvent& event) {
        return QRect(place, QSize(20, 1)).contains(event.location.toPoint());
    }));
}

TEST_F(GlobalMonitorsLiveTest, AMonitorThatComesInTheMiddleOfADragIsToldOfItsRest)
{
    hardware.movePointer(theirs.middle());
    hardware.press(Button::left);
    const auto monitor = note(leftButton);
    hardware.movePointer(theirs.middle() + QPoint(20, 0));
    ASSERT_TRUE(hasSeen(EventType::leftMouseDragged));
    hardware.release(Button::left);
    EXPECT_TRUE(hasSeen(EventType::leftMouseUp));
    EXPECT_EQ(std::ranges::count(types(), EventType::leftMouseDown), 0);
}

TEST_F(GlobalMonitorsLiveTest, ThePointersPlaceIsInTheSpaceOfTheScreens)
{
    for (const QPoint place : {QPoint(0, 0), QPoint(700, 300), QPoint(1439, 899)}) {
        hardware.movePointer(place);
        ASSERT_TRUE(eventually(deadline, [&] { return screen.pointer() == place; }));
        const Point pointer = monitors.mouseLocation();
        EXPECT_EQ(pointer, (Point{double(place.x()), place.y() == 0 ? 899.5 : 900.0 - place.y()}));
        EXPECT_TRUE(screens.screens()[0].frame.contains(pointer));
    }
}

} // namespace orvane::tests

#include "Contract/EventMonitorsFixture.h"
#include "Contract/Support/UnmanagedWindow.h"
#include "Desktop/Support/Screen.h"
#include "Fakes/FakeEventMonitors.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

namespace orvane::tests {
namespace {

using ::testing::ElementsAre;
using MonitoredEvent = EventMonitors::MonitoredEvent;

constexpr auto deadline = std::chrono::seconds(10);

template <typename... Types>
constexpr EventMask maskOf(Types... types)
{
    return (eventMaskBit(types) | ...);
}

constexpr EventMask leftButton =
    maskOf(EventType::leftMouseDown, EventType::leftMouseUp, EventType::leftMouseDragged);

enum class Whose { ours, theirs };

/// A mouse, a window of this program and one of another program.
class Neighbours {
public:
    virtual ~Neighbours() = default;
    virtual EventMonitors& monitors() = 0;
    /// These act on the given window; the button is held for a drag.
    virtual void press(Whose window) = 0;
    virtual void drag(Whose window) = 0;
    virtual void release(Whose window) = 0;
    virtual void rightClick(Whose window) = 0;
};

class FakeNeighbours : public Neighbours {
public:
    EventMonitors& monitors() override { return m_monitors; }
    void press(Whose window) override { send(window, EventType::leftMouseDown); }
    void drag(Whose window) override
    {
        m_monitors.pointer.x += 10;
        send(window, EventType::leftMouseDragged);
    }
    void release(Whose window) override { send(window, EventType::leftMouseUp); }
    void rightClick(Whose window) override
    {
        send(window, EventType::rightMouseDown);
        send(window, EventType::rightMouseUp);
    }

private:
    void send(Whose window, EventType type)
    {
        const MonitoredEvent event{.event = {.type = type}, .location = {}};
        if (window == Whose::theirs)
            m_monitors.sendToOthers(event);
        else
            (void)m_monitors.sendToWindow(event);
    }

    FakeEventMonitors m_monitors;
};

class LinuxNeighbours : public Neighbours {
public:
    EventMonitors& monitors() override { return m_monitors; }
    void press(Whose window) override
    {
        m_place = window == Whose::theirs ? m_theirs.middle() : m_ours.edit.mapToGlobal(QPoint(40, 10));
        m_hardware.movePointer(m_place);
        m_ours.edit.noted.clear();
        m_hardware.press(Button::left);
        if (window == Whose::ours) {
            EXPECT_TRUE(eventually(deadline, [&] { return !m_ours.edit.noted.isEmpty(); }));
        }
    }
    void drag(Whose) override
    {
        m_place.rx() += 10;
        m_hardware.movePointer(m_place);
        EXPECT_TRUE(eventually(deadline, [&] { return m_screen.pointer() == m_place; }));
    }
    void release(Whose) override { m_hardware.release(Button::left); }
    void rightClick(Whose window) override
    {
        m_hardware.click(window == Whose::theirs ? m_theirs.middle()
                                                 : m_ours.edit.mapToGlobal(QPoint(40, 10)),
                         Button::right);
    }

private:
    FakeLogSink m_log;
    NotificationCenter m_center;
    MenuTracking m_menus{m_center};
    XInputEventTaps m_taps{m_log, [] { return CommandKeys::control; }};
    X11Screens m_screens{m_center};
    X11EventMonitors m_monitors{m_taps, m_menus, m_screens};
    Screen m_screen;
    Hardware m_hardware;
    NotingWindow m_ours;
    UnmanagedWindow m_theirs{QRect(900, 500, 300, 200)};
    QPoint m_place;
};

template <typename Subject>
class GlobalMonitorsContract : public ::testing::Test {
protected:
    auto note(EventMask mask)
    {
        return neighbours.monitors().addGlobalMonitor(
            mask, [this](const MonitoredEvent& event) { seen.push_back(event.event.type); });
    }

    bool hasSeen(std::size_t count)
    {
        return eventually(deadline, [&] { return seen.size() >= count; });
    }

    void click(Whose window)
    {
        neighbours.press(window);
        neighbours.release(window);
    }

    Subject neighbours;
    std::vector<EventType> seen;
};

using Subjects = ::testing::Types<FakeNeighbours, LinuxNeighbours>;
TYPED_TEST_SUITE(GlobalMonitorsContract, Subjects);

} // namespace

TYPED_TEST(GlobalMonitorsContract, APressADragAndAReleaseOnAnotherProgramAreTold)
{
    const auto monitor = this->note(leftButton);
    this->neighbours.press(Whose::theirs);
    ASSERT_TRUE(this->hasSeen(1));
    this->neighbours.drag(Whose::theirs);
    ASSERT_TRUE(this->hasSeen(2));
    this->neighbours.release(Whose::theirs);
    ASSERT_TRUE(this->hasSeen(3));
    EXPECT_THAT(this->seen,
                ElementsAre(EventType::leftMouseDown, EventType::leftMouseDragged, EventType::leftMouseUp));
}

TYPED_TEST(GlobalMonitorsContract, NothingOnTheProgramsOwnWindowsIsTold)
{
    const auto monitor = this->note(leftButton);
    this->neighbours.press(Whose::ours);
    this->neighbours.drag(Whose::ours);
    this->neighbours.release(Whose::ours);
    this->click(Whose::theirs);
    ASSERT_TRUE(this->hasSeen(2));
    EXPECT_THAT(this->seen, ElementsAre(EventType::leftMouseDown, EventType::leftMouseUp));
}

TYPED_TEST(GlobalMonitorsContract, AMonitorIsToldOfItsMaskAlone)
{
    const auto monitor = this->note(maskOf(EventType::leftMouseUp, EventType::rightMouseDown));
    this->neighbours.press(Whose::theirs);
    this->neighbours.drag(Whose::theirs);
    this->neighbours.release(Whose::theirs);
    this->neighbours.rightClick(Whose::theirs);
    ASSERT_TRUE(this->hasSeen(2));
    EXPECT_THAT(this->seen, ElementsAre(EventType::leftMouseUp, EventType::rightMouseDown));
}

TYPED_TEST(GlobalMonitorsContract, InACallThePointerIsWhereTheEventWas)
{
    std::vector<Point> places;
    const auto monitor = this->neighbours.monitors().addGlobalMonitor(leftButton, [&](const MonitoredEvent&) {
        places.push_back(this->neighbours.monitors().mouseLocation());
    });
    const auto told = [&](std::size_t count) {
        return eventually(deadline, [&] { return places.size() >= count; });
    };
    this->neighbours.press(Whose::theirs);
    ASSERT_TRUE(told(1));
    this->neighbours.drag(Whose::theirs);
    ASSERT_TRUE(told(2));
    this->neighbours.release(Whose::theirs);
    ASSERT_TRUE(told(3));
    EXPECT_EQ(places[1], (Point{places[0].x + 10, places[0].y}));
    EXPECT_EQ(places[2], places[1]);
    EXPECT_EQ(this->neighbours.monitors().mouseLocation(), places[2]);
}

TYPED_TEST(GlobalMonitorsContract, AnObserverMayEndItsOwnMonitor)
{
    std::unique_ptr<EventMonitor> ending;
    int told = 0;
    ending = this->neighbours.monitors().addGlobalMonitor(leftButton, [&](const MonitoredEvent&) {
        ++told;
        ending.reset();
    });
    this->click(Whose::theirs);
    EXPECT_TRUE(eventually(deadline, [&] { return told == 1; }));
    const auto another = this->note(leftButton);
    this->click(Whose::theirs);
    ASSERT_TRUE(this->hasSeen(2));
    EXPECT_EQ(told, 1);
}

TYPED_TEST(GlobalMonitorsContract, AMonitorThatHasEndedIsNotTold)
{
    int told = 0;
    auto ended =
        this->neighbours.monitors().addGlobalMonitor(leftButton, [&](const MonitoredEvent&) { ++told; });
    ended.reset();
    const auto monitor = this->note(leftButton);
    this->click(Whose::theirs);
    ASSERT_TRUE(this->hasSeen(2));
    EXPECT_EQ(told, 0);
}

} // namespace orvane::tests

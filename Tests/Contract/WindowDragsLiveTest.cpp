// Drags of windows that are over before any event of them has been read.
#include "Contract/AccessibilityFixture.h"
#include "Contract/EventMonitorsFixture.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/WindowDrag.h"
#include "PlatformLinux/WindowDrags/X11WindowDrags.h"
#include "PlatformLinux/X11/ApplicationLink.h"

#include <QDeadlineTimer>

#include <vector>

namespace orvane::tests {
namespace {

constexpr EventMask leftButton = eventMaskBit(EventType::leftMouseDown) |
                                 eventMaskBit(EventType::leftMouseUp) |
                                 eventMaskBit(EventType::leftMouseDragged);

class WindowDragsLiveTest : public EventMonitorsFixture {
protected:
    WindowDragsLiveTest() { m_permissions.accessibility = true; }

    /// Waits while this program reads no event.
    static bool eventuallyUnread(const std::function<bool()>& condition)
    {
        const QDeadlineTimer limit(deadline);
        while (!condition()) {
            if (limit.hasExpired())
                return false;
        }
        return true;
    }
    [[nodiscard]] bool selectsSubstructure() const
    {
        const auto link = ApplicationLink::get();
        const auto attributes = link->exchange().reply<xcb_get_window_attributes_reply_t>(
            xcb_get_window_attributes(link->xcb(), link->root()));
        return (attributes->your_event_mask & XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY) != 0;
    }

    FakePermissions m_permissions;
    X11WindowDrags drags{monitors, screens, m_permissions};
    Windows windows;
};

} // namespace

TEST_F(WindowDragsLiveTest, WithoutAWatchNoMovesAreSent)
{
    const auto link = ApplicationLink::get(); // stays open
    // A menu's watch that an earlier test left to its event loop to delete: there is no such loop here.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_TRUE(eventually(10s, [&] { return !selectsSubstructure(); }));
    auto watch = drags.watch([] {});
    EXPECT_TRUE(selectsSubstructure());
    watch.reset();
    EXPECT_FALSE(selectsSubstructure());
}

TEST_F(WindowDragsLiveTest, ADragThatIsReadWhenItIsOverIsKnownFromItsPressOn)
{
    const ForeignWindow foreign(windows, WindowKind::qt, u"Flung"_qs);
    const auto watch = drags.watch([] {});
    ASSERT_TRUE(eventually(deadline, [&] { return drags.candidate().has_value(); }));
    struct Told {
        EventType type;
        std::optional<WindowDrags::Candidate> candidate;
    };
    std::vector<Told> told;
    const auto monitor = monitors.addGlobalMonitor(leftButton, [&](const MonitoredEvent& event) {
        told.push_back({event.event.type, drags.candidate()});
    });
    const QRect before = foreign.frame();
    const QPoint handle = WindowDrag::handle(windows, foreign.id);
    const auto dragBy = [&](QPoint from, QPoint way) {
        const QRect start = foreign.frame();
        hardware.movePointer(from);
        hardware.press(Button::left);
        EXPECT_TRUE(eventuallyUnread([&, step = 0]() mutable {
            hardware.movePointer(from + way - QPoint(++step % 2, 0));
            return (foreign.frame().topLeft() - start.topLeft() - way).manhattanLength() <= 2;
        }));
        hardware.movePointer(from + way);
        hardware.release(Button::left);
    };
    dragBy(handle, {120, 0});
    // A window manager that still moves the window takes the next press for itself. It has the keyboard
    // meanwhile.
    ASSERT_TRUE(eventuallyUnread([&] { return !other.isKeyboardGrabbed(); }));
    dragBy(handle + QPoint(120, 0), {0, 80}); // the second press comes before the first is told
    ASSERT_TRUE(eventually(
        deadline, [&] { return std::ranges::count(told, EventType::leftMouseUp, &Told::type) == 2; }));
    ASSERT_NE(foreign.frame(), before);
    for (const Told& event : told) {
        ASSERT_TRUE(event.candidate && event.candidate->initialPosition);
    }
    const auto secondPress = std::ranges::find_if(std::next(told.begin()), told.end(), [](const Told& event) {
        return event.type == EventType::leftMouseDown;
    });
    ASSERT_NE(secondPress, told.end());
    const Point first = *told.front().candidate->initialPosition;
    const Point second = *secondPress->candidate->initialPosition;
    EXPECT_NEAR(second.x - first.x, 120, 2);
    EXPECT_NEAR(second.y - first.y, 0, 2);
    for (auto event = told.begin(); event != secondPress; ++event)
        EXPECT_EQ(*event->candidate->initialPosition, first);
    EXPECT_NEAR(told.back().candidate->position->y - second.y, 80, 2);
}

} // namespace orvane::tests

#include "Contract/AccessibilityFixture.h"
#include "Contract/EventMonitorsFixture.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/WindowDrag.h"
#include "Fakes/FakeWindowDrags.h"
#include "PlatformLinux/Accessibility/AXElements.h"
#include "PlatformLinux/WindowDrags/X11WindowDrags.h"

#include <QProcess>

#include <memory>
#include <vector>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;

/// A desktop with windows of other programs and a hand that drags them.
class Stage {
public:
    virtual ~Stage() = default;
    virtual EventMonitors& monitors() = 0;
    virtual WindowDrags& drags() = 0;
    /// Shows a window, which gets the focus, and returns its number.
    virtual int show() = 0;
    [[nodiscard]] virtual AXUIElement element(int window) const = 0;
    virtual void focus(int window) = 0;
    virtual void makeFullScreen(int window) = 0;
    /// These act on the window with the focus, by its title bar.
    virtual void press() = 0;
    virtual void moveBy(int x, int y) = 0;
    virtual void release() = 0;
    virtual void takeAwayPermission() = 0;
};

class FakeStage : public Stage {
public:
    EventMonitors& monitors() override { return m_monitors; }
    WindowDrags& drags() override { return m_drags; }
    int show() override
    {
        m_accessibility.focusNewWindow({200, 150}, {480, 320});
        m_focused = static_cast<int>(m_accessibility.windows.size()) - 1;
        m_drags.announce();
        return m_focused;
    }
    [[nodiscard]] AXUIElement element(int window) const override
    {
        return m_accessibility.windows.at(window);
    }
    void focus(int window) override
    {
        const AXUIElement application = FakeAccessibility::makeElement();
        FakeAccessibility::node(application).attributes.emplace(u"AXFocusedWindow"_qs, element(window));
        FakeAccessibility::node(m_accessibility.systemWide)
            .attributes.insert_or_assign(u"AXFocusedApplication"_qs, application);
        m_focused = window;
        m_drags.announce();
    }
    void makeFullScreen(int window) override
    {
        attributes(window).insert_or_assign(u"AXFullScreen"_qs, true);
    }
    void press() override { send(EventType::leftMouseDown); }
    void moveBy(int x, int y) override
    {
        const Point from = std::get<Point>(attributes(m_focused).at(u"AXPosition"_qs));
        attributes(m_focused).insert_or_assign(u"AXPosition"_qs, Point{from.x + x, from.y + y});
        send(EventType::leftMouseDragged);
        m_drags.announce();
    }
    void release() override { send(EventType::leftMouseUp); }
    void takeAwayPermission() override
    {
        FakeAccessibility::node(m_accessibility.systemWide).failure = AXError::apiDisabled;
    }

private:
    [[nodiscard]] std::map<QString, AXValue>& attributes(int window) const
    {
        return FakeAccessibility::node(element(window)).attributes;
    }
    void send(EventType type) { m_monitors.sendToOthers({.event = {.type = type}, .location = {}}); }

    FakeAccessibility m_accessibility;
    FakeEventMonitors m_monitors;
    FakeWindowDrags m_drags{m_accessibility, m_monitors};
    int m_focused = 0;
};

class LinuxStage : public Stage {
public:
    LinuxStage() { m_permissions.accessibility = true; }
    EventMonitors& monitors() override { return m_monitors; }
    WindowDrags& drags() override { return m_drags; }
    int show() override
    {
        m_titles.push_back(u"Dragged %1"_qs.arg(m_foreign.size()));
        m_foreign.push_back(std::make_unique<ForeignWindow>(m_windows, WindowKind::qt, m_titles.back()));
        return m_focused = static_cast<int>(m_foreign.size()) - 1;
    }
    [[nodiscard]] AXUIElement element(int window) const override
    {
        return AXBody::ofWindow(AXBody::Kind::window, m_foreign.at(window)->id);
    }
    void focus(int window) override
    {
        ASSERT_TRUE(m_other.activate(m_titles.at(window).toLatin1().constData()));
        ASSERT_TRUE(eventually(deadline, [&] { return m_windows.active() == m_foreign.at(window)->id; }));
        m_focused = window;
    }
    void makeFullScreen(int window) override
    {
        ASSERT_EQ(
            QProcess::execute(u"wmctrl"_qs, {u"-r"_qs, m_titles.at(window), u"-b"_qs, u"add,fullscreen"_qs}),
            0);
        ASSERT_TRUE(
            eventually(deadline, [&] { return m_foreign.at(window)->hasState("_NET_WM_STATE_FULLSCREEN"); }));
    }
    void press() override
    {
        m_hand = std::make_unique<WindowDrag>(m_hardware, m_windows, m_foreign.at(m_focused)->id, [] {});
        ASSERT_TRUE(m_hand->begin());
    }
    void moveBy(int x, int y) override { ASSERT_TRUE(m_hand->moveTo(m_hand->pointer() + QPoint(x, y))); }
    void release() override
    {
        m_hand.reset();
        // A press that comes while the window manager still holds the pointer is lost to it.
        ASSERT_TRUE(settleWindowManager());
    }
    void takeAwayPermission() override { m_permissions.accessibility = false; }

private:
    FakeLogSink m_log;
    NotificationCenter m_center;
    MenuTracking m_menus{m_center};
    XInputEventTaps m_taps{m_log, [] { return CommandKeys::control; }};
    X11Screens m_screens{m_center};
    FakePermissions m_permissions;
    X11EventMonitors m_monitors{m_taps, m_menus, m_screens};
    X11WindowDrags m_drags{m_monitors, m_screens, m_permissions};
    Windows m_windows;
    OtherClient m_other;
    Hardware m_hardware;
    QStringList m_titles;
    std::vector<std::unique_ptr<ForeignWindow>> m_foreign;
    std::unique_ptr<WindowDrag> m_hand;
    int m_focused = 0;
};

struct Implementation {
    const char* name;
    std::unique_ptr<Stage> (*make)();
};

} // namespace

class WindowDragsContract : public ::testing::TestWithParam<Implementation> {
protected:
    void watch()
    {
        constexpr EventMask leftButton = eventMaskBit(EventType::leftMouseDown) |
                                         eventMaskBit(EventType::leftMouseUp) |
                                         eventMaskBit(EventType::leftMouseDragged);
        m_monitor = stage->monitors().addGlobalMonitor(leftButton, [this](const auto& monitored) {
            presses += monitored.event.type == EventType::leftMouseDown;
        });
        m_watch = stage->drags().watch([this] { ++changes; });
    }
    void stopWatching() { m_watch.reset(); }
    [[nodiscard]] std::optional<WindowDrags::Candidate> candidate() const
    {
        return stage->drags().candidate();
    }
    /// Waits for the press to be told.
    void press()
    {
        const int before = presses;
        stage->press();
        ASSERT_TRUE(eventually(deadline, [&] { return presses > before; }));
    }
    bool becomesCandidate(int window)
    {
        return eventually(deadline, [&] {
            const auto found = candidate();
            return found && found->window == stage->element(window);
        });
    }
    /// Returns how far the candidate is from where it was.
    [[nodiscard]] std::optional<Point> moved() const
    {
        const auto found = candidate();
        if (!found || !found->initialPosition || !found->position)
            return std::nullopt;
        return Point{found->position->x - found->initialPosition->x,
                     found->position->y - found->initialPosition->y};
    }
    bool hasMovedBy(double x, double y)
    {
        constexpr double slack = 16; // the distance that some window managers ignore
        return eventually(deadline, [&] {
            const auto by = moved();
            return by && std::abs(by->x - x) <= slack && std::abs(by->y - y) <= slack;
        });
    }

    std::unique_ptr<Stage> stage = GetParam().make();
    int presses = 0;
    int changes = 0;

private:
    std::unique_ptr<EventMonitor> m_monitor;
    std::unique_ptr<WindowDragWatch> m_watch;
};

INSTANTIATE_TEST_SUITE_P(
    Platforms, WindowDragsContract,
    ::testing::Values(Implementation{"Fake", [] { return std::unique_ptr<Stage>(new FakeStage); }},
                      Implementation{"Linux", [] { return std::unique_ptr<Stage>(new LinuxStage); }}),
    [](const auto& implementation) { return implementation.param.name; });

TEST_P(WindowDragsContract, WithoutAWatchNothingIsKnown)
{
    const int window = stage->show();
    EXPECT_FALSE(candidate());
    watch();
    EXPECT_TRUE(becomesCandidate(window));
    stopWatching();
    EXPECT_FALSE(candidate());
}

TEST_P(WindowDragsContract, ADraggedWindowIsAsFarFromItsFirstPlaceAsItWasDragged)
{
    const int window = stage->show();
    watch();
    press();
    ASSERT_TRUE(becomesCandidate(window));
    EXPECT_EQ(moved(), (Point{0, 0}));
    const auto first = candidate()->initialPosition;
    stage->moveBy(150, 90);
    EXPECT_TRUE(hasMovedBy(150, 90));
    stage->release();
    EXPECT_TRUE(hasMovedBy(150, 90)) << "until the next press";
    EXPECT_EQ(candidate()->initialPosition, first);
}

TEST_P(WindowDragsContract, EachPressBeginsAnew)
{
    stage->show();
    watch();
    press();
    stage->moveBy(150, 90);
    stage->release();
    ASSERT_TRUE(hasMovedBy(150, 90));
    press();
    EXPECT_EQ(moved(), (Point{0, 0}));
    stage->moveBy(-60, 40);
    EXPECT_TRUE(hasMovedBy(-60, 40));
    stage->release();
}

TEST_P(WindowDragsContract, AMoveIsAnnounced)
{
    const int window = stage->show();
    watch();
    press();
    ASSERT_TRUE(becomesCandidate(window));
    const int before = changes;
    stage->moveBy(150, 90);
    EXPECT_TRUE(eventually(deadline, [&] { return changes > before; }));
    stage->release();
}

TEST_P(WindowDragsContract, TheCandidateIsTheWindowThatHasTheFocusNow)
{
    const int first = stage->show();
    const int second = stage->show();
    watch();
    press();
    ASSERT_TRUE(becomesCandidate(second));
    stage->release();
    const int before = changes;
    stage->focus(first);
    EXPECT_TRUE(becomesCandidate(first));
    EXPECT_GT(changes, before);
    EXPECT_EQ(moved(), (Point{0, 0})) << "its place at the press is known too";
}

TEST_P(WindowDragsContract, AWindowThatCameAfterThePressHasNoFirstPlace)
{
    stage->show();
    watch();
    press();
    stage->release();
    const int later = stage->show();
    ASSERT_TRUE(becomesCandidate(later));
    EXPECT_FALSE(candidate()->initialPosition);
    EXPECT_TRUE(candidate()->position);
}

TEST_P(WindowDragsContract, AFullScreenWindowIsNoCandidate)
{
    const int window = stage->show();
    watch();
    ASSERT_TRUE(becomesCandidate(window));
    stage->makeFullScreen(window);
    press();
    EXPECT_TRUE(eventually(deadline, [&] { return !candidate(); }));
    stage->release();
}

TEST_P(WindowDragsContract, WithoutThePermissionNothingIsKnown)
{
    const int window = stage->show();
    watch();
    ASSERT_TRUE(becomesCandidate(window));
    stage->takeAwayPermission();
    EXPECT_FALSE(candidate());
}

TEST_P(WindowDragsContract, AWatchThatHasEndedIsNotCalled)
{
    const int window = stage->show();
    watch();
    press();
    ASSERT_TRUE(becomesCandidate(window));
    const auto other = stage->drags().watch([] {});
    stopWatching();
    const int before = changes;
    stage->moveBy(150, 90);
    EXPECT_TRUE(hasMovedBy(150, 90));
    EXPECT_EQ(changes, before);
    stage->release();
}

} // namespace orvane::tests

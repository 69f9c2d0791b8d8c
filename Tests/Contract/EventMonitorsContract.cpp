#include "Contract/EventMonitorsFixture.h"
#include "Fakes/FakeEventMonitors.h"

#include <QMenu>

#include <memory>
#include <vector>

namespace orvane::tests {
namespace {

using ::testing::ElementsAre;
using Disposition = EventMonitors::Disposition;
using MonitoredEvent = EventMonitors::MonitoredEvent;

constexpr auto deadline = std::chrono::seconds(10);
constexpr std::int64_t virtualC = 8;

/// A program with a window and a menu, and a key C on the keyboard.
class Program {
public:
    virtual ~Program() = default;
    virtual EventMonitors& monitors() = 0;
    /// Taps C, with the window in front.
    virtual void tapC() = 0;
    /// Opens a menu of the program, which gets the keys from then on.
    virtual void openMenu() = 0;
    virtual void closeMenu() = 0;
    /// Waits for this many events, and returns "down" and "up" for each that arrived in the window or in the
    /// open menu.
    virtual QStringList arrived(qsizetype count) = 0;
};

class FakeProgram : public Program {
public:
    EventMonitors& monitors() override { return m_monitors; }

    void tapC() override
    {
        send(EventType::keyDown, QStringLiteral("down"));
        send(EventType::keyUp, QStringLiteral("up"));
    }

    void openMenu() override { m_menuIsOpen = true; }
    void closeMenu() override { m_menuIsOpen = false; }
    QStringList arrived(qsizetype) override { return m_arrived; }

private:
    void send(EventType type, const QString& name)
    {
        MonitoredEvent event;
        event.event.type = type;
        event.event.keycode = virtualC;
        const auto disposition = m_menuIsOpen ? m_monitors.sendToMenu(event) : m_monitors.sendToWindow(event);
        if (disposition == Disposition::pass)
            m_arrived.append(name);
    }

    FakeEventMonitors m_monitors;
    QStringList m_arrived;
    bool m_menuIsOpen = false;
};

class LinuxProgram : public Program {
public:
    ~LinuxProgram() override
    {
        m_menu.close();
        EXPECT_TRUE(eventually(deadline, [this] { return m_other.keysDown().isEmpty(); }));
    }

    EventMonitors& monitors() override { return m_monitors; }
    void tapC() override { m_hardware.tap("c"); }

    void openMenu() override
    {
        m_menu.popup(m_window.mapToGlobal(QPoint(10, 10)));
        EXPECT_TRUE(eventually(deadline, [this] { return m_menu.windowHandle()->isExposed(); }));
    }
    void closeMenu() override { m_menu.close(); }

    QStringList arrived(qsizetype count) override
    {
        EXPECT_TRUE(eventually(deadline, [&] { return all().size() >= count; }));
        return all();
    }

private:
    /// A menu that records its keys.
    class NotingMenu : public QMenu {
    public:
        NotingMenu() { addAction(QStringLiteral("Item")); }
        QStringList noted;

    private:
        bool event(QEvent* event) override
        {
            if (event->type() == QEvent::KeyPress)
                noted.append(QStringLiteral("down"));
            else if (event->type() == QEvent::KeyRelease)
                noted.append(QStringLiteral("up"));
            return QMenu::event(event);
        }
    };

    [[nodiscard]] QStringList all() const { return m_window.edit.noted + m_menu.noted; }

    FakeLogSink m_log;
    NotificationCenter m_center;
    MenuTracking m_menus{m_center};
    XInputEventTaps m_taps{m_log, [] { return CommandKeys::control; }};
    X11Screens m_screens{m_center};
    X11EventMonitors m_monitors{m_taps, m_menus, m_screens};
    OtherClient m_other;
    Hardware m_hardware;
    NotingWindow m_window;
    NotingMenu m_menu;
};

template <typename Subject>
class EventMonitorsContract : public ::testing::Test {
protected:
    EventMonitors& monitors() { return program.monitors(); }

    Subject program;
    std::vector<EventType> seen;
};

using Programs = ::testing::Types<FakeProgram, LinuxProgram>;
TYPED_TEST_SUITE(EventMonitorsContract, Programs);

} // namespace

TYPED_TEST(EventMonitorsContract, AMonitorSeesEachEventOnceAndWhatItPassesArrives)
{
    const auto monitor = this->monitors().addLocalMonitor(keyEvents, [&](const MonitoredEvent& event) {
        EXPECT_EQ(event.event.keycode, virtualC);
        EXPECT_EQ(event.event.autorepeat, 0);
        this->seen.push_back(event.event.type);
        return Disposition::pass;
    });
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(2), (QStringList{QStringLiteral("down"), QStringLiteral("up")}));
    EXPECT_THAT(this->seen, ElementsAre(EventType::keyDown, EventType::keyUp));
}

TYPED_TEST(EventMonitorsContract, WhatAMonitorSwallowsGoesNoFurther)
{
    const auto monitor = this->monitors().addLocalMonitor(keyEvents, [&](const MonitoredEvent& event) {
        this->seen.push_back(event.event.type);
        // Swallows only the first press and its release.
        return this->seen.size() <= 2 ? Disposition::swallow : Disposition::pass;
    });
    this->program.tapC();
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(2), (QStringList{QStringLiteral("down"), QStringLiteral("up")}));
    EXPECT_EQ(this->seen.size(), 4u);
}

TYPED_TEST(EventMonitorsContract, AMonitorIsAskedForItsMaskAlone)
{
    const auto monitor =
        this->monitors().addLocalMonitor(eventMaskBit(EventType::keyUp), [&](const MonitoredEvent& event) {
            this->seen.push_back(event.event.type);
            return Disposition::swallow;
        });
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(1), QStringList{QStringLiteral("down")});
    EXPECT_TRUE(eventually(deadline, [&] { return this->seen.size() == 1; }));
    EXPECT_THAT(this->seen, ElementsAre(EventType::keyUp));
}

TYPED_TEST(EventMonitorsContract, TheNewestIsAskedFirstAndAnOlderOneNotWhenItSwallows)
{
    QStringList asked;
    bool newerSwallows = false;
    const auto note = [&](const char* who, Disposition disposition) {
        asked.append(QString::fromLatin1(who));
        return disposition;
    };
    const auto older =
        this->monitors().addLocalMonitor(eventMaskBit(EventType::keyDown), [&](const MonitoredEvent&) {
            return note("older", Disposition::pass);
        });
    const auto newer =
        this->monitors().addLocalMonitor(eventMaskBit(EventType::keyDown), [&](const MonitoredEvent&) {
            return note("newer", newerSwallows ? Disposition::swallow : Disposition::pass);
        });
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(2).size(), 2);
    EXPECT_EQ(asked, (QStringList{QStringLiteral("newer"), QStringLiteral("older")}));
    asked.clear();
    newerSwallows = true;
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(3).size(), 3) << "the release that nobody asked for";
    EXPECT_EQ(asked, QStringList{QStringLiteral("newer")});
}

TYPED_TEST(EventMonitorsContract, AHandlerMayEndItsOwnMonitor)
{
    std::unique_ptr<EventMonitor> monitor;
    int asked = 0;
    monitor = this->monitors().addLocalMonitor(keyEvents, [&](const MonitoredEvent&) {
        ++asked;
        monitor.reset();
        return Disposition::swallow;
    });
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(1), QStringList{QStringLiteral("up")});
    EXPECT_EQ(asked, 1);
}

TYPED_TEST(EventMonitorsContract, AMonitorThatHasEndedIsNotAsked)
{
    int asked = 0;
    auto monitor = this->monitors().addLocalMonitor(keyEvents, [&](const MonitoredEvent&) {
        ++asked;
        return Disposition::swallow;
    });
    monitor.reset();
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(2).size(), 2);
    EXPECT_EQ(asked, 0);
}

TYPED_TEST(EventMonitorsContract, AMenuTrackingMonitorIsAskedOnlyWhileAMenuIsOpen)
{
    const auto monitor = this->monitors().addMenuTrackingMonitor(keyEvents, [&](const MonitoredEvent& event) {
        EXPECT_EQ(event.event.keycode, virtualC);
        this->seen.push_back(event.event.type);
        return this->seen.size() <= 2 ? Disposition::swallow : Disposition::pass;
    });
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(2).size(), 2);
    EXPECT_TRUE(this->seen.empty());

    this->program.openMenu();
    this->program.tapC();
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(4).size(), 4) << "the second one passes to the menu";
    EXPECT_THAT(this->seen,
                ElementsAre(EventType::keyDown, EventType::keyUp, EventType::keyDown, EventType::keyUp));

    this->program.closeMenu();
    this->program.tapC();
    EXPECT_EQ(this->program.arrived(6).size(), 6);
    EXPECT_EQ(this->seen.size(), 4u);
}

} // namespace orvane::tests

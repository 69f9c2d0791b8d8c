// Event monitors that a test feeds by hand.
#pragma once

#include "Platform/EventMonitors.h"

#include <vector>

namespace orvane {

class FakeEventMonitors : public EventMonitors {
public:
    std::unique_ptr<EventMonitor> addLocalMonitor(EventMask mask, Handler handler) override;
    std::unique_ptr<EventMonitor> addMenuTrackingMonitor(EventMask mask, Handler handler) override;

    std::unique_ptr<EventMonitor> addGlobalMonitor(EventMask mask, Observer observer) override;
    [[nodiscard]] Point mouseLocation() const override { return pointer; }
    [[nodiscard]] EventFlags modifierFlags() const override { return modifiers; }

    /// Sends an event that another program gets.
    void sendToOthers(const MonitoredEvent& event);
    /// Sends an event to a window of the program; returns `pass` when it gets there.
    Disposition sendToWindow(const MonitoredEvent& event);
    /// Sends an event to an open menu of the program.
    Disposition sendToMenu(const MonitoredEvent& event) { return send(m_menuTracking, event); }

    [[nodiscard]] std::size_t localCount() const { return m_local.size(); }
    [[nodiscard]] std::size_t globalCount() const { return m_global.size(); }
    [[nodiscard]] std::size_t menuTrackingCount() const { return m_menuTracking.size(); }

    /// Called before the monitors are told of a press of the left button.
    std::function<void()> onLeftPress;
    /// In the space of the screens.
    Point pointer;
    EventFlags modifiers = 0;

private:
    class Monitor;
    /// The newest first.
    using Monitors = std::vector<Monitor*>;

    void note(const MonitoredEvent& event) const;
    Disposition send(const Monitors& monitors, const MonitoredEvent& event);

    Monitors m_global;
    Monitors m_local;
    Monitors m_menuTracking;
};

} // namespace orvane

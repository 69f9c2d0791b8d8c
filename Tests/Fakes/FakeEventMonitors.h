// Event monitors that a test feeds by hand.
#pragma once

#include "Platform/EventMonitors.h"

#include <vector>

namespace orvane {

class FakeEventMonitors : public EventMonitors {
public:
    std::unique_ptr<EventMonitor> addLocalMonitor(EventMask mask, Handler handler) override;
    std::unique_ptr<EventMonitor> addMenuTrackingMonitor(EventMask mask, Handler handler) override;

    /// An event on its way to a window of the program; pass when it gets there.
    Disposition sendToWindow(const MonitoredEvent& event) { return send(m_local, event); }
    /// An event on its way to an open menu of the program.
    Disposition sendToMenu(const MonitoredEvent& event) { return send(m_menuTracking, event); }

    std::size_t localCount() const { return m_local.size(); }
    std::size_t menuTrackingCount() const { return m_menuTracking.size(); }

private:
    class Monitor;
    /// The newest first.
    using Monitors = std::vector<Monitor*>;

    Disposition send(const Monitors& monitors, const MonitoredEvent& event);

    Monitors m_local;
    Monitors m_menuTracking;
};

} // namespace orvane

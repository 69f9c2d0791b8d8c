// Monitors in the order in which they are asked, the newest first. Main thread.
#pragma once

#include "Platform/EventMonitors.h"

#include <memory>
#include <vector>

namespace orvane {

class MonitorList {
public:
    using Disposition = EventMonitors::Disposition;
    using MonitoredEvent = EventMonitors::MonitoredEvent;

    /// `changed` is called when a monitor has come or gone.
    explicit MonitorList(std::function<void()> changed);

    /// The monitor may outlive the list.
    [[nodiscard]] std::unique_ptr<EventMonitor> add(EventMask mask, EventMonitors::Handler handler);
    [[nodiscard]] bool isEmpty() const { return m_state->monitors.empty(); }
    /// Returns all types that any of them wants.
    [[nodiscard]] EventMask mask() const;
    [[nodiscard]] Disposition offer(const MonitoredEvent& event) const;

private:
    class Monitor;
    struct State {
        std::vector<Monitor*> monitors;
        std::function<void()> changed;
    };

    std::shared_ptr<State> m_state;
};

} // namespace orvane

// A monitor of the program's own events that is made first and started later. Main thread.
#pragma once

#include "Platform/EventMonitors.h"
#include "Platform/Platform.h"

#include <memory>
#include <utility>

namespace orvane::KeyboardShortcuts {

/// Its end takes the monitor away; a callback may end its own monitor.
class LocalEventMonitor {
public:
    LocalEventMonitor(EventMask events, EventMonitors::Handler callback)
        : m_events(events), m_callback(std::move(callback))
    {
    }

    /// Does nothing while it runs already.
    void start()
    {
        if (!m_monitor)
            m_monitor = platform().eventMonitors.addLocalMonitor(m_events, m_callback);
    }

private:
    EventMask m_events;
    EventMonitors::Handler m_callback;
    std::unique_ptr<EventMonitor> m_monitor;
};

} // namespace orvane::KeyboardShortcuts

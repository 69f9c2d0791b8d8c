// Watches the keys on their way to an open menu; can be started and stopped. Main thread.
#pragma once

#include "Platform/EventMonitors.h"

#include <memory>

namespace orvane::KeyboardShortcuts {

class RunLoopLocalEventMonitor {
public:
    RunLoopLocalEventMonitor(EventMask events, EventMonitors::Handler callback);

    /// Does nothing if it is started already.
    void start();
    /// May be called by the callback.
    void stop();

private:
    EventMask m_events;
    EventMonitors::Handler m_callback;
    std::unique_ptr<EventMonitor> m_monitor;
};

} // namespace orvane::KeyboardShortcuts

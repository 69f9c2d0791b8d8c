// A look at the keys on their way to an open menu, that can be started and stopped. Main thread.
#pragma once

#include "Platform/EventMonitors.h"

#include <memory>

namespace orvane::KeyboardShortcuts {

class RunLoopLocalEventMonitor {
public:
    RunLoopLocalEventMonitor(EventMask events, EventMonitors::Handler callback);

    /// Started already, it stays as it is.
    void start();
    /// May be called by the callback.
    void stop();

private:
    EventMask m_events;
    EventMonitors::Handler m_callback;
    std::unique_ptr<EventMonitor> m_monitor;
};

} // namespace orvane::KeyboardShortcuts

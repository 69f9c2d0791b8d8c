#include "KeyboardShortcuts/Registration/RunLoopLocalEventMonitor.h"

#include "Platform/Platform.h"

namespace orvane::KeyboardShortcuts {

RunLoopLocalEventMonitor::RunLoopLocalEventMonitor(EventMask events, EventMonitors::Handler callback)
    : m_events(events), m_callback(std::move(callback))
{
}

void RunLoopLocalEventMonitor::start()
{
    if (!m_monitor)
        m_monitor = platform().eventMonitors.addMenuTrackingMonitor(m_events, m_callback);
}

void RunLoopLocalEventMonitor::stop()
{
    m_monitor.reset();
}

} // namespace orvane::KeyboardShortcuts

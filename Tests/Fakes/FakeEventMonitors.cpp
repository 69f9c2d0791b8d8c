#include "Fakes/FakeEventMonitors.h"

#include <algorithm>

namespace orvane {

class FakeEventMonitors::Monitor : public EventMonitor {
public:
    Monitor(Monitors& monitors, EventMask mask, Handler handler)
        : m_monitors(monitors), m_mask(mask), m_handler(std::make_shared<const Handler>(std::move(handler)))
    {
        m_monitors.insert(m_monitors.begin(), this);
    }
    ~Monitor() override { std::erase(m_monitors, this); }

    [[nodiscard]] bool wants(EventType type) const { return (m_mask & eventMaskBit(type)) != 0; }
    Disposition handle(const MonitoredEvent& event)
    {
        const auto handler = m_handler; // the handler may end its own monitor
        return (*handler)(event);
    }

private:
    Monitors& m_monitors;
    EventMask m_mask;
    std::shared_ptr<const Handler> m_handler;
};

std::unique_ptr<EventMonitor> FakeEventMonitors::addLocalMonitor(EventMask mask, Handler handler)
{
    return std::make_unique<Monitor>(m_local, mask, std::move(handler));
}

std::unique_ptr<EventMonitor> FakeEventMonitors::addMenuTrackingMonitor(EventMask mask, Handler handler)
{
    return std::make_unique<Monitor>(m_menuTracking, mask, std::move(handler));
}

std::unique_ptr<EventMonitor> FakeEventMonitors::addGlobalMonitor(EventMask mask, Observer observer)
{
    return std::make_unique<Monitor>(m_global, mask,
                                     [observe = std::move(observer)](const MonitoredEvent& event) {
                                         observe(event);
                                         return Disposition::pass;
                                     });
}

void FakeEventMonitors::sendToOthers(const MonitoredEvent& event)
{
    note(event);
    send(m_global, event);
}

EventMonitors::Disposition FakeEventMonitors::sendToWindow(const MonitoredEvent& event)
{
    note(event);
    return send(m_local, event);
}

void FakeEventMonitors::note(const MonitoredEvent& event) const
{
    if (event.event.type == EventType::leftMouseDown && onLeftPress)
        onLeftPress();
}

EventMonitors::Disposition FakeEventMonitors::send(const Monitors& monitors, const MonitoredEvent& event)
{
    const Monitors snapshot = monitors;
    for (Monitor* monitor : snapshot) {
        if (std::ranges::find(monitors, monitor) == monitors.end() || !monitor->wants(event.event.type))
            continue;
        if (monitor->handle(event) == Disposition::swallow)
            return Disposition::swallow;
    }
    return Disposition::pass;
}

} // namespace orvane

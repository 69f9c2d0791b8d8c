#include "PlatformLinux/EventMonitors/MonitorList.h"

#include <algorithm>
#include <utility>

namespace orvane {

class MonitorList::Monitor : public EventMonitor {
public:
    Monitor(const std::shared_ptr<State>& state, EventMask mask, EventMonitors::Handler handler)
        : m_state(state),
          m_mask(mask),
          m_handler(std::make_shared<const EventMonitors::Handler>(std::move(handler)))
    {
        state->monitors.insert(state->monitors.begin(), this);
        state->changed();
    }

    ~Monitor() override
    {
        const auto state = m_state.lock();
        if (!state)
            return;
        std::erase(state->monitors, this);
        state->changed();
    }

    [[nodiscard]] EventMask mask() const { return m_mask; }
    [[nodiscard]] bool wants(EventType type) const { return (m_mask & eventMaskBit(type)) != 0; }

    Disposition handle(const MonitoredEvent& event)
    {
        const auto handler = m_handler; // the handler may end its own monitor
        return (*handler)(event);
    }

private:
    std::weak_ptr<State> m_state;
    EventMask m_mask;
    std::shared_ptr<const EventMonitors::Handler> m_handler;
};

MonitorList::MonitorList(std::function<void()> changed)
    : m_state(std::make_shared<State>(State{{}, std::move(changed)}))
{
}

std::unique_ptr<EventMonitor> MonitorList::add(EventMask mask, EventMonitors::Handler handler)
{
    return std::make_unique<Monitor>(m_state, mask, std::move(handler));
}

EventMask MonitorList::mask() const
{
    EventMask mask = 0;
    for (const Monitor* monitor : m_state->monitors)
        mask |= monitor->mask();
    return mask;
}

EventMonitors::Disposition MonitorList::offer(const MonitoredEvent& event) const
{
    const auto state = m_state;
    const auto snapshot = state->monitors;
    for (Monitor* monitor : snapshot) {
        const bool isStillThere = std::ranges::find(state->monitors, monitor) != state->monitors.end();
        if (isStillThere && monitor->wants(event.event.type) &&
            monitor->handle(event) == Disposition::swallow)
            return Disposition::swallow;
    }
    return Disposition::pass;
}

} // namespace orvane

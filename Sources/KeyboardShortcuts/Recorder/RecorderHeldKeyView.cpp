#include "KeyboardShortcuts/Recorder/RecorderHeldKeyView.h"

namespace orvane::KeyboardShortcuts {

namespace {

constexpr EventMask keyEvents = eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp);

} // namespace

RecorderHeldKey::RecorderHeldKey(std::int64_t keycode, std::unique_ptr<KeyboardGrab> grab)
    : m_keycode(keycode), m_grab(std::move(grab))
{
    m_monitor.emplace(keyEvents,
                      [this](const EventMonitors::MonitoredEvent& event) { return handle(event.event); });
    m_monitor->start();
}

EventMonitors::Disposition RecorderHeldKey::handle(const Event& event)
{
    const bool isRelease = event.type == EventType::keyUp;
    if (event.keycode != m_keycode) {
        if (!isRelease && event.autorepeat == 0)
            end();
        return EventMonitors::Disposition::pass;
    }
    // A press counts as a repeat, even one that isn't marked so: the count of repeats starts anew when the
    // focus moves to an alert.
    if (isRelease)
        end();
    return EventMonitors::Disposition::swallow;
}

void RecorderHeldKey::end()
{
    m_grab.reset();
    m_monitor.reset();
}

} // namespace orvane::KeyboardShortcuts

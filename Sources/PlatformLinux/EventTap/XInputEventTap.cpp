#include "PlatformLinux/EventTap/XInputEventTap.h"

namespace orvane {

XInputEventTap::~XInputEventTap()
{
    m_taps.remove(this);
}

void XInputEventTap::addToMainRunLoop()
{
    m_isAttached = true;
    if (!m_taps.update())
        m_isEnabled = false;
}

void XInputEventTap::removeFromMainRunLoop()
{
    m_isAttached = false;
    m_taps.update();
}

void XInputEventTap::enable(bool enabled)
{
    m_taps.noticeEnding();
    m_isEnabled = enabled && m_isValid;
    if (!m_taps.update())
        m_isEnabled = false;
}

bool XInputEventTap::isEnabled() const
{
    m_taps.noticeEnding();
    return m_isEnabled;
}

void XInputEventTap::invalidate()
{
    m_isValid = false;
    m_isEnabled = false;
    m_taps.update();
}

std::optional<Event> XInputEventTap::pass(Event event)
{
    if (m_options == EventTaps::Options::listenOnly) {
        Event shown = event;
        m_callback(shown.type, &shown, m_userInfo);
        return event;
    }
    const Event* passed = m_callback(event.type, &event, m_userInfo);
    return passed ? std::optional(*passed) : std::nullopt;
}

void XInputEventTap::tellOfTimeout()
{
    Event event;
    event.type = EventType::tapDisabledByTimeout;
    m_callback(event.type, &event, m_userInfo);
}

} // namespace orvane

#include "PlatformLinux/EventTap/XInputEventTap.h"

namespace orvane {

XInputEventTap::~XInputEventTap()
{
    m_taps.remove(this);
}

void XInputEventTap::addToMainRunLoop()
{
    m_taps.noticeEnding();
    m_isAttached = true;
    updateOrDisable();
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
    updateOrDisable();
}

void XInputEventTap::updateOrDisable()
{
    if (m_taps.update())
        return;
    m_isEnabled = false;
    m_taps.update(); // taps that only listen need less
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

EventTapDecision XInputEventTap::decide(Event& event)
{
    if (m_options == EventTaps::Options::defaultTap)
        return m_callback(event.type, event, m_userInfo);
    hear(event);
    return EventTapDecision::pass;
}

void XInputEventTap::tellOfTimeout()
{
    Event event;
    event.type = EventType::tapDisabledByTimeout;
    m_callback(event.type, event, m_userInfo);
}

} // namespace orvane

#include "PlatformLinux/EventMonitors/RawKeys.h"

#include <algorithm>

#include <xcb/xinput.h>

namespace orvane {

namespace {

/// Those of keys that went to other programs are never asked for.
constexpr std::size_t mostNoted = 512;

} // namespace

RawKeys::RawKeys(std::shared_ptr<ApplicationLink> x) : m_x(std::move(x))
{
    const auto* xinput = m_x->link().extension(xcb_input_id);
    if (!xinput)
        return;
    m_xinput = xinput->major_opcode;
    m_listener = m_x->listen([this](const xcb_generic_event_t& event) { note(event); });
    m_selection = m_x->link().selectInput(m_x->root(), XCB_INPUT_DEVICE_ALL_MASTER,
                                          XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                                              XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
}

bool RawKeys::note(const xcb_generic_event_t& event)
{
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    if ((event.response_type & 0x7F) != XCB_GE_GENERIC || raw.extension != m_xinput)
        return false;
    if (raw.event_type == XCB_INPUT_RAW_KEY_PRESS)
        m_noted.push_back({Motion::press, raw.detail, raw.time});
    else if (raw.event_type == XCB_INPUT_RAW_KEY_RELEASE)
        m_noted.push_back({Motion::release, raw.detail, raw.time});
    else
        return false;
    if (m_noted.size() > mostNoted)
        m_noted.pop_front();
    return true;
}

bool RawKeys::take(Motion motion, std::uint8_t key, xcb_timestamp_t time)
{
    m_x->link().takeEvents([this](const xcb_generic_event_t& event) { return note(event); });
    const auto found = std::ranges::find_if(m_noted, [&](const Noted& noted) {
        return noted.motion == motion && noted.key == key && noted.time == time;
    });
    if (found == m_noted.end())
        return false;
    const auto isOfKey = [key](const Noted& noted) { return noted.key == key; };
    m_noted.erase(std::remove_if(m_noted.begin(), found + 1, isOfKey), found + 1);
    return true;
}

} // namespace orvane

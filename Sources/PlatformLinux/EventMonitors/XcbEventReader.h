// Reads the key and mouse events that the X server sends to windows of this process, in the form of the
// server: before input methods, shortcuts and widgets, and once each. Main thread.
#pragma once

#include "Platform/EventMonitors.h"
#include "PlatformLinux/EventMonitors/RawKeys.h"
#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/ModifierRoles.h"

#include <functional>
#include <memory>
#include <optional>

struct xcb_input_button_press_event_t;

namespace orvane {

class XcbEventReader {
public:
    using Disposition = EventMonitors::Disposition;
    /// Called for each event found.
    using Deliver = std::function<Disposition(const EventMonitors::MonitoredEvent&)>;

    explicit XcbEventReader(Deliver deliver) : m_deliver(std::move(deliver)) {}

    /// Begins with the mouse.
    void start(std::shared_ptr<ApplicationLink> x);
    /// Begins with the keys, and takes over what is held at this moment; or ends with them. The server tells
    /// of every key of every program meanwhile. To be called after start().
    void readKeys(bool reads);
    /// Takes back what it has asked of the server. It may start again.
    void stop();
    /// Returns true if the event must go no further. May change it: a button whose press was swallowed isn't
    /// shown as held, or the toolkit would make up the press.
    Disposition read(xcb_generic_event_t& event);

private:
    struct Release {
        std::uint8_t key = 0;
        xcb_timestamp_t time = 0;
        EventMonitors::MonitoredEvent event;
    };

    Disposition readKey(const xcb_key_press_event_t& event);
    Disposition readDevice(xcb_generic_event_t& event);
    Disposition readMouse(const xcb_input_button_press_event_t& event);
    Disposition press(const xcb_key_press_event_t& event, EventMonitors::MonitoredEvent monitored);
    Disposition release(const xcb_key_press_event_t& event, EventMonitors::MonitoredEvent monitored);
    [[nodiscard]] bool isRepeatOfSameTime(const xcb_key_press_event_t& event);
    [[nodiscard]] bool isOfLastRelease(const xcb_key_press_event_t& event) const
    {
        return m_released && m_released->key == event.detail && m_released->time == event.time;
    }
    Disposition deliver(const EventMonitors::MonitoredEvent& event) { return m_deliver(event); }
    EventFlags flagsAfter(const xcb_key_press_event_t& event, bool goesDown);
    [[nodiscard]] bool levelThreeIsHeld() const;
    void readMapping();

    Deliver m_deliver;
    std::shared_ptr<ApplicationLink> m_x;
    std::optional<RawKeys> m_rawKeys; // nothing while keys aren't read
    std::uint8_t m_xinput = 0;
    std::uint8_t m_xkbEvent = 0;
    ModifierRoles m_roles;
    KeySet m_down;
    /// Keys whose last press was swallowed.
    KeySet m_swallowed;
    /// Bits of the buttons, by number, whose press was swallowed.
    std::uint32_t m_swallowedButtons = 0;
    bool m_capsUnlocksOnRelease = false;
    /// The last release that was told, and what becomes of a repeat of the same time.
    struct Told {
        std::uint8_t key = 0;
        xcb_timestamp_t time = 0;
        Disposition ofRepeat = Disposition::pass;
    };
    std::optional<Told> m_released;
    /// Half of a repeat, or a release that nothing else told of; the next press decides.
    std::optional<Release> m_unsure;
};

} // namespace orvane

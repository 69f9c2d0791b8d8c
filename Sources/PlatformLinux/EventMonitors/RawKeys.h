// What the keys of the hardware, or of a program in its place, have really done: a held key that repeats is
// reported to windows as released and pressed too. Main thread.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/XSelection.h"

#include <cstdint>
#include <deque>
#include <memory>

#include <xcb/xcb.h>

namespace orvane {

class RawKeys {
public:
    enum class Motion { press, release };

    /// Notes the motions from now on, until its end.
    explicit RawKeys(std::shared_ptr<ApplicationLink> x);

    /// False where the server can't tell.
    [[nodiscard]] bool areTold() const { return m_listener != nullptr; }
    /// True if the key moved so at this time of the server, as the event of a window has it. To be asked
    /// after a round trip, so that the server has told of the motion. Forgets it and earlier ones of the key.
    [[nodiscard]] bool take(Motion motion, std::uint8_t key, xcb_timestamp_t time);

private:
    struct Noted {
        Motion motion = Motion::press;
        std::uint32_t key = 0;
        xcb_timestamp_t time = 0;
    };
    /// False for an event of another kind.
    bool note(const xcb_generic_event_t& event);

    std::shared_ptr<ApplicationLink> m_x;
    std::uint8_t m_xinput = 0;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    XSelection m_selection;
    std::deque<Noted> m_noted;
};

} // namespace orvane

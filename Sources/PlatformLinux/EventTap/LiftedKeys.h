// Keys that the user holds and that are lifted from their own keyboards, while a posted chord is pressed or
// to count anew, and then put back; unless the user has released them meanwhile, or they would stay down for
// ever. Only for keyboards that aren't grabbed, and where no other events are waited for. One thread at a
// time.
#pragma once

#include "PlatformLinux/EventTap/FakedMotions.h"
#include "PlatformLinux/X11/InputConnection.h"
#include "PlatformLinux/X11/KeyActions.h"

#include <vector>

#include <xcb/xinput.h>

namespace orvane {

class LiftedKeys {
public:
    /// The motions made on the keyboards are noted in `faked`, if there is a listener to them.
    explicit LiftedKeys(InputConnection& connection, FakedMotions* faked = nullptr)
        : m_connection(connection), m_faked(faked)
    {
    }

    /// Lifts the key from each keyboard on which it is down. Round trips.
    void lift(std::uint8_t key);
    /// Round trips.
    void putBack(std::uint8_t key);
    /// Takes an event of the connection; to be called if the connection's events are read elsewhere. False
    /// when it isn't one of theirs.
    bool take(const xcb_generic_event_t& event);

private:
    struct Motion {
        DeviceId device;
        std::uint8_t key;
        KeyMotion motion;
        std::uint32_t request; // the last request that the server had read by then
    };
    struct Lifted {
        DeviceId device;
        std::uint8_t key;
        std::uint32_t request; // the request that asked whether it is down
    };

    void watch(bool watches);
    std::vector<KeyMotion> motionsOf(const Lifted& lifted);
    void putBack(const Lifted& lifted);

    void fake(DeviceId device, std::uint8_t key, KeyMotion motion);

    InputConnection& m_connection;
    FakedMotions* m_faked;
    XSelection m_rawKeys;
    std::vector<Lifted> m_lifted;
    std::vector<Motion> m_motions;
};

} // namespace orvane

// The accessibility of a keyboard in the server: Slow, Bounce, Sticky and Mouse Keys, their switches by keys
// and their time-out. The server applies them to the keys of each device, grabbed or not. Any thread.
#pragma once

#include "PlatformLinux/X11/InputConnection.h"

#include <cstdint>

namespace orvane {

class AccessKeys {
public:
    /// Those that are on. None where the server doesn't answer in time. Round trip.
    [[nodiscard]] static AccessKeys of(InputConnection& connection, DeviceId device);

    /// All off.
    AccessKeys() = default;

    /// True if a key counts only when it is held for a while, or not soon after another press: keys that this
    /// program presses for an instant would be lost.
    [[nodiscard]] bool filterPresses() const;
    /// Sent with the next flush or question; changes nothing else of the device.
    void applyTo(InputConnection& connection, DeviceId device) const;

private:
    explicit AccessKeys(std::uint32_t controls) : m_controls(controls) {}
    std::uint32_t m_controls = 0;
};

} // namespace orvane

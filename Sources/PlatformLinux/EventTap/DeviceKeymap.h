// What a keyboard device makes of its keys: key map, compatibility map and controls, the repeat rate among
// them. To be read from one device and given to another; names aren't part of it, for they say nothing to
// anyone who types. One thread at a time.
#pragma once

#include "PlatformLinux/X11/InputConnection.h"

#include <cstddef>
#include <vector>

namespace orvane {

class DeviceKeymap {
public:
    /// Knows nothing, and is given to nobody.
    DeviceKeymap() = default;
    /// Round trip.
    static DeviceKeymap of(InputConnection& connection, DeviceId device);

    /// Makes a device work like this; where it already does, nothing is sent. Round trip.
    void applyTo(InputConnection& connection, DeviceId device) const;

    friend bool operator==(const DeviceKeymap&, const DeviceKeymap&) = default;

private:
    /// The server's replies without what tells the device.
    using Bytes = std::vector<std::byte>;
    Bytes m_map;
    Bytes m_compatMap;
    Bytes m_controls;
};

/// Gives the device `to` the locked modifiers and the locked group of `from`, and with them its lights.
void copyLocks(InputConnection& connection, DeviceId from, DeviceId to);

} // namespace orvane

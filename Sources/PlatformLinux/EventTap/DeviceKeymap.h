// A keyboard device's mapping: key map, compatibility map and controls, the repeat rate among them. Read from
// one device and applied to another; names aren't part of it, as nobody who types needs them. One thread at a
// time.
#pragma once

#include "PlatformLinux/X11/InputConnection.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvane {

class DeviceKeymap {
public:
    /// An empty keymap, which is never applied.
    DeviceKeymap() = default;
    /// Empty where the server doesn't answer in time. Round trip.
    [[nodiscard]] static DeviceKeymap of(InputConnection& connection, DeviceId device);

    [[nodiscard]] bool isEmpty() const { return m_map.empty(); }
    /// True if each key has the same meaning in both; their repeat rates may differ.
    [[nodiscard]] bool hasKeysOf(const DeviceKeymap& other) const { return m_map == other.m_map; }
    /// Makes a device work like this one; changes nothing where it already does. Returns an empty text, or
    /// why it doesn't, as part of a sentence. Round trips.
    [[nodiscard]] std::string applyTo(InputConnection& connection, DeviceId device) const;

    friend bool operator==(const DeviceKeymap&, const DeviceKeymap&) = default;

private:
    /// The server's replies without the parts that name the device.
    using Bytes = std::vector<std::byte>;
    Bytes m_map;
    Bytes m_compatMap;
    Bytes m_controls;
};

/// Gives the device `to` the locked modifiers and the locked group of `from`, and so its lights. Round trip;
/// nothing happens where the server doesn't answer in time.
void copyLocks(InputConnection& connection, DeviceId from, DeviceId to);

} // namespace orvane

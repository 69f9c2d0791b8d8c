// Several keyboards that count as one: a key is down when it is down on any of them. Pure; one thread at a
// time.
#pragma once

#include "PlatformLinux/EventTap/HeldKeys.h"
#include "PlatformLinux/X11/InputConnection.h"

#include <optional>
#include <vector>

namespace orvane {

class JoinedKeyboards {
public:
    struct Keyboard {
        DeviceId id = 0;
        KeySet down;
    };

    [[nodiscard]] bool isEmpty() const { return m_keyboards.empty(); }
    [[nodiscard]] bool has(DeviceId id) const;
    [[nodiscard]] const std::vector<Keyboard>& keyboards() const { return m_keyboards; }
    /// Returns the keys that are down on any of them.
    [[nodiscard]] KeySet down() const;

    void add(DeviceId id, const KeySet& down) { m_keyboards.push_back({id, down}); }
    /// Returns the keys that were down on it and aren't down elsewhere.
    KeySet remove(DeviceId id);
    /// Returns what a motion on one of them is for all together; nothing when the key is down elsewhere too,
    /// or the keyboard isn't one of them.
    std::optional<HardwareKey> motion(DeviceId id, std::uint32_t key, KeyMotion motion);

private:
    std::vector<Keyboard> m_keyboards;
};

} // namespace orvane

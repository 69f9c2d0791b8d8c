#include "PlatformLinux/EventTap/JoinedKeyboards.h"

#include <algorithm>

namespace orvane {

bool JoinedKeyboards::has(DeviceId id) const
{
    return std::ranges::find(m_keyboards, id, &Keyboard::id) != m_keyboards.end();
}

KeySet JoinedKeyboards::down() const
{
    KeySet keys;
    for (const Keyboard& keyboard : m_keyboards)
        keys |= keyboard.down;
    return keys;
}

KeySet JoinedKeyboards::remove(DeviceId id)
{
    const auto at = std::ranges::find(m_keyboards, id, &Keyboard::id);
    if (at == m_keyboards.end())
        return {};
    const KeySet gone = at->down;
    m_keyboards.erase(at);
    return gone & ~down();
}

std::optional<HardwareKey> JoinedKeyboards::motion(DeviceId id, std::uint32_t detail, KeyMotion motion)
{
    const auto at = std::ranges::find(m_keyboards, id, &Keyboard::id);
    if (at == m_keyboards.end() || detail > 0xFF)
        return std::nullopt;
    const auto key = static_cast<std::uint8_t>(detail);
    const bool isDownElsewhere = std::ranges::any_of(
        m_keyboards, [&](const Keyboard& each) { return each.id != id && each.down.test(key); });
    at->down.set(key, motion != KeyMotion::release);
    if (isDownElsewhere)
        return std::nullopt;
    return HardwareKey{key, motion};
}

} // namespace orvane

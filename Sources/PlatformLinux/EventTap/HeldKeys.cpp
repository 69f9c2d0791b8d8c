#include "PlatformLinux/EventTap/HeldKeys.h"

#include "PlatformLinux/Keys/EventKeyCodes.h"

namespace orvane {

Event HeldKeys::observe(HardwareKey hardware, std::uint64_t timestamp)
{
    const bool goesUp = hardware.motion == KeyMotion::release;
    if (m_roles.roleOf(hardware.key) == ModifierRole::capsLock)
        observeCapsLock(hardware.motion);
    KeySet afterwards = m_keys;
    afterwards.set(hardware.key, !goesUp);
    if (!goesUp)
        m_keys.set(hardware.key);

    Event event;
    event.type = goesUp ? EventType::keyUp : EventType::keyDown;
    if (m_roles.isModifier(hardware.key))
        event.type = EventType::flagsChanged;
    event.flags = flagsOf(afterwards);
    event.keycode = eventKeyCode(hardware.key);
    event.autorepeat = hardware.motion == KeyMotion::repeat ? 1 : 0;
    event.timestamp = timestamp;
    return event;
}

/// The lock begins with the press; the press that finds it set ends it with its release.
void HeldKeys::observeCapsLock(KeyMotion motion)
{
    if (motion == KeyMotion::press) {
        m_capsWasLocked = m_capsUnlocksOnRelease = m_capsLocked;
        m_capsLocked = true;
    } else if (motion == KeyMotion::release && m_capsUnlocksOnRelease) {
        m_capsLocked = m_capsUnlocksOnRelease = false;
    }
}

void HeldKeys::undoCapsLock()
{
    m_capsLocked = m_capsWasLocked;
    m_capsUnlocksOnRelease = false;
}

EventFlags HeldKeys::flagsOf(const KeySet& keys) const
{
    EventFlags flags = m_latched | (m_capsLocked ? eventFlag::alphaShift : EventFlags{0});
    forEachKey(keys & m_roles.chordKeys(), [&](std::uint8_t key) { flags |= flagOf(m_roles.roleOf(key)); });
    return flags;
}

} // namespace orvane

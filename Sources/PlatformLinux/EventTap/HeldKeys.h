// The keys that the user holds, and the event for each motion of a key. Pure; one thread at a time.
#pragma once

#include "Platform/Event.h"
#include "PlatformLinux/X11/KeyActions.h"
#include "PlatformLinux/X11/ModifierRoles.h"

namespace orvane {

/// One motion of a key on the user's keyboards taken together.
struct HardwareKey {
    std::uint8_t key = 0;
    KeyMotion motion = KeyMotion::press;
};

/// Calls `visit` for each key of a set, in ascending order.
template <typename Visit>
void forEachKey(const KeySet& keys, Visit visit)
{
    for (unsigned key = 0; key < keys.size(); ++key) {
        if (keys.test(key))
            visit(static_cast<std::uint8_t>(key));
    }
}

class HeldKeys {
public:
    void setRoles(const ModifierRoles& roles) { m_roles = roles; }
    [[nodiscard]] const ModifierRoles& roles() const { return m_roles; }
    /// Sets the server's state of Caps Lock, which overrides the one expected here.
    void setCapsLocked(bool locked) { m_capsLocked = locked; }
    /// Sets the flags of modifiers that count for the next key though they are up: Sticky Keys.
    void setLatched(EventFlags flags) { m_latched = flags; }
    /// Takes back the effect of the last press of Caps Lock, because it was consumed.
    void undoCapsLock();

    [[nodiscard]] const KeySet& keys() const { return m_keys; }
    void set(const KeySet& keys) { m_keys = keys; }
    /// Returns the event for a motion. A key that goes up stays among the held ones until forget().
    Event observe(HardwareKey hardware, std::uint64_t timestamp);
    void forget(std::uint8_t key) { m_keys.reset(key); }

    /// Returns the modifiers that the user holds, and the state of Caps Lock.
    [[nodiscard]] EventFlags flags() const { return flagsOf(m_keys); }

private:
    void observeCapsLock(KeyMotion motion);
    [[nodiscard]] EventFlags flagsOf(const KeySet& keys) const;

    ModifierRoles m_roles;
    KeySet m_keys;
    EventFlags m_latched = 0;
    bool m_capsLocked = false;
    bool m_capsWasLocked = false;
    bool m_capsUnlocksOnRelease = false;
};

} // namespace orvane

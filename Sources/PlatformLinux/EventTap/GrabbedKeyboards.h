// The user's keyboards while they are taken away from the server and their keys come to us alone. They are
// joined into one. The end of the object lets them go. One thread at a time.
#pragma once

#include "PlatformLinux/EventTap/DeviceKeymap.h"
#include "PlatformLinux/EventTap/FakedMotions.h"
#include "PlatformLinux/EventTap/JoinedKeyboards.h"
#include "PlatformLinux/X11/InputConnection.h"

#include <optional>
#include <string>
#include <vector>

#include <xcb/xinput.h>

namespace orvane {

class GrabbedKeyboards {
public:
    GrabbedKeyboards(InputConnection& connection, FakedMotions& faked)
        : m_connection(connection), m_faked(faked)
    {
    }
    ~GrabbedKeyboards();
    GrabbedKeyboards(const GrabbedKeyboards&) = delete;
    GrabbedKeyboards& operator=(const GrabbedKeyboards&) = delete;

    /// Takes those that aren't taken yet, and hears of devices that come and go from now on. Gives a sentence
    /// for each one that can't be had. Round trips.
    std::vector<std::string> grab();
    /// Releases what is down on the XTEST keyboard: what a program that was killed together with its guardian
    /// has left there. Round trip.
    void releaseLeftovers();
    [[nodiscard]] bool isEmpty() const { return m_keyboards.isEmpty(); }
    [[nodiscard]] bool has(DeviceId device) const { return m_keyboards.has(device); }
    /// What was down on those that were grabbed, at that time.
    [[nodiscard]] const KeySet& downAtFirst() const { return m_downAtFirst; }

    /// What an event of a device means for the one keyboard; nothing when the key is down elsewhere too.
    std::optional<HardwareKey> motion(const xcb_input_key_press_event_t& event, KeyMotion motion)
    {
        return m_keyboards.motion(event.deviceid, event.detail, motion);
    }
    /// Devices came or went. The keys that went with them, and new sentences as those of grab().
    struct Changed {
        KeySet released;
        std::vector<std::string> problems;
    };
    Changed hierarchyChanged(const xcb_input_hierarchy_event_t& event);

    /// The layout or the repeat rate may have changed, of which grabbed devices aren't told: gives them the
    /// new ones, or the old ones would be back with the devices. Round trips.
    void followKeymap();
    /// The locks or the locked layout may have changed: the lamps and the state of grabbed devices follow.
    /// Round trips.
    void followLocks();

    /// Lets all go. What they did before is in the connection's queue when this returns, and nothing comes
    /// after it. Round trips.
    void letGo();
    /// After letGo(): of the keys that are still down, makes `modifiers` count again, which the applications
    /// have seen released, and keeps `heldBack`, which they have never seen, from repeating. Round trips.
    void restoreHeldKeys(const KeySet& modifiers, const KeySet& heldBack);

private:
    std::string grabOne(const KeyboardDevice& device);

    InputConnection& m_connection;
    FakedMotions& m_faked;
    DeviceId m_master = 0;
    DeviceId m_xtest = 0;
    /// Of the XTEST keyboard, which does hear of changes.
    DeviceKeymap m_keymap;
    XSelection m_hierarchy;
    JoinedKeyboards m_keyboards;
    std::vector<DeviceId> m_refused;
    KeySet m_downAtFirst;
    bool m_isFree = false;
};

} // namespace orvane

// The user's keyboards while they are grabbed and their keys come to us alone. They count as one. The end of
// the object lets them go. One thread at a time.
#pragma once

#include "PlatformLinux/EventTap/DeviceKeymap.h"
#include "PlatformLinux/EventTap/FakedMotions.h"
#include "PlatformLinux/EventTap/JoinedKeyboards.h"
#include "PlatformLinux/X11/InputConnection.h"

#include <algorithm>
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

    /// Grabs those that aren't grabbed yet, and listens from now on to devices that come and go. Returns a
    /// sentence for each one that can't be had. Round trips.
    std::vector<std::string> grab();
    /// Releases the keys that are down on the XTEST keyboard and were left by a program that was killed
    /// together with its guardian. Round trip.
    void releaseLeftovers();
    [[nodiscard]] bool isEmpty() const { return m_keyboards.isEmpty(); }
    /// True if some keyboard is another program's at present.
    [[nodiscard]] bool areTakenByOthers() const { return std::ranges::any_of(m_refused, &Refused::isTaken); }
    [[nodiscard]] bool has(DeviceId device) const { return m_keyboards.has(device); }
    /// Returns the keys that were down on the keyboards when these were grabbed.
    [[nodiscard]] const KeySet& downAtFirst() const { return m_downAtFirst; }

    /// Returns what an event of a device is for the one keyboard; nothing when the key is down on another
    /// device too.
    std::optional<HardwareKey> motion(const xcb_input_key_press_event_t& event, KeyMotion motion)
    {
        return m_keyboards.motion(event.deviceid, event.detail, motion);
    }
    /// The result when devices came or went: the keys that went with them, and new sentences like those of
    /// grab().
    struct Changed {
        KeySet released;
        std::vector<std::string> problems;
    };
    Changed hierarchyChanged(const xcb_input_hierarchy_event_t& event);
    /// To be called when the server is heard from after late answers: asks again. Returns new sentences like
    /// those of grab(). Round trips.
    std::vector<std::string> serverIsBack();

    [[nodiscard]] bool isRefused(DeviceId device) const;
    /// To be called for a key that was pressed on a refused keyboard: another program that had this
    /// one when it was to be grabbed may be gone. Returns the keys that are down on it if it is ours now.
    /// Round trips.
    std::optional<KeySet> tryAgain(DeviceId device);

    /// To be called when the layout or the repeat rate may have changed. Grabbed devices aren't told, so they
    /// get the new ones here; otherwise the old ones would be back when they are let go. Returns a sentence
    /// for each one that didn't get it; the next call tries again. Round trips.
    std::vector<std::string> followKeymap();
    /// To be called when the locks or the locked layout may have changed: the lamps and the state of grabbed
    /// devices follow. Round trips.
    void followLocks();

    /// Lets all go. Their earlier events are in the connection's queue when this returns, and no further ones
    /// come. Where the server doesn't answer in time, only the connection's end is sure to free them. Round
    /// trips.
    void letGo();
    /// After letGo(), for the keys that are still down: makes `modifiers` count again, which the applications
    /// have seen released, and keeps `heldBack`, which they have never seen, from repeating. Round trips.
    void restoreHeldKeys(const KeySet& modifiers, const KeySet& heldBack);

private:
    /// A keyboard that can't be had at present. A key that is pressed there is the occasion to try again: the
    /// server doesn't tell when a device is let go.
    struct Refused {
        DeviceId device = 0;
        bool isTaken = false; // by another program
        XSelection rawKeys;
    };
    struct Attempt {
        std::string problem; // empty if the keyboard is ours now
        bool isTaken = false;
        KeySet down;
    };
    Attempt grabOne(const KeyboardDevice& device);
    Attempt grabAttached(const KeyboardDevice& device);
    void forget(DeviceId device);

    InputConnection& m_connection;
    FakedMotions& m_faked;
    DeviceId m_master = 0;
    DeviceId m_xtest = 0;
    /// The keymap of the XTEST keyboard, which is told of changes.
    DeviceKeymap m_keymap;
    XSelection m_hierarchy;
    JoinedKeyboards m_keyboards;
    std::vector<Refused> m_refused;
    KeySet m_downAtFirst;
    bool m_isFree = false;
};

} // namespace orvane

// A connection to the X server of one's own for keyboards: their state, their keys, and keys of one's making.
// Its errors stay its own and a lost server ends nothing but the connection, which Xlib couldn't promise.
// One thread at a time.
#pragma once

#include "PlatformLinux/X11/KeyActions.h"
#include "PlatformLinux/X11/ModifierRoles.h"
#include "PlatformLinux/X11/XcbReply.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orvane {

/// An input device's number in the server.
using DeviceId = std::uint16_t;

struct KeyboardDevice {
    DeviceId id = 0;
    std::string name;
    enum class Attachment {
        master,   // its keys go to the applications
        floating, // set aside by the user, or grabbed by some client
    } attachment = Attachment::master;
};

/// The keyboards behind the pointer and focus that a client has by default.
struct Keyboards {
    DeviceId master = 0;
    /// The device whose key was the last one that the master took over.
    DeviceId lastUsed = 0;
    DeviceId xtest = 0;
    /// The enabled ones of the user, XTEST's left out.
    std::vector<KeyboardDevice> hardware;
};

class InputConnection {
public:
    struct Opened {
        std::unique_ptr<InputConnection> connection;
        /// Why there is none: a sentence for the log.
        std::string problem;
    };
    /// To the display of the environment. Round trips.
    static Opened open();

    xcb_connection_t* xcb() const { return m_xcb.get(); }
    xcb_window_t root() const { return m_root; }
    std::uint8_t xinputOpcode() const { return m_xinputOpcode; }
    std::uint8_t xkbFirstEvent() const { return m_xkbFirstEvent; }
    bool isLost() const { return xcb_connection_has_error(m_xcb.get()) != 0; }
    int descriptor() const { return xcb_get_file_descriptor(m_xcb.get()); }
    void flush() { xcb_flush(m_xcb.get()); }

    /// Round trips, as all that give something here.
    Keyboards keyboards();
    /// `request` becomes the number of the request, with which those of events compare.
    KeySet keysDown(DeviceId device, std::uint32_t* request = nullptr);
    ModifierRoles modifierRoles();
    bool capsIsLocked();
    /// Returns when the server has done all that was asked of it.
    void synchronize();

    /// Sent with the next flush or round trip.
    void press(std::uint8_t key) { fake(key, KeyMotion::press); }
    void release(std::uint8_t key) { fake(key, KeyMotion::release); }
    /// As if it came from a device itself.
    void pressOn(DeviceId device, std::uint8_t key);
    void releaseOn(DeviceId device, std::uint8_t key);

private:
    InputConnection() = default;
    std::string negotiate(int screenNumber);
    void fake(std::uint8_t key, KeyMotion motion);
    bool isXTestDevice(DeviceId device, xcb_atom_t mark);

    XcbConnection m_xcb;
    xcb_window_t m_root = 0;
    std::uint8_t m_xinputOpcode = 0;
    std::uint8_t m_xinputFirstEvent = 0;
    std::uint8_t m_xkbFirstEvent = 0;
};

} // namespace orvane

// A connection to the X server for keyboards: their state, their keys, and keys that this program presses. A
// lost server ends only the connection. Threads as those of its link.
#pragma once

#include "PlatformLinux/X11/KeyActions.h"
#include "PlatformLinux/X11/ModifierRoles.h"
#include "PlatformLinux/X11/XExchange.h"

#include <chrono>
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
        floating, // set aside by the user, or grabbed by a client
    } attachment = Attachment::master;
};

/// The keyboards behind the pointer and focus that a client has by default.
struct Keyboards {
    DeviceId master = 0;
    /// The device whose key was the last one that the master took.
    DeviceId lastUsed = 0;
    DeviceId xtest = 0;
    /// The user's enabled ones, without XTEST's.
    std::vector<KeyboardDevice> hardware;
};

class InputConnection {
public:
    /// The time that an answer may take. A grab of the server by another client doesn't count: this
    /// connection is served all the same.
    static constexpr std::chrono::milliseconds patience{500};

    struct Opened {
        std::unique_ptr<InputConnection> connection;
        /// The reason when there is no connection: a sentence for the log.
        std::string problem;
        /// Whether it may be there in a moment.
        bool isLate = false;
    };
    /// Connects to the display of the environment. Until it is open, another client can delay it. Once
    /// `cancellation` is readable, nothing is waited for any more.
    [[nodiscard]] static Opened open(Deadline deadline, int cancellation = -1);

    [[nodiscard]] XLink& link() const { return *m_link; }
    [[nodiscard]] std::uint8_t xinputOpcode() const { return m_xinputOpcode; }
    [[nodiscard]] std::uint8_t xkbFirstEvent() const { return m_xkbFirstEvent; }

    /// Each of these waits for the server; the result is empty where no answer comes in time.
    [[nodiscard]] Keyboards keyboards();
    /// `request` becomes the number of the request, which can be compared with those of events.
    [[nodiscard]] KeySet keysDown(DeviceId device, std::uint32_t* request = nullptr);
    [[nodiscard]] ModifierRoles modifierRoles();
    [[nodiscard]] bool capsIsLocked();
    /// Waits until the server has done everything that was asked of it.
    XOutcome synchronize();

    /// Sent with the next flush or question.
    void press(std::uint8_t key) { fake(key, KeyMotion::press); }
    void release(std::uint8_t key) { fake(key, KeyMotion::release); }
    /// Presses a key as if it came from the device itself.
    void pressOn(DeviceId device, std::uint8_t key);
    void releaseOn(DeviceId device, std::uint8_t key);

    /// Ends the grab of the keyboard that began with a grabbed key, and sends that at once.
    void letGoOfKeyboard();

private:
    explicit InputConnection(std::unique_ptr<XLink> link) : m_link(std::move(link)) {}
    Opened negotiate(Deadline deadline);
    void fake(std::uint8_t key, KeyMotion motion);

    std::unique_ptr<XLink> m_link;
    std::uint8_t m_xinputOpcode = 0;
    std::uint8_t m_xinputFirstEvent = 0;
    std::uint8_t m_xkbFirstEvent = 0;
};

} // namespace orvane

// Checks that the program's tap takes the keys that the user types, which it doesn't when the program stands
// still. Sleeps while no key moves. While keys do, it looks a few times a second: it listens for one key,
// then for none until it has looked. One thread.
#pragma once

#include "PlatformLinux/EventTap/Guardian/SharedPulse.h"
#include "PlatformLinux/X11/InputConnection.h"

#include <chrono>
#include <optional>

#include <sys/types.h>

namespace orvane {

class KeyWatch {
public:
    enum class Finding {
        fine,
        stuck, // the keys go nowhere
    };

    /// Without a pulse it never listens for a key.
    KeyWatch(InputConnection& connection, SharedPulse pulse, pid_t program);

    /// Takes an event of the connection.
    void take(const xcb_generic_event_t& event);
    /// For poll(): milliseconds until look() is due, or -1.
    [[nodiscard]] int timeout() const;
    Finding look();
    void setFreed() { m_pulse->setFreed(); }

private:
    using Clock = std::chrono::steady_clock;

    void listen(bool listens);
    [[nodiscard]] bool programStandsStill() const;
    bool canBeFreed();

    InputConnection& m_connection;
    SharedPulse m_pulse;
    pid_t m_program;
    XSelection m_rawKeys;
    struct Typed {
        Clock::time_point seen;
        std::optional<std::uint32_t> time; // the server's time; none for a key typed before this process
                                           // listened
        DeviceId keyboard;
    };
    std::optional<Typed> m_typed;
    Clock::time_point m_nextLook;
};

} // namespace orvane

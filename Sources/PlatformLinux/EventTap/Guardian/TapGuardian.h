// The tap's side of its guardian: the process, the messages to it, and a new one if it dies. Used by the
// tap's thread alone.
#pragma once

#include "Platform/LogSink.h"
#include "PlatformLinux/EventTap/Guardian/GuardianLink.h"
#include "PlatformLinux/EventTap/Guardian/SharedPulse.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <xcb/xcb.h>

namespace orvane {

class GrabbedKeyboards;
class InputConnection;

class TapGuardian {
public:
    using Log = std::function<void(LogLevel, const std::string& sentence)>;

    /// `program` is the path of its executable.
    TapGuardian(InputConnection& connection, QByteArray program, Log log);
    /// Begins to guard, on the thread that takes the keys.
    void start();

    /// Notes that a key was taken, whatever is done with it.
    void noteTaken(const xcb_ge_generic_event_t& event);
    void noteKeyboards(const GrabbedKeyboards& keyboards);
    /// True if it has freed the keyboards because the keys weren't taken. The connection is lost then.
    [[nodiscard]] bool hasFreed() const { return m_pulse && m_pulse->wasFreed(); }

    /// For poll(); -1 when there is none.
    [[nodiscard]] int descriptor() const { return m_link ? m_link->descriptor() : -1; }
    /// For poll(): milliseconds until watch() is due though nothing has happened, or -1.
    [[nodiscard]] int timeout() const;
    /// Takes the events that poll() returned for the descriptor. A guardian that has died is replaced, the
    /// first one at once, and the later ones after a pause that grows from one to the next.
    void watch(short happened);
    /// To be called where the server doesn't say whether it has done what this program asked: the guardian
    /// releases the keys when the server is back.
    void abandon()
    {
        if (m_link)
            m_link->abandon();
        m_link.reset();
    }

private:
    using Clock = std::chrono::steady_clock;

    void startProcess();

    InputConnection& m_connection;
    const QByteArray m_program;
    const Log m_log;
    xcb_window_t m_window = 0;
    SharedPulse m_pulse = SharedPulse::make();
    std::unique_ptr<GuardianLink> m_link;
    std::chrono::milliseconds m_pause{0};
    Clock::time_point m_started;
    std::optional<Clock::time_point> m_nextStart;
};

} // namespace orvane

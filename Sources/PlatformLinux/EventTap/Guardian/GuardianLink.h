// The link to the guardian, a separate process that releases the keys on the XTEST keyboard when this one
// dies, and frees the keyboards when this one stands still. It lives as long as the link.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"
#include "PlatformLinux/EventTap/Guardian/SharedPulse.h"

#include <QByteArray>

#include <cstdint>
#include <string>

#include <sys/types.h>

namespace orvane {

class GuardianLink {
public:
    /// Returns the path of the guardian's program; empty when it is missing. Main thread.
    static QByteArray program();

    /// The end of `window`, which belongs to the client that presses the keys, shows the guardian that the
    /// last key has arrived, and the pulse shows it whether keys are taken. `problem` stays empty or becomes
    /// a sentence for the log. The calling thread must have its signals blocked, or the guardian's death
    /// could end this process by SIGPIPE.
    GuardianLink(QByteArray program, std::uint32_t window, const SharedPulse& pulse, std::string& problem);
    ~GuardianLink();
    GuardianLink(const GuardianLink&) = delete;
    GuardianLink& operator=(const GuardianLink&) = delete;

    /// For poll(): in error when the guardian has died too early. -1 when there is none.
    [[nodiscard]] int descriptor() const { return m_pipe.get(); }
    /// Leaves the guardian to its work as if this process had died; nothing waits for it any more.
    void abandon();

private:
    pid_t m_process = -1;
    FileDescriptor m_pipe;
};

} // namespace orvane

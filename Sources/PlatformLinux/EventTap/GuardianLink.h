// The tie to the guardian, a process of its own that lets go of the keys on the XTEST keyboard when this one
// dies, and frees the keyboards when it stands still. It lives as long as the link.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"
#include "PlatformLinux/EventTap/SharedPulse.h"

#include <QByteArray>

#include <cstdint>
#include <string>

#include <sys/types.h>

namespace orvane {

class GuardianLink {
public:
    /// Where the guardian's program is; empty when it is missing. Main thread.
    static QByteArray program();

    /// The guardian knows by the end of `window`, one of the client's that presses the keys, that the last of
    /// them has arrived, and by the pulse whether keys are taken. `problem` stays empty or is a sentence for
    /// the log. On a thread whose signals are blocked, or the guardian's death could end this process by
    /// SIGPIPE.
    GuardianLink(QByteArray program, std::uint32_t window, const SharedPulse& pulse, std::string& problem);
    ~GuardianLink();
    GuardianLink(const GuardianLink&) = delete;
    GuardianLink& operator=(const GuardianLink&) = delete;

    /// For poll(): in error when the guardian has died before its time. -1 when there is none.
    [[nodiscard]] int descriptor() const { return m_pipe.get(); }

private:
    pid_t m_process = -1;
    FileDescriptor m_pipe;
};

} // namespace orvane

// Runs part of a test in a separate process: as another user, with limits, or to be killed.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <functional>
#include <string>

#include <sys/types.h>

namespace orvane::tests {

/// A forked child, killed at the end of the object if it still runs.
class ChildProcess {
public:
    /// Runs `body` in the child with the writing end of a pipe to the parent; its result is the exit status.
    explicit ChildProcess(const std::function<int(int toParent)>& body);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t id() const { return m_id; }
    [[nodiscard]] int fromChild() const { return m_fromChild.get(); }
    void signal(int number) const;
    /// Returns all that the child writes until it closes its end.
    [[nodiscard]] std::string readAll() const;
    /// Waits for the next byte of the child; false when it ended without one.
    [[nodiscard]] bool readByte() const;
    /// Returns the status of waitpid.
    int wait();

private:
    pid_t m_id = -1;
    bool m_isRunning = false;
    FileDescriptor m_fromChild;
};

/// Called in a child: tells the parent that a step is done.
void sendByte(int toParent);

/// Returns the answer of `body`, run in a child: empty for success, else the first thing that was wrong. The
/// death of the child is reported too.
std::string inChild(const std::function<std::string()>& body);

/// Called in a child: gives up root for a user who owns nothing. True when the process is unprivileged then.
bool becomeUnprivileged();

} // namespace orvane::tests

/// For bodies of inChild().
#define ORVANE_REQUIRE(condition)                                                                            \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            return std::string(#condition " doesn't hold, line ") + std::to_string(__LINE__);                \
    } while (false)

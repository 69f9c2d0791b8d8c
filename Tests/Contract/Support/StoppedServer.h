// The X server stopped by a signal: nobody is answered, not even those whom another client's hold of the
// server doesn't concern.
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include <sys/types.h>

namespace orvane::tests {

class StoppedServer {
public:
    StoppedServer();
    /// Lets it go on.
    ~StoppedServer();
    StoppedServer(const StoppedServer&) = delete;
    StoppedServer& operator=(const StoppedServer&) = delete;

    /// False when a thread had to let it go on, after twenty seconds.
    [[nodiscard]] bool letGoOn();

private:
    pid_t m_server = 0;
    std::mutex m_mutex;
    std::condition_variable m_goesOn;
    bool m_isStopped = true;
    bool m_hadToGoOn = false;
    std::thread m_limit;
};

} // namespace orvane::tests

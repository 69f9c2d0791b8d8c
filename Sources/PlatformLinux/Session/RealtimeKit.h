// Asks RealtimeKit for the processor before other programs while each key waits for this one: real time for
// the thread that takes the keys, a high priority for the main thread. Where there is no such service,
// nothing changes. Main thread.
#pragma once

#include <memory>

#include <sys/types.h>

namespace orvane {

class RealtimeKit {
public:
    RealtimeKit();
    ~RealtimeKit();
    RealtimeKit(const RealtimeKit&) = delete;
    RealtimeKit& operator=(const RealtimeKit&) = delete;

    /// Returns at once; the service is asked on a pool thread. If the thread then runs for longer than the
    /// service allows without a wait, it becomes a usual one again.
    void raise(pid_t tapThread);
    /// Gives the main thread its usual priority back.
    void lower();

private:
    struct Raising;

    const pid_t m_mainThread;
    std::shared_ptr<Raising> m_raising;
};

} // namespace orvane

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

    /// Returns at once; the service is asked on a pool thread, for a second at most. If the thread then runs
    /// for longer than the service allows without a wait, it becomes a usual one again.
    void raise(pid_t tapThread);
    /// Gives the main thread the level back that it had when this object was made.
    void lower();

private:
    class Raising;

    /// The pool's threads have it too.
    const std::shared_ptr<Raising> m_raising;
};

} // namespace orvane

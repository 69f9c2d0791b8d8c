// The main thread's run loop: queued tasks and timers, which also run while a menu is open; and the pool of
// threads.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace orvane {

/// A scheduled timer. Its end invalidates it: after the destructor the handler is not called any more.
class Timer {
public:
    virtual ~Timer() = default;
};

class RunLoop {
public:
    enum class Repeats { no, yes };

    virtual ~RunLoop() = default;

    /// Queues `task` for the main thread, behind those already queued; never runs it at once. Any thread.
    virtual void perform(std::function<void()> task) = 0;

    /// Runs `work` on a thread of the pool, where it may block. The process doesn't end before the work has.
    /// Any thread.
    virtual void performDetached(std::function<void()> work) = 0;

    /// Calls `handler` on the main thread after `interval`, once or again and again. Main thread.
    /// The handler may end its own timer.
    [[nodiscard]] virtual std::unique_ptr<Timer>
    scheduleTimer(std::chrono::milliseconds interval, Repeats repeats, std::function<void()> handler) = 0;
};

} // namespace orvane

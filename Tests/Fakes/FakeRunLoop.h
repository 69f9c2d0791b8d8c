// A run loop that the test turns by hand: tasks run in `drain`, timers in `advance`, which moves the clock.
#pragma once

#include "Fakes/FakeClock.h"
#include "Platform/RunLoop.h"

#include <deque>
#include <mutex>
#include <vector>

namespace orvane {

class FakeRunLoop : public RunLoop {
public:
    explicit FakeRunLoop(FakeClock& clock) : m_clock(clock) {}

    void perform(std::function<void()> task) override;
    void performDetached(std::function<void()> work) override;
    std::unique_ptr<Timer> scheduleTimer(std::chrono::milliseconds interval, Repeats repeats,
                                         std::function<void()> handler) override;

    /// Runs the queued tasks, and those that they queue, until none is left.
    void drain();
    /// Runs the work that was handed to the pool, on this thread and at once.
    void drainDetached();
    /// Drops the queued tasks and work without running them.
    void discardQueued();
    /// Moves time on: drains, then fires each timer that comes due at its own time, draining after each.
    void advance(std::chrono::milliseconds by);
    /// Does the same without draining: what the timers queue stays queued.
    void advanceWithoutTasks(std::chrono::milliseconds by);

    [[nodiscard]] std::size_t timerCount() const;
    /// Returns the intervals of the existing timers, in the order in which they were made.
    [[nodiscard]] std::vector<std::chrono::milliseconds> timerIntervals() const;

private:
    struct Entry;
    class FakeTimer;

    void fireTimers(std::chrono::milliseconds by, const std::function<void()>& afterEach);
    void drainQueue(std::deque<std::function<void()>>& queue);

    FakeClock& m_clock;
    mutable std::mutex m_mutex; // guards both queues: perform may come from any thread
    std::deque<std::function<void()>> m_tasks;
    std::deque<std::function<void()>> m_detached;
    std::vector<std::weak_ptr<Entry>> m_timers;
};

} // namespace orvane

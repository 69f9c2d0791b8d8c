// The run loop on Qt's event loop. Timers of a minute and more are precise to a second, which lets the system
// combine their wake-ups.
#pragma once

#include "Platform/Clock.h"
#include "Platform/RunLoop.h"

namespace orvane {

class QtRunLoop : public RunLoop {
public:
    /// Waits for the detached work, which may use this object.
    ~QtRunLoop() override;

    void perform(std::function<void()> task) override;
    void performDetached(std::function<void()> work) override;
    std::unique_ptr<Timer> scheduleTimer(std::chrono::milliseconds interval, Repeats repeats,
                                         std::function<void()> handler) override;
};

/// Reads CLOCK_MONOTONIC and the calendar's clock.
class SystemClock : public Clock {
public:
    [[nodiscard]] Uptime uptime() const override
    {
        return std::chrono::steady_clock::now().time_since_epoch();
    }
    [[nodiscard]] Date date() const override { return std::chrono::system_clock::now(); }
};

} // namespace orvane

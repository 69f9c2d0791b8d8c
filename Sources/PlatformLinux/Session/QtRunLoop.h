// The run loop on Qt's event loop. One-second precision is enough for timers of a minute and more, which lets
// the system gather their wake-ups.
#pragma once

#include "Platform/Clock.h"
#include "Platform/RunLoop.h"

namespace orvane {

class QtRunLoop : public RunLoop {
public:
    /// Waits for the detached work: it may hold on to this object.
    ~QtRunLoop() override;

    void perform(std::function<void()> task) override;
    void performDetached(std::function<void()> work) override;
    std::unique_ptr<Timer> scheduleTimer(std::chrono::milliseconds interval, Repeats repeats,
                                         std::function<void()> handler) override;
};

/// CLOCK_MONOTONIC and the calendar's clock.
class SystemClock : public Clock {
public:
    Uptime uptime() const override { return std::chrono::steady_clock::now().time_since_epoch(); }
    Date date() const override { return std::chrono::system_clock::now(); }
};

} // namespace orvane

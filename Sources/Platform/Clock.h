// The two clocks of a system: one that only runs forward, for measuring, and the calendar's, for showing. Any
// thread.
#pragma once

#include <chrono>

namespace orvane {

class Clock {
public:
    using Date = std::chrono::system_clock::time_point;
    /// Time since an unspecified start; never set back, stands still while the machine sleeps.
    using Uptime = std::chrono::nanoseconds;

    virtual ~Clock() = default;
    [[nodiscard]] virtual Uptime uptime() const = 0;
    [[nodiscard]] virtual Date date() const = 0;
};

} // namespace orvane

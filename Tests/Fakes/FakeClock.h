// A clock that stands still until a test moves it.
#pragma once

#include "Platform/Clock.h"

namespace orvane {

class FakeClock : public Clock {
public:
    [[nodiscard]] Uptime uptime() const override { return m_uptime; }
    [[nodiscard]] Date date() const override { return m_date; }

    /// Moves both clocks. It doesn't fire the timers of a run loop: FakeRunLoop::advance does, and moves the
    /// clock itself.
    void advance(std::chrono::nanoseconds by)
    {
        m_uptime += by;
        m_date += std::chrono::duration_cast<Date::duration>(by);
    }
    void setDate(Date date) { m_date = date; }

private:
    Uptime m_uptime{0};
    Date m_date{std::chrono::seconds{1'750'000'000}};
};

} // namespace orvane

// Decides when to look at the pasteboard after copies were announced. Pure.
//
// Programs copy in several steps, so a look waits until they have been silent for a moment. The interval
// bounds the rate: over a long time there is at most one look in each, but a few may be made ahead, so that
// copies in quick succession are all seen.
#pragma once

#include <chrono>
#include <optional>

namespace orvane {

class LookSchedule {
public:
    /// Time since any fixed moment.
    using Time = std::chrono::nanoseconds;

    /// The silence after the last announcement.
    static constexpr std::chrono::milliseconds silence{50};
    /// The longest wait after the first announcement.
    static constexpr std::chrono::milliseconds longestWait{150};
    /// The number of looks that may follow each other without regard to the interval.
    static constexpr int looksAhead = 5;

    explicit LookSchedule(std::chrono::milliseconds interval) : m_interval(interval) {}

    /// Notes an announcement, and returns the time of the next look.
    [[nodiscard]] Time announced(Time now);
    /// To be called at each look.
    void looked(Time now);

private:
    const Time m_interval;
    std::optional<Time> m_firstAnnouncement; // since the last look
    std::optional<Time> m_paidUntil;         // the looks up to now, one after the other
};

} // namespace orvane

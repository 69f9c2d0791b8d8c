// How often other programs may have something done that costs time: a few times at once, then at a steady
// rate. Pure: the present time is an argument.
#pragma once

#include <algorithm>
#include <chrono>

namespace orvane {

class CallBudget {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `most` calls at once; each comes back after `refill`.
    constexpr CallBudget(int most, std::chrono::milliseconds refill)
        : m_most(most), m_refill(refill), m_left(most)
    {
    }

    /// False when nothing is left.
    [[nodiscard]] bool spend(Time now)
    {
        const auto due = (now - m_since) / m_refill;
        if (due > 0) {
            m_left = static_cast<int>(std::min<decltype(due + 0)>(m_most, m_left + due));
            m_since = now;
        }
        if (m_left == 0)
            return false;
        --m_left;
        return true;
    }

private:
    int m_most;
    std::chrono::milliseconds m_refill;
    int m_left;
    Time m_since;
};

} // namespace orvane

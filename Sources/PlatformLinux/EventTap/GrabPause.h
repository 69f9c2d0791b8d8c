// When the keyboards are asked for again while another program has them. Each attempt costs a thread, a
// connection and a wait of the main thread.
#pragma once

#include <algorithm>
#include <chrono>

namespace orvane {

class GrabPause {
public:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool isOver(Clock::time_point now) const { return now >= m_end; }
    /// Another program had them. A tap is tried when it is made and again when it is first enabled, so the
    /// first pauses, of less than a second, aren't kept; they grow from then on up to a minute.
    void noteTaken(Clock::time_point now)
    {
        if (m_next >= std::chrono::seconds(1))
            m_end = now + m_next;
        m_next = std::min(m_next * 2, longest);
    }
    /// They were free: the pauses begin anew.
    void noteFree() { *this = {}; }

private:
    static constexpr Clock::duration first = std::chrono::milliseconds(250);
    static constexpr Clock::duration longest = std::chrono::minutes(1);

    Clock::time_point m_end;
    Clock::duration m_next = first;
};

} // namespace orvane

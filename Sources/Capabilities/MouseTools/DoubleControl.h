// Tells when Control was pressed twice in a short time, whatever else happens meanwhile. Pure.
#pragma once

#include "Platform/Clock.h"
#include "Platform/EventFlags.h"

#include <optional>

namespace orvane {

class DoubleControl {
public:
    /// The time from press to press is shorter than this.
    static constexpr std::chrono::milliseconds window{400};

    /// Returns whether Control is down now and wasn't before; two Control keys count as one.
    [[nodiscard]] bool isNewPress(EventFlags flags)
    {
        const bool wasDown = m_isDown;
        m_isDown = (flags & eventFlag::control) != 0;
        return m_isDown && !wasDown;
    }

    /// To be called at each new press. Returns whether it is the second of a pair; the next one begins a new
    /// pair then.
    [[nodiscard]] bool completesPair(Clock::Uptime now)
    {
        const bool isSecond = m_lastPress && now - *m_lastPress < window;
        m_lastPress = isSecond ? std::nullopt : std::optional(now);
        return isSecond;
    }

private:
    bool m_isDown = false;
    std::optional<Clock::Uptime> m_lastPress;
};

} // namespace orvane

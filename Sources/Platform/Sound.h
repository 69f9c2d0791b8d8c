// The system's sounds. Main thread.
#pragma once

namespace orvane {

class Sound {
public:
    virtual ~Sound() = default;
    /// Plays the alert sound as the user has set it; returns at once.
    virtual void beep() = 0;
};

} // namespace orvane

// The second monitor of the private desktop, which can be moved, unplugged and plugged in again. At the
// object's end it is back at the right of the first one.
#pragma once

namespace orvane::tests {

class SecondMonitor {
public:
    SecondMonitor() = default;
    ~SecondMonitor();
    SecondMonitor(const SecondMonitor&) = delete;
    SecondMonitor& operator=(const SecondMonitor&) = delete;

    enum class Side { right, above };
    /// `mode` is "1280x1000" or one that the first monitor has too.
    void plug(Side side, const char* mode = "1280x1000");
    void unplug();
};

} // namespace orvane::tests

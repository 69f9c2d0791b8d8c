// Suspends the X server's screen saver, and DPMS with it; its end lets the display blank again. Main thread.
#pragma once

#include <memory>

namespace orvane {

class ScreenSaverInhibitor {
public:
    /// Null where there is no X server with a screen saver.
    [[nodiscard]] static std::unique_ptr<ScreenSaverInhibitor> create();
    ~ScreenSaverInhibitor();
    ScreenSaverInhibitor(const ScreenSaverInhibitor&) = delete;
    ScreenSaverInhibitor& operator=(const ScreenSaverInhibitor&) = delete;

private:
    ScreenSaverInhibitor() = default;
};

} // namespace orvane

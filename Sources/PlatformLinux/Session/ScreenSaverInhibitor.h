// Suspends the X server's screen saver, and DPMS with it; its end, or that of the process, lets the display
// blank again. The server isn't waited for. Main thread.
#pragma once

#include <memory>

namespace orvane {

class ApplicationLink;

class ScreenSaverInhibitor {
public:
    /// Null where there is no X server with a screen saver.
    [[nodiscard]] static std::unique_ptr<ScreenSaverInhibitor> create();
    ~ScreenSaverInhibitor();
    ScreenSaverInhibitor(const ScreenSaverInhibitor&) = delete;
    ScreenSaverInhibitor& operator=(const ScreenSaverInhibitor&) = delete;

private:
    explicit ScreenSaverInhibitor(std::shared_ptr<ApplicationLink> x);
    void suspend(bool isSuspended);

    /// The server counts suspensions by connection, and ends those of one that ends.
    std::shared_ptr<ApplicationLink> m_x;
};

} // namespace orvane

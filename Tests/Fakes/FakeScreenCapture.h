// Displays whose pixels a test sets. What was asked for is answered when the run loop turns, or held back
// until the test says so.
#pragma once

#include "Fakes/FakeScreens.h"
#include "Platform/RunLoop.h"
#include "Platform/ScreenCapture.h"

#include <map>
#include <vector>

namespace orvane {

class FakeScreenCapture : public ScreenCapture {
public:
    /// Both outlive this object and its capturers.
    FakeScreenCapture(const FakeScreens& screens, RunLoop& runLoop) : m_screens(screens), m_runLoop(runLoop)
    {
    }

    [[nodiscard]] std::unique_ptr<ScreenCapturer> makeCapturer() override;

    struct Request {
        std::uint32_t display = 0;
        /// Absent for a whole display.
        std::optional<ScreenCapturer::Part> part;
    };
    /// In the order in which they came.
    std::vector<Request> requests;
    /// The number of capturers that exist.
    int capturers = 0;
    /// False to stand for a missing permission.
    bool isPermitted = true;
    /// True to keep the answers back; release() gives them.
    bool isHeld = false;
    void release();

    /// Returns the number 0xRRGGBB of a display's pixel.
    std::function<std::uint32_t(std::uint32_t display, int x, int y)> color = [](std::uint32_t, int x,
                                                                                 int y) {
        return static_cast<std::uint32_t>((y & 0xFFF) << 12 | (x & 0xFFF));
    };

private:
    class Capturer;

    [[nodiscard]] std::optional<ScreenImage> picture(const Request& request) const;
    void answer(std::function<void()> give);

    const FakeScreens& m_screens;
    RunLoop& m_runLoop;
    std::vector<std::function<void()>> m_heldAnswers;
};

} // namespace orvane

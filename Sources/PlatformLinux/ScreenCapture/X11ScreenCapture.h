// Pictures of an X server's displays. Main thread; each capturer has a thread and a connection of its own.
#pragma once

#include "Platform/ScreenCapture.h"

namespace orvane {

class RunLoop;
class X11Screens;

class X11ScreenCapture : public ScreenCapture {
public:
    /// Both outlive this object and its capturers.
    X11ScreenCapture(const X11Screens& screens, RunLoop& runLoop) : m_screens(screens), m_runLoop(runLoop) {}

    [[nodiscard]] std::unique_ptr<ScreenCapturer> makeCapturer() override;

private:
    const X11Screens& m_screens;
    RunLoop& m_runLoop;
};

} // namespace orvane

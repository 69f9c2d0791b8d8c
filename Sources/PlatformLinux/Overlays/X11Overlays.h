// Overlays on an X server: windows that the window manager has no part in, and grabs of the devices. Main
// thread. On another platform plugin the devices can't be held.
#pragma once

#include "Platform/Overlays.h"

namespace orvane {

class InputGrabs;

class X11Overlays : public Overlays {
public:
    /// `letKeyboardGo` is called before each attempt to grab the keyboard: this program may have it already.
    explicit X11Overlays(std::function<void()> letKeyboardGo) : m_letKeyboardGo(std::move(letKeyboardGo)) {}

    void prepare(QWindow& window, Input input) override;
    [[nodiscard]] std::unique_ptr<InputHold> holdInput(std::function<void(bool isHeld)> answer) override;

private:
    std::function<void()> m_letKeyboardGo;
    /// Made at the first hold, and shared with holds, which may outlive the service.
    std::shared_ptr<InputGrabs> m_grabs;
    /// Of the hold that has the grabs.
    std::weak_ptr<const void> m_hold;
};

} // namespace orvane

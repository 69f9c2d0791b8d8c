#include "PlatformLinux/Overlays/X11Overlays.h"

#include "PlatformLinux/Overlays/StayOnTop.h"
#include "PlatformLinux/Overlays/X11InputHold.h"

#include <QWindow>

namespace orvane {

void X11Overlays::prepare(QWindow& window, Input input)
{
    // A menu of another program isn't managed either, and would be above every managed window.
    window.setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
                    Qt::NoDropShadowWindowHint |
                    (input == Input::passesThrough ? Qt::WindowTransparentForInput : Qt::WindowType(0)));
    new StayOnTop(window);
}

std::unique_ptr<InputHold> X11Overlays::holdInput(std::function<void(bool isHeld)> answer)
{
    if (!m_grabs)
        m_grabs = InputGrabs::make();
    // A client has one grab of each device, so a second hold would take the first one's.
    auto hold = std::make_unique<X11InputHold>(m_hold.expired() ? m_grabs : nullptr, m_letKeyboardGo,
                                               std::move(answer));
    if (m_hold.expired())
        m_hold = hold->life();
    return hold;
}

} // namespace orvane

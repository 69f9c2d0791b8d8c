#include "Capabilities/SnapZones/FocusedWindow.h"

#include "OrvaneCore/Windows/AX.h"
#include "OrvaneCore/Windows/AXAttr.h"
#include "Platform/Platform.h"

namespace orvane::FocusedWindow {

std::optional<AXUIElement> current()
{
    const AXUIElement systemWide = platform().accessibility.createSystemWide();
    AX::setMessagingTimeout(systemWide, longestWait);
    const auto application = AX::element(systemWide, AXAttr::focusedApplication);
    if (!application)
        return std::nullopt;
    AX::setMessagingTimeout(*application, longestWait);
    auto window = AX::element(*application, AXAttr::focusedWindow);
    if (!window)
        return std::nullopt;
    AX::setMessagingTimeout(*window, longestWait);
    // A window that doesn't tell counts as not full screen.
    if (AX::boolean(*window, AXAttr::fullScreen).value_or(false))
        return std::nullopt;
    return window;
}

} // namespace orvane::FocusedWindow

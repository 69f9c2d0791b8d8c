#include "PlatformLinux/X11/WindowManagement.h"

#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <array>

namespace orvane {

namespace {

void request(const QWindow& window, xcb_atom_t XAtoms::*type, const std::array<std::uint32_t, 5>& data)
{
    const auto toolkit = X11Connection::ofApplication(); // behind what it has asked for the window itself
    const auto x = ApplicationLink::get();
    if (!toolkit || !x || !window.handle())
        return;
    sendToWindowManager(toolkit->xcb(), toolkit->root(), static_cast<xcb_window_t>(window.winId()),
                        x->atoms().*type, data);
    xcb_flush(toolkit->xcb());
}

} // namespace

void requestActivation(const QWindow& window)
{
    constexpr std::uint32_t fromTheUser = 2;
    request(window, &XAtoms::activeWindow, {fromTheUser, XCB_CURRENT_TIME, XCB_NONE, 0, 0});
}

} // namespace orvane

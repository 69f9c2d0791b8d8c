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

void setInitialTaskBarEntry(const QWindow& window, TaskBarEntry entry)
{
    const auto toolkit = X11Connection::ofApplication();
    const auto x = ApplicationLink::get();
    if (!toolkit || !x || !window.handle())
        return;
    // Before it maps the window, the toolkit adds its own states and keeps ours.
    const std::array hidden{x->atoms().stateSkipTaskBar, x->atoms().stateSkipPager};
    xcb_change_property(toolkit->xcb(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        x->atoms().state, XCB_ATOM_ATOM, 32,
                        entry == TaskBarEntry::hidden ? std::uint32_t{hidden.size()} : 0, hidden.data());
}

void requestTaskBarEntry(const QWindow& window, TaskBarEntry entry)
{
    const auto x = ApplicationLink::get();
    if (!x)
        return;
    constexpr std::uint32_t remove = 0;
    constexpr std::uint32_t add = 1;
    constexpr std::uint32_t fromAnApplication = 1;
    request(window, &XAtoms::state,
            {entry == TaskBarEntry::shown ? remove : add, x->atoms().stateSkipTaskBar,
             x->atoms().stateSkipPager, fromAnApplication, 0});
}

void requestActivation(const QWindow& window)
{
    constexpr std::uint32_t fromTheUser = 2;
    request(window, &XAtoms::activeWindow, {fromTheUser, XCB_CURRENT_TIME, XCB_NONE, 0, 0});
}

} // namespace orvane

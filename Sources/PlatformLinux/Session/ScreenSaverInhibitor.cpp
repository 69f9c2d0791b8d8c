#include "PlatformLinux/Session/ScreenSaverInhibitor.h"

#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/SessionKind.h"

#include <utility>

#include <xcb/screensaver.h>

namespace orvane {

std::unique_ptr<ScreenSaverInhibitor> ScreenSaverInhibitor::create()
{
    auto x = ApplicationLink::get();
    // The screen of a Wayland session isn't its X server's.
    if (!x || !x->link().extension(xcb_screensaver_id) || sessionKind() != SessionKind::x11)
        return nullptr;
    return std::unique_ptr<ScreenSaverInhibitor>(new ScreenSaverInhibitor(std::move(x)));
}

ScreenSaverInhibitor::ScreenSaverInhibitor(std::shared_ptr<ApplicationLink> x) : m_x(std::move(x))
{
    suspend(true);
}

ScreenSaverInhibitor::~ScreenSaverInhibitor()
{
    suspend(false);
}

void ScreenSaverInhibitor::suspend(bool isSuspended)
{
    xcb_screensaver_suspend(m_x->xcb(), isSuspended ? 1 : 0);
    m_x->link().flush();
}

} // namespace orvane

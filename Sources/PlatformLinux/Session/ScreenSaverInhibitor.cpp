#include "PlatformLinux/Session/ScreenSaverInhibitor.h"

#include <QGuiApplication>

#include <X11/Xlib.h>
#include <X11/extensions/scrnsaver.h>

namespace orvane {

namespace {

/// The server counts suspensions by connection, so each of ours has to be undone once.
bool suspendServer(bool suspend)
{
    const auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11)
        return false;
    int eventBase = 0;
    int errorBase = 0;
    if (!XScreenSaverQueryExtension(x11->display(), &eventBase, &errorBase))
        return false;
    XScreenSaverSuspend(x11->display(), suspend ? True : False);
    XFlush(x11->display());
    return true;
}

} // namespace

std::unique_ptr<ScreenSaverInhibitor> ScreenSaverInhibitor::create()
{
    return suspendServer(true) ? std::unique_ptr<ScreenSaverInhibitor>(new ScreenSaverInhibitor) : nullptr;
}

ScreenSaverInhibitor::~ScreenSaverInhibitor()
{
    suspendServer(false);
}

} // namespace orvane

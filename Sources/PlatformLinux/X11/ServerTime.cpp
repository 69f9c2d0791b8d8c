#include "PlatformLinux/X11/ServerTime.h"

#include <QGuiApplication>

#include <cstring>

#include <X11/Xlib.h>
#include <X11/extensions/sync.h>

namespace orvane {

xcb_timestamp_t serverTime()
{
    auto* native = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    Display* display = native ? native->display() : nullptr;
    int event = 0;
    int error = 0;
    if (!display || !XSyncQueryExtension(display, &event, &error))
        return XCB_CURRENT_TIME;
    int count = 0;
    XSyncSystemCounter* counters = XSyncListSystemCounters(display, &count);
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    for (int i = 0; i < count; ++i) {
        XSyncValue value;
        if (std::strcmp(counters[i].name, "SERVERTIME") == 0 &&
            XSyncQueryCounter(display, counters[i].counter, &value))
            time = XSyncValueLow32(value);
    }
    if (counters)
        XSyncFreeSystemCounterList(counters);
    return time;
}

} // namespace orvane

#include "PlatformLinux/X11/TaskBarEntry.h"

#include "PlatformLinux/X11/X11Connection.h"

namespace orvane {

void requestTaskBarEntry(const QWindow& window, TaskBarEntry entry)
{
    const auto x11 = X11Connection::ofApplication();
    if (!x11 || !window.handle())
        return;
    constexpr std::uint32_t remove = 0;
    constexpr std::uint32_t add = 1;
    constexpr std::uint32_t fromAnApplication = 1;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = x11->atom("_NET_WM_STATE");
    message.data.data32[0] = entry == TaskBarEntry::shown ? remove : add;
    message.data.data32[1] = x11->atom("_NET_WM_STATE_SKIP_TASKBAR");
    message.data.data32[2] = x11->atom("_NET_WM_STATE_SKIP_PAGER");
    message.data.data32[3] = fromAnApplication;
    xcb_send_event(x11->xcb(), 0, x11->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(x11->xcb());
}

} // namespace orvane

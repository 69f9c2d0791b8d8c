#include "PlatformLinux/Session/XkbSound.h"

#include "PlatformLinux/X11/X11Connection.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <QGuiApplication>
#include <QWindow>

namespace orvane {

void XkbSound::beep()
{
    const auto x = X11Connection::ofApplication();
    if (!x)
        return;
    // Desktops play their alert for the window that rang; where none listens the server's own bell sounds, as
    // the user has set it. Qt has told the server already that it speaks XKB.
    const QWindow* window = QGuiApplication::focusWindow();
    const auto ringing = window && window->handle() ? static_cast<xcb_window_t>(window->winId())
                                                    : xcb_window_t{XCB_WINDOW_NONE};
    constexpr std::int8_t asTheUserHasSetIt = 0;
    x->ignoreErrors(xcb_xkb_bell_checked(x->xcb(), XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_ID_DFLT_XI_CLASS,
                                         XCB_XKB_ID_DFLT_XI_ID, asTheUserHasSetIt, 0, 0, 0, 0, XCB_ATOM_NONE,
                                         ringing));
    xcb_flush(x->xcb());
}

} // namespace orvane

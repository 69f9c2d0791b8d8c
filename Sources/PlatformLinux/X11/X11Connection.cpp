#include "PlatformLinux/X11/X11Connection.h"

#include <QGuiApplication>
#include <QWindow>

#include <X11/Xlib.h>

namespace orvane {

namespace {

std::vector<xcb_window_t>& notedWindows()
{
    static std::vector<xcb_window_t> windows;
    return windows;
}

} // namespace

std::optional<X11Connection> X11Connection::ofApplication()
{
    auto* native = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!native || !native->connection() || !native->display())
        return std::nullopt;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(native->connection()));
    for (int i = 0; i < DefaultScreen(native->display()) && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    return X11Connection(native->connection(), screens.data);
}

void X11Connection::ignoreErrors(xcb_void_cookie_t request) const
{
    xcb_discard_reply(m_xcb, request.sequence);
}

const xcb_visualtype_t* X11Connection::visual(xcb_visualid_t id, std::uint8_t* depth) const
{
    for (auto depths = xcb_screen_allowed_depths_iterator(m_screen); depths.rem; xcb_depth_next(&depths)) {
        auto visuals = xcb_depth_visuals_iterator(depths.data);
        for (; visuals.rem; xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id != id)
                continue;
            *depth = depths.data->depth;
            return visuals.data;
        }
    }
    return nullptr;
}

/// The numbers of a connection's windows are told by their first bits.
bool X11Connection::hasMade(xcb_window_t window) const
{
    const xcb_setup_t* setup = xcb_get_setup(m_xcb);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

std::vector<xcb_window_t> X11Connection::shownWindows()
{
    std::vector<xcb_window_t> shown = notedWindows();
    for (const QWindow* window : QGuiApplication::allWindows()) {
        if (window->handle() && window->isVisible() && window->isTopLevel())
            shown.push_back(static_cast<xcb_window_t>(window->winId()));
    }
    return shown;
}

void X11Connection::noteWindow(xcb_window_t window)
{
    notedWindows().push_back(window);
}

void X11Connection::forgetWindow(xcb_window_t window)
{
    std::erase(notedWindows(), window);
}

QByteArray keysymName(char16_t character)
{
    const bool latin1 = (character >= 0x20 && character < 0x7f) || (character >= 0xa0 && character <= 0xff);
    return latin1 ? QByteArray(XKeysymToString(character)) : QByteArray();
}

} // namespace orvane

#include "PlatformLinux/X11/X11Connection.h"

#include <QGuiApplication>

#include <X11/Xlib.h>

namespace orvane {

std::optional<X11Connection> X11Connection::ofApplication()
{
    auto* native = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!native || !native->connection() || !native->display())
        return std::nullopt;
    return over(native->connection(), DefaultScreen(native->display()));
}

X11Connection X11Connection::over(xcb_connection_t* connection, int screenNumber)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < screenNumber && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    return X11Connection(connection, screenNumber, screens.data);
}

xcb_atom_t X11Connection::atom(const char* name) const
{
    const auto cookie = xcb_intern_atom(m_xcb, 0, static_cast<std::uint16_t>(qstrlen(name)), name);
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_xcb, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

QByteArray X11Connection::property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const
{
    const auto cookie = xcb_get_property(m_xcb, 0, window, name, type, 0, 1024);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_xcb, cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    if (!reply || reply->type != type)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

void X11Connection::addEventMask(xcb_window_t window, std::uint32_t mask) const
{
    const auto cookie = xcb_get_window_attributes(m_xcb, window);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(m_xcb, cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    if (!reply || (reply->your_event_mask & mask) == mask)
        return;
    const std::uint32_t all = reply->your_event_mask | mask;
    ignoreErrors(xcb_change_window_attributes_checked(m_xcb, window, XCB_CW_EVENT_MASK, &all));
}

void X11Connection::ignoreErrors(xcb_void_cookie_t request) const
{
    xcb_discard_reply(m_xcb, request.sequence);
}

EventFlags X11Connection::modifierFlags() const
{
    const auto cookie = xcb_query_pointer(m_xcb, root());
    const XcbReply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(m_xcb, cookie, nullptr));
    return reply ? eventFlagsOfXState(reply->mask) : EventFlags{0};
}

bool X11Connection::pointerButtonIsDown() const
{
    const auto cookie = xcb_query_pointer(m_xcb, root());
    const XcbReply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(m_xcb, cookie, nullptr));
    constexpr unsigned realButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return reply && (reply->mask & realButtons);
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

EventFlags eventFlagsOfXState(unsigned state)
{
    EventFlags flags = 0;
    if (state & XCB_MOD_MASK_SHIFT)
        flags |= eventFlag::shift;
    if (state & XCB_MOD_MASK_CONTROL)
        flags |= eventFlag::control;
    if (state & XCB_MOD_MASK_1)
        flags |= eventFlag::option;
    if (state & XCB_MOD_MASK_4)
        flags |= eventFlag::command;
    if (state & XCB_MOD_MASK_LOCK)
        flags |= eventFlag::alphaShift;
    return flags;
}

QByteArray keysymName(char16_t character)
{
    const bool latin1 = (character >= 0x20 && character < 0x7f) || (character >= 0xa0 && character <= 0xff);
    return latin1 ? QByteArray(XKeysymToString(character)) : QByteArray();
}

} // namespace orvane

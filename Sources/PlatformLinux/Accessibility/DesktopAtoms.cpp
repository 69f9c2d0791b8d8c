#include "PlatformLinux/Accessibility/DesktopAtoms.h"

#include "PlatformLinux/Accessibility/ServerExchange.h"

#include <array>
#include <cstring>

namespace orvane {

namespace {

struct Name {
    xcb_atom_t DesktopAtoms::*atom;
    const char* text;
};

constexpr std::array names{
    Name{&DesktopAtoms::utf8String, "UTF8_STRING"},
    Name{&DesktopAtoms::wmState, "WM_STATE"},
    Name{&DesktopAtoms::wmChangeState, "WM_CHANGE_STATE"},
    Name{&DesktopAtoms::motifHints, "_MOTIF_WM_HINTS"},
    Name{&DesktopAtoms::gtkFrameExtents, "_GTK_FRAME_EXTENTS"},
    Name{&DesktopAtoms::supported, "_NET_SUPPORTED"},
    Name{&DesktopAtoms::activeWindow, "_NET_ACTIVE_WINDOW"},
    Name{&DesktopAtoms::clientList, "_NET_CLIENT_LIST"},
    Name{&DesktopAtoms::clientListStacking, "_NET_CLIENT_LIST_STACKING"},
    Name{&DesktopAtoms::frameExtents, "_NET_FRAME_EXTENTS"},
    Name{&DesktopAtoms::windowName, "_NET_WM_NAME"},
    Name{&DesktopAtoms::windowType, "_NET_WM_WINDOW_TYPE"},
    Name{&DesktopAtoms::windowTypeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
    Name{&DesktopAtoms::windowTypeDock, "_NET_WM_WINDOW_TYPE_DOCK"},
    Name{&DesktopAtoms::state, "_NET_WM_STATE"},
    Name{&DesktopAtoms::stateMaximizedHorizontally, "_NET_WM_STATE_MAXIMIZED_HORZ"},
    Name{&DesktopAtoms::stateMaximizedVertically, "_NET_WM_STATE_MAXIMIZED_VERT"},
    Name{&DesktopAtoms::stateFullScreen, "_NET_WM_STATE_FULLSCREEN"},
    Name{&DesktopAtoms::stateHidden, "_NET_WM_STATE_HIDDEN"},
    Name{&DesktopAtoms::stateShaded, "_NET_WM_STATE_SHADED"},
    Name{&DesktopAtoms::allowedActions, "_NET_WM_ALLOWED_ACTIONS"},
    Name{&DesktopAtoms::actionClose, "_NET_WM_ACTION_CLOSE"},
    Name{&DesktopAtoms::actionMaximizeHorizontally, "_NET_WM_ACTION_MAXIMIZE_HORZ"},
    Name{&DesktopAtoms::actionMaximizeVertically, "_NET_WM_ACTION_MAXIMIZE_VERT"},
    Name{&DesktopAtoms::closeWindow, "_NET_CLOSE_WINDOW"},
    Name{&DesktopAtoms::moveResizeWindow, "_NET_MOVERESIZE_WINDOW"},
    Name{&DesktopAtoms::restackWindow, "_NET_RESTACK_WINDOW"},
};
static_assert(names.size() * sizeof(xcb_atom_t) == sizeof(DesktopAtoms));

} // namespace

DesktopAtoms DesktopAtoms::intern(ServerExchange& exchange)
{
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies;
    for (std::size_t i = 0; i < names.size(); ++i)
        cookies[i] = xcb_intern_atom(exchange.xcb(), 0,
                                     static_cast<std::uint16_t>(std::strlen(names[i].text)), names[i].text);
    DesktopAtoms atoms{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (const auto reply = exchange.reply<xcb_intern_atom_reply_t>(cookies[i]))
            atoms.*names[i].atom = reply->atom;
    }
    return atoms;
}

} // namespace orvane

#include "PlatformLinux/X11/XAtoms.h"

#include "PlatformLinux/X11/XExchange.h"

#include <array>
#include <string>

namespace orvane {

namespace {

struct Name {
    xcb_atom_t XAtoms::*atom;
    const char* text;
    /// True if the number of the screen follows the name.
    bool isOfScreen = false;
};

constexpr std::array names{
    Name{&XAtoms::utf8String, "UTF8_STRING"},
    Name{&XAtoms::clipboard, "CLIPBOARD"},
    Name{&XAtoms::manager, "MANAGER"},
    Name{&XAtoms::edid, "EDID"},
    Name{&XAtoms::xtestDevice, "XTEST Device"},
    Name{&XAtoms::wmState, "WM_STATE"},
    Name{&XAtoms::wmChangeState, "WM_CHANGE_STATE"},
    Name{&XAtoms::motifHints, "_MOTIF_WM_HINTS"},
    Name{&XAtoms::gtkFrameExtents, "_GTK_FRAME_EXTENTS"},
    Name{&XAtoms::gtkApplicationId, "_GTK_APPLICATION_ID"},
    Name{&XAtoms::kdeDesktopFile, "_KDE_NET_WM_DESKTOP_FILE"},
    Name{&XAtoms::supportingCheck, "_NET_SUPPORTING_WM_CHECK"},
    Name{&XAtoms::supported, "_NET_SUPPORTED"},
    Name{&XAtoms::activeWindow, "_NET_ACTIVE_WINDOW"},
    Name{&XAtoms::clientList, "_NET_CLIENT_LIST"},
    Name{&XAtoms::clientListStacking, "_NET_CLIENT_LIST_STACKING"},
    Name{&XAtoms::currentDesktop, "_NET_CURRENT_DESKTOP"},
    Name{&XAtoms::workArea, "_NET_WORKAREA"},
    Name{&XAtoms::closeWindow, "_NET_CLOSE_WINDOW"},
    Name{&XAtoms::moveResizeWindow, "_NET_MOVERESIZE_WINDOW"},
    Name{&XAtoms::restackWindow, "_NET_RESTACK_WINDOW"},
    Name{&XAtoms::frameExtents, "_NET_FRAME_EXTENTS"},
    Name{&XAtoms::windowName, "_NET_WM_NAME"},
    Name{&XAtoms::process, "_NET_WM_PID"},
    Name{&XAtoms::desktop, "_NET_WM_DESKTOP"},
    Name{&XAtoms::strut, "_NET_WM_STRUT"},
    Name{&XAtoms::strutPartial, "_NET_WM_STRUT_PARTIAL"},
    Name{&XAtoms::windowType, "_NET_WM_WINDOW_TYPE"},
    Name{&XAtoms::windowTypeDesktop, "_NET_WM_WINDOW_TYPE_DESKTOP"},
    Name{&XAtoms::windowTypeDock, "_NET_WM_WINDOW_TYPE_DOCK"},
    Name{&XAtoms::windowTypeMenu, "_NET_WM_WINDOW_TYPE_MENU"},
    Name{&XAtoms::windowTypeDropdownMenu, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"},
    Name{&XAtoms::windowTypePopupMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
    Name{&XAtoms::state, "_NET_WM_STATE"},
    Name{&XAtoms::stateMaximizedHorizontally, "_NET_WM_STATE_MAXIMIZED_HORZ"},
    Name{&XAtoms::stateMaximizedVertically, "_NET_WM_STATE_MAXIMIZED_VERT"},
    Name{&XAtoms::stateFullScreen, "_NET_WM_STATE_FULLSCREEN"},
    Name{&XAtoms::stateHidden, "_NET_WM_STATE_HIDDEN"},
    Name{&XAtoms::stateShaded, "_NET_WM_STATE_SHADED"},
    Name{&XAtoms::stateSticky, "_NET_WM_STATE_STICKY"},
    Name{&XAtoms::stateSkipTaskBar, "_NET_WM_STATE_SKIP_TASKBAR"},
    Name{&XAtoms::stateSkipPager, "_NET_WM_STATE_SKIP_PAGER"},
    Name{&XAtoms::allowedActions, "_NET_WM_ALLOWED_ACTIONS"},
    Name{&XAtoms::actionClose, "_NET_WM_ACTION_CLOSE"},
    Name{&XAtoms::actionMaximizeHorizontally, "_NET_WM_ACTION_MAXIMIZE_HORZ"},
    Name{&XAtoms::actionMaximizeVertically, "_NET_WM_ACTION_MAXIMIZE_VERT"},
    Name{&XAtoms::compositor, "_NET_WM_CM_S", true},
    Name{&XAtoms::tray, "_NET_SYSTEM_TRAY_S", true},
    Name{&XAtoms::trayColors, "_NET_SYSTEM_TRAY_COLORS"},
    Name{&XAtoms::trayOpcode, "_NET_SYSTEM_TRAY_OPCODE"},
    Name{&XAtoms::trayVisual, "_NET_SYSTEM_TRAY_VISUAL"},
    Name{&XAtoms::xembedInfo, "_XEMBED_INFO"},
};
static_assert(names.size() * sizeof(xcb_atom_t) == sizeof(XAtoms));

} // namespace

XAtoms XAtoms::intern(XExchange& exchange, int screenNumber)
{
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string name =
            names[i].isOfScreen ? names[i].text + std::to_string(screenNumber) : std::string(names[i].text);
        cookies[i] = xcb_intern_atom(exchange.xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    }
    XAtoms atoms{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (const auto reply = exchange.reply<xcb_intern_atom_reply_t>(cookies[i]))
            atoms.*names[i].atom = reply->atom;
    }
    return atoms;
}

} // namespace orvane

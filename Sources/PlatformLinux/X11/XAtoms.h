// The names that the window manager, windows, trays and this program use between them, as the server's
// numbers. All are asked for together when a link opens, so looking one up costs nothing.
#pragma once

#include <xcb/xcb.h>

namespace orvane {

class XExchange;

struct XAtoms {
    xcb_atom_t utf8String;
    xcb_atom_t clipboard;
    xcb_atom_t manager;
    xcb_atom_t edid;
    xcb_atom_t xtestDevice;

    // Windows, by ICCCM, Motif, GTK and KDE
    xcb_atom_t wmState;
    xcb_atom_t wmChangeState;
    xcb_atom_t motifHints;
    xcb_atom_t gtkFrameExtents;
    xcb_atom_t gtkApplicationId;
    xcb_atom_t kdeDesktopFile;

    // The root window, by EWMH
    xcb_atom_t supportingCheck;
    xcb_atom_t supported;
    xcb_atom_t activeWindow;
    xcb_atom_t clientList;
    xcb_atom_t clientListStacking;
    xcb_atom_t currentDesktop;
    xcb_atom_t workArea;
    xcb_atom_t closeWindow;
    xcb_atom_t moveResizeWindow;
    xcb_atom_t restackWindow;

    // Windows, by EWMH
    xcb_atom_t frameExtents;
    xcb_atom_t windowName;
    xcb_atom_t process;
    xcb_atom_t desktop;
    xcb_atom_t strut;
    xcb_atom_t strutPartial;
    xcb_atom_t windowType;
    xcb_atom_t windowTypeDesktop;
    xcb_atom_t windowTypeDock;
    xcb_atom_t windowTypeMenu;
    xcb_atom_t windowTypeDropdownMenu;
    xcb_atom_t windowTypePopupMenu;
    xcb_atom_t state;
    xcb_atom_t stateMaximizedHorizontally;
    xcb_atom_t stateMaximizedVertically;
    xcb_atom_t stateFullScreen;
    xcb_atom_t stateHidden;
    xcb_atom_t stateShaded;
    xcb_atom_t stateSticky;
    xcb_atom_t stateSkipTaskBar;
    xcb_atom_t stateSkipPager;
    xcb_atom_t allowedActions;
    xcb_atom_t actionClose;
    xcb_atom_t actionMaximizeHorizontally;
    xcb_atom_t actionMaximizeVertically;

    // Trays and compositors; those of the link's screen
    xcb_atom_t compositor;
    xcb_atom_t tray;
    xcb_atom_t trayColors;
    xcb_atom_t trayOpcode;
    xcb_atom_t trayVisual;
    xcb_atom_t xembedInfo;

    /// Makes one exchange. None of them can be used when that fails.
    [[nodiscard]] static XAtoms intern(XExchange& exchange, int screenNumber);
};

} // namespace orvane

// The names by which the window manager, windows and this program understand each other, as the server's
// numbers.
#pragma once

#include <xcb/xcb.h>

namespace orvane {

class ServerExchange;

struct DesktopAtoms {
    xcb_atom_t utf8String;
    xcb_atom_t wmState;
    xcb_atom_t wmChangeState;
    xcb_atom_t motifHints;
    xcb_atom_t gtkFrameExtents;
    xcb_atom_t supported;
    xcb_atom_t activeWindow;
    xcb_atom_t clientList;
    xcb_atom_t clientListStacking;
    xcb_atom_t frameExtents;
    xcb_atom_t windowName;
    xcb_atom_t windowType;
    xcb_atom_t windowTypeDesktop;
    xcb_atom_t windowTypeDock;
    xcb_atom_t state;
    xcb_atom_t stateMaximizedHorizontally;
    xcb_atom_t stateMaximizedVertically;
    xcb_atom_t stateFullScreen;
    xcb_atom_t stateHidden;
    xcb_atom_t stateShaded;
    xcb_atom_t allowedActions;
    xcb_atom_t actionClose;
    xcb_atom_t actionMaximizeHorizontally;
    xcb_atom_t actionMaximizeVertically;
    xcb_atom_t closeWindow;
    xcb_atom_t moveResizeWindow;
    xcb_atom_t restackWindow;

    /// All in one exchange; useless when that fails.
    static DesktopAtoms intern(ServerExchange& exchange);
};

} // namespace orvane

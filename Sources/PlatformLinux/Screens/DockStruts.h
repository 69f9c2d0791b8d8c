// The struts of the windows that the window manager has. Wakes only when such a window comes or goes, and
// when one that is a dock, or keeps something already, changes what it keeps. Main thread.
#pragma once

#include "PlatformLinux/Screens/Struts.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <map>
#include <vector>

namespace orvane {

class DockStruts {
public:
    explicit DockStruts(const X11Connection& x);

    /// Whether struts may be others after this; refresh() finds out which.
    [[nodiscard]] bool concerns(const xcb_property_notify_event_t& event);
    /// Asks for what has changed; a few round trips at most.
    void refresh();
    [[nodiscard]] std::vector<Strut> struts() const;

private:
    struct Client {
        bool isStale = true;
        bool isWatched = false;
        std::optional<Strut> strut;
    };

    void readClientList();
    void readStaleClients();

    X11Connection m_x;
    xcb_atom_t m_clientList;
    xcb_atom_t m_workArea;
    xcb_atom_t m_windowType;
    xcb_atom_t m_dock;
    xcb_atom_t m_partial;
    xcb_atom_t m_whole;
    bool m_isListStale = true;
    std::map<xcb_window_t, Client> m_clients;
};

} // namespace orvane

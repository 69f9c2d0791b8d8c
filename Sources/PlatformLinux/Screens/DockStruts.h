// The struts of the windows that the window manager has. Wakes only when such a window comes or goes, and
// when one that is a dock, or reserves space already, changes its struts. Main thread.
#pragma once

#include "PlatformLinux/Screens/Struts.h"
#include "PlatformLinux/X11/ApplicationLink.h"

#include <map>
#include <memory>
#include <vector>

namespace orvane {

class DockStruts {
public:
    /// The link outlives this object.
    explicit DockStruts(ApplicationLink& x);

    /// True if struts may have changed; refresh() finds out which.
    [[nodiscard]] bool concerns(const xcb_property_notify_event_t& event);
    /// Asks for what has changed; a few round trips at most. What the exchange doesn't answer in time stays
    /// as it was, and is asked for again the next time.
    void refresh(XExchange& exchange);
    /// To be called when everything may have changed.
    void forget();
    [[nodiscard]] std::vector<Strut> struts() const;

private:
    struct Client {
        bool isStale = true;
        /// Shared by the copies of the list.
        std::shared_ptr<XSelection> watch;
        std::optional<Strut> strut;
    };

    void readClientList(XExchange& exchange);
    void readStaleClients(XExchange& exchange);

    ApplicationLink& m_x;
    XSelection m_rootSelection;
    bool m_isListStale = true;
    std::map<xcb_window_t, Client> m_clients;
};

} // namespace orvane

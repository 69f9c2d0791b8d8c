// Knows if a process has menus on the screen: viewable windows of a menu's type that the window manager
// leaves alone. It listens on a connection of its own to all windows that come and go, so it should live only
// while it is needed. Main thread.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"

#include <QObject>

#include <cstdint>
#include <memory>
#include <set>

namespace orvane {

class MenuWindowWatch : public QObject {
    Q_OBJECT
public:
    explicit MenuWindowWatch(std::int64_t process);
    ~MenuWindowWatch() override;

    /// Begins to look. Without an X server nothing is ever shown.
    void start();
    [[nodiscard]] bool isShown() const { return !m_menus.empty(); }

Q_SIGNALS:
    /// The receiver may have this object deleted later.
    void changed(bool isShown);

private:
    void findShown();
    void handle(const xcb_generic_event_t& event);
    void add(xcb_window_t window);
    void remove(xcb_window_t window);
    [[nodiscard]] bool isMenu(xcb_window_t window) const;

    std::int64_t m_process;
    std::shared_ptr<ApplicationLink> m_x;
    XSelection m_selection;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    std::set<xcb_window_t> m_menus;
};

} // namespace orvane

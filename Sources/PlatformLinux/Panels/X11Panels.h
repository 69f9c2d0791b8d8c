// Panels on an X server: states and properties for the window manager, and the presence of a compositor. Main
// thread. On another platform plugin nothing is ever composited, and nothing else happens.
#pragma once

#include "Platform/Panels.h"
#include "PlatformLinux/X11/ApplicationLink.h"

#include <memory>

namespace orvane {

class NotificationCenter;

class X11Panels : public Panels {
public:
    /// The notification centre outlives this object.
    explicit X11Panels(NotificationCenter& center);
    ~X11Panels() override;
    X11Panels(const X11Panels&) = delete;
    X11Panels& operator=(const X11Panels&) = delete;

    [[nodiscard]] bool isCompositing() const override { return m_isCompositing; }
    void joinAllSpaces(QWindow& window) override;
    void setShadowMargins(QWindow& window, const QMargins& margins) override;
    void makeKey(QWindow& window) override;

private:
    void handle(const xcb_generic_event_t& event);
    void watchCompositor();
    void findCompositor();

    NotificationCenter& m_center;
    std::shared_ptr<ApplicationLink> m_x;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    QObject m_context;
    std::uint8_t m_selectionNotify = 0; // 0 without the extension
    bool m_isCompositing = false;
};

} // namespace orvane

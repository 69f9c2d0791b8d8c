// Panels on an X server: states and properties for the window manager, and the presence of a compositor. Main
// thread. On another platform plugin nothing is ever composited, and nothing else happens.
#pragma once

#include "Platform/Panels.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <QAbstractNativeEventFilter>

#include <array>
#include <optional>

namespace orvane {

class NotificationCenter;

class X11Panels : public Panels, private QAbstractNativeEventFilter {
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
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void watchCompositor();

    NotificationCenter& m_center;
    std::optional<X11Connection> m_x;
    // Kept, because asking each time would delay the showing of a panel.
    struct Atoms {
        xcb_atom_t state;
        std::array<xcb_atom_t, 3> states;
        xcb_atom_t desktop;
        xcb_atom_t extents;
    };
    Atoms m_atoms{};
    /// The selection that a compositor owns while it runs.
    xcb_atom_t m_compositor = XCB_ATOM_NONE;
    std::uint8_t m_selectionNotify = 0; // 0 without the extension
    bool m_isCompositing = false;
};

} // namespace orvane

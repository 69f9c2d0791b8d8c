// A window of another client of the X server, which the window manager leaves alone. It takes what the mouse
// does on it, and can hold the pointer.
#pragma once

#include "PlatformLinux/X11/XcbReply.h"

#include <QRect>

namespace orvane::tests {

class UnmanagedWindow {
public:
    /// Mapped, and above all others, when this returns.
    explicit UnmanagedWindow(QRect place);

    [[nodiscard]] QPoint middle() const { return m_place.center(); }
    /// Until its end. False when somebody else has it.
    [[nodiscard]] bool grabPointer();
    /// By the XTEST extension, where the pointer is.
    void fakeButton(std::uint8_t button, bool goesDown);
    /// Which logical button each of the mouse's first three is.
    void mapButtons(std::uint8_t first, std::uint8_t second, std::uint8_t third);

private:
    void synchronize();

    QRect m_place;
    XcbConnection m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_window_t m_window = XCB_WINDOW_NONE;
};

} // namespace orvane::tests

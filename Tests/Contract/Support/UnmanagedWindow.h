// A window of another client of the X server, which the window manager leaves alone. It gets the mouse events
// on it, and can grab the pointer.
#pragma once

#include "PlatformLinux/X11/XcbReply.h"

#include <QRect>

namespace orvane::tests {

class UnmanagedWindow {
public:
    /// When it returns, the window is shown above all others.
    explicit UnmanagedWindow(QRect place);

    [[nodiscard]] QPoint middle() const { return m_place.center(); }
    /// Grabs the pointer until the object's end. False when another client has it.
    [[nodiscard]] bool grabPointer();
    /// Presses or releases a button by the XTEST extension, where the pointer is.
    void fakeButton(std::uint8_t button, bool goesDown);
    /// Sets the logical button of each of the mouse's first three.
    void mapButtons(std::uint8_t first, std::uint8_t second, std::uint8_t third);

private:
    void synchronize();

    QRect m_place;
    XcbConnection m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_window_t m_window = XCB_WINDOW_NONE;
};

} // namespace orvane::tests

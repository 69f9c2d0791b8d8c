// Another client that holds the X server for itself, as window managers do for a moment. Any client that asks
// the server meanwhile waits.
#pragma once

#include "PlatformLinux/X11/XcbReply.h"

#include <QPoint>

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>

namespace orvane::tests {

class ServerHolder {
public:
    ServerHolder();
    /// Lets go.
    ~ServerHolder();
    ServerHolder(const ServerHolder&) = delete;
    ServerHolder& operator=(const ServerHolder&) = delete;

    /// When it returns the server is held, until letGo(). Who waits for the server can't call that, so a
    /// thread lets go after twenty seconds.
    void hold();
    /// False when the thread had to.
    [[nodiscard]] bool letGo();
    /// As a mouse of this client's; while it holds the server nobody else has one.
    void movePointer(QPoint place);
    void fakeButton(std::uint8_t button, bool goesDown);

private:
    void fake(std::uint8_t type, std::uint8_t detail, QPoint place);
    void synchronize();

    XcbConnection m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    std::mutex m_mutex;
    std::condition_variable m_letsGo;
    bool m_isHolding = false;
    bool m_hadToLetGo = false;
    std::thread m_limit;
};

} // namespace orvane::tests

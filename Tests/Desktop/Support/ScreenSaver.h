// The X server's screen saver and its idle time. The settings are restored at the object's end.
#pragma once

#include <chrono>
#include <memory>

namespace orvane::tests {

class ScreenSaver {
public:
    enum class State { off, on, disabled };

    /// Throws std::runtime_error when there is no display or the server has no screen saver extension.
    ScreenSaver();
    ~ScreenSaver();
    ScreenSaver(const ScreenSaver&) = delete;
    ScreenSaver& operator=(const ScreenSaver&) = delete;

    /// Zero disables the timeout.
    void setTimeout(std::chrono::seconds timeout);
    /// Ends a blank screen and starts the idle time anew.
    void reset();

    [[nodiscard]] State state() const;
    /// Returns the time since the last input of any device.
    [[nodiscard]] std::chrono::milliseconds idle() const;

private:
    struct Server;
    std::unique_ptr<Server> m_server;
};

} // namespace orvane::tests

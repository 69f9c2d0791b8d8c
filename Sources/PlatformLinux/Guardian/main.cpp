// orvane-guardian WINDOW: waits for the program at the other end of standard input to end. If it ends without
// a goodbye, what it had pressed on the XTEST keyboard is let go, which else would be down for ever.
// It sleeps until then, and ends with the X server too.
#include "PlatformLinux/EventTap/InputConnection.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>

#include <poll.h>
#include <unistd.h>

namespace {

using orvane::InputConnection;
using orvane::KeySet;

enum class Farewell { goodbye, death, serverLost };

/// Events are of no use here, but unread ones would keep the connection's descriptor readable.
bool sawTheEndOf(xcb_window_t window, InputConnection& connection)
{
    while (const orvane::XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection.xcb())}) {
        const auto* destroyed = reinterpret_cast<const xcb_destroy_notify_event_t*>(event.get());
        if ((event->response_type & 0x7F) == XCB_DESTROY_NOTIFY && destroyed->window == window)
            return true;
    }
    return false;
}

Farewell waitForFarewell(xcb_window_t window, InputConnection& connection)
{
    for (;;) {
        pollfd waits[] = {{STDIN_FILENO, POLLIN, 0}, {connection.descriptor(), POLLIN, 0}};
        if (::poll(waits, 2, -1) < 0 && errno != EINTR)
            return Farewell::death;
        if (waits[0].revents != 0) {
            char letter = 0;
            return ::read(STDIN_FILENO, &letter, 1) == 1 ? Farewell::goodbye : Farewell::death;
        }
        // A goodbye may come after the window's end: only the pipe tells whether there is one.
        sawTheEndOf(window, connection);
        if (connection.isLost())
            return Farewell::serverLost;
    }
}

/// The dead client's last keys may still lie in the server's queue: they have been dealt with when its window
/// is gone.
void waitForLastKeys(xcb_window_t window, InputConnection& connection)
{
    for (;;) {
        const orvane::XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection.xcb(), xcb_query_tree(connection.xcb(), window), nullptr));
        if (!tree || connection.isLost())
            return;
        pollfd wait{connection.descriptor(), POLLIN, 0};
        while (!sawTheEndOf(window, connection) && !connection.isLost()) {
            wait.revents = 0;
            ::poll(&wait, 1, -1);
        }
        return;
    }
}

void letKeysGo(InputConnection& connection)
{
    const orvane::DeviceId xtest = connection.keyboards().xtest;
    const KeySet down = connection.keysDown(xtest);
    const KeySet modifiers = connection.modifierRoles().chordKeys();
    // Modifiers last, so that no letter is typed with fewer of them than it had.
    for (const KeySet& keys : {down & ~modifiers, down & modifiers}) {
        for (unsigned key = 0; key < keys.size(); ++key) {
            if (keys.test(key))
                connection.release(static_cast<std::uint8_t>(key));
        }
    }
    connection.synchronize();
}

} // namespace

int main(int argc, char** argv)
{
    xcb_window_t window = 0;
    if (argc != 2 || std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), window).ec != std::errc())
        return 2;
    // What ends the program mustn't end its guardian first. The pipe and the server bound its life.
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM})
        std::signal(signal, SIG_IGN);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr); // the program has started us with all of them blocked

    const auto connection = InputConnection::open().connection;
    if (!connection)
        return 1;
    const std::uint32_t interest = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection->xcb(), window, XCB_CW_EVENT_MASK, &interest);
    connection->flush();
    if (waitForFarewell(window, *connection) == Farewell::death) {
        waitForLastKeys(window, *connection);
        letKeysGo(*connection);
    }
    return 0;
}

// The least that a tap can cost: takes the keyboard "testkbd" and presses each of its keys on the XTEST
// keyboard, with nothing in between. With "hand-over" as argument, each key is shown to another thread first,
// as it must be where callbacks run on a main thread. Prints "ready"; ends with its standard input.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <thread>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace {

[[noreturn]] void fail(const char* why)
{
    std::fprintf(stderr, "BareKeyTap: %s\n", why);
    std::exit(1);
}

std::uint16_t keyboardOf(xcb_connection_t* connection)
{
    const auto version = xcb_input_xi_query_version(connection, 2, 2);
    std::free(xcb_input_xi_query_version_reply(connection, version, nullptr));
    const auto cookie = xcb_input_xi_query_device(connection, XCB_INPUT_DEVICE_ALL);
    auto* reply = xcb_input_xi_query_device_reply(connection, cookie, nullptr);
    if (!reply)
        fail("the X server doesn't answer");
    std::uint16_t found = 0;
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply); each.rem;
         xcb_input_xi_device_info_next(&each)) {
        const std::string_view name(xcb_input_xi_device_info_name(each.data), each.data->name_len);
        if (name == "testkbd")
            found = each.data->deviceid;
    }
    std::free(reply);
    if (found == 0)
        fail("there is no test keyboard");
    return found;
}

void grab(xcb_connection_t* connection, std::uint16_t keyboard)
{
    constexpr std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto cookie = xcb_input_xi_grab_device(connection, root, XCB_CURRENT_TIME, XCB_NONE, keyboard,
                                                 XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                                 XCB_INPUT_GRAB_OWNER_NO_OWNER, 1, &mask);
    auto* reply = xcb_input_xi_grab_device_reply(connection, cookie, nullptr);
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS)
        fail("the keyboard can't be grabbed");
    std::free(reply);
}

void raise(int signal)
{
    const std::uint64_t one = 1;
    if (write(signal, &one, sizeof one) != sizeof one)
        fail("an eventfd fails");
}

/// Waits as an event loop does: in poll(), and then by reading.
void await(int signal)
{
    pollfd wait{signal, POLLIN, 0};
    poll(&wait, 1, -1);
    std::uint64_t count = 0;
    if (read(signal, &count, sizeof count) != sizeof count)
        fail("an eventfd fails");
}

/// A second thread that answers for each key.
class Other {
public:
    Other()
    {
        std::thread([this] {
            for (;;) {
                await(m_asked);
                raise(m_answered);
            }
        }).detach();
    }
    void ask() const
    {
        raise(m_asked);
        await(m_answered);
    }

private:
    int m_asked = eventfd(0, EFD_CLOEXEC);
    int m_answered = eventfd(0, EFD_CLOEXEC);
};

} // namespace

int main(int argc, char** argv)
{
    static const Other other;
    const bool handsOver = argc > 1 && std::strcmp(argv[1], "hand-over") == 0;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection))
        fail("there is no X server");
    grab(connection, keyboardOf(connection));
    std::puts("ready");
    std::fflush(stdout);
    pollfd waits[] = {{STDIN_FILENO, POLLIN, 0}, {xcb_get_file_descriptor(connection), POLLIN, 0}};
    while (poll(waits, 2, -1) >= 0 && waits[0].revents == 0) {
        while (auto* event = reinterpret_cast<xcb_input_key_press_event_t*>(xcb_poll_for_event(connection))) {
            const bool isRepeat = (event->flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0;
            if (handsOver)
                other.ask();
            if (event->response_type == XCB_GE_GENERIC && !isRepeat) {
                const bool down = event->event_type == XCB_INPUT_KEY_PRESS;
                xcb_test_fake_input(connection, down ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
                                    static_cast<std::uint8_t>(event->detail), XCB_CURRENT_TIME, XCB_NONE, 0,
                                    0, 0);
                xcb_flush(connection);
            }
            std::free(event);
        }
    }
    _exit(0); // the other thread waits for ever
}

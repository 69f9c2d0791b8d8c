#include "Contract/Support/UnmanagedWindow.h"

#include <array>
#include <vector>

#include <xcb/xtest.h>

namespace orvane::tests {

UnmanagedWindow::UnmanagedWindow(QRect place) : m_place(place), m_connection(xcb_connect(nullptr, nullptr))
{
    xcb_connection_t* x = m_connection.get();
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    m_root = screen->root;
    m_window = xcb_generate_id(x);
    const std::array<std::uint32_t, 3> values = {screen->white_pixel, 1,
                                                 XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                                     XCB_EVENT_MASK_BUTTON_MOTION};
    xcb_create_window(x, XCB_COPY_FROM_PARENT, m_window, m_root, static_cast<std::int16_t>(place.x()),
                      static_cast<std::int16_t>(place.y()), static_cast<std::uint16_t>(place.width()),
                      static_cast<std::uint16_t>(place.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                      values.data());
    xcb_map_window(x, m_window);
    synchronize();
}

bool UnmanagedWindow::grabPointer()
{
    const auto cookie = xcb_grab_pointer(
        m_connection.get(), 0, m_window, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE,
        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const XcbReply<xcb_grab_pointer_reply_t> reply(
        xcb_grab_pointer_reply(m_connection.get(), cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void UnmanagedWindow::fakeButton(std::uint8_t button, bool goesDown)
{
    xcb_test_fake_input(m_connection.get(), goesDown ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, button,
                        XCB_CURRENT_TIME, m_root, 0, 0, 0);
    synchronize();
}

void UnmanagedWindow::mapButtons(std::uint8_t first, std::uint8_t second, std::uint8_t third)
{
    const auto now = xcb_get_pointer_mapping(m_connection.get());
    const XcbReply<xcb_get_pointer_mapping_reply_t> reply(
        xcb_get_pointer_mapping_reply(m_connection.get(), now, nullptr));
    if (!reply || reply->map_len < 3)
        return;
    const std::uint8_t* map = xcb_get_pointer_mapping_map(reply.get());
    std::vector<std::uint8_t> buttons(map, map + reply->map_len);
    buttons[0] = first;
    buttons[1] = second;
    buttons[2] = third;
    const auto cookie = xcb_set_pointer_mapping(m_connection.get(), reply->map_len, buttons.data());
    const XcbReply<xcb_set_pointer_mapping_reply_t> done(
        xcb_set_pointer_mapping_reply(m_connection.get(), cookie, nullptr));
}

void UnmanagedWindow::synchronize()
{
    const auto cookie = xcb_get_input_focus(m_connection.get());
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection.get(), cookie, nullptr));
}

} // namespace orvane::tests

#include "PlatformLinux/X11/XAccess.h"

#include "PlatformLinux/X11/X11Connection.h"

#include <array>
#include <string_view>

#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace orvane {

namespace {

constexpr std::uint8_t badAccess = 10;

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

class Server {
public:
    Server() : m_connection(xcb_connect(nullptr, &m_screenNumber)) {}

    [[nodiscard]] xcb_connection_t* xcb() const { return m_connection.get(); }
    [[nodiscard]] bool answers() const { return xcb_connection_has_error(xcb()) == 0; }
    [[nodiscard]] bool has(xcb_extension_t& extension) const
    {
        const auto* data = xcb_get_extension_data(xcb(), &extension);
        return data && data->present;
    }
    [[nodiscard]] xcb_window_t root() const
    {
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb()));
        for (int i = 0; i < m_screenNumber && screens.rem > 1; ++i)
            xcb_screen_next(&screens);
        return screens.data->root;
    }

private:
    int m_screenNumber = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection; // never null, even where nothing answers
};

XAccess granted()
{
    return {true, {}};
}
XAccess denied(const QString& reason)
{
    return {false, reason};
}

XAccess noServer()
{
    return denied(QStringLiteral("No X server lets this program in, so it can neither see input nor read the "
                                 "screen. Start it from a desktop session"));
}

bool speaksXInput2(const Server& server)
{
    constexpr std::uint16_t major = 2;
    constexpr std::uint16_t minor = 2;
    const auto cookie = xcb_input_xi_query_version(server.xcb(), major, minor);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_input_xi_query_version_reply_t> reply(
        xcb_input_xi_query_version_reply(server.xcb(), cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    return reply &&
           (reply->major_version > major || (reply->major_version == major && reply->minor_version >= minor));
}

std::optional<xcb_input_device_id_t> hardwareKeyboard(const Server& server)
{
    const auto cookie = xcb_input_xi_query_device(server.xcb(), XCB_INPUT_DEVICE_ALL);
    const XcbReply<xcb_input_xi_query_device_reply_t> reply(
        xcb_input_xi_query_device_reply(server.xcb(), cookie, nullptr));
    if (!reply)
        return std::nullopt;
    for (auto devices = xcb_input_xi_query_device_infos_iterator(reply.get()); devices.rem;
         xcb_input_xi_device_info_next(&devices)) {
        const xcb_input_xi_device_info_t& device = *devices.data;
        const std::string_view name(xcb_input_xi_device_info_name(&device), device.name_len);
        if (device.type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD && device.enabled &&
            name.find("XTEST") == std::string_view::npos)
            return device.deviceid;
    }
    return std::nullopt;
}

/// Whether the server refuses the grab of a keyboard.
///
/// A real grab, however short, would take the keyboard from its master for that time, and keys typed then are
/// lost to everybody. A passive grab has to pass the same check of the server, for access to grab the device,
/// and this one waits for a key that no keyboard has: nothing is ever taken. Somebody else's grab doesn't
/// disturb it; it says nothing about being allowed.
bool grabIsRefused(const Server& server, xcb_input_device_id_t keyboard)
{
    constexpr std::uint32_t keyThatIsNone = 255;
    constexpr std::uint32_t noModifiers = 0;
    constexpr std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    const auto cookie = xcb_input_xi_passive_grab_device(
        server.xcb(), XCB_CURRENT_TIME, server.root(), XCB_CURSOR_NONE, keyThatIsNone, keyboard, 1, 1,
        XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
        XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask, &noModifiers);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_input_xi_passive_grab_device_reply_t> reply(
        xcb_input_xi_passive_grab_device_reply(server.xcb(), cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    return error && error->error_code == badAccess; // the end of the connection ends the grab
}

} // namespace

XAccess tryInputAccess()
{
    const Server server;
    if (!server.answers())
        return noServer();
    if (!server.has(xcb_input_id) || !server.has(xcb_test_id)) {
        // That is all that an untrusted client sees of it.
        return denied(QStringLiteral("The X server doesn't offer XInput and XTEST to this program, so it can "
                                     "neither see nor change keys. A server does so to programs that it "
                                     "doesn't trust, as those of \"ssh -X\": start Orvane on the desktop "
                                     "itself, or with \"ssh -Y\""));
    }
    if (!speaksXInput2(server)) {
        return denied(
            QStringLiteral("The X server's XInput is older than 2.2, so this program can neither see "
                           "nor change keys. A newer X server is needed"));
    }
    const auto keyboard = hardwareKeyboard(server);
    if (keyboard && grabIsRefused(server, *keyboard)) {
        return denied(
            QStringLiteral("The X server refuses to let this program hold the keyboard. Its security "
                           "policy would have to allow it"));
    }
    return granted();
}

XAccess tryScreenAccess()
{
    const Server server;
    if (!server.answers())
        return noServer();
    constexpr std::uint32_t allPlanes = ~std::uint32_t{0};
    const auto cookie =
        xcb_get_image(server.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, server.root(), 0, 0, 1, 1, allPlanes);
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_get_image_reply_t> image(xcb_get_image_reply(server.xcb(), cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    if (image)
        return granted();
    return denied(
        QStringLiteral("The X server refuses to let this program read the screen. A server does so to "
                       "programs that it doesn't trust, as those of \"ssh -X\": start Orvane on the "
                       "desktop itself, or with \"ssh -Y\""));
}

} // namespace orvane

#include "PlatformLinux/X11/XAccess.h"

#include "PlatformLinux/Common/LinuxText.h"
#include "PlatformLinux/X11/XExchange.h"

#include <array>
#include <string_view>

#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace orvane {

namespace {

constexpr std::uint8_t badAccess = 10;
constexpr std::chrono::seconds patience(1);

XLink::Opened openServer()
{
    static const std::array extensions{&xcb_input_id, &xcb_test_id};
    return XLink::open({.extensions = extensions}, within(patience));
}

XAccess granted()
{
    return {.granted = true};
}
XAccess denied(const QString& reason)
{
    return {.reason = reason};
}

XAccess noServer(XOutcome outcome)
{
    if (outcome == XOutcome::late) {
        return {.reason =
                    LinuxText::tr("The X server doesn't answer, so this program can neither see input nor "
                                  "read the screen. Try again in a moment."),
                .isLate = true};
    }
    return denied(LinuxText::tr("No X server lets this program in, so it can neither see input nor read the "
                                "screen. Start it from a desktop session."));
}

bool speaksXInput2(XExchange& exchange)
{
    constexpr std::uint16_t major = 2;
    constexpr std::uint16_t minor = 2;
    const auto reply = exchange.reply<xcb_input_xi_query_version_reply_t>(
        xcb_input_xi_query_version(exchange.xcb(), major, minor));
    return reply &&
           (reply->major_version > major || (reply->major_version == major && reply->minor_version >= minor));
}

std::optional<xcb_input_device_id_t> hardwareKeyboard(XExchange& exchange)
{
    const auto reply = exchange.reply<xcb_input_xi_query_device_reply_t>(
        xcb_input_xi_query_device(exchange.xcb(), XCB_INPUT_DEVICE_ALL));
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

/// True if the server refuses the grab of a keyboard.
///
/// A real grab, however short, would take the keyboard from its master for that time, and keys typed then are
/// lost. A passive grab has to pass the same check of the server, for access to grab the device, and this one
/// waits for a key that no keyboard has, so nothing is ever taken. Another client's grab doesn't disturb it
/// and says nothing about being allowed.
bool grabIsRefused(XExchange& exchange, xcb_input_device_id_t keyboard)
{
    constexpr std::uint32_t keyThatIsNone = 255;
    constexpr std::uint32_t noModifiers = 0;
    constexpr std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    const auto cookie = xcb_input_xi_passive_grab_device(
        exchange.xcb(), XCB_CURRENT_TIME, exchange.link().root(), XCB_CURSOR_NONE, keyThatIsNone, keyboard, 1,
        1, XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
        XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask, &noModifiers);
    (void)exchange.reply<xcb_input_xi_passive_grab_device_reply_t>(cookie);
    // The end of the connection ends the grab.
    return exchange.outcome() == XOutcome::refused && exchange.error() == badAccess;
}

} // namespace

XAccess tryInputAccess()
{
    const auto [link, outcome] = openServer();
    if (!link)
        return noServer(outcome);
    if (!link->extension(xcb_input_id) || !link->extension(xcb_test_id)) {
        // An untrusted client sees no more than this.
        return denied(LinuxText::tr("The X server doesn't offer XInput and XTEST to this program, so it can "
                                    "neither see nor change keys. A server does so to programs that it "
                                    "doesn't trust, as those of \"ssh -X\": start Orvane on the desktop "
                                    "itself, or with \"ssh -Y\"."));
    }
    XExchange exchange(*link, within(patience));
    const bool isNewEnough = speaksXInput2(exchange);
    if (exchange.isLate())
        return noServer(XOutcome::late);
    if (!isNewEnough) {
        return denied(
            LinuxText::tr("The X server's XInput is older than 2.2, so this program can neither see "
                          "nor change keys. A newer X server is needed."));
    }
    const auto keyboard = hardwareKeyboard(exchange);
    if (keyboard && grabIsRefused(exchange, *keyboard)) {
        return denied(
            LinuxText::tr("The X server refuses to let this program hold the keyboard. Its security "
                          "policy would have to allow it."));
    }
    return granted();
}

XAccess tryScreenAccess()
{
    const auto [link, outcome] = openServer();
    if (!link)
        return noServer(outcome);
    constexpr std::uint32_t allPlanes = ~std::uint32_t{0};
    XExchange exchange(*link, within(patience));
    const auto image = exchange.reply<xcb_get_image_reply_t>(
        xcb_get_image(exchange.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, link->root(), 0, 0, 1, 1, allPlanes));
    if (exchange.isLate())
        return noServer(XOutcome::late);
    if (image)
        return granted();
    return denied(
        LinuxText::tr("The X server refuses to let this program read the screen. A server does so to "
                      "programs that it doesn't trust, as those of \"ssh -X\": start Orvane on the "
                      "desktop itself, or with \"ssh -Y\"."));
}

} // namespace orvane

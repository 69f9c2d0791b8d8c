#include "PlatformLinux/EventTap/AccessKeys.h"

#include "PlatformLinux/X11/XkbProtocol.h"

#include <array>

namespace orvane {

namespace {

constexpr std::uint32_t filters = XCB_XKB_BOOL_CTRL_SLOW_KEYS | XCB_XKB_BOOL_CTRL_BOUNCE_KEYS;
constexpr std::uint32_t all = filters | XCB_XKB_BOOL_CTRL_STICKY_KEYS | XCB_XKB_BOOL_CTRL_MOUSE_KEYS |
                              XCB_XKB_BOOL_CTRL_MOUSE_KEYS_ACCEL | XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS |
                              XCB_XKB_BOOL_CTRL_ACCESS_X_TIMEOUT_MASK |
                              XCB_XKB_BOOL_CTRL_ACCESS_X_FEEDBACK_MASK;

} // namespace

AccessKeys AccessKeys::of(InputConnection& connection, DeviceId device)
{
    XExchange exchange(connection.link(), within(InputConnection::patience));
    const auto reply =
        exchange.reply<xcb_xkb_get_controls_reply_t>(xcb_xkb_get_controls(exchange.xcb(), device));
    return AccessKeys(reply ? reply->enabledControls & all : 0);
}

bool AccessKeys::filterPresses() const
{
    return (m_controls & filters) != 0;
}

void AccessKeys::applyTo(InputConnection& connection, DeviceId device) const
{
    constexpr std::array<std::uint8_t, 32> noRepeats{};
    xcb_xkb_set_controls(connection.link().xcb(), device, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, all, m_controls,
                         XCB_XKB_CONTROL_CONTROLS_ENABLED, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                         noRepeats.data());
}

} // namespace orvane

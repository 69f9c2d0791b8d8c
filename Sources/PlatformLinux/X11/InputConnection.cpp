#include "PlatformLinux/X11/InputConnection.h"

#include "PlatformLinux/X11/XkbProtocol.h"

#include <cstring>
#include <string_view>

#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace orvane {

namespace {

constexpr std::uint8_t lockModifier = 1 << 1;

bool hasKeys(const xcb_input_xi_device_info_t* device)
{
    auto classes = xcb_input_xi_device_info_classes_iterator(device);
    for (; classes.rem; xcb_input_device_class_next(&classes)) {
        if (classes.data->type == XCB_INPUT_DEVICE_CLASS_TYPE_KEY)
            return true;
    }
    return false;
}

/// The device that gave a master its present keys.
DeviceId sourceOfKeys(const xcb_input_xi_device_info_t* device)
{
    auto classes = xcb_input_xi_device_info_classes_iterator(device);
    for (; classes.rem; xcb_input_device_class_next(&classes)) {
        if (classes.data->type == XCB_INPUT_DEVICE_CLASS_TYPE_KEY)
            return classes.data->sourceid;
    }
    return 0;
}

} // namespace

InputConnection::Opened InputConnection::open()
{
    int screenNumber = 0;
    std::unique_ptr<InputConnection> made(new InputConnection);
    made->m_xcb.reset(xcb_connect(nullptr, &screenNumber));
    if (made->isLost())
        return {nullptr, "the X server can't be reached"};
    std::string problem = made->negotiate(screenNumber);
    if (!problem.empty())
        return {nullptr, std::move(problem)};
    return {std::move(made), {}};
}

/// Gives what is missing, or nothing.
std::string InputConnection::negotiate(int screenNumber)
{
    xcb_connection_t* xcb = m_xcb.get();
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb));
    for (int i = 0; i < screenNumber && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    m_root = screens.data->root;

    // An untrusted client is shown neither of these two.
    const auto* xinput = xcb_get_extension_data(xcb, &xcb_input_id);
    const auto* xtest = xcb_get_extension_data(xcb, &xcb_test_id);
    const auto* xkb = xcb_get_extension_data(xcb, &xcb_xkb_id);
    if (!xinput || !xinput->present)
        return "the X server doesn't let this program at input devices (no XInput)";
    if (!xtest || !xtest->present)
        return "the X server doesn't let this program press keys (no XTEST)";
    if (!xkb || !xkb->present)
        return "the X server has no keyboard extension";
    m_xinputOpcode = xinput->major_opcode;
    m_xinputFirstEvent = xinput->first_event;
    m_xkbFirstEvent = xkb->first_event;

    const XcbReply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
    if (!version || version->major_version < 2)
        return "the X server's XInput is older than version 2";
    const XcbReply<xcb_xkb_use_extension_reply_t> use(
        xcb_xkb_use_extension_reply(xcb, xcb_xkb_use_extension(xcb, 1, 0), nullptr));
    if (!use || !use->supported)
        return "the X server's keyboard extension isn't of version 1";
    // A client that holds the server, as window managers do for a moment, would hold up every key.
    xcb_test_grab_control(xcb, 1);
    return {};
}

Keyboards InputConnection::keyboards()
{
    xcb_connection_t* xcb = m_xcb.get();
    const auto pointerCookie = xcb_input_xi_get_client_pointer(xcb, XCB_NONE);
    const auto devicesCookie = xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL);
    constexpr std::string_view mark = "XTEST Device";
    const auto markCookie = xcb_intern_atom(xcb, 0, mark.size(), mark.data());
    const XcbReply<xcb_input_xi_get_client_pointer_reply_t> pointer(
        xcb_input_xi_get_client_pointer_reply(xcb, pointerCookie, nullptr));
    const XcbReply<xcb_input_xi_query_device_reply_t> devices(
        xcb_input_xi_query_device_reply(xcb, devicesCookie, nullptr));
    const XcbReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(xcb, markCookie, nullptr));
    Keyboards found;
    if (!pointer || !devices || !atom)
        return found;

    auto all = xcb_input_xi_query_device_infos_iterator(devices.get());
    for (auto each = all; each.rem; xcb_input_xi_device_info_next(&each)) {
        if (each.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD &&
            each.data->attachment == pointer->deviceid) {
            found.master = each.data->deviceid;
            found.lastUsed = sourceOfKeys(each.data);
        }
    }
    for (auto each = all; each.rem; xcb_input_xi_device_info_next(&each)) {
        const xcb_input_xi_device_info_t& device = *each.data;
        const bool isAttached = device.type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD;
        const bool isFloating = device.type == XCB_INPUT_DEVICE_TYPE_FLOATING_SLAVE && hasKeys(&device);
        if (isAttached && device.attachment == found.master && isXTestDevice(device.deviceid, atom->atom)) {
            found.xtest = device.deviceid;
        } else if (device.enabled && ((isAttached && device.attachment == found.master) || isFloating)) {
            found.hardware.push_back(
                {device.deviceid,
                 std::string(xcb_input_xi_device_info_name(&device),
                             static_cast<std::size_t>(xcb_input_xi_device_info_name_length(&device))),
                 isAttached ? KeyboardDevice::Attachment::master : KeyboardDevice::Attachment::floating});
        }
    }
    return found;
}

bool InputConnection::isXTestDevice(DeviceId device, xcb_atom_t mark)
{
    const auto cookie = xcb_input_xi_get_property(m_xcb.get(), device, 0, mark, XCB_ATOM_ANY, 0, 1);
    const XcbReply<xcb_input_xi_get_property_reply_t> reply(
        xcb_input_xi_get_property_reply(m_xcb.get(), cookie, nullptr));
    return reply && reply->type != XCB_ATOM_NONE && reply->num_items > 0;
}

KeySet InputConnection::keysDown(DeviceId device, std::uint32_t* request)
{
    KeySet keys;
    const auto cookie = xcb_input_query_device_state(m_xcb.get(), static_cast<std::uint8_t>(device));
    if (request)
        *request = cookie.sequence;
    const XcbReply<xcb_input_query_device_state_reply_t> reply(
        xcb_input_query_device_state_reply(m_xcb.get(), cookie, nullptr));
    if (!reply)
        return keys;
    auto classes = xcb_input_query_device_state_classes_iterator(reply.get());
    for (; classes.rem; xcb_input_input_state_next(&classes)) {
        if (classes.data->class_id != XCB_INPUT_INPUT_CLASS_KEY)
            continue;
        const auto* state = reinterpret_cast<const xcb_input_key_state_t*>(classes.data);
        for (unsigned key = 0; key < keys.size(); ++key)
            keys.set(key, (state->keys[key / 8] >> (key % 8) & 1) != 0);
    }
    return keys;
}

ModifierRoles InputConnection::modifierRoles()
{
    const xcb_setup_t* setup = xcb_get_setup(m_xcb.get());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_get_keyboard_mapping(m_xcb.get(), setup->min_keycode, count);
    const XcbReply<xcb_get_keyboard_mapping_reply_t> reply(
        xcb_get_keyboard_mapping_reply(m_xcb.get(), cookie, nullptr));
    if (!reply)
        return {};
    const auto length = static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(reply.get()));
    return ModifierRoles::fromKeysyms(setup->min_keycode, reply->keysyms_per_keycode,
                                      {xcb_get_keyboard_mapping_keysyms(reply.get()), length});
}

bool InputConnection::capsIsLocked()
{
    const auto cookie = xcb_xkb_get_state(m_xcb.get(), XCB_XKB_ID_USE_CORE_KBD);
    const XcbReply<xcb_xkb_get_state_reply_t> reply(xcb_xkb_get_state_reply(m_xcb.get(), cookie, nullptr));
    return reply && (reply->lockedMods & lockModifier) != 0;
}

void InputConnection::synchronize()
{
    // Any request with an answer will do.
    const auto cookie = xcb_get_input_focus(m_xcb.get());
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_xcb.get(), cookie, nullptr));
}

void InputConnection::fake(std::uint8_t key, KeyMotion motion)
{
    const std::uint8_t type = motion == KeyMotion::release ? XCB_KEY_RELEASE : XCB_KEY_PRESS;
    xcb_test_fake_input(m_xcb.get(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void InputConnection::pressOn(DeviceId device, std::uint8_t key)
{
    const auto type = static_cast<std::uint8_t>(m_xinputFirstEvent + XCB_INPUT_DEVICE_KEY_PRESS);
    xcb_test_fake_input(m_xcb.get(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                        static_cast<std::uint8_t>(device));
}

void InputConnection::releaseOn(DeviceId device, std::uint8_t key)
{
    const auto type = static_cast<std::uint8_t>(m_xinputFirstEvent + XCB_INPUT_DEVICE_KEY_RELEASE);
    xcb_test_fake_input(m_xcb.get(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                        static_cast<std::uint8_t>(device));
}

} // namespace orvane

#include "PlatformLinux/X11/InputConnection.h"

#include "PlatformLinux/X11/KeyboardMapping.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <array>

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

/// Returns the device whose keys a master took last.
DeviceId sourceOfKeys(const xcb_input_xi_device_info_t* device)
{
    auto classes = xcb_input_xi_device_info_classes_iterator(device);
    for (; classes.rem; xcb_input_device_class_next(&classes)) {
        if (classes.data->type == XCB_INPUT_DEVICE_CLASS_TYPE_KEY)
            return classes.data->sourceid;
    }
    return 0;
}

bool isXTestDevice(XExchange& exchange, DeviceId device)
{
    const auto reply = exchange.reply<xcb_input_xi_get_property_reply_t>(xcb_input_xi_get_property(
        exchange.xcb(), device, 0, exchange.atoms().xtestDevice, XCB_ATOM_ANY, 0, 1));
    return reply && reply->type != XCB_ATOM_NONE && reply->num_items > 0;
}

} // namespace

InputConnection::Opened InputConnection::open(Deadline deadline, int cancellation)
{
    static const std::array extensions{&xcb_input_id, &xcb_test_id, &xcb_xkb_id};
    auto opened = XLink::open({.extensions = extensions, .cancellation = cancellation}, deadline);
    if (opened.outcome == XOutcome::late)
        return {nullptr, "the X server doesn't answer", true};
    if (!opened.link)
        return {nullptr, "the X server can't be reached"};
    std::unique_ptr<InputConnection> made(new InputConnection(std::move(opened.link)));
    Opened result = made->negotiate(deadline);
    if (result.problem.empty())
        result.connection = std::move(made);
    return result;
}

/// Returns what is missing, or no problem.
InputConnection::Opened InputConnection::negotiate(Deadline deadline)
{
    // An untrusted client is shown neither of these two.
    const auto* xinput = m_link->extension(xcb_input_id);
    const auto* xkb = m_link->extension(xcb_xkb_id);
    if (!xinput)
        return {nullptr, "the X server doesn't let this program at input devices (no XInput)"};
    if (!m_link->extension(xcb_test_id))
        return {nullptr, "the X server doesn't let this program press keys (no XTEST)"};
    if (!xkb)
        return {nullptr, "the X server has no keyboard extension"};
    m_xinputOpcode = xinput->major_opcode;
    m_xinputFirstEvent = xinput->first_event;
    m_xkbFirstEvent = xkb->first_event;

    XExchange exchange(*m_link, deadline);
    const auto versionCookie = xcb_input_xi_query_version(m_link->xcb(), 2, 2);
    const auto useCookie = xcb_xkb_use_extension(m_link->xcb(), 1, 0);
    // The server gives a client its pointer and keyboard with the first question about these.
    xcb_discard_reply(m_link->xcb(), xcb_query_keymap(m_link->xcb()).sequence);
    // Otherwise a client that holds the server, as window managers do for a moment, would delay every key.
    xcb_test_grab_control(m_link->xcb(), 1);
    const auto version = exchange.reply<xcb_input_xi_query_version_reply_t>(versionCookie);
    const auto use = exchange.reply<xcb_xkb_use_extension_reply_t>(useCookie);
    if (exchange.isLate())
        return {nullptr, "the X server doesn't answer", true};
    if (!version || version->major_version < 2)
        return {nullptr, "the X server's XInput is older than version 2"};
    if (!use || !use->supported)
        return {nullptr, "the X server's keyboard extension isn't of version 1"};
    m_link->flush();
    return {};
}

Keyboards InputConnection::keyboards()
{
    XExchange exchange(*m_link, within(patience));
    const auto pointerCookie = xcb_input_xi_get_client_pointer(m_link->xcb(), XCB_NONE);
    const auto devicesCookie = xcb_input_xi_query_device(m_link->xcb(), XCB_INPUT_DEVICE_ALL);
    const auto pointer = exchange.reply<xcb_input_xi_get_client_pointer_reply_t>(pointerCookie);
    const auto devices = exchange.reply<xcb_input_xi_query_device_reply_t>(devicesCookie);
    Keyboards found;
    if (!pointer || !devices)
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
        if (isAttached && device.attachment == found.master && isXTestDevice(exchange, device.deviceid)) {
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

KeySet InputConnection::keysDown(DeviceId device, std::uint32_t* request)
{
    KeySet keys;
    const auto cookie = xcb_input_query_device_state(m_link->xcb(), static_cast<std::uint8_t>(device));
    if (request)
        *request = cookie.sequence;
    const auto reply =
        XExchange(*m_link, within(patience)).reply<xcb_input_query_device_state_reply_t>(cookie);
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
    XExchange exchange(*m_link, within(patience));
    return KeyboardMapping::read(exchange).roles();
}

bool InputConnection::capsIsLocked()
{
    const auto reply =
        XExchange(*m_link, within(patience))
            .reply<xcb_xkb_get_state_reply_t>(xcb_xkb_get_state(m_link->xcb(), XCB_XKB_ID_USE_CORE_KBD));
    return reply && (reply->lockedMods & lockModifier) != 0;
}

void InputConnection::letGoOfKeyboard()
{
    xcb_ungrab_keyboard(m_link->xcb(), XCB_CURRENT_TIME);
    m_link->flush();
}

XOutcome InputConnection::synchronize()
{
    return XExchange(*m_link, within(patience)).synchronize();
}

void InputConnection::fake(std::uint8_t key, KeyMotion motion)
{
    const std::uint8_t type = motion == KeyMotion::release ? XCB_KEY_RELEASE : XCB_KEY_PRESS;
    xcb_test_fake_input(m_link->xcb(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void InputConnection::pressOn(DeviceId device, std::uint8_t key)
{
    const auto type = static_cast<std::uint8_t>(m_xinputFirstEvent + XCB_INPUT_DEVICE_KEY_PRESS);
    xcb_test_fake_input(m_link->xcb(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                        static_cast<std::uint8_t>(device));
}

void InputConnection::releaseOn(DeviceId device, std::uint8_t key)
{
    const auto type = static_cast<std::uint8_t>(m_xinputFirstEvent + XCB_INPUT_DEVICE_KEY_RELEASE);
    xcb_test_fake_input(m_link->xcb(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                        static_cast<std::uint8_t>(device));
}

} // namespace orvane

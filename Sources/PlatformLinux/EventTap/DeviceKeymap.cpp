#include "PlatformLinux/EventTap/DeviceKeymap.h"

#include "PlatformLinux/X11/XkbProtocol.h"

#include <cstddef>
#include <cstring>
#include <span>
#include <vector>

#include <xcb/xcbext.h>

namespace orvane {

namespace {

using Rest = std::span<const std::byte>;

constexpr std::uint16_t allMapParts = 0xFF;
constexpr std::uint8_t allGroups = 0x0F;
constexpr std::uint8_t allModifiers = 0xFF;
constexpr std::uint32_t allBooleanControls = 0x1FFF;
/// All controls: besides the plain ones wrapping, internal and ignored modifiers, repeat for each key, and
/// the mask of enabled ones.
constexpr std::uint32_t allControls = 0x1FFFu | XCB_XKB_CONTROL_GROUPS_WRAP | XCB_XKB_CONTROL_INTERNAL_MODS |
                                      XCB_XKB_CONTROL_IGNORE_LOCK_MODS | XCB_XKB_CONTROL_PER_KEY_REPEAT |
                                      XCB_XKB_CONTROL_CONTROLS_ENABLED;

/// Returns the whole reply with the numbers of the device and of the reply set to zero, so that two replies
/// can be compared.
template <typename Reply>
std::vector<std::byte> bytesOf(XcbReply<Reply> reply)
{
    if (!reply)
        return {};
    reply->deviceID = 0;
    reply->sequence = 0;
    constexpr std::size_t shortestReply = 32;
    const auto* first = reinterpret_cast<const std::byte*>(reply.get());
    return {first, first + shortestReply + reply->length * std::size_t{4}};
}

template <typename Reply>
const Reply& replyIn(const std::vector<std::byte>& bytes)
{
    return *reinterpret_cast<const Reply*>(bytes.data());
}

template <typename Wire>
void append(std::vector<std::byte>& request, const Wire& wire)
{
    const auto* first = reinterpret_cast<const std::byte*>(&wire);
    request.insert(request.end(), first, first + sizeof wire);
}

template <typename Wire>
bool take(Rest& from, Wire& wire)
{
    if (from.size() < sizeof wire)
        return false;
    std::memcpy(&wire, from.data(), sizeof wire);
    from = from.subspan(sizeof wire);
    return true;
}

/// Returns the data of a request to set a map from the reply that described it: key types are written
/// differently, everything after them is the same. Empty when the reply is broken.
std::vector<std::byte> mapRequest(const std::vector<std::byte>& bytes)
{
    const auto& map = replyIn<xcb_xkb_get_map_reply_t>(bytes);
    Rest rest = Rest(bytes).subspan(sizeof map);
    std::vector<std::byte> request;
    for (unsigned i = 0; i < map.nTypes; ++i) {
        xcb_xkb_key_type_t type;
        if (!take(rest, type))
            return {};
        append(request, xcb_xkb_set_key_type_t{type.mods_mask, type.mods_mods, type.mods_vmods,
                                               type.numLevels, type.nMapEntries, type.hasPreserve, 0});
        for (unsigned entry = 0; entry < type.nMapEntries; ++entry) {
            xcb_xkb_kt_map_entry_t map_entry;
            if (!take(rest, map_entry))
                return {};
            append(request,
                   xcb_xkb_kt_set_map_entry_t{map_entry.level, map_entry.mods_mods, map_entry.mods_vmods});
        }
        for (unsigned entry = 0; type.hasPreserve && entry < type.nMapEntries; ++entry) {
            xcb_xkb_mod_def_t preserved;
            if (!take(rest, preserved))
                return {};
            append(request, xcb_xkb_kt_set_map_entry_t{0, preserved.realMods, preserved.vmods});
        }
    }
    request.insert(request.end(), rest.begin(), rest.end());
    return request;
}

void setKeyMap(xcb_connection_t* xcb, DeviceId device, const std::vector<std::byte>& bytes)
{
    const auto& map = replyIn<xcb_xkb_get_map_reply_t>(bytes);
    const std::vector<std::byte> values = mapRequest(bytes);
    if (values.empty())
        return;
    constexpr std::uint16_t flags =
        XCB_XKB_SET_MAP_FLAGS_RESIZE_TYPES | XCB_XKB_SET_MAP_FLAGS_RECOMPUTE_ACTIONS;
    // The request is built by hand, because the library computes the length of `values` from a form in which
    // they can't be given.
    xcb_xkb_set_map_request_t request{};
    request.deviceSpec = device;
    request.present = map.present;
    request.flags = flags;
    request.minKeyCode = map.minKeyCode;
    request.maxKeyCode = map.maxKeyCode;
    request.firstType = map.firstType;
    request.nTypes = map.nTypes;
    request.firstKeySym = map.firstKeySym;
    request.nKeySyms = map.nKeySyms;
    request.totalSyms = map.totalSyms;
    request.firstKeyAction = map.firstKeyAction;
    request.nKeyActions = map.nKeyActions;
    request.totalActions = map.totalActions;
    request.firstKeyBehavior = map.firstKeyBehavior;
    request.nKeyBehaviors = map.nKeyBehaviors;
    request.totalKeyBehaviors = map.totalKeyBehaviors;
    request.firstKeyExplicit = map.firstKeyExplicit;
    request.nKeyExplicit = map.nKeyExplicit;
    request.totalKeyExplicit = map.totalKeyExplicit;
    request.firstModMapKey = map.firstModMapKey;
    request.nModMapKeys = map.nModMapKeys;
    request.totalModMapKeys = map.totalModMapKeys;
    request.firstVModMapKey = map.firstVModMapKey;
    request.nVModMapKeys = map.nVModMapKeys;
    request.totalVModMapKeys = map.totalVModMapKeys;
    request.virtualMods = map.virtualMods;

    iovec parts[4] = {};
    parts[2] = {&request, sizeof request};
    parts[3] = {const_cast<std::byte*>(values.data()), values.size()};
    const xcb_protocol_request_t protocol{2, &xcb_xkb_id, XCB_XKB_SET_MAP, 1};
    xcb_send_request(xcb, 0, parts + 2, &protocol);
}

void setCompatMap(xcb_connection_t* xcb, DeviceId device, const xcb_xkb_get_compat_map_reply_t& map)
{
    xcb_xkb_set_compat_map(xcb, device, 1, 1, map.groupsRtrn, map.firstSIRtrn, map.nSIRtrn,
                           xcb_xkb_get_compat_map_si_rtrn(&map), xcb_xkb_get_compat_map_group_rtrn(&map));
}

void setControls(xcb_connection_t* xcb, DeviceId device, const xcb_xkb_get_controls_reply_t& from)
{
    xcb_xkb_set_controls(
        xcb, device, allModifiers, from.internalModsRealMods, allModifiers, from.ignoreLockModsRealMods,
        0xFFFF, from.internalModsVmods, 0xFFFF, from.ignoreLockModsVmods, from.mouseKeysDfltBtn,
        from.groupsWrap, from.accessXOption, allBooleanControls, from.enabledControls, allControls,
        from.repeatDelay, from.repeatInterval, from.slowKeysDelay, from.debounceDelay, from.mouseKeysDelay,
        from.mouseKeysInterval, from.mouseKeysTimeToMax, from.mouseKeysMaxSpeed, from.mouseKeysCurve,
        from.accessXTimeout, from.accessXTimeoutMask, from.accessXTimeoutValues,
        from.accessXTimeoutOptionsMask, from.accessXTimeoutOptionsValues, from.perKeyRepeat);
}

} // namespace

DeviceKeymap DeviceKeymap::of(InputConnection& connection, DeviceId device)
{
    XExchange exchange(connection.link(), within(InputConnection::patience));
    xcb_connection_t* xcb = exchange.xcb();
    const auto map =
        xcb_xkb_get_map(xcb, device, allMapParts, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const auto compat = xcb_xkb_get_compat_map(xcb, device, allGroups, 1, 0, 0);
    const auto controls = xcb_xkb_get_controls(xcb, device);
    DeviceKeymap read;
    read.m_map = bytesOf(exchange.reply<xcb_xkb_get_map_reply_t>(map));
    read.m_compatMap = bytesOf(exchange.reply<xcb_xkb_get_compat_map_reply_t>(compat));
    read.m_controls = bytesOf(exchange.reply<xcb_xkb_get_controls_reply_t>(controls));
    return exchange.isLate() ? DeviceKeymap() : read;
}

void DeviceKeymap::applyTo(InputConnection& connection, DeviceId device) const
{
    xcb_connection_t* xcb = connection.link().xcb();
    const DeviceKeymap present = of(connection, device);
    if (present.isEmpty())
        return;
    if (!m_map.empty() && m_map != present.m_map)
        setKeyMap(xcb, device, m_map);
    if (!m_compatMap.empty() && m_compatMap != present.m_compatMap)
        setCompatMap(xcb, device, replyIn<xcb_xkb_get_compat_map_reply_t>(m_compatMap));
    if (!m_controls.empty() && m_controls != present.m_controls)
        setControls(xcb, device, replyIn<xcb_xkb_get_controls_reply_t>(m_controls));
}

void copyLocks(InputConnection& connection, DeviceId from, DeviceId to)
{
    XExchange exchange(connection.link(), within(InputConnection::patience));
    xcb_connection_t* xcb = exchange.xcb();
    const auto state = exchange.reply<xcb_xkb_get_state_reply_t>(xcb_xkb_get_state(xcb, from));
    if (state)
        xcb_xkb_latch_lock_state(xcb, to, allModifiers, state->lockedMods, 1, state->lockedGroup, 0, 0, 0);
}

} // namespace orvane

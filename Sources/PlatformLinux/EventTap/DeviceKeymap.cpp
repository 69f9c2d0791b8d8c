#include "PlatformLinux/EventTap/DeviceKeymap.h"

#include "PlatformLinux/X11/XkbProtocol.h"

#include <cstddef>
#include <cstring>
#include <optional>
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

/// The data of a key map in the form of requests to set it.
struct MapValues {
    std::vector<std::byte> keys; // everything but the actions
    std::vector<std::byte> actions;
};

void append(std::vector<std::byte>& request, Rest bytes)
{
    request.insert(request.end(), bytes.begin(), bytes.end());
}

/// Moves this many bytes on. Returns those that were passed, or none when there aren't so many.
std::optional<Rest> takeBytes(Rest& from, std::size_t count)
{
    if (from.size() < count)
        return std::nullopt;
    const Rest taken = from.first(count);
    from = from.subspan(count);
    return taken;
}

/// Key types are told in one form and set in another.
bool rewriteKeyTypes(Rest& rest, unsigned count, std::vector<std::byte>& request)
{
    for (unsigned i = 0; i < count; ++i) {
        xcb_xkb_key_type_t type;
        if (!take(rest, type))
            return false;
        append(request, xcb_xkb_set_key_type_t{type.mods_mask, type.mods_mods, type.mods_vmods,
                                               type.numLevels, type.nMapEntries, type.hasPreserve, 0});
        for (unsigned entry = 0; entry < type.nMapEntries; ++entry) {
            xcb_xkb_kt_map_entry_t map_entry;
            if (!take(rest, map_entry))
                return false;
            append(request,
                   xcb_xkb_kt_set_map_entry_t{map_entry.level, map_entry.mods_mods, map_entry.mods_vmods});
        }
        for (unsigned entry = 0; type.hasPreserve && entry < type.nMapEntries; ++entry) {
            xcb_xkb_mod_def_t preserved;
            if (!take(rest, preserved))
                return false;
            append(request, xcb_xkb_kt_set_map_entry_t{0, preserved.realMods, preserved.vmods});
        }
    }
    return true;
}

/// Returns the data of requests to set a map from the reply that described it; none when the reply is broken.
std::optional<MapValues> mapValues(const std::vector<std::byte>& bytes)
{
    const auto& map = replyIn<xcb_xkb_get_map_reply_t>(bytes);
    Rest rest = Rest(bytes).subspan(sizeof map);
    MapValues values;
    if (!rewriteKeyTypes(rest, map.nTypes, values.keys))
        return std::nullopt;
    for (unsigned i = 0; i < map.nKeySyms; ++i) {
        xcb_xkb_key_sym_map_t key;
        if (!take(rest, key))
            return std::nullopt;
        const auto symbols = takeBytes(rest, key.nSyms * sizeof(xcb_keysym_t));
        if (!symbols)
            return std::nullopt;
        append(values.keys, key);
        append(values.keys, *symbols);
    }
    // A count for each key, filled up to a multiple of four, and then the actions of all.
    const std::size_t counts = (map.nKeyActions + std::size_t{3}) / 4 * 4;
    const auto actions = takeBytes(rest, counts + map.totalActions * sizeof(xcb_xkb_action_t));
    if (!actions)
        return std::nullopt;
    append(values.actions, *actions);
    append(values.keys, rest);
    return values;
}

/// The requests are built by hand, because the library computes the length of the values from a form in which
/// they can't be given.
xcb_void_cookie_t sendSetMap(xcb_connection_t* xcb, xcb_xkb_set_map_request_t request,
                             const std::vector<std::byte>& values)
{
    iovec parts[4] = {};
    parts[2] = {&request, sizeof request};
    parts[3] = {const_cast<std::byte*>(values.data()), values.size()};
    const xcb_protocol_request_t protocol{2, &xcb_xkb_id, XCB_XKB_SET_MAP, 1};
    return {xcb_send_request(xcb, XCB_REQUEST_CHECKED, parts + 2, &protocol)};
}

xcb_void_cookie_t setKeys(xcb_connection_t* xcb, DeviceId device, const xcb_xkb_get_map_reply_t& map,
                          const MapValues& values)
{
    xcb_xkb_set_map_request_t request{};
    request.deviceSpec = device;
    request.present = map.present & static_cast<std::uint16_t>(~XCB_XKB_MAP_PART_KEY_ACTIONS);
    request.flags = XCB_XKB_SET_MAP_FLAGS_RESIZE_TYPES | XCB_XKB_SET_MAP_FLAGS_RECOMPUTE_ACTIONS;
    request.minKeyCode = map.minKeyCode;
    request.maxKeyCode = map.maxKeyCode;
    request.firstType = map.firstType;
    request.nTypes = map.nTypes;
    request.firstKeySym = map.firstKeySym;
    request.nKeySyms = map.nKeySyms;
    request.totalSyms = map.totalSyms;
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
    return sendSetMap(xcb, request, values.keys);
}

xcb_void_cookie_t setActions(xcb_connection_t* xcb, DeviceId device, const xcb_xkb_get_map_reply_t& map,
                             const MapValues& values)
{
    xcb_xkb_set_map_request_t request{};
    request.deviceSpec = device;
    request.present = XCB_XKB_MAP_PART_KEY_ACTIONS;
    request.minKeyCode = map.minKeyCode;
    request.maxKeyCode = map.maxKeyCode;
    request.firstKeyAction = map.firstKeyAction;
    request.nKeyActions = map.nKeyActions;
    request.totalActions = map.totalActions;
    return sendSetMap(xcb, request, values.actions);
}

xcb_void_cookie_t setCompatMap(xcb_connection_t* xcb, DeviceId device,
                               const xcb_xkb_get_compat_map_reply_t& map)
{
    return xcb_xkb_set_compat_map_checked(xcb, device, 1, 1, map.groupsRtrn, map.firstSIRtrn, map.nSIRtrn,
                                          xcb_xkb_get_compat_map_si_rtrn(&map),
                                          xcb_xkb_get_compat_map_group_rtrn(&map));
}

xcb_void_cookie_t setControls(xcb_connection_t* xcb, DeviceId device,
                              const xcb_xkb_get_controls_reply_t& from)
{
    return xcb_xkb_set_controls_checked(
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

std::string DeviceKeymap::applyTo(InputConnection& connection, DeviceId device) const
{
    const DeviceKeymap present = of(connection, device);
    if (present.isEmpty())
        return "the X server doesn't say which keymap it has";
    XExchange exchange(connection.link(), within(InputConnection::patience));
    xcb_connection_t* xcb = exchange.xcb();
    std::string problem;
    const auto check = [&](xcb_void_cookie_t request, const char* part) {
        const XOutcome outcome = exchange.check(request);
        if (outcome == XOutcome::refused)
            problem = std::string("the X server refuses ") + part + ", with error " +
                      std::to_string(exchange.error());
        else if (outcome != XOutcome::answered)
            problem = "the X server doesn't answer";
    };
    if (!m_map.empty() && m_map != present.m_map) {
        const auto values = mapValues(m_map);
        if (!values)
            return "the keymap to be copied is broken";
        // The server compares the number of a key's actions with that of the symbols that it has already.
        const auto& map = replyIn<xcb_xkb_get_map_reply_t>(m_map);
        check(setKeys(xcb, device, map, *values), "the keymap");
        check(setActions(xcb, device, map, *values), "the actions of the keys");
    }
    if (!m_compatMap.empty() && m_compatMap != present.m_compatMap)
        check(setCompatMap(xcb, device, replyIn<xcb_xkb_get_compat_map_reply_t>(m_compatMap)),
              "the meaning of the keys");
    if (!m_controls.empty() && m_controls != present.m_controls)
        check(setControls(xcb, device, replyIn<xcb_xkb_get_controls_reply_t>(m_controls)),
              "the repeat rate and its kind");
    return problem;
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

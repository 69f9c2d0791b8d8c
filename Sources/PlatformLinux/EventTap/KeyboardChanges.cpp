#include "PlatformLinux/EventTap/KeyboardChanges.h"

#include "PlatformLinux/X11/XkbProtocol.h"

namespace orvane {

void selectKeyboardSettings(InputConnection& connection)
{
    constexpr std::uint16_t wanted = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_STATE_NOTIFY | XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails =
        XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_GEOMETRY | XCB_XKB_NKN_DETAIL_DEVICE_ID;
    details.affectState = details.stateDetails =
        XCB_XKB_STATE_PART_MODIFIER_LOCK | XCB_XKB_STATE_PART_MODIFIER_LATCH | XCB_XKB_STATE_PART_GROUP_LOCK;
    details.affectCtrls = details.ctrlDetails = std::uint32_t{XCB_XKB_BOOL_CTRL_REPEAT_KEYS} |
                                                XCB_XKB_CONTROL_PER_KEY_REPEAT |
                                                XCB_XKB_CONTROL_CONTROLS_ENABLED;
    constexpr std::uint16_t mapParts = 0xFF;
    xcb_xkb_select_events_aux(connection.link().xcb(), XCB_XKB_ID_USE_CORE_KBD, wanted, 0, 0, mapParts,
                              mapParts, &details);
}

std::vector<DeviceId> devicesGone(const xcb_input_hierarchy_event_t& event)
{
    constexpr std::uint32_t gone =
        XCB_INPUT_HIERARCHY_MASK_SLAVE_REMOVED | XCB_INPUT_HIERARCHY_MASK_DEVICE_DISABLED |
        XCB_INPUT_HIERARCHY_MASK_SLAVE_ATTACHED | XCB_INPUT_HIERARCHY_MASK_SLAVE_DETACHED;
    std::vector<DeviceId> devices;
    auto infos = xcb_input_hierarchy_infos_iterator(&event);
    for (; infos.rem; xcb_input_hierarchy_info_next(&infos)) {
        if ((infos.data->flags & gone) != 0)
            devices.push_back(infos.data->deviceid);
    }
    return devices;
}

} // namespace orvane

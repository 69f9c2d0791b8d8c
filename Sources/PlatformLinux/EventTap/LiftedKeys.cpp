#include "PlatformLinux/EventTap/LiftedKeys.h"

#include <algorithm>

namespace orvane {

void LiftedKeys::watch(bool watches)
{
    if (!watches)
        m_rawKeys.reset();
    else
        m_rawKeys = m_connection.link().selectInput(m_connection.link().root(), XCB_INPUT_DEVICE_ALL,
                                                    XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                                                        XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
}

bool LiftedKeys::take(const xcb_generic_event_t& event)
{
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    if ((event.response_type & 0x7F) != XCB_GE_GENERIC || raw.extension != m_connection.xinputOpcode())
        return false;
    if (raw.event_type != XCB_INPUT_RAW_KEY_PRESS && raw.event_type != XCB_INPUT_RAW_KEY_RELEASE)
        return false;
    const KeyMotion motion =
        raw.event_type == XCB_INPUT_RAW_KEY_PRESS ? KeyMotion::press : KeyMotion::release;
    m_motions.push_back({raw.deviceid, static_cast<std::uint8_t>(raw.detail), motion, raw.full_sequence});
    return true;
}

void LiftedKeys::lift(std::uint8_t key)
{
    if (m_lifted.empty())
        watch(true);
    for (const KeyboardDevice& device : m_connection.keyboards().hardware) {
        std::uint32_t request = 0;
        if (!m_connection.keysDown(device.id, &request).test(key))
            continue;
        fake(device.id, key, KeyMotion::release);
        m_lifted.push_back({device.id, key, request});
    }
}

void LiftedKeys::putBack(std::uint8_t key)
{
    for (const Lifted& lifted : m_lifted) {
        if (lifted.key == key)
            putBack(lifted);
    }
    std::erase_if(m_lifted, [&](const Lifted& lifted) { return lifted.key == key; });
    if (m_lifted.empty()) {
        watch(false);
        m_motions.clear();
    }
}

/// Returns all motions of the key since it was found to be down, our own among them.
std::vector<KeyMotion> LiftedKeys::motionsOf(const Lifted& lifted)
{
    m_connection.synchronize();
    m_connection.link().takeEvents([this](const xcb_generic_event_t& event) { return take(event); });
    std::vector<KeyMotion> found;
    for (const Motion& motion : m_motions) {
        const bool isLater = static_cast<std::int32_t>(motion.request - lifted.request) >= 0;
        if (motion.device == lifted.device && motion.key == lifted.key && isLater)
            found.push_back(motion.motion);
    }
    return found;
}

void LiftedKeys::putBack(const Lifted& lifted)
{
    const auto before = motionsOf(lifted);
    const auto presses = std::ranges::count(before, KeyMotion::press);
    const auto releases = std::ranges::count(before, KeyMotion::release);
    constexpr int ownReleases = 1;
    if (releases - ownReleases > presses)
        return; // the user has released it
    fake(lifted.device, lifted.key, KeyMotion::press);
    const auto after = motionsOf(lifted);
    // There is still a moment between the question and our press. A release in it comes first.
    const auto first = after.begin() + static_cast<std::ptrdiff_t>(before.size());
    const auto released = std::find(first, after.end(), KeyMotion::release);
    if (std::count(first, after.end(), KeyMotion::press) == 1 &&
        std::find(released, after.end(), KeyMotion::press) != after.end())
        fake(lifted.device, lifted.key, KeyMotion::release);
}

void LiftedKeys::fake(DeviceId device, std::uint8_t key, KeyMotion motion)
{
    if (m_faked)
        m_faked->note(device, key, motion);
    if (motion == KeyMotion::release)
        m_connection.releaseOn(device, key);
    else
        m_connection.pressOn(device, key);
}

} // namespace orvane

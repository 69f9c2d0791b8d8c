#include "PlatformLinux/EventTap/GrabbedKeyboards.h"

#include "PlatformLinux/EventTap/AccessKeys.h"
#include "PlatformLinux/EventTap/KeyboardChanges.h"
#include "PlatformLinux/EventTap/LiftedKeys.h"

#include <algorithm>

namespace orvane {

namespace {

std::string refusal(const std::string& name, const char* why)
{
    return "The keyboard \"" + name + "\" is left alone: " + why + ".";
}

} // namespace

GrabbedKeyboards::~GrabbedKeyboards()
{
    letGo();
}

std::vector<std::string> GrabbedKeyboards::grab()
{
    if (!m_hierarchy)
        m_hierarchy = m_connection.link().selectInput(m_connection.link().root(), XCB_INPUT_DEVICE_ALL,
                                                      XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
    const Keyboards present = m_connection.keyboards();
    m_master = present.master;
    if (m_xtest != present.xtest) {
        m_xtest = present.xtest;
        m_keymap = DeviceKeymap::of(m_connection, m_xtest);
    }

    std::vector<std::string> problems;
    for (const KeyboardDevice& device : present.hardware) {
        if (m_keyboards.has(device.id))
            continue;
        const bool wasRefused = isRefused(device.id);
        Attempt attempt = grabOne(device);
        if (attempt.problem.empty())
            m_downAtFirst |= attempt.down;
        else if (!wasRefused)
            problems.push_back(std::move(attempt.problem));
    }
    return problems;
}

bool GrabbedKeyboards::isRefused(DeviceId device) const
{
    return std::ranges::find(m_refused, device, &Refused::device) != m_refused.end();
}

void GrabbedKeyboards::forget(DeviceId device)
{
    std::erase_if(m_refused, [&](const Refused& each) { return each.device == device; });
}

std::optional<KeySet> GrabbedKeyboards::tryAgain(DeviceId device)
{
    if (m_isFree || !isRefused(device))
        return std::nullopt;
    const Keyboards present = m_connection.keyboards();
    const auto found = std::ranges::find(present.hardware, device, &KeyboardDevice::id);
    if (found == present.hardware.end())
        return std::nullopt;
    const Attempt attempt = grabOne(*found);
    if (!attempt.problem.empty())
        return std::nullopt;
    return attempt.down;
}

GrabbedKeyboards::Attempt GrabbedKeyboards::grabOne(const KeyboardDevice& device)
{
    Attempt attempt =
        device.attachment == KeyboardDevice::Attachment::floating
            ? Attempt{refusal(device.name, "another program has grabbed it, or it was set aside"), true, {}}
            : grabAttached(device);
    if (attempt.problem.empty()) {
        forget(device.id);
    } else if (!isRefused(device.id)) {
        // Raw events come even while the other program has the keyboard.
        m_refused.push_back({device.id, attempt.isTaken,
                             m_connection.link().selectInput(m_connection.link().root(), device.id,
                                                             XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS)});
    }
    return attempt;
}

GrabbedKeyboards::Attempt GrabbedKeyboards::grabAttached(const KeyboardDevice& device)
{
    // Asked before the grab: a key that goes down afterwards is known by its event or, at worst, by its
    // release.
    const KeySet down = m_connection.keysDown(device.id);
    constexpr std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    const auto cookie = xcb_input_xi_grab_device(
        m_connection.link().xcb(), m_connection.link().root(), XCB_CURRENT_TIME, XCB_NONE, device.id,
        XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, 1, &mask);
    XExchange exchange(m_connection.link(), within(InputConnection::patience));
    const auto reply = exchange.reply<xcb_input_xi_grab_device_reply_t>(cookie);
    const auto refused = [&](const char* why, bool isTaken = false) {
        return Attempt{refusal(device.name, why), isTaken, {}};
    };
    if (exchange.outcome() == XOutcome::refused)
        return refused(exchange.error() == XCB_ACCESS ? "the X server doesn't trust this program"
                                                      : "the X server knows no such device any more");
    if (!reply) {
        // The server may still grant it, and the keys of a device that isn't known here would go nowhere.
        xcb_input_xi_ungrab_device(m_connection.link().xcb(), XCB_CURRENT_TIME, device.id);
        return refused("the X server doesn't answer");
    }
    constexpr bool isTaken = true;
    switch (reply->status) {
    case XCB_GRAB_STATUS_SUCCESS:
        AccessKeys().applyTo(m_connection, device.id); // those of the XTEST keyboard are the ones that count
        m_keyboards.add(device.id, down);
        return {{}, false, down};
    case XCB_GRAB_STATUS_ALREADY_GRABBED:
        return refused("another program has grabbed it", isTaken);
    case XCB_GRAB_STATUS_FROZEN:
        return refused("another program holds its events up", isTaken);
    default:
        return refused("the X server doesn't allow it");
    }
}

void GrabbedKeyboards::releaseLeftovers()
{
    forEachKey(m_connection.keysDown(m_xtest), [this](std::uint8_t key) { m_connection.release(key); });
    m_connection.link().flush();
}

std::vector<std::string> GrabbedKeyboards::serverIsBack()
{
    if (m_isFree)
        return {};
    std::vector<std::string> problems = followKeymap();
    followLocks();
    for (std::string& problem : grab())
        problems.push_back(std::move(problem));
    return problems;
}

GrabbedKeyboards::Changed GrabbedKeyboards::hierarchyChanged(const xcb_input_hierarchy_event_t& event)
{
    if (m_isFree)
        return {};
    Changed changed;
    for (const DeviceId device : devicesGone(event)) {
        forget(device);
        changed.released |= m_keyboards.remove(device);
    }
    changed.problems = grab();
    return changed;
}

std::vector<std::string> GrabbedKeyboards::followKeymap()
{
    DeviceKeymap present = DeviceKeymap::of(m_connection, m_xtest);
    if (present.isEmpty() || present == m_keymap)
        return {};
    std::vector<std::string> problems;
    for (const auto& keyboard : m_keyboards.keyboards()) {
        const std::string problem = present.applyTo(m_connection, keyboard.id);
        AccessKeys().applyTo(m_connection, keyboard.id);
        if (!problem.empty())
            problems.push_back("A keyboard keeps its former layout or repeat rate: " + problem + ".");
    }
    m_keymap = problems.empty() ? std::move(present) : DeviceKeymap();
    return problems;
}

void GrabbedKeyboards::letGo()
{
    if (m_isFree)
        return;
    m_isFree = true;
    (void)followKeymap(); // what could not be had was reported before
    followLocks();
    // Servers up to 21.1 crash when a device is let go that was disabled under its grab, as all are by a
    // switch to another console. Such a device is left to the connection's end, which they survive. The event
    // that announces it may still be on its way, so the server is asked.
    const Keyboards present = m_connection.keyboards();
    const AccessKeys access = AccessKeys::of(m_connection, m_xtest);
    for (const auto& keyboard : m_keyboards.keyboards()) {
        access.applyTo(m_connection, keyboard.id);
        const bool isEnabled = std::ranges::any_of(
            present.hardware, [&](const KeyboardDevice& device) { return device.id == keyboard.id; });
        if (isEnabled)
            xcb_input_xi_ungrab_device(m_connection.link().xcb(), XCB_CURRENT_TIME, keyboard.id);
    }
    m_connection.synchronize(); // without an answer the connection's end frees them
}

void GrabbedKeyboards::followLocks()
{
    for (const auto& keyboard : m_keyboards.keyboards())
        copyLocks(m_connection, m_master, keyboard.id);
}

void GrabbedKeyboards::restoreHeldKeys(const KeySet& modifiers, const KeySet& heldBack)
{
    LiftedKeys keys(m_connection, &m_faked);
    for (const auto& keyboard : m_keyboards.keyboards()) {
        // The server is asked: the user may have released them since.
        const KeySet down = m_connection.keysDown(keyboard.id);
        for (unsigned i = 0; i < down.size(); ++i) {
            const auto key = static_cast<std::uint8_t>(i);
            if (down.test(key) && modifiers.test(key)) {
                keys.lift(key);
                keys.putBack(key);
            } else if (down.test(key) && heldBack.test(key)) {
                m_connection.releaseOn(keyboard.id, key); // a listener has seen its press, and sees this too
            }
        }
    }
    m_connection.synchronize();
}

} // namespace orvane

#include "PlatformLinux/EventTap/TapEventReader.h"

#include "PlatformLinux/EventTap/KeyboardChanges.h"
#include "PlatformLinux/X11/XkbProtocol.h"

namespace orvane {

namespace {

template <typename Wire>
const Wire& as(const xcb_generic_event_t& event)
{
    return reinterpret_cast<const Wire&>(event);
}

} // namespace

bool TapEventReader::grabKeyboards(FakedMotions& faked, TapGuardian& guardian)
{
    m_guardian = &guardian;
    selectKeyboardSettings(m_connection);
    m_keyboards = std::make_unique<GrabbedKeyboards>(m_connection, faked);
    for (const std::string& problem : m_keyboards->grab())
        m_log(LogLevel::notice, problem);
    if (m_keyboards->isEmpty()) {
        m_log(LogLevel::error, "Keyboard events can't be tapped: no keyboard could be grabbed.");
        return false;
    }
    m_keyboards->releaseLeftovers();
    guardian.noteKeyboards(*m_keyboards);
    m_injector.begin(m_keyboards->downAtFirst());
    return true;
}

void TapEventReader::letGo()
{
    if (m_keyboards)
        m_keyboards->letGo();
}

void TapEventReader::restoreHeldKeys(const KeyInjector::Held& held)
{
    if (m_keyboards)
        m_keyboards->restoreHeldKeys(held.modifiers, held.heldBack);
}

bool TapEventReader::readNext()
{
    const auto event = m_connection.link().nextEvent();
    if (m_connection.link().takeRecovery())
        readAgain();
    if (!event)
        return false;
    const std::uint8_t type = event->response_type & 0x7F;
    const bool isInput =
        type == XCB_GE_GENERIC && as<xcb_ge_generic_event_t>(*event).extension == m_connection.xinputOpcode();
    // This comes before any wait: the guardian measures the time.
    if (isInput && m_guardian)
        m_guardian->noteTaken(as<xcb_ge_generic_event_t>(*event));
    m_injector.awaitAnswer();
    if (isInput)
        readInput(*event);
    else if (type == m_connection.xkbFirstEvent())
        readKeyboardSettings(*event);
    return true;
}

/// After late answers: whatever was asked meanwhile isn't known.
void TapEventReader::readAgain()
{
    m_injector.awaitAnswer();
    m_injector.followLayout();
    m_injector.followCapsLock();
    if (m_keyboards) {
        for (const std::string& problem : m_keyboards->serverIsBack())
            m_log(LogLevel::notice, problem);
        m_guardian->noteKeyboards(*m_keyboards);
    }
    m_connection.link().flush();
}

void TapEventReader::readInput(const xcb_generic_event_t& event)
{
    switch (as<xcb_ge_generic_event_t>(event).event_type) {
    case XCB_INPUT_KEY_PRESS:
    case XCB_INPUT_KEY_RELEASE:
        readKey(as<xcb_input_key_press_event_t>(event));
        break;
    case XCB_INPUT_HIERARCHY:
        readHierarchy(as<xcb_input_hierarchy_event_t>(event));
        break;
    case XCB_INPUT_RAW_KEY_PRESS:
    case XCB_INPUT_RAW_KEY_RELEASE:
        readRawKey(event);
        break;
    default:
        break;
    }
}

/// A raw key of a keyboard that wasn't to be had is the occasion to try again; all others concern lifted
/// keys.
void TapEventReader::readRawKey(const xcb_generic_event_t& event)
{
    const DeviceId device = as<xcb_input_raw_key_press_event_t>(event).deviceid;
    if (!m_keyboards || !m_keyboards->isRefused(device)) {
        m_injector.noteRaw(event);
        return;
    }
    const auto down = m_keyboards->tryAgain(device);
    if (!down)
        return;
    m_injector.addHeld(*down);
    m_guardian->noteKeyboards(*m_keyboards);
    m_log(LogLevel::notice, "A keyboard that another program had is free now and is tapped.");
}

void TapEventReader::readKey(const xcb_input_key_press_event_t& event)
{
    KeyMotion motion = KeyMotion::release;
    if (event.event_type == XCB_INPUT_KEY_PRESS)
        motion = (event.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) ? KeyMotion::repeat : KeyMotion::press;
    if (m_keyboards) {
        if (const auto key = m_keyboards->motion(event, motion))
            m_injector.take(*key);
    }
}

void TapEventReader::readHierarchy(const xcb_input_hierarchy_event_t& event)
{
    if (!m_keyboards)
        return;
    const auto changed = m_keyboards->hierarchyChanged(event);
    m_guardian->noteKeyboards(*m_keyboards);
    forEachKey(changed.released, [this](std::uint8_t key) { m_injector.take({key, KeyMotion::release}); });
    for (const std::string& problem : changed.problems)
        m_log(LogLevel::notice, problem);
    m_connection.link().flush();
}

void TapEventReader::readKeyboardSettings(const xcb_generic_event_t& event)
{
    if (event.pad0 == XCB_XKB_STATE_NOTIFY) { // the one type of that extension's events has their kind here
        const auto& state = as<xcb_xkb_state_notify_event_t>(event);
        m_injector.setLatched(state.latchedMods);
        if ((state.changed & (XCB_XKB_STATE_PART_MODIFIER_LOCK | XCB_XKB_STATE_PART_GROUP_LOCK)) == 0)
            return;
        m_injector.followCapsLock();
        if (m_keyboards)
            m_keyboards->followLocks();
        m_connection.link().flush();
        return;
    }
    m_injector.followLayout();
    // Done at once, and not only when they are let go: after a crash it would not be done.
    if (m_keyboards) {
        for (const std::string& problem : m_keyboards->followKeymap())
            m_log(LogLevel::error, problem);
    }
    m_connection.link().flush();
}

} // namespace orvane

#include "PlatformLinux/EventMonitors/XcbEventReader.h"

#include "PlatformLinux/Common/Uptime.h"
#include "PlatformLinux/EventMonitors/MouseButtons.h"
#include "PlatformLinux/Keys/EventKeyCodes.h"
#include "PlatformLinux/Keys/KeyFlags.h"
#include "PlatformLinux/X11/KeyboardMapping.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <span>

#include <xcb/xinput.h>

namespace orvane {

namespace {

using MonitoredEvent = EventMonitors::MonitoredEvent;
using Disposition = EventMonitors::Disposition;

bool isOurs(xcb_window_t id)
{
    const QWindowList windows = QGuiApplication::allWindows();
    return std::ranges::any_of(
        windows, [id](const QWindow* window) { return window->handle() && window->winId() == id; });
}

/// Converts the server's pixels to the toolkit's points: each screen is scaled about its own corner. The
/// window isn't used, as the toolkit may not know its place yet.
QPointF location(QPointF pixel)
{
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QPointF corner = screen->geometry().topLeft();
        const double ratio = screen->devicePixelRatio();
        if (QRectF(corner, QSizeF(screen->geometry().size()) * ratio).contains(pixel))
            return corner + (pixel - corner) / ratio;
    }
    return pixel;
}

/// The server doesn't tell of such an event's key.
bool isSentByProgram(const xcb_key_press_event_t& event)
{
    return (event.response_type & 0x80) != 0;
}

double pixels(xcb_input_fp1616_t value)
{
    constexpr double one = 0x10000;
    return value / one;
}

EventType typeOfMove(const xcb_input_button_press_event_t& event)
{
    // The first two valuators are the place; the others are wheels.
    const std::span valuators(xcb_input_button_press_valuator_mask(&event), event.valuators_len);
    constexpr std::uint32_t place = 3;
    if (!valuators.empty() && valuators[0] != 0 && (valuators[0] & place) == 0)
        return EventType::scrollWheel;
    return typeOfMotion(event.buttons_len > 0 ? *xcb_input_button_press_button_mask(&event) : ButtonSet{0});
}

} // namespace

void XcbEventReader::start(std::shared_ptr<ApplicationLink> x)
{
    m_x = std::move(x);
    const auto* xinput = m_x->link().extension(xcb_input_id);
    m_xinput = xinput ? xinput->major_opcode : 0;
    const auto* xkb = m_x->link().extension(xcb_xkb_id);
    m_xkbEvent = xkb ? xkb->first_event : 0;
    m_swallowedButtons = 0;
}

void XcbEventReader::readKeys(bool reads)
{
    if (reads == m_rawKeys.has_value() || !m_x)
        return;
    if (!reads) {
        m_rawKeys.reset();
        return;
    }
    m_rawKeys.emplace(m_x);
    m_released.reset();
    readMapping();
    m_unsure.reset();
    m_swallowed.reset();
    XExchange exchange = m_x->exchange();
    m_down = keysDown(exchange, xcb_query_keymap(m_x->xcb()));
}

void XcbEventReader::stop()
{
    m_rawKeys.reset();
}

void XcbEventReader::readMapping()
{
    XExchange exchange = m_x->exchange();
    const auto mapping = KeyboardMapping::read(exchange);
    if (!exchange.isLate())
        m_roles = mapping.roles();
}

Disposition XcbEventReader::read(xcb_generic_event_t& event)
{
    const int type = event.response_type & 0x7F;
    const bool isNewKeymap =
        type == m_xkbEvent && (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY);
    if (type == XCB_MAPPING_NOTIFY || (m_xkbEvent != 0 && isNewKeymap)) {
        if (m_rawKeys)
            readMapping();
        return Disposition::pass;
    }
    switch (type) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        return m_rawKeys ? readKey(reinterpret_cast<const xcb_key_press_event_t&>(event)) : Disposition::pass;
    case XCB_FOCUS_OUT:
        m_down.reset(); // keys released from now on are reported to another program
        m_unsure.reset();
        return Disposition::pass;
    case XCB_GE_GENERIC:
        return readDevice(event);
    default:
        return Disposition::pass;
    }
}

Disposition XcbEventReader::readDevice(xcb_generic_event_t& event)
{
    auto& device = reinterpret_cast<xcb_input_button_press_event_t&>(event);
    if (m_xinput == 0 || device.extension != m_xinput)
        return Disposition::pass;
    switch (device.event_type) {
    case XCB_INPUT_BUTTON_PRESS:
    case XCB_INPUT_BUTTON_RELEASE: {
        const Disposition disposition = readMouse(device);
        const std::uint32_t bit = device.detail < 32 ? 1u << device.detail : 0;
        // Crossings that follow the release may still have the button in them, so it stays marked until its
        // next press.
        if (device.event_type == XCB_INPUT_BUTTON_PRESS)
            m_swallowedButtons =
                disposition == Disposition::swallow ? m_swallowedButtons | bit : m_swallowedButtons & ~bit;
        return disposition;
    }
    case XCB_INPUT_MOTION: {
        const Disposition disposition = readMouse(device);
        if (device.buttons_len > 0)
            *xcb_input_button_press_button_mask(&device) &= ~m_swallowedButtons;
        return disposition;
    }
    case XCB_INPUT_ENTER:
    case XCB_INPUT_LEAVE: {
        const auto& crossing = reinterpret_cast<const xcb_input_enter_event_t&>(event);
        if (crossing.buttons_len > 0)
            *xcb_input_enter_buttons(&crossing) &= ~m_swallowedButtons;
        return Disposition::pass;
    }
    default:
        return Disposition::pass;
    }
}

Disposition XcbEventReader::readKey(const xcb_key_press_event_t& event)
{
    if (!isOurs(event.event))
        return Disposition::pass;
    const bool goesDown = (event.response_type & 0x7F) == XCB_KEY_PRESS;
    MonitoredEvent monitored;
    monitored.event.type = goesDown ? EventType::keyDown : EventType::keyUp;
    if (m_roles.isModifier(event.detail))
        monitored.event.type = EventType::flagsChanged;
    monitored.event.keycode = eventKeyCode(event.detail);
    monitored.event.timestamp = uptimeNanoseconds();
    monitored.event.flags = flagsAfter(event, goesDown) | flagsOfKeyItself(monitored.event.keycode);
    monitored.location = location(QPointF(event.root_x, event.root_y));
    monitored.choosesCharacter = levelThreeIsHeld();
    return goesDown ? press(event, monitored) : release(event, monitored);
}

/// A key may be let go in the millisecond in which it repeats: the pair's release is then taken for the real
/// one, and the rest of the pair and the release itself tell nothing new.
bool XcbEventReader::isRepeatOfSameTime(const xcb_key_press_event_t& event)
{
    if (!isOfLastRelease(event))
        return false;
    XExchange exchange = m_x->exchange();
    exchange.synchronize();
    return m_rawKeys->areTold() && !isSentByProgram(event) &&
           !m_rawKeys->take(RawKeys::Motion::press, event.detail, event.time);
}

Disposition XcbEventReader::press(const xcb_key_press_event_t& event, MonitoredEvent monitored)
{
    if (isRepeatOfSameTime(event))
        return m_released->ofRepeat;
    if (const auto unsure = std::exchange(m_unsure, std::nullopt)) {
        if (unsure->key != event.detail || unsure->time != event.time) {
            m_down.reset(unsure->key);
            (void)deliver(unsure->event);
        }
    }
    monitored.event.autorepeat = m_down.test(event.detail) ? 1 : 0;
    m_down.set(event.detail);
    if (monitored.event.autorepeat && monitored.event.type == EventType::flagsChanged)
        return Disposition::pass;
    const Disposition disposition = deliver(monitored);
    m_swallowed.set(event.detail, disposition == Disposition::swallow);
    return disposition;
}

Disposition XcbEventReader::release(const xcb_key_press_event_t& event, MonitoredEvent monitored)
{
    // A held key comes as pairs of a release and a press of the same time. The toolkit looks ahead for the
    // press; here the server has told which releases are real. One that it hasn't told of is none while the
    // key is down. Up it may be although the pair is an old one, which is read late.
    XExchange exchange = m_x->exchange();
    const bool isDown = keysDown(exchange, xcb_query_keymap(m_x->xcb())).test(event.detail);
    const bool isReal = m_rawKeys->take(RawKeys::Motion::release, event.detail, event.time);
    const Disposition ofRepeat = m_swallowed.test(event.detail) ? Disposition::swallow : Disposition::pass;
    if (!isReal && (isDown || (m_rawKeys->areTold() && !isSentByProgram(event)))) {
        if (isOfLastRelease(event))
            return m_released->ofRepeat;
        m_unsure = Release{event.detail, event.time, monitored};
        return ofRepeat;
    }
    m_released = Told{event.detail, event.time, ofRepeat};
    m_down.reset(event.detail);
    m_swallowed.reset(event.detail);
    return deliver(monitored);
}

/// The server sends the state before the event.
EventFlags XcbEventReader::flagsAfter(const xcb_key_press_event_t& event, bool goesDown)
{
    EventFlags flags = eventFlagsOfXState(event.state);
    const ModifierRole role = m_roles.roleOf(event.detail);
    if (role == ModifierRole::capsLock) {
        // The lock begins with the press; the press that finds it set ends it with its release.
        if (goesDown)
            m_capsUnlocksOnRelease = (flags & eventFlag::alphaShift) != 0;
        const bool isLocked = goesDown || !m_capsUnlocksOnRelease;
        return isLocked ? flags | eventFlag::alphaShift : flags & ~eventFlag::alphaShift;
    }
    if (goesDown)
        return flags | flagOf(role);
    for (unsigned key = 0; key < m_down.size(); ++key) {
        const auto other = static_cast<std::uint8_t>(key);
        if (m_down.test(key) && other != event.detail && m_roles.roleOf(other) == role)
            return flags;
    }
    return flags & ~flagOf(role);
}

/// The state tells a locked level like a held one, but a lock is no chord.
bool XcbEventReader::levelThreeIsHeld() const
{
    for (unsigned key = 0; key < m_down.size(); ++key) {
        if (m_down.test(key) && m_roles.roleOf(static_cast<std::uint8_t>(key)) == ModifierRole::levelThree)
            return true;
    }
    return false;
}

Disposition XcbEventReader::readMouse(const xcb_input_button_press_event_t& event)
{
    const bool isMotion = event.event_type == XCB_INPUT_MOTION;
    // Events that the server makes for old programs are sent in the proper form as well.
    if (!isMotion && (event.flags & XCB_INPUT_POINTER_EVENT_FLAGS_POINTER_EMULATED) != 0)
        return Disposition::pass;
    if (!isOurs(event.event))
        return Disposition::pass;
    MonitoredEvent monitored;
    monitored.event.type =
        isMotion ? typeOfMove(event) : typeOfButton(event.detail, event.event_type == XCB_INPUT_BUTTON_PRESS);
    if (monitored.event.type == EventType::null)
        return Disposition::pass;
    monitored.event.timestamp = uptimeNanoseconds();
    monitored.event.flags = eventFlagsOfXState(event.mods.effective);
    monitored.location = location(QPointF(pixels(event.root_x), pixels(event.root_y)));
    return deliver(monitored);
}

} // namespace orvane

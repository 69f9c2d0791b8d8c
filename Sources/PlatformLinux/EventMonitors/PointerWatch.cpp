#include "PlatformLinux/EventMonitors/PointerWatch.h"

#include <QSocketNotifier>

#include <array>
#include <utility>

#include <xcb/xinput.h>

namespace orvane {

namespace {

template <typename... Types>
constexpr EventMask bits(Types... types)
{
    return (eventMaskBit(types) | ...);
}

constexpr EventMask buttonEvents =
    bits(EventType::leftMouseDown, EventType::leftMouseUp, EventType::rightMouseDown, EventType::rightMouseUp,
         EventType::otherMouseDown, EventType::otherMouseUp, EventType::scrollWheel);
constexpr EventMask dragEvents =
    bits(EventType::leftMouseDragged, EventType::rightMouseDragged, EventType::otherMouseDragged);
constexpr EventMask mouseEvents = buttonEvents | dragEvents | bits(EventType::mouseMoved);

constexpr std::uint32_t rawButtons =
    XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;

/// The buttons that a core event can tell of.
ButtonSet buttonsHeld(unsigned mask)
{
    ButtonSet held = 0;
    if (mask & XCB_BUTTON_MASK_1)
        held |= buttonBit(1);
    if (mask & XCB_BUTTON_MASK_2)
        held |= buttonBit(2);
    if (mask & XCB_BUTTON_MASK_3)
        held |= buttonBit(3);
    return held;
}

std::optional<PointerState> takePointer(const X11Connection& x, xcb_query_pointer_cookie_t cookie)
{
    const XcbReply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(x.xcb(), cookie, nullptr));
    if (!reply || !reply->same_screen)
        return std::nullopt;
    return PointerState{reply->root_x, reply->root_y, reply->mask};
}

/// The server remembers its last steps, each by where it set out from. Absent when there is none.
std::optional<xcb_timecoord_t> takeFirstStep(const X11Connection& x, xcb_get_motion_events_cookie_t cookie)
{
    const XcbReply<xcb_get_motion_events_reply_t> reply(
        xcb_get_motion_events_reply(x.xcb(), cookie, nullptr));
    if (!reply)
        return std::nullopt;
    const xcb_timecoord_t* steps = xcb_get_motion_events_events(reply.get());
    for (std::uint32_t i = 0; i < reply->events_len; ++i) {
        // Buttons leave steps without a place among them.
        if (steps[i].x != 0 || steps[i].y != 0)
            return steps[i];
    }
    return std::nullopt;
}

/// The child of a window that is at a place of the root window.
xcb_window_t childAt(const X11Connection& x, xcb_window_t window, int rootX, int rootY)
{
    const auto cookie = xcb_translate_coordinates(x.xcb(), x.root(), window, static_cast<std::int16_t>(rootX),
                                                  static_cast<std::int16_t>(rootY));
    xcb_generic_error_t* error = nullptr;
    const XcbReply<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(x.xcb(), cookie, &error));
    const XcbReply<xcb_generic_error_t> ownedError(error);
    return reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
}

} // namespace

std::optional<PointerState> queryPointer(const X11Connection& x)
{
    return takePointer(x, xcb_query_pointer(x.xcb(), x.root()));
}

PointerWatch::PointerWatch(Deliver deliver) : m_deliver(std::move(deliver)) {}
PointerWatch::~PointerWatch()
{
    close();
}

void PointerWatch::want(EventMask types)
{
    m_wanted = types & mouseEvents;
    if (m_wanted == 0)
        close();
    else if (!m_connection)
        open();
    if (m_connection)
        select();
}

void PointerWatch::open()
{
    if (!X11Connection::ofApplication())
        return;
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(m_connection.get()) != 0) {
        m_connection.reset();
        return;
    }
    m_x = X11Connection::over(m_connection.get(), screenNumber);
    if (!negotiate()) {
        close();
        return;
    }
    m_notifier =
        new QSocketNotifier(xcb_get_file_descriptor(m_connection.get()), QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &PointerWatch::read);
    m_selected = 0;
    readButtonMap();
    startLedger();
}

void PointerWatch::close()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier->deleteLater(); // it may be the one that has called
        m_notifier = nullptr;
    }
    m_queued.clear();
    m_x.reset();
    m_connection.reset();
}

bool PointerWatch::negotiate()
{
    const auto* xinput = xcb_get_extension_data(m_x->xcb(), &xcb_input_id);
    if (!xinput || !xinput->present)
        return false;
    m_xinput = xinput->major_opcode;
    // To a client of an older version a grab hides the raw events.
    const auto cookie = xcb_input_xi_query_version(m_x->xcb(), 2, 1);
    const XcbReply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(m_x->xcb(), cookie, nullptr));
    return version && version->major_version >= 2;
}

void PointerWatch::startLedger()
{
    const auto pointer = queryPointer(*m_x);
    m_ledger = PressLedger();
    if (pointer && buttonsHeld(pointer->mask) != 0)
        m_ledger.start(buttonsHeld(pointer->mask), ownerAt(*pointer));
}

void PointerWatch::readButtonMap()
{
    const auto cookie = xcb_get_pointer_mapping(m_x->xcb());
    const XcbReply<xcb_get_pointer_mapping_reply_t> reply(
        xcb_get_pointer_mapping_reply(m_x->xcb(), cookie, nullptr));
    if (!reply)
        return;
    const std::uint8_t* map = xcb_get_pointer_mapping_map(reply.get());
    m_buttonMap.assign(map, map + xcb_get_pointer_mapping_map_length(reply.get()));
}

void PointerWatch::select()
{
    std::uint32_t mask = 0;
    if (m_wanted & (buttonEvents | dragEvents))
        mask |= rawButtons; // drags begin with one
    if (m_wanted & eventMaskBit(EventType::mouseMoved))
        mask |= rawButtons | XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    const EventType motion = m_ledger.motionToExpect();
    if (motion != EventType::null && (m_wanted & eventMaskBit(motion)) != 0)
        mask |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    if (mask == m_selected)
        return;
    m_selected = mask;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection = {{XCB_INPUT_DEVICE_ALL_MASTER, 1}, mask};
    // Waited for: whatever the mouse does after the return is told.
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(
        m_x->xcb(), xcb_input_xi_select_events_checked(m_x->xcb(), m_x->root(), 1, &selection.head)));
    takeQueued();
}

/// What was read in passing: the notifier won't tell of it.
void PointerWatch::takeQueued()
{
    const bool wasEmpty = m_queued.empty();
    while (auto* event = xcb_poll_for_queued_event(m_x->xcb()))
        m_queued.emplace_back(event);
    if (wasEmpty && !m_queued.empty())
        QMetaObject::invokeMethod(this, &PointerWatch::read, Qt::QueuedConnection);
}

XcbReply<xcb_generic_event_t> PointerWatch::next()
{
    if (m_queued.empty())
        return XcbReply<xcb_generic_event_t>(xcb_poll_for_event(m_x->xcb()));
    auto event = std::move(m_queued.front());
    m_queued.pop_front();
    return event;
}

void PointerWatch::read()
{
    bool hasMoved = false;
    while (m_x) { // a handler may end it
        const auto event = next();
        if (!event)
            break;
        ++m_eventsRead;
        const auto* generic = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
        const bool isMotion = (event->response_type & 0x7f) == XCB_GE_GENERIC &&
                              generic->extension == m_xinput && generic->event_type == XCB_INPUT_RAW_MOTION;
        // Of several motions one is told, and before what comes behind them.
        if (!isMotion && std::exchange(hasMoved, false))
            readMotion();
        if (isMotion)
            hasMoved = true;
        else if (m_x)
            handle(*event);
    }
    if (m_x && hasMoved)
        readMotion();
    if (m_x && xcb_connection_has_error(m_x->xcb()) != 0)
        close();
    if (m_x)
        takeQueued();
}

void PointerWatch::handle(const xcb_generic_event_t& event)
{
    const int type = event.response_type & 0x7f;
    if (type == XCB_MAPPING_NOTIFY) {
        if (reinterpret_cast<const xcb_mapping_notify_event_t&>(event).request == XCB_MAPPING_POINTER)
            readButtonMap();
        return;
    }
    if (type != XCB_GE_GENERIC)
        return;
    const auto& raw = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (raw.extension != m_xinput)
        return;
    if (raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
        readButton(raw.detail, true, raw.time);
    else if (raw.event_type == XCB_INPUT_RAW_BUTTON_RELEASE)
        readButton(raw.detail, false, raw.time);
}

/// Where it was when something happened, though it may have gone on.
std::optional<PointerState> PointerWatch::pointerAt(xcb_timestamp_t time) const
{
    const auto stepsCookie = xcb_get_motion_events(m_x->xcb(), m_x->root(), time + 1, XCB_CURRENT_TIME);
    const auto nowCookie = xcb_query_pointer(m_x->xcb(), m_x->root());
    const auto step = takeFirstStep(*m_x, stepsCookie);
    auto pointer = takePointer(*m_x, nowCookie);
    if (pointer && step) {
        pointer->x = step->x;
        pointer->y = step->y;
    }
    return pointer;
}

void PointerWatch::readButton(std::uint32_t button, bool goesDown, xcb_timestamp_t time)
{
    if (button >= 1 && button <= m_buttonMap.size())
        button = m_buttonMap[button - 1];
    if (button == 0)
        return; // one that the user has put out of use
    const auto pointer = pointerAt(time);
    const auto owner = [&] { return pointer ? ownerAt(*pointer) : PressLedger::Owner::others; };
    const EventType type = goesDown ? m_ledger.press(button, owner) : m_ledger.release(button);
    select();
    if (pointer)
        tell(type, *pointer);
}

void PointerWatch::readMotion()
{
    const auto pointer = queryPointer(*m_x);
    if (pointer)
        tell(m_ledger.motion([&] { return ownerAt(*pointer); }), *pointer);
}

void PointerWatch::tell(EventType type, const PointerState& pointer)
{
    if (type != EventType::null && (m_wanted & eventMaskBit(type)) != 0)
        m_deliver(type, pointer);
}

/// Of the window under the pointer, and not of the frame that the window manager has put around it.
PressLedger::Owner PointerWatch::ownerAt(const PointerState& pointer) const
{
    constexpr int deepest = 32;
    xcb_window_t window = m_x->root();
    for (int depth = 0; window != XCB_WINDOW_NONE && depth < deepest; ++depth) {
        window = childAt(*m_x, window, pointer.x, pointer.y);
        if (window != XCB_WINDOW_NONE && isOurs(window))
            return PressLedger::Owner::ourselves;
    }
    return PressLedger::Owner::others;
}

/// The toolkit has made it: the numbers of a connection's windows are told by their first bits.
bool PointerWatch::isOurs(xcb_window_t window) const
{
    const auto toolkit = X11Connection::ofApplication();
    if (!toolkit)
        return false;
    const xcb_setup_t* setup = xcb_get_setup(toolkit->xcb());
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

} // namespace orvane

#include "PlatformLinux/EventMonitors/PointerWatch.h"

#include "PlatformLinux/X11/X11Connection.h"

#include <algorithm>
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

/// Returns the type of the motions before a button is released.
constexpr EventType motionBefore(EventType released)
{
    switch (released) {
    case EventType::leftMouseUp:
        return EventType::leftMouseDragged;
    case EventType::rightMouseUp:
        return EventType::rightMouseDragged;
    case EventType::otherMouseUp:
        return EventType::otherMouseDragged;
    default:
        return EventType::null;
    }
}

/// Returns the buttons that a core event can report.
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

/// The server keeps its last steps, each with the place where it began. Absent when there is none.
std::optional<xcb_timecoord_t> firstStep(const xcb_get_motion_events_reply_t* reply)
{
    if (!reply)
        return std::nullopt;
    const xcb_timecoord_t* steps = xcb_get_motion_events_events(reply);
    for (std::uint32_t i = 0; i < reply->events_len; ++i) {
        // Buttons leave entries without a place among them.
        if (steps[i].x != 0 || steps[i].y != 0)
            return steps[i];
    }
    return std::nullopt;
}

/// Returns the child of a window at a place of the root window.
xcb_window_t childAt(XExchange& exchange, xcb_window_t window, const PointerState& place)
{
    const auto reply = exchange.reply<xcb_translate_coordinates_reply_t>(
        xcb_translate_coordinates(exchange.xcb(), exchange.link().root(), window,
                                  static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y)));
    return reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
}

/// The place of a window of this program: one whose rectangle isn't under the pointer needs no further look.
struct OwnWindow {
    OwnWindow(XLink& link, xcb_window_t window)
        : place(xcb_translate_coordinates(link.xcb(), window, link.root(), 0, 0)),
          size(xcb_get_geometry(link.xcb(), window))
    {
    }

    bool contains(XExchange& exchange, int x, int y) const
    {
        const auto corner = exchange.reply<xcb_translate_coordinates_reply_t>(place);
        const auto geometry = exchange.reply<xcb_get_geometry_reply_t>(size);
        return corner && geometry && x >= corner->dst_x && y >= corner->dst_y &&
               x < corner->dst_x + geometry->width && y < corner->dst_y + geometry->height;
    }

    xcb_translate_coordinates_cookie_t place;
    xcb_get_geometry_cookie_t size;
};

} // namespace

struct PointerWatch::Question {
    Raw raw;
    /// The type with which a release is reported.
    EventType released = EventType::null;
    xcb_get_motion_events_cookie_t steps{};
    std::vector<OwnWindow> ownWindows{};
    /// The last question: when its answer is there, so are the others.
    xcb_query_pointer_cookie_t pointer{};

    /// For a question whose answers nobody will fetch: the link would keep them as long as it lives.
    void discard(ApplicationLink& link) const
    {
        link.forget(pointer.sequence);
        if (raw.kind != Raw::Kind::motion)
            xcb_discard_reply(link.xcb(), steps.sequence);
        for (const OwnWindow& window : ownWindows) {
            xcb_discard_reply(link.xcb(), window.place.sequence);
            xcb_discard_reply(link.xcb(), window.size.sequence);
        }
    }
};

PointerWatch::PointerWatch(Deliver deliver) : m_deliver(std::move(deliver)) {}
PointerWatch::~PointerWatch()
{
    close();
}

void PointerWatch::want(EventMask types)
{
    m_wanted = types & mouseEvents;
    if (m_wanted == 0) {
        close();
        return;
    }
    if (!m_x)
        open();
    if (!m_x)
        return;
    select();
    m_x->exchange().synchronize();
}

void PointerWatch::open()
{
    m_x = ApplicationLink::get();
    const auto* xinput = m_x ? m_x->link().extension(xcb_input_id) : nullptr;
    if (!xinput) {
        m_x.reset();
        return;
    }
    m_xinput = xinput->major_opcode;
    m_listener = m_x->listen([this](const xcb_generic_event_t& event) { handle(event); });
    readButtonMap();
    startLedger();
}

void PointerWatch::close()
{
    if (m_question)
        m_question->discard(*m_x);
    m_question.reset();
    m_raw.clear();
    m_selection.reset();
    m_selected = 0;
    m_listener.reset();
    m_x.reset();
}

void PointerWatch::startLedger()
{
    const auto pointer = m_x->pointer();
    m_ledger = PressLedger();
    m_lastLeftPress = XCB_CURRENT_TIME;
    if (!pointer || buttonsHeld(pointer->mask) == 0)
        return;
    XExchange exchange = m_x->exchange();
    m_ledger.start(buttonsHeld(pointer->mask), ownerAt(exchange, *pointer));
}

void PointerWatch::readButtonMap()
{
    const auto reply =
        m_x->exchange().reply<xcb_get_pointer_mapping_reply_t>(xcb_get_pointer_mapping(m_x->xcb()));
    if (!reply)
        return;
    const std::uint8_t* map = xcb_get_pointer_mapping_map(reply.get());
    m_buttonMap.assign(map, map + xcb_get_pointer_mapping_map_length(reply.get()));
}

/// Sent with the next flush or question.
void PointerWatch::select()
{
    std::uint32_t mask = 0;
    if (m_wanted & (buttonEvents | dragEvents))
        mask |= rawButtons; // drags begin with a button
    if (isWanted(EventType::mouseMoved))
        mask |= rawButtons | XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    if (isWanted(m_ledger.motionToExpect()))
        mask |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    // From the press on, though its owner isn't known yet.
    if (m_ledger.dependsOnPlace() && isWanted(typeOfMotion(heldAsRead())))
        mask |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    if (mask == std::exchange(m_selected, mask))
        return;
    m_selection = m_x->link().selectInput(m_x->root(), XCB_INPUT_DEVICE_ALL_MASTER, mask);
}

/// Returns the buttons that are held after all events that were read, reported or not.
ButtonSet PointerWatch::heldAsRead() const
{
    ButtonSet held = m_ledger.held();
    const auto apply = [&held](const Raw& raw) {
        if (raw.kind == Raw::Kind::press && !isWheel(raw.button))
            held |= buttonBit(raw.button);
        else if (raw.kind == Raw::Kind::release)
            held &= ~buttonBit(raw.button);
    };
    if (m_question)
        apply(m_question->raw);
    std::ranges::for_each(m_raw, apply);
    return held;
}

bool PointerWatch::isReleaseRead() const
{
    return std::ranges::any_of(
        m_raw, [](const Raw& raw) { return raw.kind == Raw::Kind::release && !isWheel(raw.button); });
}

void PointerWatch::handle(const xcb_generic_event_t& event)
{
    const int type = event.response_type & 0x7F;
    if (type == XCB_MAPPING_NOTIFY &&
        reinterpret_cast<const xcb_mapping_notify_event_t&>(event).request == XCB_MAPPING_POINTER)
        readButtonMap();
    const auto& raw = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (type != XCB_GE_GENERIC || raw.extension != m_xinput)
        return;
    if (raw.event_type == XCB_INPUT_RAW_MOTION)
        queue({Raw::Kind::motion, 0, raw.time});
    else if (raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
        queue({Raw::Kind::press, raw.detail, raw.time});
    else if (raw.event_type == XCB_INPUT_RAW_BUTTON_RELEASE)
        queue({Raw::Kind::release, raw.detail, raw.time});
}

void PointerWatch::queue(Raw raw)
{
    ++m_eventsRead;
    if (raw.button >= 1 && raw.button <= m_buttonMap.size())
        raw.button = m_buttonMap[raw.button - 1];
    if (raw.kind != Raw::Kind::motion && raw.button == 0)
        return; // a device that the user has disabled
    // Only one of several motions is reported, before the event that follows them.
    const bool isOneMore =
        raw.kind == Raw::Kind::motion && !m_raw.empty() && m_raw.back().kind == Raw::Kind::motion;
    if (!isOneMore)
        m_raw.push_back(raw);
    if (m_question && raw.kind != Raw::Kind::motion) {
        // The motions after a press are wanted now, and not when the events before it have been reported.
        select();
        m_x->link().flush();
    }
    work();
}

void PointerWatch::work()
{
    while (m_x && !m_question && !m_raw.empty()) {
        const Raw raw = m_raw.front();
        m_raw.pop_front();
        take(raw);
    }
}

void PointerWatch::take(const Raw& raw)
{
    if (raw.kind == Raw::Kind::press && isWheel(raw.button) && !isWanted(EventType::scrollWheel))
        return;
    if (raw.kind != Raw::Kind::release) {
        ask(raw, EventType::null);
        return;
    }
    const EventType type = m_ledger.release(raw.button);
    if (isWanted(type) || isWanted(motionBefore(type))) {
        ask(raw, type);
    } else {
        select();
        m_x->link().flush();
    }
}

void PointerWatch::ask(const Raw& raw, EventType released)
{
    xcb_connection_t* xcb = m_x->xcb();
    m_question = std::make_unique<Question>(Question{.raw = raw, .released = released});
    select();
    if (raw.kind != Raw::Kind::motion)
        m_question->steps = xcb_get_motion_events(xcb, m_x->root(), raw.time + 1, XCB_CURRENT_TIME);
    if (raw.kind != Raw::Kind::release && m_ledger.dependsOnPlace()) {
        for (const xcb_window_t window : X11Connection::shownWindows())
            m_question->ownWindows.emplace_back(m_x->link(), window);
    }
    m_question->pointer = xcb_query_pointer(xcb, m_x->root());
    m_x->whenAnswered(m_question->pointer.sequence, [this](XLink::Answer last) { answer(std::move(last)); });
}

void PointerWatch::answer(XLink::Answer last)
{
    const std::unique_ptr<Question> question = std::move(m_question);
    const Raw& raw = question->raw;
    XExchange exchange = m_x->exchange();
    auto pointer = pointerState(static_cast<const xcb_query_pointer_reply_t*>(last.reply.get()));
    if (raw.kind != Raw::Kind::motion) {
        // Returns where the pointer was when the button moved, though it may have moved on.
        const auto steps = exchange.reply<xcb_get_motion_events_reply_t>(question->steps);
        const auto step = firstStep(steps.get());
        if (pointer && step) {
            pointer->x = step->x;
            pointer->y = step->y;
        }
    }
    bool mayBeOurs = false;
    for (const OwnWindow& window : question->ownWindows)
        mayBeOurs |= window.contains(exchange, pointer ? pointer->x : 0, pointer ? pointer->y : 0);
    const auto owner = [&] {
        return pointer && mayBeOurs ? ownerAt(exchange, *pointer) : PressLedger::Owner::others;
    };
    EventType type = EventType::null;
    switch (raw.kind) {
    case Raw::Kind::motion:
        type = m_ledger.motion(owner);
        // The place may be one after the release, which tells the drag's last place itself.
        if (m_ledger.held() && isReleaseRead())
            type = EventType::null;
        break;
    case Raw::Kind::press:
        type = m_ledger.press(raw.button, owner);
        if (raw.button == 1)
            m_lastLeftPress = raw.time;
        if (pointer && m_ledger.held() == buttonBit(raw.button))
            m_lastPlace = {pointer->x, pointer->y};
        break;
    case Raw::Kind::release:
        type = question->released;
        break;
    }
    select();
    m_x->link().flush();
    if (pointer)
        report(type, *pointer);
    work();
}

void PointerWatch::report(EventType type, const PointerState& pointer)
{
    const EventType motion = motionBefore(type);
    if (isWanted(type) && (dragEvents & eventMaskBit(type)) != 0)
        m_lastPlace = {pointer.x, pointer.y};
    else if (isWanted(motion) && m_lastPlace != QPoint(pointer.x, pointer.y))
        m_deliver(motion, pointer);
    if (isWanted(type)) // which the call may have changed
        m_deliver(type, pointer);
}

/// Asks for the window under the pointer, and not for the frame that the window manager has put around it.
PressLedger::Owner PointerWatch::ownerAt(XExchange& exchange, const PointerState& pointer) const
{
    const auto toolkit = X11Connection::ofApplication();
    constexpr int deepest = 32;
    xcb_window_t window = m_x->root();
    for (int depth = 0; toolkit && window != XCB_WINDOW_NONE && depth < deepest; ++depth) {
        window = childAt(exchange, window, pointer);
        if (window != XCB_WINDOW_NONE && toolkit->hasMade(window))
            return PressLedger::Owner::ourselves;
    }
    return PressLedger::Owner::others;
}

} // namespace orvane

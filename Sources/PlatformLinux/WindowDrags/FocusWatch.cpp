#include "PlatformLinux/WindowDrags/FocusWatch.h"

#include "PlatformLinux/Accessibility/WindowProperties.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

bool contains(const PropertyNumbers& numbers, xcb_atom_t atom)
{
    return std::ranges::find(numbers, atom) != numbers.end();
}

xcb_window_t parentIn(const XLink::Answer& answer)
{
    const auto* tree = static_cast<const xcb_query_tree_reply_t*>(answer.reply.get());
    return tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
}

} // namespace

FocusWatch::FocusWatch(std::shared_ptr<ApplicationLink> x, std::function<void()> changed)
    : m_x(std::move(x)),
      m_changed(std::move(changed)),
      m_selection(m_x->link().select(m_x->root(), XCB_EVENT_MASK_PROPERTY_CHANGE))
{
    ask();
}

FocusWatch::~FocusWatch()
{
    forget();
}

void FocusWatch::take(const xcb_generic_event_t& event)
{
    const auto& told = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if ((event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY && told.window == m_x->root() &&
        told.atom == m_x->atoms().activeWindow)
        ask();
}

/// Begins anew: an answer to an older question may be true no more.
void FocusWatch::ask()
{
    forget();
    const auto cookie = m_x->exchange().askProperty(m_x->root(), m_x->atoms().activeWindow, XCB_ATOM_WINDOW);
    expect(cookie.sequence, &FocusWatch::askAboutWindow);
}

void FocusWatch::expect(unsigned sequence, void (FocusWatch::*then)(const XLink::Answer&))
{
    m_pending = sequence;
    m_x->whenAnswered(sequence, [this, then](XLink::Answer answer) {
        m_pending.reset();
        (this->*then)(answer);
    });
}

/// The link would keep answers that nobody fetches as long as it lives.
void FocusWatch::forget()
{
    if (const auto pending = std::exchange(m_pending, std::nullopt))
        m_x->forget(*pending);
    if (const auto question = std::exchange(m_question, std::nullopt)) {
        for (const auto cookie : {question->managed, question->states, question->types})
            xcb_discard_reply(m_x->xcb(), cookie.sequence);
    }
}

void FocusWatch::askAboutWindow(const XLink::Answer& active)
{
    const auto* property = static_cast<const xcb_get_property_reply_t*>(active.reply.get());
    if (!property || xcb_get_property_value_length(property) < static_cast<int>(sizeof(xcb_window_t)))
        return settle(std::nullopt);
    const auto window = *static_cast<const xcb_window_t*>(xcb_get_property_value(property));
    if (window == XCB_WINDOW_NONE)
        return settle(std::nullopt);
    m_next = {.window = window, .top = window};
    const XAtoms& atoms = m_x->atoms();
    XExchange exchange = m_x->exchange();
    m_question = Question{.managed = exchange.askProperty(window, atoms.wmState, atoms.wmState),
                          .states = exchange.askProperty(window, atoms.state, XCB_ATOM_ATOM),
                          .types = exchange.askProperty(window, atoms.windowType, XCB_ATOM_ATOM)};
    expect(xcb_query_tree(m_x->xcb(), window).sequence, &FocusWatch::judgeWindow);
}

/// The answers to the other questions have come before this one.
void FocusWatch::judgeWindow(const XLink::Answer& tree)
{
    const Question question = *std::exchange(m_question, std::nullopt);
    const XAtoms& atoms = m_x->atoms();
    XExchange exchange = m_x->exchange();
    const bool isManaged = managedState(exchange.numbers(question.managed)) != ManagedState::withdrawn;
    const PropertyNumbers states = exchange.numbers(question.states);
    const PropertyNumbers types = exchange.numbers(question.types);
    const bool isOrdinary =
        !contains(types, atoms.windowTypeDesktop) && !contains(types, atoms.windowTypeDock);
    if (!isManaged || !isOrdinary || contains(states, atoms.stateFullScreen))
        return settle(std::nullopt);
    goUp(tree);
}

/// Window managers nest more than one frame around a window.
void FocusWatch::goUp(const XLink::Answer& tree)
{
    const xcb_window_t parent = parentIn(tree);
    if (parent == XCB_WINDOW_NONE)
        return settle(std::nullopt);
    if (parent == m_x->root())
        return settle(m_next);
    m_next.top = parent;
    expect(xcb_query_tree(m_x->xcb(), parent).sequence, &FocusWatch::goUp);
}

void FocusWatch::settle(std::optional<Focus> focus)
{
    if (focus == std::exchange(m_focus, focus))
        return;
    const auto changed = m_changed; // the call may end this object
    changed();
}

} // namespace orvane

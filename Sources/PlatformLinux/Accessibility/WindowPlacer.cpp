#include "PlatformLinux/Accessibility/WindowPlacer.h"

#include "PlatformLinux/Screens/ScreenSpace.h"

#include <cmath>
#include <utility>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// Window managers answer within milliseconds, programs that redraw their own shadows within a few frames.
constexpr std::chrono::milliseconds longestSettling = 1s;
/// The time within which a window manager does its own changes at the end of a drag.
constexpr std::chrono::milliseconds windowManagersTurn = 300ms;
/// The limit for questions asked on the way.
constexpr std::chrono::milliseconds longestQuestion = 100ms;
/// A program that insists on another place keeps it.
constexpr int mostRepetitions = 4;

bool isPlace(double one, double other)
{
    // Far beyond any screen, and within the integers of the protocol.
    constexpr double limit = 1e6;
    return std::abs(one) < limit && std::abs(other) < limit; // false for a value that isn't a number
}

bool isMaximized(const WindowState& state)
{
    return state.isMaximizedHorizontally || state.isMaximizedVertically;
}

} // namespace

WindowPlacer::WindowPlacer(ApplicationLink& x, WindowReader& reader,
                           std::function<const ScreenSpace&()> space)
    : m_x(x), m_reader(reader), m_requests(x.link()), m_space(std::move(space))
{
    m_look.setSingleShot(true);
    connect(&m_look, &QTimer::timeout, this, &WindowPlacer::putAgainIfNeeded);
    m_end.setSingleShot(true);
    m_end.setInterval(longestSettling);
    connect(&m_end, &QTimer::timeout, this, &WindowPlacer::stopFollowing);
}

WindowPlacer::~WindowPlacer() = default;

AXError WindowPlacer::setPosition(XExchange& exchange, xcb_window_t window, Point position)
{
    if (!isPlace(position.x, position.y))
        return AXError::illegalArgument;
    return place(exchange, window, Parts::origin, [&](Wish& wish) { wish.origin = position; });
}

AXError WindowPlacer::setSize(XExchange& exchange, xcb_window_t window, Size size)
{
    if (!isPlace(size.width, size.height) || size.width < 0 || size.height < 0)
        return AXError::illegalArgument;
    return place(exchange, window, Parts::originAndSize, [&](Wish& wish) { wish.size = size; });
}

AXError WindowPlacer::place(XExchange& exchange, xcb_window_t window, Parts parts,
                            const std::function<void(Wish&)>& wish)
{
    const auto placed = m_reader.placed(exchange, window);
    if (!placed)
        return exchange.isLate() ? AXError::cannotComplete : AXError::invalidUIElement;
    if (placed->state.isFullScreen)
        return AXError::failure;
    follow(window);
    wish(m_wish);
    m_wish.isRestored |= !isMaximized(placed->state);
    restore(window, placed->state);
    request(*placed, target(*placed), parts);
    return AXError::success;
}

void WindowPlacer::restore(xcb_window_t window, const WindowState& state)
{
    const XAtoms& atoms = m_x.atoms();
    if (isMaximized(state))
        m_requests.changeState(window, WindowRequests::Change::remove, atoms.stateMaximizedVertically,
                               atoms.stateMaximizedHorizontally);
    if (state.isShaded)
        m_requests.changeState(window, WindowRequests::Change::remove, atoms.stateShaded);
    if (isMaximized(state) || state.isShaded)
        m_wish.mayBeUndone = true;
}

/// Takes the present value of what isn't requested.
WindowPlacer::Target WindowPlacer::target(const WindowReader::Placed& placed) const
{
    const ScreenSpace& space = m_space();
    const PixelMargins margins = visibleMargins(placed.place);
    const PixelMargins& invisible = placed.place.invisible;
    const Rect seen = space.axFromNative(visibleFrame(placed.place).rect());
    const Rect wished{m_wish.origin.value_or(seen.origin), m_wish.size.value_or(seen.size)};
    PixelEdges frame = rounded(space.nativeFromAX(wished));

    const SizeHints::PixelSize size =
        placed.hints.nearest({frame.width() - margins.width(), frame.height() - margins.height()});
    frame.right = frame.left + size.width + margins.width();
    frame.bottom = frame.top + size.height + margins.height();

    const PixelMargins decoration{margins.left + invisible.left, margins.top + invisible.top,
                                  margins.right + invisible.right, margins.bottom + invisible.bottom};
    const Gravity gravity = placed.canBePlacedByMessage ? Gravity::northWest : placed.hints.gravity();
    Target target{.frame = frame, .placement = {}};
    if (m_wish.origin)
        target.placement.origin = requestedOrigin(grown(frame, invisible), decoration, gravity);
    if (m_wish.size)
        target.placement.clientSize = size;
    return target;
}

void WindowPlacer::request(const WindowReader::Placed& placed, const Target& target, Parts parts)
{
    WindowRequests::Placement placement = target.placement;
    if (parts == Parts::origin)
        placement.clientSize.reset();
    const PixelMargins margins = visibleMargins(placed.place);
    // If they were read while the window and its frame were moving, one of the two is wrong, and so is the
    // request.
    if (m_wish.margins && *m_wish.margins != margins)
        m_wish.mayBeUndone = true;
    m_wish.margins = margins;
    m_requests.place(m_wish.window, placement,
                     placed.canBePlacedByMessage ? WindowRequests::Way::message
                                                 : WindowRequests::Way::configure);
}

void WindowPlacer::follow(xcb_window_t window)
{
    if (m_wish.window != window) {
        stopFollowing();
        m_wish.window = window;
        m_selection =
            m_x.link().select(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
        m_listener = m_x.listen([this](const xcb_generic_event_t& event) { handle(event); });
    }
    m_wish.repetitions = 0;
    m_end.start();
}

void WindowPlacer::stopFollowing()
{
    if (!isFollowing())
        return;
    m_selection.reset();
    m_listener.reset();
    m_wish = {};
    m_look.stop();
    m_end.stop();
}

void WindowPlacer::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7F) {
    case XCB_DESTROY_NOTIFY:
        if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == m_wish.window)
            stopFollowing();
        break;
    case XCB_CONFIGURE_NOTIFY:
        if (reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == m_wish.window)
            m_look.start();
        break;
    case XCB_PROPERTY_NOTIFY:
        if (reinterpret_cast<const xcb_property_notify_event_t&>(event).window == m_wish.window)
            m_look.start();
        break;
    default:
        break;
    }
}

void WindowPlacer::putAgainIfNeeded()
{
    XExchange exchange(m_x.link(), within(longestQuestion));
    const auto pointerCookie = xcb_query_pointer(m_x.xcb(), m_x.root());
    const auto placed = m_reader.placed(exchange, m_wish.window);
    const auto pointer = exchange.reply<xcb_query_pointer_reply_t>(pointerCookie);
    if (!placed || !pointer || placed->state.isShaded)
        return;
    // A person who drags the window again decides.
    if (placed->state.isFullScreen || (pointer->mask & XCB_BUTTON_MASK_1)) {
        stopFollowing();
        return;
    }
    if (isMaximized(placed->state)) {
        undoMaximizing(*placed);
        return;
    }
    m_wish.isRestored = true;
    if (visibleMargins(placed->place) != m_wish.margins)
        m_wish.mayBeUndone = true;
    const Target wanted = target(*placed);
    if (!m_wish.mayBeUndone || visibleFrame(placed->place) == wanted.frame ||
        m_wish.repetitions == mostRepetitions)
        return;
    ++m_wish.repetitions;
    request(*placed, wanted, Parts::originAndSize);
}

/// At the end of a drag to an edge some window managers maximize the window, and may do so after our request.
void WindowPlacer::undoMaximizing(const WindowReader::Placed& placed)
{
    const bool isTheirTurn = m_end.remainingTimeAsDuration() > longestSettling - windowManagersTurn;
    if (!m_wish.isRestored || !isTheirTurn || m_wish.repetitions == mostRepetitions)
        return;
    m_wish.isRestored = false;
    ++m_wish.repetitions;
    restore(m_wish.window, placed.state);
    request(placed, target(placed), Parts::originAndSize);
}

} // namespace orvane

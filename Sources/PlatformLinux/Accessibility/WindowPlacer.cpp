#include "PlatformLinux/Accessibility/WindowPlacer.h"

#include "PlatformLinux/Screens/ScreenSpace.h"

#include <cmath>
#include <utility>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// Window managers answer within milliseconds, programs that redraw their own shadows within a few frames.
constexpr std::chrono::milliseconds longestSettling = 1s;
/// Within which a window manager has done what it does of itself at the end of a drag.
constexpr std::chrono::milliseconds windowManagersTurn = 300ms;
/// Of the questions asked on the way.
constexpr std::chrono::milliseconds longestQuestion = 100ms;
/// A program that insists on another place shall have it.
constexpr int mostRepetitions = 4;

bool isPlace(double one, double other)
{
    // Far beyond any screen, and within the integers of the protocol.
    constexpr double limit = 1e6;
    return std::abs(one) < limit && std::abs(other) < limit; // false for what is no number
}

bool isMaximized(const WindowState& state)
{
    return state.isMaximizedHorizontally || state.isMaximizedVertically;
}

} // namespace

WindowPlacer::WindowPlacer(ServerLink& link, WindowReader& reader, std::function<const ScreenSpace&()> space)
    : m_link(link),
      m_reader(reader),
      m_requests(link),
      m_space(std::move(space)),
      m_notifier(xcb_get_file_descriptor(link.xcb()), QSocketNotifier::Read)
{
    m_notifier.setEnabled(false);
    connect(&m_notifier, &QSocketNotifier::activated, this, &WindowPlacer::readEvents);
    m_end.setSingleShot(true);
    m_end.setInterval(longestSettling);
    connect(&m_end, &QTimer::timeout, this, &WindowPlacer::stopFollowing);
}

WindowPlacer::~WindowPlacer() = default;

AXError WindowPlacer::setPosition(ServerExchange& exchange, xcb_window_t window, Point position)
{
    if (!isPlace(position.x, position.y))
        return AXError::illegalArgument;
    return place(exchange, window, Parts::origin, [&](Wish& wish) { wish.origin = position; });
}

AXError WindowPlacer::setSize(ServerExchange& exchange, xcb_window_t window, Size size)
{
    if (!isPlace(size.width, size.height) || size.width < 0 || size.height < 0)
        return AXError::illegalArgument;
    return place(exchange, window, Parts::originAndSize, [&](Wish& wish) { wish.size = size; });
}

AXError WindowPlacer::place(ServerExchange& exchange, xcb_window_t window, Parts parts,
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
    const DesktopAtoms& atoms = m_link.atoms();
    if (isMaximized(state))
        m_requests.changeState(window, WindowRequests::Change::remove, atoms.stateMaximizedVertically,
                               atoms.stateMaximizedHorizontally);
    if (state.isShaded)
        m_requests.changeState(window, WindowRequests::Change::remove, atoms.stateShaded);
    if (isMaximized(state) || state.isShaded)
        m_wish.mayBeUndone = true;
}

/// Of what isn't wished for, as it is.
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
    // Read while the window and its frame were on their way, one of the two is wrong, and so is a request.
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
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_link.xcb(), window, XCB_CW_EVENT_MASK, &mask);
        m_notifier.setEnabled(true);
    }
    m_wish.repetitions = 0;
    m_end.start();
}

void WindowPlacer::stopFollowing()
{
    if (!isFollowing())
        return;
    const std::uint32_t none = XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(m_link.xcb(), m_wish.window, XCB_CW_EVENT_MASK, &none);
    m_link.flush();
    m_wish = {};
    m_notifier.setEnabled(false);
    m_end.stop();
}

void WindowPlacer::eventsMayHaveCome()
{
    if (!isFollowing()) {
        m_link.takeEvents([](const xcb_generic_event_t&) {});
        return;
    }
    if (std::exchange(m_isReadScheduled, true))
        return;
    QMetaObject::invokeMethod(this, &WindowPlacer::readEvents, Qt::QueuedConnection);
}

void WindowPlacer::readEvents()
{
    m_isReadScheduled = false;
    bool isGone = m_link.isLost();
    bool hasChanged = false;
    m_link.takeEvents([&](const xcb_generic_event_t& event) {
        switch (event.response_type & 0x7F) {
        case XCB_DESTROY_NOTIFY:
            isGone |= reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == m_wish.window;
            break;
        case XCB_CONFIGURE_NOTIFY:
            hasChanged |=
                reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == m_wish.window;
            break;
        case XCB_PROPERTY_NOTIFY:
            hasChanged |= reinterpret_cast<const xcb_property_notify_event_t&>(event).window == m_wish.window;
            break;
        default:
            break;
        }
    });
    if (isGone)
        stopFollowing();
    else if (hasChanged && isFollowing())
        putAgainIfNeeded();
}

void WindowPlacer::putAgainIfNeeded()
{
    ServerExchange exchange(m_link, std::chrono::steady_clock::now() + longestQuestion);
    const auto pointerCookie = xcb_query_pointer(m_link.xcb(), m_link.root());
    const auto placed = m_reader.placed(exchange, m_wish.window);
    const auto pointer = exchange.reply<xcb_query_pointer_reply_t>(pointerCookie);
    eventsMayHaveCome();
    if (!placed || !pointer || placed->state.isShaded)
        return;
    // A person who has taken the window in hand again knows better.
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

/// At the end of a drag to an edge some window managers maximize the window, and may come after us.
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

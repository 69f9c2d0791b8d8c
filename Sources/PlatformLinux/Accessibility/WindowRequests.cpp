#include "PlatformLinux/Accessibility/WindowRequests.h"

#include "PlatformLinux/X11/ApplicationLink.h"

#include <algorithm>

namespace orvane {

namespace {

/// The request is made as a pager does, for the user, so protections of the focus don't delay it.
constexpr std::uint32_t fromTheUser = 2;

std::uint32_t number(int value)
{
    return static_cast<std::uint32_t>(value);
}

} // namespace

void WindowRequests::changeState(xcb_window_t window, Change change, xcb_atom_t state, xcb_atom_t other)
{
    send(window, m_link.atoms().state, {static_cast<std::uint32_t>(change), state, other, fromTheUser, 0});
}

void WindowRequests::activate(xcb_window_t window)
{
    send(window, m_link.atoms().activeWindow, {fromTheUser, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0});
}

void WindowRequests::minimize(xcb_window_t window)
{
    constexpr std::uint32_t iconicState = 3;
    send(window, m_link.atoms().wmChangeState, {iconicState, 0, 0, 0, 0});
}

void WindowRequests::close(xcb_window_t window)
{
    send(window, m_link.atoms().closeWindow, {XCB_CURRENT_TIME, fromTheUser, 0, 0, 0});
}

void WindowRequests::raise(xcb_window_t window, Way way)
{
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    if (way == Way::message) {
        send(window, m_link.atoms().restackWindow, {fromTheUser, XCB_WINDOW_NONE, above, 0, 0});
        return;
    }
    xcb_configure_window(m_link.xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    m_link.flush();
}

void WindowRequests::place(xcb_window_t window, const Placement& placement, Way way)
{
    constexpr std::uint32_t originBits = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y;
    constexpr std::uint32_t sizeBits = XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    const std::uint32_t mask = (placement.origin ? originBits : 0) | (placement.clientSize ? sizeBits : 0);
    const PixelPoint origin = placement.origin.value_or(PixelPoint());
    const SizeHints::PixelSize size = placement.clientSize.value_or(SizeHints::PixelSize());

    if (way == Way::message) {
        // The message has the same four bits, higher up.
        const auto gravity = static_cast<std::uint32_t>(Gravity::northWest);
        send(window, m_link.atoms().moveResizeWindow,
             {gravity | mask << 8 | fromTheUser << 12, number(origin.x), number(origin.y), number(size.width),
              number(size.height)});
        return;
    }
    std::vector<std::uint32_t> values;
    if (placement.origin)
        values.insert(values.end(), {number(origin.x), number(origin.y)});
    if (placement.clientSize)
        values.insert(values.end(), {number(size.width), number(size.height)});
    xcb_configure_window(m_link.xcb(), window, static_cast<std::uint16_t>(mask), values.data());
    m_link.flush();
}

void WindowRequests::send(xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data)
{
    sendToWindowManager(m_link.xcb(), m_link.root(), window, type, data);
    m_link.flush();
}

} // namespace orvane

#include "Capabilities/SnapZones/SnapDrag.h"

namespace orvane {

namespace {

/// Programs may move a window by a point or two at a click; a person who drags one moves it farther.
constexpr double stillness = 6;

} // namespace

SnapDrag::State SnapDrag::state() const
{
    if (!m_window)
        return State::idle;
    if (!m_windowIsMoving)
        return State::armed;
    return m_zone ? State::zoned : State::moving;
}

void SnapDrag::arm(const AXUIElement& window, std::optional<Point> position)
{
    if (m_windowIsMoving)
        return;
    m_window = window;
    m_initialPosition = position;
}

void SnapDrag::windowIsAt(Point position)
{
    if (!m_initialPosition || m_windowIsMoving)
        return;
    const double dx = position.x - m_initialPosition->x;
    const double dy = position.y - m_initialPosition->y;
    m_windowIsMoving = dx * dx + dy * dy > stillness * stillness;
}

SnapDrag::Preview SnapDrag::pointerIsOn(const Screen& screen, std::optional<SnapZone> zone)
{
    // The same zone of another screen is another place, and so it is when a panel has made room.
    const bool same = m_zone == zone && (!zone || m_screen == screen);
    m_zone = zone;
    m_screen = screen;
    if (same)
        return Preview::unchanged;
    return zone ? Preview::shown : Preview::hidden;
}

std::optional<SnapDrag::Target> SnapDrag::target() const
{
    if (!m_window || !m_zone || !m_screen)
        return std::nullopt;
    return Target{*m_window, *m_zone, *m_screen};
}

} // namespace orvane

// One drag with the left button: if a window moves with it, and which zone it is over. Pure.
#pragma once

#include "Capabilities/SnapZones/Geometry/SnapZone.h"
#include "Platform/Accessibility.h"
#include "Platform/Screens.h"

#include <optional>

namespace orvane {

class SnapDrag {
public:
    enum class State {
        idle,
        /// There is a window, which hasn't moved so far.
        armed,
        /// The window has moved, so the drag moves it.
        moving,
        /// The window moves, and the pointer is in a zone.
        zoned,
    };
    enum class Preview { unchanged, shown, hidden };

    /// The place of the window if the button is released now.
    struct Target {
        AXUIElement window;
        SnapZone zone;
        /// The screen at the last motion.
        Screen screen;
    };

    [[nodiscard]] State state() const;

    /// Takes the window that has the focus now, and its place when the button went down. It is another one
    /// than before when the press has given it the focus; once a window moves, it stays the one. A window
    /// without a first place never counts as moving.
    void arm(const AXUIElement& window, std::optional<Point> position);
    [[nodiscard]] const std::optional<AXUIElement>& window() const { return m_window; }
    [[nodiscard]] const std::optional<Point>& initialPosition() const { return m_initialPosition; }

    /// Takes the present place of an armed drag's window. More than 6 points from where it was, it counts as
    /// moving until the drag ends.
    void windowIsAt(Point position);

    /// Takes the place of a moving drag's pointer, and returns what has to be done with the preview.
    Preview pointerIsOn(const Screen& screen, std::optional<SnapZone> zone);

    [[nodiscard]] std::optional<Target> target() const;
    void reset() { *this = SnapDrag(); }

private:
    std::optional<AXUIElement> m_window;
    std::optional<Point> m_initialPosition;
    bool m_windowIsMoving = false;
    std::optional<SnapZone> m_zone;
    std::optional<Screen> m_screen;
};

} // namespace orvane

// One drag with the left button: whether a window goes along with it, and which zone it is over. Pure.
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
        /// The window has moved, so it is what the drag drags.
        moving,
        /// The same, with the pointer in a zone.
        zoned,
    };
    enum class Preview { unchanged, shown, hidden };

    /// Where the window goes if the button is let go now.
    struct Target {
        AXUIElement window;
        SnapZone zone;
        /// As it stood at the last motion.
        Screen screen;
    };

    [[nodiscard]] State state() const;

    /// The window that had the focus when the drag began. One whose position can't be read never moves.
    void arm(const AXUIElement& window, std::optional<Point> position);
    [[nodiscard]] const std::optional<AXUIElement>& window() const { return m_window; }
    [[nodiscard]] const std::optional<Point>& initialPosition() const { return m_initialPosition; }

    /// Where an armed drag's window is now. More than 6 points from where it was, it moves, and is taken to
    /// do so until the drag ends.
    void windowIsAt(Point position);

    /// Where a moving drag's pointer is. Says what is to become of the preview.
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

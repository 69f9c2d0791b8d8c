// Where windows were when the left button went down, and where they are: how a program tells a drag that
// moves a window from every other drag. The platform notes the places as it hears of them, in the order in
// which things happened, so an answer asks nobody and waits for nobody. Main thread.
#pragma once

#include "Platform/Accessibility.h"

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// A watch in place. Its end takes it away; its handler may end it.
class WindowDragWatch {
public:
    virtual ~WindowDragWatch() = default;
};

class WindowDrags {
public:
    /// A window and two of its places, in the space of accessibility elements. They say how far it has moved,
    /// and no more: they may be those of an invisible frame around the window.
    struct Candidate {
        AXUIElement window;
        /// Absent for a window that has come since the button went down.
        std::optional<Point> initialPosition = {};
        /// Absent when the window is gone.
        std::optional<Point> position = {};
    };

    virtual ~WindowDrags() = default;

    /// Places are noted as long as the object lives. `changed` is called when the answer of `candidate` may
    /// have changed by itself: because a window has moved, or another one has the focus.
    [[nodiscard]] virtual std::unique_ptr<WindowDragWatch> watch(std::function<void()> changed) = 0;

    /// Returns the window that a drag can be moving at present, which is the one with the focus. The button
    /// went down with the press that event monitors were told of last, though more may have happened since.
    /// Absent without a watch, without a permission, when no window has the focus, and for a full-screen one.
    [[nodiscard]] virtual std::optional<Candidate> candidate() const = 0;
};

} // namespace orvane

// Converts between the four ways in which the desktop measures places. Native: the X server's pixels, from
// the root window's upper left corner down. Toolkit: Qt's points; each display keeps its native corner, and
// its content is scaled about that. AX: points from the primary display's upper left corner down. Cocoa:
// points from its lower left corner up. Pure; any thread.
#pragma once

#include "Platform/Geometry.h"

#include <vector>

namespace orvane {

class ScreenSpace {
public:
    struct Display {
        /// In native pixels.
        Rect pixels;
        /// Pixels for each point.
        double scale = 1;
        friend bool operator==(const Display&, const Display&) = default;
    };

    /// With no display, pixels are points and all corners are the root window's.
    ScreenSpace() = default;
    /// The primary one first.
    explicit ScreenSpace(std::vector<Display> displays) : m_displays(std::move(displays)) {}

    [[nodiscard]] const std::vector<Display>& displays() const { return m_displays; }

    /// A point belongs to the display that contains it, or else to the nearest one. A rectangle belongs as a
    /// whole to the display of its middle, and is scaled by it: converted there and back it is the same one.
    [[nodiscard]] Point axFromNative(Point native) const;
    [[nodiscard]] Rect axFromNative(const Rect& native) const;
    [[nodiscard]] Point nativeFromAX(Point ax) const;
    [[nodiscard]] Rect nativeFromAX(const Rect& ax) const;
    [[nodiscard]] Point cocoaFromNative(Point native) const;
    [[nodiscard]] Rect cocoaFromNative(const Rect& native) const;

    [[nodiscard]] Point toolkitFromNative(Point native) const;
    [[nodiscard]] Rect cocoaFromToolkit(const Rect& toolkit) const;
    [[nodiscard]] Rect toolkitFromCocoa(const Rect& cocoa) const;
    /// For the pointer, which is on a pixel and not between two: on a display's topmost row, too, it is
    /// inside that display's frame. Cut to whole pixels, its distance from the top is the row.
    [[nodiscard]] Point cocoaOfPointer(Point toolkit) const;

    /// Returns the pixels for each point of the display at a place.
    [[nodiscard]] double scaleAtNative(Point native) const;
    [[nodiscard]] double scaleAtAX(Point ax) const;

private:
    [[nodiscard]] const Display* displayAtNative(Point native) const;
    [[nodiscard]] const Display* displayAtToolkit(Point toolkit) const;
    [[nodiscard]] Rect primaryInToolkit() const;

    std::vector<Display> m_displays;
};

} // namespace orvane

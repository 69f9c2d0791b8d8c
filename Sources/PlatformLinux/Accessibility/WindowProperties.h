// The meaning of the properties that windows carry, by ICCCM, EWMH and Motif; from the numbers of 32 bits
// that the server gives. Any program may have written anything there. Pure; any thread.
#pragma once

#include "PlatformLinux/Accessibility/WindowFrame.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace orvane {

using PropertyNumbers = std::vector<std::uint32_t>;

/// Reads _NET_FRAME_EXTENTS and _GTK_FRAME_EXTENTS; absent for invalid values.
std::optional<PixelMargins> frameExtents(const PropertyNumbers& numbers);

/// WM_STATE: how the window manager treats a window.
enum class ManagedState { withdrawn, normal, iconic };
ManagedState managedState(const PropertyNumbers& numbers);

/// The point of a frame that a window's place is measured at: win_gravity of ICCCM.
enum class Gravity {
    northWest = 1,
    north,
    northEast,
    west,
    center,
    east,
    southWest,
    south,
    southEast,
    fixed
};

/// WM_NORMAL_HINTS: the sizes that a window wants to have.
class SizeHints {
public:
    SizeHints() = default;
    explicit SizeHints(const PropertyNumbers& numbers);

    [[nodiscard]] Gravity gravity() const { return m_gravity; }

    struct PixelSize {
        int width = 0;
        int height = 0;
        friend bool operator==(const PixelSize&, const PixelSize&) = default;
    };
    /// Returns the greatest allowed size that is no greater; when even the least allowed one is greater,
    /// that.
    [[nodiscard]] PixelSize nearest(PixelSize size) const;

private:
    struct Range {
        int least = 1;
        int greatest = 0x7FFF;
        int base = 0;
        int step = 1;
        [[nodiscard]] int nearest(int value) const;
    };

    Range m_width;
    Range m_height;
    Gravity m_gravity = Gravity::northWest;
};

/// The position of a request to move, computed so that the frame ends up around `outer` with the margins that
/// it keeps, but without those in which the program draws nothing.
struct PixelPoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const PixelPoint&, const PixelPoint&) = default;
};
PixelPoint requestedOrigin(const PixelEdges& outer, const PixelMargins& decoration, Gravity gravity);

/// _MOTIF_WM_HINTS: the operations that a window allows. All of them when it doesn't say.
struct MotifFunctions {
    bool canClose = true;
    bool canMaximize = true;
};
MotifFunctions motifFunctions(const PropertyNumbers& numbers);

} // namespace orvane

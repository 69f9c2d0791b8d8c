// The place where a person sees a window, computed from what the X server and the window's properties say;
// and back. Native pixels of the root window. Pure; any thread.
#pragma once

#include "Platform/Geometry.h"

#include <optional>

namespace orvane {

/// The pixels from `left` on up to `right`, which is excluded; `top` and `bottom` likewise.
struct PixelEdges {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    [[nodiscard]] int width() const { return right - left; }
    [[nodiscard]] int height() const { return bottom - top; }
    [[nodiscard]] Rect rect() const;
    friend bool operator==(const PixelEdges&, const PixelEdges&) = default;
};

/// The distances by which one thing reaches beyond another; negative where it ends inside.
struct PixelMargins {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    [[nodiscard]] int width() const { return left + right; }
    [[nodiscard]] int height() const { return top + bottom; }
    friend bool operator==(const PixelMargins&, const PixelMargins&) = default;
};

PixelEdges grown(const PixelEdges& edges, const PixelMargins& margins);
PixelEdges shrunk(const PixelEdges& edges, const PixelMargins& margins);

struct WindowPlace {
    /// The window itself, inside its border.
    PixelEdges client;
    /// The child of the root window that holds it, or the window itself; with the border.
    PixelEdges outer;
    /// True if the window manager hides the client and shows only what it adds above it.
    bool isRolledUp = false;
    /// The margins that the window manager says it adds; absent when it doesn't say.
    std::optional<PixelMargins> decoration;
    /// The margins in which the program says it draws no part of the window: its own shadows.
    PixelMargins invisible;

    friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

/// Returns how far the visible frame reaches beyond the client window.
PixelMargins visibleMargins(const WindowPlace& place);
PixelEdges visibleFrame(const WindowPlace& place);

/// Rounds the edges and not the size, so that neighbours that share an edge meet in one pixel. A half goes
/// up.
PixelEdges rounded(const Rect& rect);

} // namespace orvane

// Where a person sees a window to be, from what the X server and the window's properties tell; and back.
// Native pixels of the root window. Pure; any thread.
#pragma once

#include "Platform/Geometry.h"

#include <optional>

namespace orvane {

/// The pixels from `left` on up to, and without, `right`; `top` and `bottom` likewise.
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

/// How far something reaches beyond something else; negative where it ends inside.
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
    /// The child of the root window that holds it, or it itself; with the border.
    PixelEdges outer;
    /// Then the window manager hides the client and shows what it adds on top of it.
    bool isRolledUp = false;
    /// What the window manager says that it adds; absent when it doesn't say.
    std::optional<PixelMargins> decoration;
    /// What the program says that it draws no part of the window in: shadows of its own.
    PixelMargins invisible;

    friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

/// How far what a person sees reaches beyond the client window.
PixelMargins visibleMargins(const WindowPlace& place);
PixelEdges visibleFrame(const WindowPlace& place);

/// Edges are rounded and not sizes, so that neighbours that share an edge meet in one pixel. A half goes up.
PixelEdges rounded(const Rect& rect);

} // namespace orvane

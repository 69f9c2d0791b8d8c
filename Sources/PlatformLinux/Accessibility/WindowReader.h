// What the X server and the window manager know of programs and their windows. Every question goes to the
// server alone, so a program that hangs costs nothing. A window that isn't managed any more gives nothing.
// Main thread.
#pragma once

#include "PlatformLinux/Accessibility/WindowProperties.h"
#include "PlatformLinux/X11/WindowTexts.h"
#include "PlatformLinux/X11/XExchange.h"

#include <QString>

#include <optional>
#include <vector>

namespace orvane {

/// The owner of a window: a process of this machine, or else the client at the other end of that connection.
struct ProgramId {
    std::int64_t process = 0;
    /// Set where the process isn't known.
    std::uint32_t client = 0;
    friend bool operator==(const ProgramId&, const ProgramId&) = default;
};

struct WindowState {
    bool isMinimized = false;
    bool isMaximizedHorizontally = false;
    bool isMaximizedVertically = false;
    bool isFullScreen = false;
    bool isShaded = false;
};

class WindowReader {
public:
    struct Owned {
        xcb_window_t window = XCB_WINDOW_NONE;
        ProgramId program;
        /// True for what a person would call a window; not for the desktop or a panel.
        bool isOrdinary = true;
    };
    /// One round trip while the same window stays active.
    std::optional<Owned> activeWindow(XExchange& exchange);
    /// Returns the windows of a program, the one in front first; without the desktop and panels.
    std::vector<xcb_window_t> windowsOf(XExchange& exchange, const ProgramId& program);
    std::optional<ProgramId> programOf(XExchange& exchange, xcb_window_t window);

    /// One round trip for the window that was asked for last; two or more for another, to find its frame.
    struct Placed {
        WindowPlace place;
        WindowState state;
        SizeHints hints;
        /// True if the window manager takes requests to place it as messages.
        bool canBePlacedByMessage = false;
    };
    std::optional<Placed> placed(XExchange& exchange, xcb_window_t window);
    std::optional<WindowState> state(XExchange& exchange, xcb_window_t window);
    std::optional<QString> title(XExchange& exchange, xcb_window_t window);

    std::optional<WindowClass> windowClass(XExchange& exchange, xcb_window_t window);

    struct Abilities {
        bool canClose = true;
        bool canMaximize = true;
    };
    std::optional<Abilities> abilities(XExchange& exchange, xcb_window_t window);
    /// True if the window manager listens to messages of that kind.
    bool isSupported(XExchange& exchange, xcb_atom_t message);

private:
    struct Frame {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_window_t parent = XCB_WINDOW_NONE;
        /// The child of the root window; the window itself where it has no frame.
        xcb_window_t top = XCB_WINDOW_NONE;
    };
    std::optional<Frame> findFrame(XExchange& exchange, xcb_window_t window, xcb_window_t parent);

    /// Good guesses, which are sent along with the question that confirms them.
    Frame m_lastFrame;
    xcb_window_t m_lastActive = XCB_WINDOW_NONE;
};

} // namespace orvane

// Places windows of other programs. Main thread.
//
// A place comes in two calls, position and size, and the window manager and the program act on them later. So
// a request is kept for a moment: a size is rounded at the position requested with it, and when decoration or
// shadows turn out different, as after the end of a maximized state, the window is placed once more.
#pragma once

#include "Platform/Accessibility.h"
#include "PlatformLinux/Accessibility/WindowReader.h"
#include "PlatformLinux/Accessibility/WindowRequests.h"
#include "PlatformLinux/X11/ApplicationLink.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

namespace orvane {

class ScreenSpace;

class WindowPlacer : public QObject {
    Q_OBJECT
public:
    WindowPlacer(ApplicationLink& x, WindowReader& reader, std::function<const ScreenSpace&()> space);
    ~WindowPlacer() override;

    /// In points of the accessibility space. A maximized or rolled-up window is restored; a full-screen one
    /// is left alone, which is a failure.
    AXError setPosition(XExchange& exchange, xcb_window_t window, Point position);
    AXError setSize(XExchange& exchange, xcb_window_t window, Size size);

    [[nodiscard]] bool isFollowing() const { return m_wish.window != XCB_WINDOW_NONE; }

private:
    struct Wish {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::optional<Point> origin;
        std::optional<Size> size;
        /// The margins around the window that the last request assumed.
        std::optional<PixelMargins> margins;
        /// True if the window manager or the program may be about to place the window elsewhere.
        bool mayBeUndone = false;
        /// True if it wasn't maximized, or isn't any more.
        bool isRestored = false;
        int repetitions = 0;
    };
    struct Target {
        PixelEdges frame;
        WindowRequests::Placement placement;
    };
    enum class Parts { origin, originAndSize };

    AXError place(XExchange& exchange, xcb_window_t window, Parts parts,
                  const std::function<void(Wish&)>& wish);
    [[nodiscard]] Target target(const WindowReader::Placed& placed) const;
    void restore(xcb_window_t window, const WindowState& state);
    void request(const WindowReader::Placed& placed, const Target& target, Parts parts);
    void follow(xcb_window_t window);
    void stopFollowing();
    void handle(const xcb_generic_event_t& event);
    void putAgainIfNeeded();
    void undoMaximizing(const WindowReader::Placed& placed);

    ApplicationLink& m_x;
    WindowReader& m_reader;
    WindowRequests m_requests;
    std::function<const ScreenSpace&()> m_space;
    Wish m_wish;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    XSelection m_selection;
    QTimer m_end;
    /// Combines changes that come together into one look.
    QTimer m_look;
};

} // namespace orvane

// Puts windows of other programs where a person shall see them. Main thread.
//
// A place comes in pieces, position and size, and the window manager and the program act on them later. So a
// wish is kept for a moment: a size is rounded at the position wished for with it, and when decoration or
// shadows turn out different, as after the end of a maximized state, the window is put there once more.
#pragma once

#include "PlatformLinux/Accessibility/WindowReader.h"
#include "PlatformLinux/Accessibility/WindowRequests.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <optional>

namespace orvane {

class ScreenSpace;

class WindowPlacer : public QObject {
    Q_OBJECT
public:
    WindowPlacer(ServerLink& link, WindowReader& reader, std::function<const ScreenSpace&()> space);
    ~WindowPlacer() override;

    /// Points of the accessibility space. A maximized or rolled-up window is restored; a full-screen one is
    /// left alone, which is a failure.
    AXError setPosition(ServerExchange& exchange, xcb_window_t window, Point position);
    AXError setSize(ServerExchange& exchange, xcb_window_t window, Size size);

    /// To be called after other questions on the link: events that came in with an answer don't ring.
    void eventsMayHaveCome();
    [[nodiscard]] bool isFollowing() const { return m_wish.window != XCB_WINDOW_NONE; }

private:
    struct Wish {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::optional<Point> origin;
        std::optional<Size> size;
        /// Around the window, as the last request reckoned.
        std::optional<PixelMargins> margins;
        /// The window manager or the program may be about to put the window elsewhere.
        bool mayBeUndone = false;
        /// It wasn't maximized, or isn't any more.
        bool isRestored = false;
        int repetitions = 0;
    };
    struct Target {
        PixelEdges frame;
        WindowRequests::Placement placement;
    };
    enum class Parts { origin, originAndSize };

    AXError place(ServerExchange& exchange, xcb_window_t window, Parts parts,
                  const std::function<void(Wish&)>& wish);
    [[nodiscard]] Target target(const WindowReader::Placed& placed) const;
    void restore(xcb_window_t window, const WindowState& state);
    void request(const WindowReader::Placed& placed, const Target& target, Parts parts);
    void follow(xcb_window_t window);
    void stopFollowing();
    void readEvents();
    void putAgainIfNeeded();
    void undoMaximizing(const WindowReader::Placed& placed);

    ServerLink& m_link;
    WindowReader& m_reader;
    WindowRequests m_requests;
    std::function<const ScreenSpace&()> m_space;
    Wish m_wish;
    QSocketNotifier m_notifier;
    QTimer m_end;
    bool m_isReadScheduled = false;
};

} // namespace orvane

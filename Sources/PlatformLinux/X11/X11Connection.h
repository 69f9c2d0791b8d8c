// The toolkit's connection to the X server, for requests that have to stand in line with the toolkit's own:
// about its windows and theirs alone. Nothing is ever waited for on it; questions go over the
// ApplicationLink. Main thread. There is none where the program runs on another platform plugin. Errors of
// requests that may hit a window of another program are to be dropped with ignoreErrors(), or the toolkit
// would print them.
#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

#include <optional>
#include <vector>

namespace orvane {

class X11Connection {
public:
    [[nodiscard]] static std::optional<X11Connection> ofApplication();

    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *m_screen; }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    /// For a request made with its `_checked` form.
    void ignoreErrors(xcb_void_cookie_t request) const;
    /// Finds a visual by its id; null if the screen doesn't have it.
    [[nodiscard]] const xcb_visualtype_t* visual(xcb_visualid_t id, std::uint8_t* depth) const;
    /// True if a window was made on this connection.
    [[nodiscard]] bool hasMade(xcb_window_t window) const;
    /// The windows of this program that are to be seen, as far as the toolkit knows, and those of the trays.
    [[nodiscard]] static std::vector<xcb_window_t> shownWindows();
    /// A window that was made on this connection without the toolkit's knowledge, until it ends.
    static void noteWindow(xcb_window_t window);
    static void forgetWindow(xcb_window_t window);

private:
    X11Connection(xcb_connection_t* xcb, const xcb_screen_t* screen) : m_xcb(xcb), m_screen(screen) {}

    xcb_connection_t* m_xcb;
    const xcb_screen_t* m_screen;
};

/// Returns "comma" for ',': the X name of the key that types a Latin-1 character; empty for any other.
[[nodiscard]] QByteArray keysymName(char16_t character);

} // namespace orvane

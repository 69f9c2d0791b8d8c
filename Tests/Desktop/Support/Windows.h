// The windows that a window manager manages, as a person sees them. Asks the X server each time, by plain
// protocol, and doesn't use the code under test.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMargins>
#include <QRect>
#include <QSize>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

struct xcb_connection_t;

namespace orvane::tests {

using WindowId = std::uint32_t;

class Windows {
public:
    /// Throws std::runtime_error when there is no display.
    Windows();

    /// Returns the managed window with this title.
    [[nodiscard]] std::optional<WindowId> find(const QString& title) const;
    /// Returns the window that the window manager calls active; 0 when there is none.
    [[nodiscard]] WindowId active() const;

    /// Returns a window's place in the root window: with what the window manager draws around it, and without
    /// the margin in which a program that decorates itself draws its shadow. Empty when the window is gone.
    [[nodiscard]] QRect frame(WindowId window) const;
    /// Returns the frames of all managed windows, those of the desktop's own included.
    [[nodiscard]] QList<QRect> frames() const;
    /// Asks the window manager to put a window away, as the button in its title bar does.
    void iconify(WindowId window) const;
    /// Returns the place of the window itself, in the root window.
    [[nodiscard]] QRect geometry(WindowId window) const;
    /// Returns the place of the child of the root that holds the window. Some window managers give it an
    /// invisible border.
    [[nodiscard]] QRect outermost(WindowId window) const;
    /// Returns what the window manager draws around it, and the margins of a window that decorates itself.
    [[nodiscard]] QMargins decorations(WindowId window) const;
    [[nodiscard]] QMargins ownMargins(WindowId window) const;

    /// Returns the steps in which it can be sized; 1 by 1 for most.
    [[nodiscard]] QSize sizeIncrements(WindowId window) const;
    /// True if "_NET_WM_STATE" holds the state, for instance "_NET_WM_STATE_FULLSCREEN".
    [[nodiscard]] bool hasState(WindowId window, const char* state) const;
    /// True if a compositor shows what is behind a translucent window.
    [[nodiscard]] bool isCompositing() const;
    /// Returns the part of a monitor that panels and docks leave free.
    [[nodiscard]] QRect workArea(QRect monitor) const;

private:
    struct Closer {
        void operator()(xcb_connection_t* connection) const;
    };
    [[nodiscard]] std::uint32_t atom(const char* name) const;
    /// Returns numbers of 32 bits, of whatever type.
    [[nodiscard]] QList<std::uint32_t> numbers(WindowId window, const char* property) const;
    [[nodiscard]] QByteArray text(WindowId window, const char* property) const;
    [[nodiscard]] QMargins margins(WindowId window, const char* property) const;

    std::unique_ptr<xcb_connection_t, Closer> m_connection;
    WindowId m_root = 0;
};

} // namespace orvane::tests

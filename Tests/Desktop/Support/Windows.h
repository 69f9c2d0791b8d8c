// The windows that a window manager manages, as a person sees them. Asks the X server each time, by plain
// protocol, and knows nothing of how the program under test looks at windows.
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

    /// The managed window with this title.
    [[nodiscard]] std::optional<WindowId> find(const QString& title) const;
    /// The one that the window manager calls active; 0 when there is none.
    [[nodiscard]] WindowId active() const;

    /// In the root window: with what the window manager draws around it, and without the margin in which a
    /// program that decorates itself draws its shadow. Empty when the window is gone.
    [[nodiscard]] QRect frame(WindowId window) const;
    /// The window itself, in the root window.
    [[nodiscard]] QRect geometry(WindowId window) const;
    /// The child of the root that holds it. Some window managers give it an invisible border.
    [[nodiscard]] QRect outermost(WindowId window) const;
    /// What the window manager draws around it, and the margins of one that decorates itself.
    [[nodiscard]] QMargins decorations(WindowId window) const;
    [[nodiscard]] QMargins ownMargins(WindowId window) const;

    /// The steps in which it can be sized; 1 by 1 for most.
    [[nodiscard]] QSize sizeIncrements(WindowId window) const;
    /// Whether "_NET_WM_STATE" holds it, for instance "_NET_WM_STATE_FULLSCREEN".
    [[nodiscard]] bool hasState(WindowId window, const char* state) const;
    /// Whether a compositor shows what is behind a translucent window.
    [[nodiscard]] bool isCompositing() const;
    /// What panels and docks leave of a monitor.
    [[nodiscard]] QRect workArea(QRect monitor) const;

private:
    struct Closer {
        void operator()(xcb_connection_t* connection) const;
    };
    [[nodiscard]] std::uint32_t atom(const char* name) const;
    /// Numbers of 32 bits, of whatever type.
    [[nodiscard]] QList<std::uint32_t> numbers(WindowId window, const char* property) const;
    [[nodiscard]] QByteArray text(WindowId window, const char* property) const;
    [[nodiscard]] QMargins margins(WindowId window, const char* property) const;

    std::unique_ptr<xcb_connection_t, Closer> m_connection;
    WindowId m_root = 0;
};

} // namespace orvane::tests

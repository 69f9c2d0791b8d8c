// Qt's connection to the X server, for the few things that Qt has no words for. Main thread.
// There is none where the program runs on another platform plugin. Errors of requests that may hit
// a window of another program are to be dropped with ignoreErrors(), or Qt would print them.
#pragma once

#include "Platform/EventFlags.h"
#include "PlatformLinux/X11/XcbReply.h"

#include <QByteArray>

#include <xcb/xcb.h>

#include <optional>

namespace orvane {

class X11Connection {
public:
    static std::optional<X11Connection> ofApplication();
    /// The same operations over a connection of one's own, which outlives the object.
    static X11Connection over(xcb_connection_t* connection, int screenNumber);

    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb; }
    [[nodiscard]] int screenNumber() const { return m_screenNumber; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *m_screen; }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }

    /// Round trip.
    [[nodiscard]] xcb_atom_t atom(const char* name) const;
    /// At most 4 KiB of a property; empty where the window, the property or the type isn't so. Round trip.
    [[nodiscard]] QByteArray property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const;
    /// Adds to what this connection hears of a window: Qt may listen there as well. Round trip.
    void addEventMask(xcb_window_t window, std::uint32_t mask) const;
    /// For a request made with its `_checked` form.
    void ignoreErrors(xcb_void_cookie_t request) const;
    /// The modifiers held at this moment. Round trip.
    [[nodiscard]] EventFlags modifierFlags() const;
    /// Whether the pointer is being held by a pressed button, wherever. Round trip.
    [[nodiscard]] bool pointerButtonIsDown() const;
    /// By visual id; null if the screen has none such.
    [[nodiscard]] const xcb_visualtype_t* visual(xcb_visualid_t id, std::uint8_t* depth) const;

private:
    X11Connection(xcb_connection_t* xcb, int screenNumber, const xcb_screen_t* screen)
        : m_xcb(xcb), m_screenNumber(screenNumber), m_screen(screen)
    {
    }

    xcb_connection_t* m_xcb;
    int m_screenNumber;
    const xcb_screen_t* m_screen;
};

/// Modifier bits of a core event or of a pointer query.
EventFlags eventFlagsOfXState(unsigned state);

/// "comma" for ',': the X name of the key that types a Latin-1 character; empty for any other.
QByteArray keysymName(char16_t character);

} // namespace orvane

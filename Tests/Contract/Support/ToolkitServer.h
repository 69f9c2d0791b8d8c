// The toolkit's connection to the X server with questions that wait for the answer, as a test may.
#pragma once

#include "PlatformLinux/X11/X11Connection.h"
#include "PlatformLinux/X11/XcbReply.h"

#include <QByteArray>

#include <optional>

namespace orvane::tests {

class ToolkitServer : public X11Connection {
public:
    static std::optional<ToolkitServer> ofApplication()
    {
        const auto connection = X11Connection::ofApplication();
        return connection ? std::optional(ToolkitServer(*connection)) : std::nullopt;
    }

    [[nodiscard]] xcb_atom_t atom(const char* name) const
    {
        const auto cookie = xcb_intern_atom(xcb(), 0, static_cast<std::uint16_t>(qstrlen(name)), name);
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb(), cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    /// At most 4 KiB of a property; empty where the window, the property or the type isn't so.
    [[nodiscard]] QByteArray property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const
    {
        const auto cookie = xcb_get_property(xcb(), 0, window, name, type, 0, 1024);
        xcb_generic_error_t* error = nullptr;
        const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb(), cookie, &error));
        const XcbReply<xcb_generic_error_t> ownedError(error);
        if (!reply || reply->type != type)
            return {};
        return {static_cast<const char*>(xcb_get_property_value(reply.get())),
                xcb_get_property_value_length(reply.get())};
    }

private:
    explicit ToolkitServer(const X11Connection& connection) : X11Connection(connection) {}
};

} // namespace orvane::tests

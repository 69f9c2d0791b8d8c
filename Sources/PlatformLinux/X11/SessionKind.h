// The kind of session that the program's X server belongs to. The server of a Wayland session (Xwayland)
// knows the windows of X11 programs alone: keys, windows and copies of all others don't pass through it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace orvane {

enum class SessionKind : std::uint8_t {
    x11,
    xwayland,      // a Wayland session, reached through its X server
    waylandAlone,  // a Wayland session without an X server that lets this program in
    withoutServer, // neither
};

/// Asks the server once, on the first call. Main thread.
[[nodiscard]] SessionKind sessionKind();

/// What is known about the server that the program talks to.
struct ServerTraits {
    bool isThere = false;
    /// Newer servers of Wayland sessions offer an extension of this name.
    bool hasXwaylandExtension = false;
    /// Older ones tell by the names of their outputs: "XWAYLAND0".
    std::vector<std::string_view> outputs = {};
};
/// `waylandDisplay` is the value of WAYLAND_DISPLAY. XDG_SESSION_TYPE isn't asked: it tells how the person
/// logged in, and another server may have been started since.
[[nodiscard]] SessionKind sessionKind(const ServerTraits& server, std::string_view waylandDisplay);

} // namespace orvane

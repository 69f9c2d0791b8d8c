// Questions to the X server with an end to the wait: a server that hangs, or that another client holds with a
// grab, costs no more than the deadline. All questions of a batch are asked before the first answer is
// fetched, so a batch is one round trip. Main thread.
#pragma once

#include "Platform/Accessibility.h"
#include "PlatformLinux/Accessibility/DesktopAtoms.h"
#include "PlatformLinux/X11/XcbReply.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace orvane {

using Deadline = std::chrono::steady_clock::time_point;

/// A connection of one's own. Errors of requests that have no answer are dropped.
class ServerLink {
public:
    /// To the display of the environment; null without one. Setting up waits for the server without an end;
    /// the rest of it ends by the deadline.
    static std::unique_ptr<ServerLink> open(Deadline deadline);

    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb.get(); }
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    [[nodiscard]] const DesktopAtoms& atoms() const { return m_atoms; }
    [[nodiscard]] bool knowsProcesses() const { return m_knowsProcesses; }
    /// The part of a resource's number that tells its client.
    [[nodiscard]] std::uint32_t clientOf(std::uint32_t resource) const { return resource & m_clientMask; }
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(m_xcb.get()) != 0; }
    void flush() { xcb_flush(m_xcb.get()); }

    /// The events that are there, without waiting.
    void takeEvents(const std::function<void(const xcb_generic_event_t&)>& handler);

private:
    ServerLink(XcbConnection xcb, int screenNumber);

    XcbConnection m_xcb;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    std::uint32_t m_clientMask = 0;
    bool m_knowsProcesses = false;
    DesktopAtoms m_atoms{};
};

class ServerExchange {
public:
    ServerExchange(ServerLink& link, Deadline deadline) : m_link(link), m_deadline(deadline) {}

    [[nodiscard]] ServerLink& link() const { return m_link; }
    [[nodiscard]] xcb_connection_t* xcb() const { return m_link.xcb(); }
    [[nodiscard]] const DesktopAtoms& atoms() const { return m_link.atoms(); }

    /// Null for a question that the server refused, and for all once the deadline has passed. Each cookie has
    /// to be brought here exactly once.
    template <typename Reply, typename Cookie>
    [[nodiscard]] XcbReply<Reply> reply(Cookie cookie)
    {
        return XcbReply<Reply>(static_cast<Reply*>(await(cookie.sequence)));
    }

    /// At most 4 KiB are asked for.
    [[nodiscard]] xcb_get_property_cookie_t askProperty(xcb_window_t window, xcb_atom_t name,
                                                        xcb_atom_t type) const;
    /// Empty for a property that isn't there or is of another type.
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_get_property_cookie_t cookie);
    [[nodiscard]] QByteArray bytes(xcb_get_property_cookie_t cookie);

    /// Whether an answer didn't come in time.
    [[nodiscard]] bool isLate() const { return m_isLate; }

private:
    void* await(unsigned sequence);
    /// False when the deadline has passed.
    bool waitForInput();

    ServerLink& m_link;
    Deadline m_deadline;
    bool m_isLate = false;
};

} // namespace orvane

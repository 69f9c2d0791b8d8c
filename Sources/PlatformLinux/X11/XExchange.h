// Questions to the X server with an end to the wait. All questions of a batch are asked before the first
// answer is fetched, so a batch is one round trip. One thread.
#pragma once

#include "PlatformLinux/X11/XLink.h"

#include <string>
#include <vector>

namespace orvane {

class XExchange {
public:
    /// All answers together may take until the deadline.
    XExchange(XLink& link, Deadline deadline) : m_link(link), m_deadline(deadline) {}

    [[nodiscard]] XLink& link() const { return m_link; }
    [[nodiscard]] xcb_connection_t* xcb() const { return m_link.xcb(); }
    [[nodiscard]] const XAtoms& atoms() const { return m_link.atoms(); }

    /// Null unless the question was answered; outcome() then tells why. Each cookie has to be brought here
    /// exactly once.
    template <typename Reply, typename Cookie>
    [[nodiscard]] XcbReply<Reply> reply(Cookie cookie)
    {
        return XcbReply<Reply>(static_cast<Reply*>(await(cookie.sequence).release()));
    }
    /// For a request that has no answer, made with its `_checked` form: what has become of it.
    [[nodiscard]] XOutcome check(xcb_void_cookie_t cookie);
    /// Waits until the server has done all that was asked of it.
    XOutcome synchronize();

    /// At most 4 KiB are asked for.
    [[nodiscard]] xcb_get_property_cookie_t askProperty(xcb_window_t window, xcb_atom_t name,
                                                        xcb_atom_t type) const;
    /// Empty for a property that isn't there or is of another type.
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_get_property_cookie_t cookie);
    [[nodiscard]] std::string bytes(xcb_get_property_cookie_t cookie);

    /// How the last one ended.
    [[nodiscard]] XOutcome outcome() const { return m_outcome; }
    /// The server's code for the last one, if it was refused.
    [[nodiscard]] std::uint8_t error() const { return m_error; }
    /// Some answer didn't come in time, or never will.
    [[nodiscard]] bool isLate() const { return m_isLate; }

private:
    XcbReply<void> await(unsigned sequence);

    XLink& m_link;
    Deadline m_deadline;
    XOutcome m_outcome = XOutcome::answered;
    std::uint8_t m_error = 0;
    bool m_isLate = false;
    /// All requests before it have been dealt with.
    std::optional<unsigned> m_lastAnswered;
};

} // namespace orvane

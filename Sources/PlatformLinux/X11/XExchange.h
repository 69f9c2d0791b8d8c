// Questions to the X server with an end to the wait. All questions of a batch are asked before the first
// answer is fetched, so a batch is one round trip. One thread.
#pragma once

#include "PlatformLinux/X11/XLink.h"

#include <string>
#include <vector>

namespace orvane {

class XExchange {
public:
    /// The deadline is one for all answers together.
    XExchange(XLink& link, Deadline deadline) : m_link(link), m_deadline(deadline) {}

    [[nodiscard]] XLink& link() const { return m_link; }
    [[nodiscard]] xcb_connection_t* xcb() const { return m_link.xcb(); }
    [[nodiscard]] const XAtoms& atoms() const { return m_link.atoms(); }

    /// Null unless the question was answered; outcome() then gives the reason. Each cookie has to be passed
    /// here exactly once.
    template <typename Reply, typename Cookie>
    [[nodiscard]] XcbReply<Reply> reply(Cookie cookie)
    {
        return XcbReply<Reply>(static_cast<Reply*>(await(cookie.sequence).release()));
    }
    /// Waits for the result of a request that has no answer and was made with its `_checked` form.
    [[nodiscard]] XOutcome check(xcb_void_cookie_t cookie);
    /// Waits until the server has done everything that was asked of it.
    XOutcome synchronize();

    /// At most 4 KiB are asked for.
    [[nodiscard]] xcb_get_property_cookie_t askProperty(xcb_window_t window, xcb_atom_t name,
                                                        xcb_atom_t type) const;
    /// Empty for a property that doesn't exist or is of another type.
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_get_property_cookie_t cookie);
    [[nodiscard]] std::string bytes(xcb_get_property_cookie_t cookie);

    /// Returns how the last question ended.
    [[nodiscard]] XOutcome outcome() const { return m_outcome; }
    /// Returns the server's code if the last question was refused.
    [[nodiscard]] std::uint8_t error() const { return m_error; }
    /// True if some answer didn't come in time, or never will.
    [[nodiscard]] bool isLate() const { return m_isLate; }

private:
    XcbReply<void> await(unsigned sequence);

    XLink& m_link;
    Deadline m_deadline;
    XOutcome m_outcome = XOutcome::answered;
    std::uint8_t m_error = 0;
    bool m_isLate = false;
    /// All requests up to this one have been handled by the server.
    std::optional<unsigned> m_lastAnswered;
};

} // namespace orvane

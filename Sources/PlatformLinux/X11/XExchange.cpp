#include "PlatformLinux/X11/XExchange.h"

#include "PlatformLinux/X11/PropertyNumbers.h"

namespace orvane {

XOutcome XExchange::check(xcb_void_cookie_t cookie)
{
    // The server reports an error at once; that there was none shows only in its answer to a later question.
    const bool isAnsweredLater =
        m_lastAnswered && static_cast<std::int32_t>(*m_lastAnswered - cookie.sequence) > 0;
    if (!isAnsweredLater)
        synchronize();
    (void)await(cookie.sequence);
    return m_outcome;
}

XOutcome XExchange::synchronize()
{
    (void)reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(xcb())); // any question will do
    return m_outcome;
}

xcb_get_property_cookie_t XExchange::askProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const
{
    return xcb_get_property(xcb(), 0, window, name, type, 0, 1024);
}

std::vector<std::uint32_t> XExchange::numbers(xcb_get_property_cookie_t cookie)
{
    const auto property = reply<xcb_get_property_reply_t>(cookie);
    if (!property || property->format != 32)
        return {};
    return propertyNumbers(xcb_get_property_value(property.get()),
                           static_cast<std::size_t>(xcb_get_property_value_length(property.get())));
}

std::string XExchange::bytes(xcb_get_property_cookie_t cookie)
{
    const auto property = reply<xcb_get_property_reply_t>(cookie);
    if (!property || property->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(property.get())), property->value_len};
}

XcbReply<void> XExchange::await(unsigned sequence)
{
    if (m_isLate) {
        m_outcome = m_link.isLost() ? XOutcome::lost : XOutcome::late;
        xcb_discard_reply(xcb(), sequence);
        return nullptr;
    }
    XLink::Answer answer = m_link.await(sequence, m_deadline);
    m_outcome = answer.outcome;
    m_error = answer.error;
    m_isLate = m_outcome == XOutcome::late || m_outcome == XOutcome::lost;
    if (m_outcome == XOutcome::answered)
        m_lastAnswered = sequence;
    return std::move(answer.reply);
}

} // namespace orvane

#include "PlatformLinux/EventTap/TapMailbox.h"

#include <algorithm>

#include <poll.h>

namespace orvane {

namespace {

using SteadyClock = std::chrono::steady_clock;

/// Returns early when a signal of the process interrupts it.
void waitUntil(SteadyClock::time_point end, int descriptor)
{
    using namespace std::chrono;
    const auto left = std::max(nanoseconds(0), nanoseconds(end - SteadyClock::now()));
    const auto seconds = duration_cast<std::chrono::seconds>(left);
    const timespec limit{static_cast<time_t>(seconds.count()), static_cast<long>((left - seconds).count())};
    pollfd wait{descriptor, POLLIN, 0};
    ::ppoll(&wait, 1, &limit, nullptr);
}

} // namespace

TapMailbox::Answer TapMailbox::exchange(const Event& event, std::chrono::nanoseconds patience)
{
    const auto end = SteadyClock::now() + patience;
    {
        const std::scoped_lock lock(m_mutex);
        if (m_isClosed)
            return {Outcome::closed, event};
        ++m_ticket;
        m_event = event;
        m_state = State::offered;
        m_toTap.clear();
    }
    m_toMain.raise();
    for (;;) {
        waitUntil(end, m_toTap.descriptor());
        const std::scoped_lock lock(m_mutex);
        if (m_state == State::answered) {
            m_state = State::idle;
            return {Outcome::answered, m_wasRemoved ? std::nullopt : std::optional(m_event)};
        }
        if (m_isClosed || SteadyClock::now() >= end) {
            m_state = State::idle;
            return {m_isClosed ? Outcome::closed : Outcome::timedOut, event};
        }
        m_toTap.clear();
    }
}

void TapMailbox::ring()
{
    m_toMain.raise();
}

std::optional<TapMailbox::Request> TapMailbox::take()
{
    m_toMain.clear();
    const std::scoped_lock lock(m_mutex);
    if (m_state != State::offered || m_isClosed)
        return std::nullopt;
    m_state = State::taken;
    return Request{m_ticket, m_event};
}

void TapMailbox::answer(std::uint64_t ticket, const std::optional<Event>& event)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_state != State::taken || ticket != m_ticket)
            return;
        m_wasRemoved = !event;
        if (event)
            m_event = *event;
        m_state = State::answered;
    }
    m_toTap.raise();
}

void TapMailbox::close()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isClosed = true;
    }
    m_toTap.raise();
}

} // namespace orvane

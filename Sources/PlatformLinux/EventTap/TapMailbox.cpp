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

void TapMailbox::offer(const Event& event, std::chrono::nanoseconds patience)
{
    {
        const std::scoped_lock lock(m_mutex);
        ++m_ticket;
        m_event = event;
        m_end = SteadyClock::now() + patience;
        m_state = State::offered;
    }
    m_toMain.raise();
}

TapMailbox::Outcome TapMailbox::awaitAnswer()
{
    std::unique_lock lock(m_mutex);
    const auto isOpen = [this] { return m_state == State::offered || m_state == State::taken; };
    while (isOpen() && !m_isClosed && SteadyClock::now() < m_end) {
        m_tapWaits = true;
        m_toTap.clear();
        lock.unlock();
        waitUntil(m_end, m_toTap.descriptor());
        lock.lock();
        m_tapWaits = false;
    }
    m_wasTaken = m_state != State::offered;
    if (!isOpen()) {
        m_state = State::idle;
        return Outcome::answered;
    }
    m_state = State::idle;
    m_inject(m_event, EventTapDecision::pass);
    return m_isClosed ? Outcome::closed : Outcome::timedOut;
}

void TapMailbox::ring()
{
    m_toMain.raise();
}

std::optional<TapMailbox::Request> TapMailbox::take()
{
    if (auto request = takeOffered())
        return request;
    // It is cleared only here, or each key would wait for it; an event that was offered just before is still
    // found.
    m_toMain.clear();
    return takeOffered();
}

std::optional<TapMailbox::Request> TapMailbox::takeOffered()
{
    const std::scoped_lock lock(m_mutex);
    if (m_state != State::offered || m_isClosed)
        return std::nullopt;
    m_state = State::taken;
    return Request{m_ticket, m_event};
}

void TapMailbox::answer(std::uint64_t ticket, const Event& event, EventTapDecision decision)
{
    std::unique_lock lock(m_mutex);
    if (m_state != State::taken || ticket != m_ticket || m_isClosed)
        return;
    m_inject(event, decision);
    m_state = State::answered;
    const bool tapWaits = m_tapWaits;
    lock.unlock(); // the woken thread would block on the lock
    if (tapWaits)
        m_toTap.raise();
}

void TapMailbox::close()
{
    const std::scoped_lock lock(m_mutex);
    m_isClosed = true;
    m_toTap.raise();
}

} // namespace orvane

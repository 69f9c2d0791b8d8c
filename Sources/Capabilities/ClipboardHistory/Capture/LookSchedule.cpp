#include "Capabilities/ClipboardHistory/Capture/LookSchedule.h"

#include <algorithm>

namespace orvane {

LookSchedule::Time LookSchedule::announced(Time now)
{
    if (!m_firstAnnouncement)
        m_firstAnnouncement = now;
    const Time wanted = std::min(now + silence, *m_firstAnnouncement + longestWait);
    return m_paidUntil ? std::max(wanted, *m_paidUntil - m_interval * (looksAhead - 1)) : wanted;
}

void LookSchedule::looked(Time now)
{
    m_firstAnnouncement.reset();
    m_paidUntil = std::max(m_paidUntil.value_or(now), now) + m_interval;
}

} // namespace orvane

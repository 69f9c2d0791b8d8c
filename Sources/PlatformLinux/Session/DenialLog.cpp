#include "PlatformLinux/Session/DenialLog.h"

#include "Platform/LogSink.h"

namespace orvane {

void DenialLog::say(const QString& sentence)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_said.contains(sentence))
            return;
    }
    sayAgain(sentence);
}

void DenialLog::sayAgain(const QString& sentence)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_said.insert(sentence);
    }
    m_log.write(LogLevel::notice, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Permissions"),
                sentence);
}

} // namespace orvane

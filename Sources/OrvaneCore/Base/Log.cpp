#include "OrvaneCore/Base/Log.h"

#include "Platform/Platform.h"

namespace orvane {

void Logger::write(LogLevel level, const QString& message) const
{
    platform().log.write(level, m_subsystem, m_category, message);
}

Logger Log::make(const QString& category)
{
    return Logger(subsystem, category);
}

} // namespace orvane

// The system log. Any thread.
#pragma once

#include <QString>

namespace orvane {

enum class LogLevel { info, notice, error, fault };

class LogSink {
public:
    virtual ~LogSink() = default;

    /// Writes one entry under a subsystem and a category. Never blocks on a reader, and reports no failure to
    /// the caller.
    virtual void write(LogLevel level, const QString& subsystem, const QString& category,
                       const QString& message) = 0;
};

} // namespace orvane

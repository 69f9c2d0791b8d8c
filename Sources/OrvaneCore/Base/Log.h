// Loggers of the suite. Any thread.
#pragma once

#include "Platform/LogSink.h"

#include <QString>

namespace orvane {

/// Writes to the installed platform's log under one subsystem and category. A value: copies are equal.
class Logger {
public:
    Logger(QString subsystem, QString category)
        : m_subsystem(std::move(subsystem)), m_category(std::move(category))
    {
    }

    [[nodiscard]] const QString& subsystem() const { return m_subsystem; }
    [[nodiscard]] const QString& category() const { return m_category; }

    void info(const QString& message) const { write(LogLevel::info, message); }
    void notice(const QString& message) const { write(LogLevel::notice, message); }
    void error(const QString& message) const { write(LogLevel::error, message); }
    void fault(const QString& message) const { write(LogLevel::fault, message); }

private:
    void write(LogLevel level, const QString& message) const;

    QString m_subsystem;
    QString m_category;
};

namespace Log {

inline const QString subsystem = QStringLiteral("net.lindenrow.orvane");

Logger make(const QString& category);

} // namespace Log

} // namespace orvane

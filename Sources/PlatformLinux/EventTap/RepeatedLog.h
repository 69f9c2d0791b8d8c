// Passes log entries on, each sentence once until `forget`: what is tried again and again fails with the same
// words. Any thread.
#pragma once

#include "Platform/LogSink.h"

#include <QSet>

#include <mutex>

namespace orvane {

class RepeatedLog : public LogSink {
public:
    explicit RepeatedLog(LogSink& log) : m_log(log) {}

    void write(LogLevel level, const QString& subsystem, const QString& category,
               const QString& message) override
    {
        {
            const std::scoped_lock lock(m_mutex);
            if (m_said.contains(message))
                return;
            m_said.insert(message);
        }
        m_log.write(level, subsystem, category, message);
    }

    /// To be called when the attempt has worked: its next failure is logged again.
    void forget()
    {
        const std::scoped_lock lock(m_mutex);
        m_said.clear();
    }

private:
    LogSink& m_log;
    std::mutex m_mutex; // guards the set of sentences
    QSet<QString> m_said;
};

} // namespace orvane

// Says why something is denied, in the system log: each sentence once, however often it is asked for.
// Any thread.
#pragma once

#include <QSet>
#include <QString>

#include <mutex>

namespace orvane {

class LogSink;

class DenialLog {
public:
    explicit DenialLog(LogSink& log) : m_log(log) {}

    /// Nothing when it was said before.
    void say(const QString& sentence);
    /// Also when it was: a person has asked.
    void sayAgain(const QString& sentence);

private:
    LogSink& m_log;
    std::mutex m_mutex; // guards what was said
    QSet<QString> m_said;
};

} // namespace orvane

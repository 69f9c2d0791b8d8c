// Writes to the system log why something is denied: each sentence once, however often it is asked for. Any
// thread.
#pragma once

#include <QSet>
#include <QString>

#include <mutex>

namespace orvane {

class LogSink;

class DenialLog {
public:
    explicit DenialLog(LogSink& log) : m_log(log) {}

    /// Writes nothing when the sentence was said before.
    void say(const QString& sentence);
    /// Writes the sentence even if it was said before: for a person's own request.
    void sayAgain(const QString& sentence);

private:
    LogSink& m_log;
    std::mutex m_mutex; // guards the set of sentences
    QSet<QString> m_said;
};

} // namespace orvane

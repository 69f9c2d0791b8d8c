// The log in the system's journal, with SUBSYSTEM and CATEGORY as fields. Entries go to standard error, one
// line each, when that is a terminal or there is no journal.
//
// This class speaks the journal's datagram protocol itself, as the system library's sending blocks while the
// journal hangs. An entry that doesn't fit because a reader is stuck is dropped, and counted in the next one.
#pragma once

#include "Platform/LogSink.h"
#include "PlatformLinux/Common/FileDescriptor.h"

#include <QByteArray>

#include <mutex>

namespace orvane {

class JournalLogSink : public LogSink {
public:
    JournalLogSink();
    /// Takes another place of the journal's socket and another descriptor than standard error's; the
    /// descriptor stays the caller's and has to outlive the object.
    JournalLogSink(QByteArray journalSocket, int standardError);

    void write(LogLevel level, const QString& subsystem, const QString& category,
               const QString& message) override;

private:
    enum class Sent { yes, dropped, noJournal };

    Sent sendToJournal(LogLevel level, const QString& subsystem, const QString& category,
                       const QByteArray& message);
    bool writeLine(LogLevel level, const QString& category, const QByteArray& message);
    bool writeWithoutWaiting(const QByteArray& line);

    QByteArray m_journalSocket;
    int m_standardError;
    bool m_prefersStandardError = false;
    FileDescriptor m_socket;
    FileDescriptor m_reopened; // standard error opened again, non-blocking for this process alone

    std::mutex m_mutex; // guards the following members, and keeps the entries in order
    quint64 m_dropped = 0;
    bool m_lineIsOpen = false;
};

} // namespace orvane

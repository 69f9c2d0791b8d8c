#include "PlatformLinux/Session/JournalLogSink.h"

#include <QString>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace orvane {

namespace {

constexpr qsizetype longestMessage = qsizetype{32} * 1024; // in bytes; well below the limit of a datagram

const char* levelName(LogLevel level)
{
    switch (level) {
    case LogLevel::info:
        return "info";
    case LogLevel::notice:
        return "notice";
    case LogLevel::error:
        return "error";
    case LogLevel::fault:
        return "fault";
    }
    return "fault";
}

/// The priorities of syslog.
const char* priority(LogLevel level)
{
    switch (level) {
    case LogLevel::info:
        return "6";
    case LogLevel::notice:
        return "5";
    case LogLevel::error:
        return "3";
    case LogLevel::fault:
        return "2";
    }
    return "2";
}

QByteArray bounded(const QString& message)
{
    QByteArray bytes = message.toUtf8();
    if (bytes.size() <= longestMessage)
        return bytes;
    qsizetype end = longestMessage;
    while (end > 0 && (static_cast<unsigned char>(bytes[end]) & 0xc0) == 0x80) // in the middle of a character
        --end;
    return bytes.first(end) + "...";
}

/// Writes control characters out, so that a message can't end its line or control the terminal.
QByteArray onOneLine(const QByteArray& message)
{
    QByteArray line;
    line.reserve(message.size());
    for (const char c : message) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n')
            line += "\\n";
        else if (c == '\r')
            line += "\\r";
        else if (byte < 0x20 || byte == 0x7f)
            line += "\\x" + QByteArray::number(byte, 16).rightJustified(2, '0');
        else
            line += c;
    }
    return line;
}

/// Appends a field of the journal's protocol, in the form with a length, which allows any content.
void appendField(QByteArray& datagram, const char* name, const QByteArray& value)
{
    datagram += name;
    datagram += '\n';
    auto length = static_cast<quint64>(value.size());
    for (int byte = 0; byte < 8; ++byte, length >>= 8)
        datagram += static_cast<char>(length & 0xff);
    datagram += value;
    datagram += '\n';
}

/// Keeps the signal of a pipe without a reader from ending the process, for this thread and this scope.
class BrokenPipeGuard {
public:
    BrokenPipeGuard()
    {
        ::sigemptyset(&m_brokenPipe);
        ::sigaddset(&m_brokenPipe, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &m_brokenPipe, &m_before);
    }
    ~BrokenPipeGuard()
    {
        if (::sigismember(&m_before, SIGPIPE) == 1)
            return;
        const timespec now = {};
        ::sigtimedwait(&m_brokenPipe, nullptr, &now);
        ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

private:
    sigset_t m_brokenPipe = {};
    sigset_t m_before = {};
};

bool wouldBlock(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == ENOBUFS;
}

} // namespace

JournalLogSink::JournalLogSink() : JournalLogSink("/run/systemd/journal/socket", STDERR_FILENO) {}

JournalLogSink::JournalLogSink(QByteArray journalSocket, int standardError)
    : m_journalSocket(std::move(journalSocket)),
      m_standardError(standardError),
      m_prefersStandardError(::isatty(standardError) == 1),
      m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
{
    // A terminal that was stopped, or a pipe that nobody reads, must not block us. The flag can't be set on
    // standard error itself, which is shared with other processes.
    struct stat status = {};
    if (::fstat(standardError, &status) == 0 && (S_ISCHR(status.st_mode) || S_ISFIFO(status.st_mode))) {
        const QByteArray again = "/proc/self/fd/" + QByteArray::number(standardError);
        m_reopened = FileDescriptor(::open(again.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    }
}

void JournalLogSink::write(LogLevel level, const QString& subsystem, const QString& category,
                           const QString& message)
{
    const std::scoped_lock guard(m_mutex);
    QByteArray text = bounded(message);
    if (m_dropped > 0)
        text += " (" + QByteArray::number(m_dropped) + " entries before this one were dropped)";

    Sent sent = Sent::noJournal;
    if (!m_prefersStandardError)
        sent = sendToJournal(level, subsystem, category, text);
    if (sent == Sent::noJournal)
        sent = writeLine(level, category, text) ? Sent::yes : Sent::dropped;
    m_dropped = sent == Sent::yes ? 0 : m_dropped + 1;
}

JournalLogSink::Sent JournalLogSink::sendToJournal(LogLevel level, const QString& subsystem,
                                                   const QString& category, const QByteArray& message)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (!m_socket || m_journalSocket.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return Sent::noJournal;
    std::copy(m_journalSocket.begin(), m_journalSocket.end(), std::begin(address.sun_path));

    QByteArray datagram;
    appendField(datagram, "MESSAGE", message);
    appendField(datagram, "PRIORITY", priority(level));
    appendField(datagram, "SUBSYSTEM", bounded(subsystem));
    appendField(datagram, "CATEGORY", bounded(category));
    appendField(datagram, "SYSLOG_IDENTIFIER", "orvane");
    const ssize_t count =
        ::sendto(m_socket.get(), datagram.constData(), static_cast<size_t>(datagram.size()),
                 MSG_DONTWAIT | MSG_NOSIGNAL, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    if (count >= 0)
        return Sent::yes;
    return wouldBlock(errno) ? Sent::dropped : Sent::noJournal;
}

bool JournalLogSink::writeLine(LogLevel level, const QString& category, const QByteArray& message)
{
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    ::localtime_r(&now, &local);
    char time[16] = {};
    std::strftime(time, sizeof time, "%H:%M:%S", &local);

    QByteArray line;
    if (m_lineIsOpen) // the last line was cut off
        line += '\n';
    line += QByteArray(time) + ' ' + levelName(level) + " [" + onOneLine(category.toUtf8()) + "] " +
            onOneLine(message) + '\n';
    return writeWithoutWaiting(line);
}

bool JournalLogSink::writeWithoutWaiting(const QByteArray& line)
{
    const auto size = static_cast<size_t>(line.size());
    ssize_t count = ::send(m_standardError, line.constData(), size, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (count < 0 && errno == ENOTSOCK) {
        const int descriptor = m_reopened ? m_reopened.get() : m_standardError;
        pollfd request = {descriptor, POLLOUT, 0};
        if (!m_reopened && (::poll(&request, 1, 0) != 1 || (request.revents & POLLOUT) == 0))
            return false;
        const BrokenPipeGuard guard;
        count = ::write(descriptor, line.constData(), size);
    }
    if (count <= 0)
        return false;
    m_lineIsOpen = line[static_cast<qsizetype>(count) - 1] != '\n';
    return true;
}

} // namespace orvane

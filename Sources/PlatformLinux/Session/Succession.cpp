#include "PlatformLinux/Session/Succession.h"

#include "Platform/LogSink.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

namespace orvane::Succession {

namespace {

using namespace std::chrono_literals;

constexpr const char* variable = "ORVANE_SUCCEEDS";
/// A killed process needs only the time that the kernel takes.
constexpr std::chrono::milliseconds graceOfTheKilled = 2s;

/// The other end is closed when its process has ended; nothing is ever written to it.
bool closesWithin(const FileDescriptor& socket, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    pollfd wait{socket.get(), POLLIN, 0};
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        const int ready = ::poll(&wait, 1, static_cast<int>(qMax<qint64>(0, left.count())));
        if (ready >= 0 || errno != EINTR)
            return ready > 0;
    }
}

/// Returns the descriptor that the old process left us. The variable is removed: programs that we start must
/// not see it.
FileDescriptor inheritance()
{
    const QByteArray text = qgetenv(variable);
    qunsetenv(variable);
    bool isNumber = false;
    const int descriptor = text.toInt(&isNumber);
    // A user may have set the variable by hand, so only a socket is accepted.
    ucred owner{};
    socklen_t size = sizeof owner;
    if (!isNumber || descriptor <= STDERR_FILENO ||
        ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &owner, &size) != 0)
        return {};
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    return FileDescriptor(descriptor);
}

pid_t processAt(const FileDescriptor& socket)
{
    ucred owner{};
    socklen_t size = sizeof owner;
    ::getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &owner, &size);
    return owner.pid;
}

void write(LogSink& log, LogLevel level, const QString& message)
{
    log.write(level, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Application"), message);
}

} // namespace

Bequest::Bequest(FileDescriptor ours, FileDescriptor theirs)
    : m_ours(std::move(ours)), m_theirs(std::move(theirs))
{
}

std::optional<Bequest> Bequest::make()
{
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return std::nullopt;
    ::fcntl(ends[1], F_SETFD, 0);
    return Bequest(FileDescriptor(ends[0]), FileDescriptor(ends[1]));
}

void Bequest::applyTo(QProcessEnvironment& environment) const
{
    environment.insert(QLatin1String(variable), QString::number(m_theirs.get()));
}

void Bequest::keep() &&
{
    m_theirs.reset();
    // Never destroyed, on purpose: the kernel closes the descriptor after everything else of this process.
    static auto* const kept = new std::vector<FileDescriptor>;
    kept->push_back(std::move(m_ours));
}

Outcome awaitPredecessor(std::chrono::milliseconds patience, LogSink& log)
{
    const FileDescriptor socket = inheritance();
    if (!socket)
        return Outcome::none;
    if (closesWithin(socket, patience))
        return Outcome::ended;

    const pid_t predecessor = processAt(socket);
    write(log, LogLevel::error,
          QStringLiteral("The process %1, whose place this one takes, doesn't end by itself and is killed")
              .arg(predecessor));
    // The process still holds its end of the socket, so the number is still its own.
    if (predecessor > 1)
        ::kill(predecessor, SIGKILL);
    if (closesWithin(socket, graceOfTheKilled))
        return Outcome::madeToEnd;
    write(log, LogLevel::error,
          QStringLiteral("It is still there. Its shortcuts and its keyboard may not be free"));
    return Outcome::stillThere;
}

} // namespace orvane::Succession

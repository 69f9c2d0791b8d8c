#include "PlatformLinux/Worker/WorkerProcess.h"

#include "Platform/Protocols/WorkerProtocol.h"
#include "PlatformLinux/Common/SignalFreeThread.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace orvane {

namespace {

void throwError(int error)
{
    throw std::system_error(error, std::generic_category(), "orvane-worker");
}

void awaitEnd(pid_t process)
{
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR)
        continue;
}

/// Everything that a new process shall have, and nothing else of ours.
class SpawnOrders {
public:
    explicit SpawnOrders(int socket)
    {
        ::posix_spawn_file_actions_init(&m_files);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&m_files, standard, "/dev/null", O_RDWR, 0);
        ::posix_spawn_file_actions_adddup2(&m_files, socket, WorkerProtocol::workerDescriptor);
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setflags(&m_attributes,
                                   POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        sigset_t signals;
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&m_attributes, &signals);
        ::sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&m_attributes, &signals);
    }
    ~SpawnOrders()
    {
        ::posix_spawn_file_actions_destroy(&m_files);
        ::posix_spawnattr_destroy(&m_attributes);
    }
    SpawnOrders(const SpawnOrders&) = delete;
    SpawnOrders& operator=(const SpawnOrders&) = delete;

    [[nodiscard]] pid_t start(const QByteArray& program) const
    {
        QByteArray name = program;
        char* arguments[] = {name.data(), nullptr};
        // The memory of many small threads is kept together. Nothing of our own environment is told.
        std::string locale = "LC_ALL=C";
        std::string arenas = "MALLOC_ARENA_MAX=2";
        // Text is read several times as fast by one thread, whose work is too small to be shared out.
        std::string threads = "OMP_THREAD_LIMIT=1";
        char* environment[] = {locale.data(), arenas.data(), threads.data(), nullptr};
        pid_t process = -1;
        const int error =
            ::posix_spawn(&process, program.constData(), &m_files, &m_attributes, arguments, environment);
        if (error != 0)
            throwError(error);
        return process;
    }

private:
    posix_spawn_file_actions_t m_files{};
    posix_spawnattr_t m_attributes{};
};

} // namespace

WorkerProcess::WorkerProcess(const QByteArray& program)
{
    if (program.isEmpty())
        throwError(ENOENT);
    int ends[2] = {};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        throwError(errno);
    m_socket = FileDescriptor(ends[0]);
    const FileDescriptor theirs(ends[1]);
    const pid_t process = SpawnOrders(theirs.get()).start(program);
    try {
        m_process = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
        if (!m_process)
            throwError(errno);
        // It may end by itself at any time, and would stay as a zombie until somebody asked for it.
        m_reaper = startSignalFreeThread([process] { awaitEnd(process); });
    } catch (...) {
        // Nobody has asked for it yet, so that the number is still this process's.
        ::kill(process, SIGKILL);
        awaitEnd(process);
        throw;
    }
}

WorkerProcess::~WorkerProcess()
{
    // By its descriptor, as the number may be another process's by now.
    ::syscall(SYS_pidfd_send_signal, m_process.get(), SIGKILL, nullptr, 0);
    m_socket.reset();
    m_reaper.join();
}

} // namespace orvane

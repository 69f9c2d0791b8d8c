#include "PlatformLinux/EventTap/Guardian/GuardianLink.h"

#include "PlatformLinux/Common/HelperProgram.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

/// Longer than a guardian in order needs; then it is killed. The main thread waits meanwhile.
constexpr std::chrono::milliseconds farewell = 250ms;
constexpr char goodbye = 'b';

bool endsWithin(pid_t process, std::chrono::milliseconds limit)
{
    const FileDescriptor watched(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    pollfd wait{watched.get(), POLLIN, 0};
    int ready = 0;
    do
        ready = ::poll(&wait, 1, static_cast<int>(limit.count()));
    while (ready < 0 && errno == EINTR);
    return ready > 0;
}

} // namespace

QByteArray GuardianLink::program()
{
    return helperProgram("orvane-guardian");
}

GuardianLink::GuardianLink(QByteArray program, std::uint32_t window, const SharedPulse& pulse,
                           std::string& problem)
{
    if (program.isEmpty()) {
        problem = "orvane-guardian isn't beside the program or in its libexec; reinstall. Until then a crash "
                  "can leave a key pressed.";
        return;
    }
    int ends[2] = {};
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        problem = "No guardian could be started: " + std::string(std::strerror(errno)) + ".";
        return;
    }
    const FileDescriptor reading(ends[0]);
    m_pipe = FileDescriptor(ends[1]);

    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, reading.get(), STDIN_FILENO);
    if (pulse)
        ::posix_spawn_file_actions_adddup2(&actions, pulse.descriptor(), SharedPulse::descriptorInGuardian);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    // The guardian gets a session of its own, and inherits this thread's blocked signals: a signal that ends
    // us must not end it before.
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    QByteArray windowText = QByteArray::number(window);
    char* arguments[] = {program.data(), windowText.data(), nullptr};
    const int error =
        ::posix_spawn(&m_process, program.constData(), &actions, &attributes, arguments, environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        problem = "No guardian could be started: " + std::string(std::strerror(error)) + ".";
        m_process = -1;
        m_pipe.reset();
    }
}

void GuardianLink::abandon()
{
    m_pipe.reset();
    const pid_t process = std::exchange(m_process, -1);
    if (process >= 0)
        std::thread([process] { ::waitpid(process, nullptr, 0); }).detach(); // or it would stay as a zombie
}

GuardianLink::~GuardianLink()
{
    if (m_process < 0)
        return;
    [[maybe_unused]] const ssize_t written = ::write(m_pipe.get(), &goodbye, 1);
    m_pipe.reset();
    if (!endsWithin(m_process, farewell))
        ::kill(m_process, SIGKILL);
    ::waitpid(m_process, nullptr, 0);
}

} // namespace orvane

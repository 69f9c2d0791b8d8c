#include "ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <exception>
#include <stdexcept>

#include <fcntl.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane::tests {

namespace {

constexpr uid_t nobody = 65534;
constexpr int exceptionStatus = 99;

} // namespace

ChildProcess::ChildProcess(const std::function<int(int)>& body)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    m_fromChild = FileDescriptor(ends[0]);
    FileDescriptor toParent(ends[1]);
    m_id = ::fork();
    if (m_id < 0)
        throw std::runtime_error("no child process");
    if (m_id == 0) {
        m_fromChild.reset();
        int status = exceptionStatus;
        try {
            status = body(toParent.get());
        } catch (...) {
        }
        ::_exit(status);
    }
    m_isRunning = true;
}

ChildProcess::~ChildProcess()
{
    if (!m_isRunning)
        return;
    signal(SIGKILL);
    wait();
}

void ChildProcess::signal(int number) const
{
    ::kill(m_id, number);
}

std::string ChildProcess::readAll() const
{
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t count = ::read(m_fromChild.get(), buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return text;
        text.append(buffer, static_cast<std::size_t>(count));
    }
}

bool ChildProcess::readByte() const
{
    char byte = 0;
    ssize_t count = -1;
    do
        count = ::read(m_fromChild.get(), &byte, 1);
    while (count < 0 && errno == EINTR);
    return count == 1;
}

int ChildProcess::wait()
{
    int status = 0;
    while (m_isRunning && ::waitpid(m_id, &status, 0) < 0 && errno == EINTR) {
    }
    m_isRunning = false;
    return status;
}

void sendByte(int toParent)
{
    if (::write(toParent, "x", 1) != 1)
        ::_exit(exceptionStatus);
}

std::string inChild(const std::function<std::string()>& body)
{
    ChildProcess child([&](int toParent) {
        std::string complaint;
        try {
            complaint = body();
        } catch (const std::exception& error) {
            complaint = std::string("exception: ") + error.what();
        }
        return ::write(toParent, complaint.data(), complaint.size()) == static_cast<ssize_t>(complaint.size())
                   ? 0
                   : 1;
    });
    const std::string complaint = child.readAll();
    const int status = child.wait();
    if (WIFSIGNALED(status))
        return complaint + " killed by signal " + std::to_string(WTERMSIG(status));
    if (WEXITSTATUS(status) != 0)
        return complaint + " exited with " + std::to_string(WEXITSTATUS(status));
    return complaint;
}

bool becomeUnprivileged()
{
    if (::geteuid() != 0)
        return true;
    return ::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
           ::setresuid(nobody, nobody, nobody) == 0;
}

} // namespace orvane::tests

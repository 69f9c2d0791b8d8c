#include "Worker/Confinement.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane::tests {

namespace {

/// Runs `body` in a confined child; its result is the exit status.
template <typename Body>
int statusOfConfined(Body body)
{
    const pid_t child = ::fork();
    if (child == 0) {
        if (!Confinement::enter())
            ::_exit(99);
        ::_exit(body());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

template <typename Call>
bool isForbidden(Call call)
{
    errno = 0;
    return call() == -1 && errno == EPERM;
}

} // namespace

TEST(ConfinementTest, NothingCanBeOpenedMadeOrRemoved)
{
    EXPECT_EQ(statusOfConfined([] {
                  const bool all = isForbidden([] { return ::open("/etc/passwd", O_RDONLY); }) &&
                                   isForbidden([] { return ::open("/dev/null", O_WRONLY); }) &&
                                   isForbidden([] { return ::unlink("/tmp/nothing"); }) &&
                                   isForbidden([] { return ::mkdir("/tmp/nothing", 0700); }) &&
                                   isForbidden([] { return ::rename("/tmp/nothing", "/tmp/none"); }) &&
                                   isForbidden([] { return ::chmod("/tmp/nothing", 0); });
                  return all ? 0 : 1;
              }),
              0);
}

TEST(ConfinementTest, NobodyElseCanBeReached)
{
    EXPECT_EQ(statusOfConfined([] {
                  const bool all =
                      isForbidden([] { return ::socket(AF_INET, SOCK_STREAM, 0); }) &&
                      isForbidden([] { return ::socket(AF_UNIX, SOCK_STREAM, 0); }) &&
                      isForbidden([] { return ::kill(::getppid(), SIGTERM); }) &&
                      isForbidden([] { return static_cast<int>(::ptrace(PTRACE_TRACEME, 0, 0, 0)); });
                  return all ? 0 : 1;
              }),
              0);
}

TEST(ConfinementTest, NoProgramCanBeStarted)
{
    EXPECT_EQ(statusOfConfined([] {
                  char name[] = "/bin/true";
                  char* arguments[] = {name, nullptr};
                  const bool all = isForbidden([] { return ::fork(); }) &&
                                   isForbidden([&] { return ::execve(name, arguments, nullptr); });
                  pid_t child = 0;
                  return all && ::posix_spawn(&child, name, nullptr, nullptr, arguments, nullptr) != 0 ? 0
                                                                                                       : 1;
              }),
              0);
}

TEST(ConfinementTest, ThreadsAndMemoryStay)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer looks at a thread's object by a call that is forbidden here";
#endif
    EXPECT_EQ(statusOfConfined([] {
                  int made = 0;
                  std::thread([&made] { made = 1; }).join();
                  void* const memory =
                      ::mmap(nullptr, 1 << 20, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
                  return made == 1 && memory != MAP_FAILED ? 0 : 1;
              }),
              0);
}

} // namespace orvane::tests

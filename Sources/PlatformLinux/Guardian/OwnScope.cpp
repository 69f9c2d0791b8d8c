#include "PlatformLinux/Guardian/OwnScope.h"

#include <array>
#include <csignal>
#include <string>

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

namespace orvane {

/// The request is made by systemd's own program, which is there wherever systemd is: a library for the bus
/// would stay in this process's memory for one message.
void moveIntoOwnScope()
{
    std::signal(SIGCHLD, SIG_IGN); // nothing waits for the program's end
    std::string process = std::to_string(::getpid());
    std::string scope = "orvane-guardian-" + process + ".scope";
    // The method's arguments are the name, the mode, and two properties and no further unit.
    std::array<std::string, 23> words{"busctl",
                                      "--user",
                                      "--quiet",
                                      "--auto-start=no",
                                      "--timeout=10",
                                      "call",
                                      "org.freedesktop.systemd1",
                                      "/org/freedesktop/systemd1",
                                      "org.freedesktop.systemd1.Manager",
                                      "StartTransientUnit",
                                      "ssa(sv)a(sa(sv))",
                                      scope,
                                      "fail",
                                      "2",
                                      "PIDs",
                                      "au",
                                      "1",
                                      process,
                                      "Slice",
                                      "s",
                                      "session.slice",
                                      "0"};
    std::array<char*, words.size()> arguments{};
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        arguments[i] = words[i].data();

    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
    pid_t child = 0;
    (void)::posix_spawnp(&child, "busctl", &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
}

} // namespace orvane

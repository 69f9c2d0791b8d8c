// The Linux desktop as a platform: makes every service and keeps them for the life of the process.
#pragma once

#include "Platform/Platform.h"

#include <memory>
#include <optional>

namespace orvane {

class LinuxPlatform {
public:
    /// Makes the application object. Ends the process with a message where there is no display.
    LinuxPlatform(int& argc, char** argv);
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    /// Claims to be the session's one process. If another one is it, that one is told to come to the front,
    /// and the exit status is returned with which this process has to end. Must come before everything that
    /// touches the user's files.
    std::optional<int> handOver();

    /// Made at the first call.
    Platform& platform();

    /// Runs the event loop with the delegate that was set. Returns the exit status.
    int run();

private:
    struct Process;
    struct Services;
    std::unique_ptr<Process> m_process;
    std::unique_ptr<Services> m_services;
};

} // namespace orvane

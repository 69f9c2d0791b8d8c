// The Linux desktop as a platform: makes every service and holds them together for the life of the process.
#pragma once

#include "Platform/Platform.h"

#include <memory>

namespace orvane {

class LinuxPlatform {
public:
    /// Makes the application object. Ends the process with a message where there is no display.
    LinuxPlatform(int& argc, char** argv);
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    Platform& platform();

    /// Runs the event loop with the delegate that was set, unless another process of the session is the one:
    /// then that one is told to come to the front. Gives the exit status.
    int run();

private:
    struct Services;
    std::unique_ptr<Services> m_services;
};

} // namespace orvane

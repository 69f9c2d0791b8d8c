#include "Orvane/Launch/AppDelegate.h"
#include "Orvane/Launch/AppEnvironment.h"
#include "Platform/Application.h"
#include "PlatformLinux/LinuxPlatform.h"

int main(int argc, char** argv)
{
    using namespace orvane;
    LinuxPlatform linux(argc, argv);
    if (const auto status = linux.handOver())
        return *status;
    PlatformScope scope(linux.platform());
    AppDelegate delegate(&AppEnvironment::shared);
    linux.platform().application.setDelegate(&delegate);
    return linux.run();
}

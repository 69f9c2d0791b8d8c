#include "PlatformLinux/LinuxPlatform.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/EventTap/XInputEventTaps.h"
#include "PlatformLinux/Files/AutostartLoginItem.h"
#include "PlatformLinux/Files/JsonDefaultsStore.h"
#include "PlatformLinux/Files/ProgramBundle.h"
#include "PlatformLinux/Files/XdgFileManager.h"
#include "PlatformLinux/JournalLogSink.h"
#include "PlatformLinux/Session/LinuxPermissions.h"
#include "PlatformLinux/Session/LinuxWorkspace.h"
#include "PlatformLinux/Session/LogindPowerAssertions.h"
#include "PlatformLinux/Session/QtApplication.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "PlatformLinux/Session/SingleInstance.h"
#include "PlatformLinux/Tray/LinuxStatusBar.h"

namespace orvane {

/// What a process is before it knows whether it is the one.
struct LinuxPlatform::Process {
    Process(int& argc, char** argv) : application(argc, argv, log) {}

    JournalLogSink log;
    QtApplication application;
    SingleInstance singleInstance{log};
};

struct LinuxPlatform::Services {
    explicit Services(Process& theProcess) : process(theProcess) {}

    Process& process;
    LogSink& log = process.log;
    QtRunLoop runLoop;
    SystemClock clock;
    ProgramBundle bundle;
    XdgFileManager fileManager;
    JsonDefaultsStore defaults{JsonDefaultsStore::standardPath(), log, runLoop};
    AutostartLoginItem loginItem;
    LogindPowerAssertions powerAssertions{log};
    LinuxWorkspace workspace{log, process.singleInstance};
    LinuxStatusBar statusBar{log};
    NotificationCenter notificationCenter;
    XInputEventTaps eventTaps{log, [this] { return workspace.commandKeys(); }};
    LinuxPermissions permissions{log};

    Platform platform{.application = process.application,
                      .mainBundle = bundle,
                      .clock = clock,
                      .defaultNotificationCenter = notificationCenter,
                      .eventTaps = eventTaps,
                      .fileManager = fileManager,
                      .loginItem = loginItem,
                      .log = log,
                      .permissions = permissions,
                      .powerAssertions = powerAssertions,
                      .mainRunLoop = runLoop,
                      .standardDefaults = defaults,
                      .systemStatusBar = statusBar,
                      .sharedWorkspace = workspace};
};

LinuxPlatform::LinuxPlatform(int& argc, char** argv) : m_process(std::make_unique<Process>(argc, argv)) {}
LinuxPlatform::~LinuxPlatform() = default;

std::optional<int> LinuxPlatform::handOver()
{
    QtApplication& application = m_process->application;
    switch (m_process->singleInstance.claim([&application] { application.reopen(); })) {
    case SingleInstance::Claim::claimed:
    case SingleInstance::Claim::unavailable:
        break;
    case SingleInstance::Claim::handedOver:
        return 0;
    case SingleInstance::Claim::unanswered:
        return 1;
    }
    return std::nullopt;
}

Platform& LinuxPlatform::platform()
{
    if (!m_services)
        m_services = std::make_unique<Services>(*m_process);
    return m_services->platform;
}

int LinuxPlatform::run()
{
    return m_process->application.run();
}

} // namespace orvane
